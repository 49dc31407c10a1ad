// The application's title and release, as its windows and settings use them.
#pragma once

#include <string>

namespace ranvel {

// "Ranvel": the title of the windows and the name of the settings.
const std::string& AppTitle();
// major + "." + minor + "." + revision, e.g. "0.1.0".
std::string VersionNumber();
// "Release " + VersionNumber().
std::string ReleaseText();

}  // namespace ranvel
