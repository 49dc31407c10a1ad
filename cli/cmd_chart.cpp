// "chart": one Calculate of a new chart, and every number of it, so that
// anyone can check a chart against another source.
#include <cstdio>
#include <iostream>

#include "chart_input.h"
#include "commands.h"
#include "person_json.h"
#include "ranvel/data/datafiles.h"
#include "ranvel/chart/wrap.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel::cli {

namespace {

template <typename F>
nlohmann::ordered_json Series(int from, int to, F f)
{
    nlohmann::ordered_json a = nlohmann::ordered_json::array();
    for (int i = from; i <= to; ++i) a.push_back(f(i));
    return a;
}

nlohmann::ordered_json ChartJson(clsPlanets& c)
{
    nlohmann::ordered_json j;
    j["person"] = PersonToJson(c.clsPerson());
    j["LysPlnt"] = Series(0, 26, [&](int p) { return c.LysPlnt(p); });
    j["BhavMid"] = Series(0, 12, [&](int i) { return c.BhavMid(i); });
    j["BhavBegin"] = Series(0, 12, [&](int i) { return c.BhavBegin(i); });
    j["KPHouse"] = Series(0, 13, [&](int i) { return c.KPHouse(i); });
    j["SidrealTime"] = c.SidrealTime();
    j["Obliq"] = c.Obliq();
    j["Tithi"] = c.Tithi();
    j["Nakshatra"] = c.Nakshatra();
    j["YogaNumber"] = c.YogaNumber();
    j["KaranNumber"] = c.KaranNumber();
    j["NakPada"] = c.NakPada();
    j["KaranName"] = c.KaranNum();
    j["TithiValue"] = c.TithiValue();
    j["PlanetRashiNum"] = Series(0, 12, [&](int p) { return c.PlanetRashiNum(p); });
    j["PlanetSpeed"] = Series(0, 12, [&](int p) { return c.PlanetSpeed(p); });
    j["RetroGrade"] = Series(0, 12, [&](int p) { return c.RetroGrade(p); });
    j["VikramiMonth"] = clsPlanets::VikramiMonth(c.PlanetLongi(1), c.clsPerson().GetBirthDate());
    j["VargaTable"] = Series(0, 13, [&](int p) { return Series(0, 17, [&](int v) { return c.PrediVarga(p, v); }); });
    j["WeekDayOfBirth"] = c.clsPerson().WeekDayOfBirth();
    j["GetBirthTime"] = c.clsPerson().GetBirthTime();
    j["SunRiseTime"] = c.SunRiseTime();
    j["SunSetTime"] = c.SunSetTime();
    j["DayDuration"] = c.DayDuration();
    j["NightDuration"] = c.NightDuration();
    return j;
}

void PrintReadable(const nlohmann::ordered_json& j, clsPlanets& c)
{
    clsPerson& p = c.clsPerson();
    int day = p.WeekDayOfBirth();
    std::string dayName = c.GetDayName(day);
    std::printf("Chart of %s at %s\n", p.Name().c_str(), p.GetBirthPlace().c_str());
    std::printf("  %s, %s, %s (local clock after the calculation), GMT %s\n", dayName.c_str(),
                c.ConvertDateToText(p.GetBirthDate()).c_str(), p.GetBirthTime().c_str(), p.GMTDIFF().c_str());
    std::printf("  %s %s  %s\n", p.GetLatitudeFull().c_str(), p.GetLongitudeFull().c_str(), c.AyanamshName().c_str());
    std::printf("  ayanamsha %s deg, obliquity %.6f, sidereal time %.6f h\n\n", vb::CStr(c.LysPlnt(13)).c_str(),
                c.Obliq(), c.SidrealTime());
    std::printf("  %-5s %-14s %-12s %-9s %-18s %-10s %s\n", "", "longitude", "sign", "in sign", "nakshatra", "motion",
                "navamsha");
    for (int i = 0; i <= 12; ++i) {
        double lon = c.PlanetLongi(i);
        Variant nak = c.NakOf(i);
        std::printf("  %-5s %13.8f  %-12s %-9s %-18s %-10s %s\n", c.PlanetName(i).c_str(), lon,
                    c.ConvertRashi(c.PlanetRashiNum(i)).c_str(), clsPlanets::ConvertValNoDeg(lon).c_str(),
                    c.GetNakshatraName(nak).c_str(), i == 0 ? "" : c.Direction(i).c_str(),
                    c.ConvertRashi(c.PrediVarga(i, 6)).c_str());
    }
    std::printf("\n  house  middle         begin          KP cusp\n");
    for (int i = 0; i <= 12; ++i)
        std::printf("  %5d  %13.8f  %13.8f  %13.8f\n", i, c.BhavMid(i), c.BhavBegin(i), c.KPHouse(i));
    Variant nak = c.Nakshatra();
    std::printf("\n  tithi %s (%d), nakshatra %s pada %s, yoga %s, karana %s\n", c.TithiName().c_str(), c.Tithi(),
                c.GetNakshatraName(nak).c_str(), vb::CStr(c.NakPada()).c_str(), c.YogaName().c_str(),
                c.KaranName().c_str());
    std::printf("  lunar month %s, Moon in %s\n",
                c.GetVikramiMonth(j["VikramiMonth"].get<int>()).c_str(), c.RashiName().c_str());
    std::printf("  sunrise %s  sunset %s  day %.4f h  night %.4f h\n", vb::CStr(j["SunRiseTime"].get<double>()).c_str(),
                vb::CStr(j["SunSetTime"].get<double>()).c_str(), j["DayDuration"].get<double>(),
                j["NightDuration"].get<double>());
}

}  // namespace

int CmdChart(const Args& args)
{
    args.Allow({"input", "json"});
    if (args.Value("input").empty()) throw std::invalid_argument("chart needs --input FILE");
    nlohmann::ordered_json input = ReadJsonFile(args.Value("input"));
    CheckChartInput(input);
    RunSettings settings(input.contains("settings") ? input["settings"] : nlohmann::ordered_json());
    auto chart = ChartFromInput(input);
    chart->Calculate();
    nlohmann::ordered_json out = ChartJson(*chart);
    if (args.Flag("json")) {
        std::cout << DumpJson(out);
        return 0;
    }
    // Names come from the language's text database.
    OpenAppData();
    chart->setTextDB(TextDB(), nullptr);
    PrintReadable(out, *chart);
    return 0;
}

}  // namespace ranvel::cli
