// The persons store (RECOS.Dat) at each start of the desktop: the file's own
// check of its pages and the tables the program reads. A good store is
// copied beside itself before the run can write to it, the three newest
// copies kept (RECOS.Dat.1 the newest); a damaged one is set aside as
// RECOS.Dat.damaged and the newest good copy put back in its place, with a
// message that says so. Years of a family's births are not lost to one bad
// write.
#pragma once

#include <string>

namespace ranvel {

// What the guard found, and the words for the user ("" when all was well).
struct StoreGuardResult {
    enum class Kind { Good, Restored, Lost } kind = Kind::Good;
    std::string message;
};

// Checks the store at path and keeps or restores it. Never throws for a
// damaged store: Lost says that no good copy could be put back.
StoreGuardResult GuardStore(const std::string& path);

// What is wrong with the store at path, "" when nothing is.
std::string StoreDamage(const std::string& path);

}  // namespace ranvel
