// The type-ahead of the request form. While the user types into a country,
// city or person box, the store is asked for the rows that begin with the
// text; the hint line names one of them, the popup lists them all, and
// Enter, a click in the popup or a pick from the box's own list fills the
// fields from a row. The hint line always names the row that Enter would
// take, which is the first row found, or the one the user moves to in the
// popup.
#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ranvel/app/requestfields.h"

class QComboBox;
class QLabel;

namespace ranvel {

class TypeAhead : public QObject {
    Q_OBJECT
public:
    using HintLine = std::function<void(const QString&)>;
    TypeAhead(QObject* parent, HintLine hint);
    ~TypeAhead() override;

    // A country box with its city box and place fields.
    void WirePlace(PlaceFields& f);
    // A person box; `load` fills the person's fields from the store.
    void WirePerson(PersonFields& f, std::function<void(const std::string& name)> load);

    // The box's own lists, filled from the store; what the box holds stays.
    static void FillCountries(QComboBox* c);
    static void FillCities(QComboBox* c, const std::string& country);
    static void FillPersons(QComboBox* c);

    // While the form fills its lists, their changes are not the user's.
    void SetFilling(bool on) { filling_ = on; }
    bool Filling() const { return filling_; }

    // The row that the hint line names for a box, "" when none.
    QString Named(const QComboBox* box) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Finder;
    Finder& Add(QComboBox* box);
    void Typed(Finder& f, const QString& text);
    void Take(Finder& f, int row);

    HintLine hint_;
    bool filling_ = false;
    std::vector<std::unique_ptr<Finder>> finders_;
};

}  // namespace ranvel
