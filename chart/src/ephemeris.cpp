#include "ranvel/chart/ephemeris.h"

#include <filesystem>

extern "C" {
#include <swephexp.h>
}

namespace ranvel {

namespace {
// 1 January 2000, noon: inside the span of the library's standard files
// (1800 to 2400), so that their absence, not the date, decides.
constexpr double kProbeDay = 2451545.0;
}  // namespace

EphemerisInfo DetectEphemeris()
{
    EphemerisInfo info;
    char version[256] = {0};
    swe_version(version);
    info.version = version;

    // The chart's own call: flags 0, the library's default ephemeris. The
    // flags it gives back carry SEFLG_MOSEPH when it had to fall back. The
    // search path is left alone, so the library finds its files, or not,
    // exactly as it does for a chart.
    bool fellBack = false;
    for (int body : {SE_SUN, SE_MOON}) {
        double xx[6] = {0, 0, 0, 0, 0, 0};
        char serr[256] = {0};
        const int got = swe_calc(kProbeDay, body, 0, xx, serr);
        fellBack = fellBack || got < 0 || (got & SEFLG_MOSEPH) != 0;
    }
    info.files = !fellBack;
    if (info.files) {
        double start = 0, end = 0;
        int denum = 0;
        const char* path = swe_get_current_file_data(0, &start, &end, &denum);
        if (path && *path) info.folder = std::filesystem::path(path).parent_path().string();
        info.denum = denum;
    }
    return info;
}

const EphemerisInfo& EphemerisInUse()
{
    static const EphemerisInfo info = DetectEphemeris();
    return info;
}

std::string EphemerisSentence(const EphemerisInfo& info)
{
    if (!info.files)
        return "Ephemeris: the analytical ephemeris built into Swiss Ephemeris " + info.version +
               " (its data files were not found)";
    std::string where;
    if (info.denum > 0) where = "DE" + std::to_string(info.denum);
    if (!info.folder.empty()) where += (where.empty() ? "" : ", ") + info.folder;
    return "Ephemeris: Swiss Ephemeris " + info.version + " files" + (where.empty() ? "" : " (" + where + ")");
}

std::string EphemerisSentence() { return EphemerisSentence(EphemerisInUse()); }

std::string EphemerisShortName(const EphemerisInfo& info)
{
    return info.files ? "Swiss Ephemeris files" : "Analytical ephemeris (no data files)";
}

}  // namespace ranvel
