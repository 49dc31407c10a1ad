#include "ranvel/app/appinfo.h"

namespace ranvel {

const std::string& AppTitle()
{
    static const std::string title = "Ranvel";
    return title;
}

std::string VersionNumber()
{
    return std::to_string(RANVEL_VERSION_MAJOR) + "." + std::to_string(RANVEL_VERSION_MINOR) + "." +
           std::to_string(RANVEL_VERSION_PATCH);
}

std::string ReleaseText() { return "Release " + VersionNumber(); }

}  // namespace ranvel
