// The fields of the request form that the type-ahead and the person store
// fill and read: one place block (the Muhurtha's, the person's, the boy's
// or the girl's) and one person block.
#pragma once

#include <QString>
#include <string>

#include "ranvel/engine/request.h"

class QComboBox;
class QLineEdit;
class QRadioButton;

namespace ranvel {

// The blank masks of the fields.
inline const QString kBlankDate = "00/00/0000";
inline const QString kBlankTime = "00.00";
inline const QString kBlankDegrees = "000:00";
inline const QString kBlankZone = "+00.00";

struct PlaceFields {
    QComboBox* country = nullptr;
    QComboBox* city = nullptr;
    QLineEdit* lati = nullptr;
    QLineEdit* longi = nullptr;
    QLineEdit* ns = nullptr;
    QLineEdit* ew = nullptr;
    QLineEdit* gmt = nullptr;
};

struct PersonFields {
    QComboBox* name = nullptr;
    QRadioButton* male = nullptr;  // the person page alone has the choice
    QRadioButton* female = nullptr;
    QLineEdit* date = nullptr;
    QLineEdit* time = nullptr;
    QRadioButton* half[2] = {};  // AM, PM
    PlaceFields place;
    int sex = 1;  // for the boy and the girl, who have no choice
};

// What a field holds as the user sees it, blanks of a mask included: a
// half-typed "1_.30" is not a time.
std::string Text(const QLineEdit* e);
std::string Text(const QComboBox* c);

RequestPlace Gather(const PlaceFields& f);
RequestPerson Gather(const PersonFields& f);

// Puts a text into a box without a word from it. The box's current item is
// the one of that text, if its list has one, so that leaving the box later
// does not choose the item again over what was typed since.
void SetBoxText(QComboBox* box, const QString& text);

// The place fields emptied: no city, the blank degrees, N and E.
void ClearCity(PlaceFields& f);

}  // namespace ranvel

namespace ranvel {

// A time field's AM/PM option follows its text: under 12 is AM. The time
// fields of the request (HH.MM on a 24-hour clock) all keep this rule, so
// the option, the text and the chart cast from the text agree.
void FollowHalf(const QLineEdit* time, QRadioButton* const half[2]);

}  // namespace ranvel
