// "gochara": the first moment from a chart's own at which a body reaches a
// longitude.
#include <cstdio>
#include <iostream>

#include "chart_input.h"
#include "commands.h"
#include "person_json.h"
#include "ranvel/chart/gochara.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel::cli {

namespace {
double Number(const Args& args, const std::string& name)
{
    std::string v = args.Value(name);
    if (v.empty()) throw std::invalid_argument("gochara needs --" + name);
    if (!vb::IsNumeric(v)) throw std::invalid_argument("--" + name + " must be a number, not '" + v + "'");
    return vb::ParseNumber(v);
}
}  // namespace

int CmdGochara(const Args& args)
{
    args.Allow({"input", "planet", "target", "tolerance", "json"});
    if (args.Value("input").empty()) throw std::invalid_argument("gochara needs --input FILE");
    const double planet = Number(args, "planet");
    if (planet != vb::Int(planet) || planet < 0 || planet > 12)
        throw std::invalid_argument("--planet must be a whole number from 0 (Lagna) to 12");
    const double target = Number(args, "target");
    const double tolerance = Number(args, "tolerance");

    nlohmann::ordered_json input = ReadJsonFile(args.Value("input"));
    RunSettings settings(input.contains("settings") ? input["settings"] : nlohmann::ordered_json());
    auto chart = ChartFromInput(input);
    chart->Calculate();
    clsGochara search;
    auto found = search.Gochara(static_cast<int>(planet), target, tolerance, *chart);

    nlohmann::ordered_json out;
    out["person"] = PersonToJson(found->clsPerson());
    out["longitude"] = found->PlanetLongi(static_cast<int>(planet));
    if (args.Flag("json")) {
        std::cout << DumpJson(out);
        return 0;
    }
    std::printf("Point %d reaches %s within %s arc minutes on %s at %s (after %d steps)\n", static_cast<int>(planet),
                vb::CStr(target).c_str(), vb::CStr(tolerance).c_str(),
                found->clsPerson().GetBirthDate().ToDayFirstText().c_str(), found->clsPerson().GetBirthTime().c_str(),
                search.StepCount());
    std::printf("  longitude there %.8f\n", found->PlanetLongi(static_cast<int>(planet)));
    return 0;
}

}  // namespace ranvel::cli
