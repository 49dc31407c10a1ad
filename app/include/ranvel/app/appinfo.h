// The application's title and release, as its windows and settings use them.
#pragma once

#include <string>

namespace ranvel {

// "Ranvel": the title of the windows and the name of the settings.
const std::string& AppTitle();
// "Release " + major + "." + minor + "." + revision.
std::string ReleaseText();

}  // namespace ranvel
