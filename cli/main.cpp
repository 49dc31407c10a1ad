// ranvel-cli: the headless front end of Ranvel.
#include <cstdio>
#include <cstring>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "commands.h"
#include "ranvel/app/appinfo.h"
#include "ranvel/chart/ephemeris.h"
#include "ranvel/platform/apppaths.h"
#include "ranvel/platform/gui/systemzones.h"
#include "ranvel/platform/vbmath.h"

namespace {

const char* const kUsage =
    "usage: ranvel-cli [--app-dir DIR] COMMAND [options]\n"
    "       ranvel-cli --version\n"
    "\n"
    "commands:\n"
    "  version (or --version)\n"
    "      the program's version, and the ephemeris its positions come from:\n"
    "      Swiss Ephemeris with its data files, or the analytical ephemeris it\n"
    "      falls back to when it finds none\n"
    "  record [--input FILE] [--step MINUTES] [--count N] [--json]\n"
    "      show a moment record (a built-in sample without --input) and how\n"
    "      the search steps it through time\n"
    "  chart --input FILE [--json]\n"
    "      calculate the chart of {\"person\": {...}, \"settings\": {...}} and\n"
    "      show every number of it\n"
    "  vakya --input FILE [--json]\n"
    "      the Vakya reckoning of {\"Day\", \"Month\", \"Year\", \"Hour\", \"Minutes\",\n"
    "      \"Seconds\", \"LatDeg\", \"LatMin\"}, with the Kali day and the chart's\n"
    "      Vakya ayanamsha\n"
    "  muhurtha --request FILE [--json] [--png FILE] [--pdf FILE]\n"
    "      search the best Muhurtha of a request (a moment or a range of days);\n"
    "      --png also draws its cover page into a picture, --pdf writes the\n"
    "      whole report as the desktop exports it\n"
    "  calendar --request FILE [--top N] [--min-band B] [--json] [--ics FILE]\n"
    "           [--png FILE] [--pdf FILE]\n"
    "      every day of a range request with its best moment, ranked by percent\n"
    "      (the best Muhurtha first); the first N days (10) of band B (10) or\n"
    "      more are listed and written as iCalendar events, the month grids as\n"
    "      a picture, grids and list as a PDF\n"
    "  day --date dd/MM/yyyy (--place-file FILE | --lati DDD:MM --longi DDD:MM\n"
    "      --ns N|S --ew E|W --gmt +HH.MM [--country C] [--city C]) [--json]\n"
    "      [--pdf FILE]\n"
    "      the day's sheet at a place: sunrise and sunset, each tithi,\n"
    "      nakshatra, yoga and karana with its limits, the lunar month, Rahu\n"
    "      Kaal, the evil Muhurthas, Chowgadiya and Hora; --pdf writes it as\n"
    "      the desktop prints it\n"
    "  zone --city NAME [--country NAME] --date dd/MM/yyyy --time HH.MM [--json]\n"
    "      the zone of a city of the place store and the offset its clock kept\n"
    "      at that local date and time (summer time, a skipped or repeated\n"
    "      hour named)\n"
    "  catalogue [--category KEY] [--json]\n"
    "      the Muhurthas a request can name, by category\n"
    "  gochara --input FILE --planet P --target DEG --tolerance ARCMIN [--json]\n"
    "      the first moment from the chart's at which point P (0 Lagna .. 12)\n"
    "      reaches the longitude\n"
    "\n"
    "--app-dir DIR replaces the program's folder as the root of the data tree\n"
    "(the environment variable RANVEL_APP_DIR does the same).\n"
    "--sunrise astronomical|ecliptic (muhurtha, calendar, day) chooses sunrise\n"
    "for this run: the Sun's disc on the true horizon, or the rising of its\n"
    "ecliptic point (the settings' choice when not given).\n";

// A refusal may name several fields, one a line; each line reads as the
// program's own, the indented lines below one belonging to it.
void PrintRefusal(const std::string& text)
{
    std::size_t start = 0;
    for (;;) {
        const std::size_t end = text.find('\n', start);
        const std::string line = text.substr(start, end == std::string::npos ? std::string::npos : end - start);
        std::fprintf(stderr, "%s%s\n", line.rfind(' ', 0) == 0 ? "" : "ranvel-cli: ", line.c_str());
        if (end == std::string::npos) break;
        start = end + 1;
    }
}

struct Command {
    int (*run)(const ranvel::cli::Args&);
    std::vector<std::string> flags;
};

}  // namespace

int main(int argc, char** argv)
{
    std::vector<std::string> args(argv + 1, argv + argc);
    ranvel::UseSystemZones();
    // Which ephemeris the library will use is asked once, before any chart,
    // as the desktop asks at its start.
    const ranvel::EphemerisInfo& ephemeris = ranvel::EphemerisInUse();
    try {
        if (args.size() >= 2 && args[0] == "--app-dir") {
            ranvel::SetAppDir(args[1]);
            args.erase(args.begin(), args.begin() + 2);
        }
        if (args.empty() || args[0] == "--help" || args[0] == "-h" || args[0] == "help") {
            std::fputs(kUsage, args.empty() ? stderr : stdout);
            return args.empty() ? 2 : 0;
        }
        if (args[0] == "--version" || args[0] == "version") {
            if (args.size() > 1) throw std::invalid_argument("unexpected argument '" + args[1] + "'");
            std::printf("ranvel-cli %s\n%s\n", ranvel::VersionNumber().c_str(),
                        ranvel::EphemerisSentence(ephemeris).c_str());
            return 0;
        }
        static const std::map<std::string, Command> commands = {
            {"record", {ranvel::cli::CmdRecord, {"json"}}},
            {"chart", {ranvel::cli::CmdChart, {"json"}}},
            {"vakya", {ranvel::cli::CmdVakya, {"json"}}},
            {"gochara", {ranvel::cli::CmdGochara, {"json"}}},
            {"muhurtha", {ranvel::cli::CmdMuhurtha, {"json"}}},
            {"catalogue", {ranvel::cli::CmdCatalogue, {"json"}}},
            {"calendar", {ranvel::cli::CmdCalendar, {"json"}}},
            {"day", {ranvel::cli::CmdDay, {"json"}}},
            {"zone", {ranvel::cli::CmdZone, {"json"}}},
        };
        auto it = commands.find(args[0]);
        if (it == commands.end()) {
            std::fprintf(stderr, "ranvel-cli: unknown command '%s'\n\n%s", args[0].c_str(), kUsage);
            return 2;
        }
        std::vector<std::string> rest(args.begin() + 1, args.end());
        // --app-dir may also follow the command.
        for (std::size_t i = 0; i + 1 < rest.size(); ++i) {
            if (rest[i] == "--app-dir") {
                ranvel::SetAppDir(rest[i + 1]);
                rest.erase(rest.begin() + static_cast<long>(i), rest.begin() + static_cast<long>(i) + 2);
                break;
            }
        }
        return it->second.run(ranvel::cli::Args(rest, it->second.flags));
    } catch (const std::invalid_argument& e) {
        PrintRefusal(e.what());
        return 2;
    } catch (const std::exception& e) {
        // A run-time fault ends the command.
        std::fprintf(stderr, "ranvel-cli: %s\n", e.what());
        return 1;
    }
}
