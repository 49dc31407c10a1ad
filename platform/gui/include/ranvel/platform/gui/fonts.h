// The program's own display fonts: asked for by family name, and, when the
// desktop doesn't have one, registered from the installation's font file
// for this program alone (nothing is installed for other programs).
#pragma once

#include <string>

namespace ranvel {

// True when a font asked for by this family comes back with the same name.
bool FontFamilyAvailable(const std::string& family);
// Registers the font file for this program; false when it is missing or is
// not a font.
bool RegisterFontFile(const std::string& path);

}  // namespace ranvel
