// Which ephemeris the positions come from. Swiss Ephemeris reads its data
// files when it finds them and otherwise goes on, without a word, with the
// analytical ephemeris built into it: the charts differ a little, and
// nothing else tells. The program asks once at its start and names the one
// in use in the about box, the status bar, a report made without the files,
// and `ranvel-cli --version`.
#pragma once

#include <string>

namespace ranvel {

struct EphemerisInfo {
    // True when the library read its data files; false when it fell back to
    // its analytical ephemeris.
    bool files = false;
    // The library's version as it gives it, e.g. "2.10.03".
    std::string version;
    // The folder of the planets' file, and the development ephemeris
    // number the files were made from (0 when unknown); set with files only.
    std::string folder;
    int denum = 0;
};

// Asks the library once, for the Sun and the Moon at one moment inside the
// span of its standard files, with the flags a chart uses; later calls give
// what the first found. The library's search path, its settings and every
// position a chart reads afterwards stay as they would have been.
const EphemerisInfo& EphemerisInUse();
// The asking itself, each time anew (for the tests).
EphemerisInfo DetectEphemeris();

// One sentence for the user, the same wherever it is shown:
//   "Ephemeris: Swiss Ephemeris 2.10.03 files (DE431, /usr/share/libswe/ephe)"
//   "Ephemeris: the analytical ephemeris built into Swiss Ephemeris 2.10.03
//    (its data files were not found)"
std::string EphemerisSentence(const EphemerisInfo& info);
std::string EphemerisSentence();
// A few words for a status bar: "Swiss Ephemeris files" or
// "Analytical ephemeris (no data files)".
std::string EphemerisShortName(const EphemerisInfo& info);

}  // namespace ranvel
