// "record": shows a moment record, what its getters make of it, and how the
// search steps it through time.
#include <cmath>
#include <cstdio>
#include <iostream>

#include "commands.h"
#include "input_check.h"
#include "person_json.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel::cli {

namespace {

const char* const kSample = R"({
  "Name": "Sample", "Sex": 1, "Day": 15, "Month": 3, "Year": 2024,
  "Hour": 10, "Minutes": 30, "seconds": 0, "AMPM": 1,
  "Country": "India", "PLOB": "Delhi",
  "LatDeg": 28, "LatMT": 38, "TextNS": "N", "LongDeg": 77, "LongMT": 12, "TextEW": "E",
  "GMTDIFF": "5.5", "TimeCorr": "0"
})";

// Ten years of minutes, the longest walk through time the record takes,
// as long as the longest search.
constexpr double kLongestWalk = 10 * 365.25 * 24 * 60;
constexpr long long kMostSteps = 100000;

const char* const kDays[] = {"", "Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};

nlohmann::ordered_json Derived(clsPerson& p)
{
    nlohmann::ordered_json j;
    j["GetBirthDate"] = p.GetBirthDate().ToIsoText();
    j["WeekDayOfBirth"] = p.WeekDayOfBirth();
    j["GetBirthTime"] = p.GetBirthTime();
    j["GetBirthDecimalTime"] = p.GetBirthDecimalTime();
    j["GetBirthTimeFull"] = p.GetBirthTimeFull();
    j["GetLatti"] = p.GetLatti();
    j["GetLongi"] = p.GetLongi();
    j["Latitude"] = p.Latitude();
    j["Longitude"] = p.Longitude();
    j["GetBirthPlace"] = p.GetBirthPlace();
    return j;
}

}  // namespace

int CmdRecord(const Args& args)
{
    args.Allow({"input", "json", "step", "count"});
    nlohmann::ordered_json input = args.Value("input").empty() ? nlohmann::ordered_json::parse(kSample) : ReadJsonFile(args.Value("input"));
    clsPerson person;
    // The search's own step and a few of them, unless told.
    double step = 150;
    int count = 10;
    Refusals refused;
    if (args.Has("step")) {
        auto n = PlainNumber(args.Value("step"));
        if (n && std::fabs(*n) <= kLongestWalk) step = *n;
        else refused.Add("--step must be minutes written with '.', from -" + vb::CStr(kLongestWalk) + " to " +
                         vb::CStr(kLongestWalk) + " (ten years), not '" + args.Value("step") + "'");
    }
    if (args.Has("count")) {
        auto n = PlainWhole(args.Value("count"));
        if (n && *n >= 0 && *n <= kMostSteps) count = static_cast<int>(*n);
        else refused.Add("--count must be a whole number from 0 to " + std::to_string(kMostSteps) + ", not '" +
                         args.Value("count") + "'");
    }
    if (refused.Empty() && std::fabs(step) * count > kLongestWalk)
        refused.Add("--step " + vb::CStr(step) + " times --count " + std::to_string(count) +
                    " walks beyond ten years (" + vb::CStr(kLongestWalk) + " minutes); take fewer or shorter steps");
    // The record is checked with the options, before anything is shown.
    try {
        if (input.contains("person")) input = input["person"];
        PersonFromJson(input, person);
    } catch (const std::invalid_argument& e) {
        refused.Add(e.what());
    }
    refused.ThrowIfAny();

    nlohmann::ordered_json out;
    std::string dateText = person.Day() + "/" + person.Month() + "/" + person.Year();
    out["person"] = PersonToJson(person);
    out["derived"] = Derived(person);
    nlohmann::ordered_json steps = nlohmann::ordered_json::array();
    for (int i = 0; i < count; ++i) {
        double marker = person.AddMinutes(step);
        steps.push_back({{"marker", marker}, {"date", person.GetBirthDate().ToIsoText()}, {"time", person.GetBirthTime()}});
    }
    out["steps"] = steps;

    if (args.Flag("json")) {
        std::cout << DumpJson(out);
        return 0;
    }
    const auto& d = out["derived"];
    std::printf("Moment record of %s\n", person.Name().c_str());
    std::printf("  date    %s, %s\n", dateText.c_str(), kDays[d["WeekDayOfBirth"].get<int>()]);
    std::printf("  time    %s  (%s, decimal %s)\n", d["GetBirthTime"].get<std::string>().c_str(),
                d["GetBirthTimeFull"].get<std::string>().c_str(), vb::CStr(d["GetBirthDecimalTime"].get<double>()).c_str());
    std::printf("  place   %s  %s %s  GMT %s\n", d["GetBirthPlace"].get<std::string>().c_str(),
                d["GetLatti"].get<std::string>().c_str(), d["GetLongi"].get<std::string>().c_str(),
                out["person"]["GMTDIFF"].get<std::string>().c_str());
    if (count > 0) {
        std::printf("Stepping by %s minutes, as the search steps:\n", vb::CStr(step).c_str());
        for (const auto& s : steps)
            std::printf("  %s  %s\n", s["date"].get<std::string>().substr(0, 10).c_str(), s["time"].get<std::string>().c_str());
    }
    return 0;
}

}  // namespace ranvel::cli
