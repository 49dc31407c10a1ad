// "chart": one Calculate of a new chart, and every number of it, so that
// anyone can check a chart against another source.
#include <cstdio>
#include <iostream>

#include "chart_input.h"
#include "commands.h"
#include "person_json.h"
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

void PrintReadable(const nlohmann::ordered_json& j)
{
    const auto& p = j["person"];
    std::printf("Chart of %s at %s, %s\n", p["Name"].get<std::string>().c_str(), p["PLOB"].get<std::string>().c_str(),
                p["Country"].get<std::string>().c_str());
    std::printf("  %02d/%02d/%d %s (local clock after the calculation), GMT %s\n", p["Day"].get<int>(),
                p["Month"].get<int>(), p["Year"].get<int>(), j["GetBirthTime"].get<std::string>().c_str(),
                p["GMTDIFF"].get<std::string>().c_str());
    std::printf("  ayanamsha %s deg, obliquity %.6f, sidereal time %.6f h\n\n",
                vb::CStr(j["LysPlnt"][13].get<double>()).c_str(), j["Obliq"].get<double>(), j["SidrealTime"].get<double>());
    std::printf("  point  longitude      sign  in sign    speed/h      retro  D9\n");
    for (int p = 0; p <= 12; ++p) {
        double lon = p == 0 ? j["BhavMid"][0].get<double>() : j["LysPlnt"][p].get<double>();
        std::printf("  %5d  %13.8f  %4d  %s  %11.6f  %-5s  %2d\n", p, lon, j["PlanetRashiNum"][p].get<int>(),
                    clsPlanets::ConvertValNoDeg(lon).c_str(), j["PlanetSpeed"][p].get<double>(),
                    j["RetroGrade"][p].get<bool>() ? "yes" : "no", j["VargaTable"][p][6].get<int>());
    }
    std::printf("\n  house  middle         begin          KP cusp\n");
    for (int i = 0; i <= 12; ++i)
        std::printf("  %5d  %13.8f  %13.8f  %13.8f\n", i, j["BhavMid"][i].get<double>(), j["BhavBegin"][i].get<double>(),
                    j["KPHouse"][i].get<double>());
    std::printf("\n  tithi %d (value %.6f)  nakshatra %d pada %s  yoga %d  karana %d (named %d)\n", j["Tithi"].get<int>(),
                j["TithiValue"].get<double>(), j["Nakshatra"].get<int>(), vb::CStr(j["NakPada"].get<double>()).c_str(),
                j["YogaNumber"].get<int>(), j["KaranNumber"].get<int>(), j["KaranName"].get<int>());
    std::printf("  lunar month %d  week day %d\n", j["VikramiMonth"].get<int>(), j["WeekDayOfBirth"].get<int>());
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
    RunSettings settings(input.contains("settings") ? input["settings"] : nlohmann::ordered_json());
    auto chart = ChartFromInput(input);
    chart->Calculate();
    nlohmann::ordered_json out = ChartJson(*chart);
    if (args.Flag("json")) std::cout << DumpJson(out);
    else PrintReadable(out);
    return 0;
}

}  // namespace ranvel::cli
