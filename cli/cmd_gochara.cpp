// "gochara": the first moment from a chart's own at which a body reaches a
// longitude.
#include <cstdio>
#include <iostream>
#include <optional>

#include "chart_input.h"
#include "commands.h"
#include "input_check.h"
#include "person_json.h"
#include "ranvel/chart/gochara.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel::cli {

namespace {
// An arc tolerance of a whole circle finds any moment.
constexpr double kWholeCircleMinutes = 21600;

// The option's number, or a refusal that names it.
std::optional<double> Number(const Args& args, const std::string& name, Refusals& refused)
{
    std::string v = args.Value(name);
    if (v.empty()) {
        refused.Add("gochara needs --" + name);
        return std::nullopt;
    }
    auto n = PlainNumber(v);
    if (!n) refused.Add("--" + name + " must be a number written with '.', not '" + v + "'");
    return n;
}
}  // namespace

int CmdGochara(const Args& args)
{
    args.Allow({"input", "planet", "target", "tolerance", "json"});
    if (args.Value("input").empty()) throw std::invalid_argument("gochara needs --input FILE");
    Refusals refused;
    const auto planetGiven = Number(args, "planet", refused);
    const auto targetGiven = Number(args, "target", refused);
    const auto toleranceGiven = Number(args, "tolerance", refused);
    if (planetGiven && (*planetGiven != vb::Int(*planetGiven) || *planetGiven < 0 || *planetGiven > 12))
        refused.Add("--planet must be a whole number from 0 (Lagna) to 12, not " + args.Value("planet"));
    if (targetGiven && (*targetGiven < 0 || *targetGiven > 360))
        refused.Add("--target must be a longitude in degrees from 0 to 360, not " + args.Value("target"));
    if (toleranceGiven && (*toleranceGiven <= 0 || *toleranceGiven > kWholeCircleMinutes))
        refused.Add("--tolerance must be arc minutes more than 0 and at most 21600 (the whole circle), not " +
                    args.Value("tolerance"));
    nlohmann::ordered_json input = ReadJsonFile(args.Value("input"));
    try {
        CheckChartInput(input);
    } catch (const std::invalid_argument& e) {
        refused.Add(e.what());
    }
    refused.ThrowIfAny();
    const double planet = *planetGiven, target = *targetGiven, tolerance = *toleranceGiven;

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
