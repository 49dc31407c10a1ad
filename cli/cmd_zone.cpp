// "zone": the clock a city of the place store kept at a local date and
// time: its zone, the offset in force, and whether summer time was on.
#include <iostream>

#include "commands.h"
#include "chart_input.h"
#include "input_check.h"
#include "person_json.h"
#include "ranvel/data/cityzones.h"
#include "ranvel/data/datafiles.h"
#include "ranvel/platform/zones.h"

namespace ranvel::cli {

namespace {

using Json = nlohmann::ordered_json;

// HH.MM of a 24-hour clock.
DateTime ReadClock(const DateTime& date, const std::string& text)
{
    int h = -1, m = -1;
    char tail = 0;
    if (text.size() != 5 || text[2] != '.' || std::sscanf(text.c_str(), "%2d.%2d%c", &h, &m, &tail) != 2 || h < 0 ||
        h > 23 || m < 0 || m > 59)
        throw std::invalid_argument("--time must be a time HH.MM of a 24-hour clock, 00.00 to 23.59, not '" + text +
                                    "'");
    return date.AddMinutes(h * 60 + m);
}

const char* KindName(ZoneReading::Kind k)
{
    switch (k) {
    case ZoneReading::Kind::Normal: return "Normal";
    case ZoneReading::Kind::Skipped: return "Skipped";
    case ZoneReading::Kind::Repeated: return "Repeated";
    case ZoneReading::Kind::Unknown: break;
    }
    return "Unknown";
}

std::string ZoneSentence(const CityZone& city, const DateTime& local, const ZoneReading& r)
{
    const std::string at = local.ToDayFirstText() + " " + (local.Hour() < 10 ? "0" : "") + std::to_string(local.Hour()) +
                           "." + (local.Minute() < 10 ? "0" : "") + std::to_string(local.Minute());
    const std::string summer = r.daylight ? " (summer time)" : "";
    switch (r.kind) {
    case ZoneReading::Kind::Normal:
        return "At " + city.City + " on " + at + " the clock stood at " + ZoneOffsetText(r.minutes) + summer;
    case ZoneReading::Kind::Skipped:
        return at + " never happened at " + city.City + ": the clock went from " + ZoneOffsetText(r.minutes) +
               " to " + ZoneOffsetText(r.later) + " over it";
    case ZoneReading::Kind::Repeated:
        return at + " happened twice at " + city.City + ": first at " + ZoneOffsetText(r.minutes) + summer +
               ", then at " + ZoneOffsetText(r.later);
    case ZoneReading::Kind::Unknown: break;
    }
    return "No offset in force can be given for " + city.City + " (" + r.why + "); its standard offset is " +
           city.GMTDiff;
}

}  // namespace

int CmdZone(const Args& args)
{
    args.Allow({"city", "country", "date", "time", "json"});
    if (args.Value("city").empty()) throw std::invalid_argument("zone needs --city NAME");
    if (!args.Has("date")) throw std::invalid_argument("zone needs --date dd/MM/yyyy");
    if (!args.Has("time")) throw std::invalid_argument("zone needs --time HH.MM");
    const DateTime local = ReadClock(ReadDayDate("--date", args.Value("date")), args.Value("time"));
    OpenAppData();
    const std::vector<CityZone> cities = CitiesNamed(*RecosDB(), args.Value("city"), args.Value("country"));
    if (cities.empty())
        throw std::invalid_argument("no city '" + args.Value("city") + "'" +
                                    (args.Has("country") ? " in '" + args.Value("country") + "'" : std::string()) +
                                    " is in the place store");
    const CityZone& city = cities.front();
    const ZoneReading r = Zones().At(city.Zone, local);
    std::vector<std::string> others;
    for (std::size_t i = 1; i < cities.size(); ++i) others.push_back(cities[i].Country);

    if (args.Flag("json")) {
        Json out;
        out["City"] = city.City;
        out["Country"] = city.Country;
        out["Zone"] = city.Zone;
        out["GMTDIFF"] = city.GMTDiff;
        out["Kind"] = KindName(r.kind);
        out["Offset"] = r.kind == ZoneReading::Kind::Unknown ? city.GMTDiff : ZoneOffsetText(r.minutes);
        if (r.kind == ZoneReading::Kind::Skipped || r.kind == ZoneReading::Kind::Repeated)
            out["Later"] = ZoneOffsetText(r.later);
        out["SummerTime"] = r.daylight;
        out["Note"] = ZoneSentence(city, local, r);
        out["OtherCountries"] = others;
        std::cout << DumpJson(out);
        return 0;
    }
    std::cout << city.City << ", " << city.Country << ": zone "
              << (city.Zone.empty() ? std::string("(none)") : city.Zone) << ", standard offset " << city.GMTDiff
              << "\n"
              << ZoneSentence(city, local, r) << "\n"
              << "Offset in force: "
              << (r.kind == ZoneReading::Kind::Unknown ? city.GMTDiff : ZoneOffsetText(r.minutes)) << "\n";
    if (!others.empty()) {
        std::cout << cities.size() << " cities bear that name; took the one in " << city.Country << " (also in:";
        for (const std::string& c : others) std::cout << " " << c << (&c == &others.back() ? "" : ",");
        std::cout << "); name --country to choose\n";
    }
    return 0;
}

}  // namespace ranvel::cli
