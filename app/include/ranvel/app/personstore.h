// The person store as the request form reaches it: a stored person loaded
// into a person block, saved from it or deleted, and the exchange files
// (one person in a .JKP, all of them in a .JKD). Each command shows its
// own messages and faults; the form then fills its lists again.
#pragma once

#include <QString>
#include <functional>
#include <string>

#include "ranvel/app/requestfields.h"

class QWidget;

namespace ranvel::persons {

// What a command has to say on the form's hint line.
using HintLine = std::function<void(const QString&)>;

// The stored person of that name into the block's fields; false when the
// store holds none of that name (the fields stay as they are). When the
// record can't be read, the fault is shown and the birth fields go back to
// their blank masks, so that no report goes out under this name with the
// birth of whoever was in the fields before.
bool Load(PersonFields& f, const std::string& name);

// The person of the fields to the store: one of that name is written over,
// any other added. False when nothing was written.
bool Save(const PersonFields& f);
// The person named in the fields out of the store, after asking. False
// when nothing was deleted.
bool Delete(const PersonFields& f);

// The exchange files. Each asks for its file, and says on the hint line
// what it did.
void SaveToFile(QWidget* parent, const PersonFields& f, const HintLine& hint);
void SaveDatabase(QWidget* parent, const HintLine& hint);
// database true: merge a .JKD; false: import a .JKP. True when persons
// were added.
bool Import(QWidget* parent, bool database, const HintLine& hint);

}  // namespace ranvel::persons
