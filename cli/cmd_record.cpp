// "record": shows a moment record, what its getters make of it, and how the
// search steps it through time.
#include <cstdio>
#include <iostream>

#include "commands.h"
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
    if (input.contains("person")) input = input["person"];

    clsPerson person;
    PersonFromJson(input, person);
    double step = args.Value("step").empty() ? 150 : vb::ParseNumber(args.Value("step"));
    int count = args.Value("count").empty() ? 10 : vb::CLng(vb::ParseNumber(args.Value("count")));
    if (count < 0 || count > 100000) throw std::invalid_argument("--count must lie between 0 and 100000");

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
