// The note beside a place's zone field on the request form: where the
// city's clock kept another offset at the request's date and time (summer
// time, war time, a moved zone), where that hour was skipped or came twice,
// or where the range crosses a change of the clock. It stands where the
// field's grey hint stands and shows the note in a few words; its tip and
// its spoken description give the whole sentence. A click (or Space) puts
// the offset it offers into the field, or shows the sentence when it
// offers none. The field is never changed otherwise.
#pragma once

#include <QPushButton>
#include <functional>
#include <vector>

#include "ranvel/engine/zonenotes.h"

class QLabel;
class QLineEdit;

namespace ranvel {

class ZoneHint : public QPushButton {
    Q_OBJECT
public:
    using NoteSource = std::function<std::vector<ZoneNote>()>;
    // Takes the place of the grey hint beside the zone field.
    ZoneHint(QLabel* hint, QLineEdit* zoneField, NoteSource notes, const char* name);

    // Asks for the notes anew: shows the first (one that offers an offset
    // before one that doesn't) or gives the place back to the grey hint.
    void Refresh();
    const std::vector<ZoneNote>& Notes() const { return notes_; }

private:
    void Use();

    QLabel* hint_;
    QLineEdit* field_;
    NoteSource source_;
    std::vector<ZoneNote> notes_;
};

}  // namespace ranvel
