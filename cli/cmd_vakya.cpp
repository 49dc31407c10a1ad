// "vakya": the full Vakya reckoning of one moment and latitude, every field
// of it, with the Kali day and the ayanamsha the chart receives, so that the
// reckoning can be checked on its own.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "commands.h"
#include "input_check.h"
#include "person_json.h"
#include "ranvel/chart/vakya.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel::cli {

namespace {

struct VakyaInput {
    std::int32_t Day = 0, Month = 0, Year = 0, Hour = 0, Minutes = 0, Seconds = 0;
    double LatDeg = 0, LatMin = 0;
};

// Reads the numbers of the input, gathering what is refused.
class InputReader {
public:
    explicit InputReader(const nlohmann::ordered_json& object) : object_(object) {}
    Refusals refused;

    std::optional<double> Number(const std::string& name)
    {
        if (!object_.contains(name)) {
            refused.Add("vakya input lacks the field '" + name + "'");
            return std::nullopt;
        }
        const auto& v = object_[name];
        if (!v.is_number()) {
            refused.Add("vakya field '" + name + "' must be a number, not " + Shown(v));
            return std::nullopt;
        }
        return v.get<double>();
    }

    // A whole-number argument; a fraction rounds half to even as it does
    // when passed where a 32-bit integer is taken. Then it must lie in its
    // range.
    std::int32_t Whole(const std::string& name, std::int32_t low, std::int32_t high)
    {
        auto d = Number(name);
        if (!d) return 0;
        if (std::fabs(*d) < 2147483647.0) {
            const std::int32_t n = vb::CLng(*d);
            if (n >= low && n <= high) return n;
        }
        refused.Add("vakya field '" + name + "' must be a whole number from " + std::to_string(low) + " to " +
                    std::to_string(high) + ", not " + Shown(object_[name]));
        return 0;
    }

private:
    const nlohmann::ordered_json& object_;
};

VakyaInput ReadInput(const nlohmann::ordered_json& object)
{
    static const std::vector<std::string> kFields = {"Day",     "Month",   "Year",   "Hour",
                                                     "Minutes", "Seconds", "LatDeg", "LatMin"};
    if (!object.is_object()) throw std::invalid_argument("vakya input must be a JSON object");
    InputReader read(object);
    for (auto it = object.begin(); it != object.end(); ++it)
        if (std::find(kFields.begin(), kFields.end(), it.key()) == kFields.end())
            read.refused.Add("unknown vakya field '" + it.key() + "'");
    VakyaInput in;
    in.Day = read.Whole("Day", 1, 31);
    in.Month = read.Whole("Month", 1, 12);
    in.Year = read.Whole("Year", kFirstYear, kLastYear);
    in.Hour = read.Whole("Hour", 0, 23);
    in.Minutes = read.Whole("Minutes", 0, 59);
    in.Seconds = read.Whole("Seconds", 0, 59);
    if (in.Day && in.Month && in.Year && !DateTime::IsValidDate(in.Year, in.Month, in.Day))
        read.refused.Add("vakya fields 'Day', 'Month' and 'Year' must form " + DateRule() + ", not " +
                         std::to_string(in.Day) + "/" + std::to_string(in.Month) + "/" + std::to_string(in.Year));
    // Southern latitudes count below 0; the minutes add to the degrees.
    const auto latDeg = read.Number("LatDeg");
    const auto latMin = read.Number("LatMin");
    if (latMin && (*latMin < 0 || *latMin >= 60))
        read.refused.Add("vakya field 'LatMin' must be minutes from 0 up to 60, not " + Shown(object["LatMin"]));
    else if (latDeg && latMin && std::fabs(*latDeg + *latMin / 60) > 90)
        read.refused.Add("vakya fields 'LatDeg' and 'LatMin' must give a latitude from -90 to 90 degrees, not " +
                         vb::CStr(*latDeg) + " degrees " + vb::CStr(*latMin) + " minutes");
    read.refused.ThrowIfAny();
    in.LatDeg = *latDeg;
    in.LatMin = *latMin;
    return in;
}

nlohmann::ordered_json VakyaJson(const clsVakya& v, double kaliDin, double freshAyanamsha)
{
    nlohmann::ordered_json j;
    j["VakyaSun"] = v.VakyaSun;
    j["VakyaMoon"] = v.VakyaMoon;
    j["VakyaMars"] = v.VakyaMars;
    j["VakyaMercury"] = v.VakyaMercury;
    j["VakyaJupiter"] = v.VakyaJupiter;
    j["VakyaVenus"] = v.VakyaVenus;
    j["VakyaSaturn"] = v.VakyaSaturn;
    j["VakyaKetu"] = v.VakyaKetu;
    j["VakyaRahu"] = v.VakyaRahu;
    j["VakyaLagna"] = v.VakyaLagna;
    j["VakyaHour"] = v.VakyaHour;
    j["VakyaMinutes"] = v.VakyaMinutes;
    j["VakyaSeconds"] = v.VakyaSeconds;
    j["VakyaDay"] = v.VakyaDay;
    j["VakyaMonth"] = v.VakyaMonth;
    j["VakyaYear"] = v.VakyaYear;
    j["VakyaLatDeg"] = v.VakyaLatDeg;
    j["VakyaLatMin"] = v.VakyaLatMin;
    j["VakyaLongDeg"] = v.VakyaLongDeg;
    j["VakyaLongMin"] = v.VakyaLongMin;
    j["VakyaAyanamsha"] = v.VakyaAyanamsha;
    j["KaliDin"] = kaliDin;
    j["FreshAyanamsha"] = freshAyanamsha;
    return j;
}

void PrintReadable(const clsVakya& v, double kaliDin, double freshAyanamsha)
{
    auto deg = [](double x) { return vb::Format(x, "0.000000"); };
    auto two = [](std::int32_t x) { return vb::Format(x, "00"); };
    std::cout << "Vakya reckoning of " << two(v.VakyaDay) << "/" << two(v.VakyaMonth) << "/" << v.VakyaYear << " "
              << two(v.VakyaHour) << ":" << two(v.VakyaMinutes) << ":" << two(v.VakyaSeconds) << " at latitude "
              << vb::CStr(v.VakyaLatDeg) << " deg " << vb::CStr(v.VakyaLatMin) << " min\n";
    std::cout << "  Kali day " << vb::CStr(kaliDin) << ", ayanamsha " << deg(v.VakyaAyanamsha) << "\n\n";
    const std::pair<const char*, double> rows[] = {
        {"Sun", v.VakyaSun},         {"Moon", v.VakyaMoon},   {"Mars", v.VakyaMars},
        {"Mercury", v.VakyaMercury}, {"Jupiter", v.VakyaJupiter}, {"Venus", v.VakyaVenus},
        {"Saturn", v.VakyaSaturn},   {"Rahu", v.VakyaRahu},   {"Ketu", v.VakyaKetu},
        {"Lagna", v.VakyaLagna},
    };
    for (const auto& [name, lon] : rows) {
        std::string label = name;
        label.resize(9, ' ');
        std::string value = deg(lon);
        std::cout << "  " << label << std::string(value.size() < 11 ? 11 - value.size() : 0, ' ') << value
                  << "  sign " << vb::CStr(vb::Int(lon / 30) + 1) << "\n";
    }
    std::cout << "\n  ayanamsha of a chart under the Vakya choice " << deg(freshAyanamsha) << "\n";
}

}  // namespace

int CmdVakya(const Args& args)
{
    args.Allow({"input", "json"});
    if (args.Value("input").empty()) throw std::invalid_argument("vakya needs --input FILE");
    VakyaInput in = ReadInput(ReadJsonFile(args.Value("input")));

    clsVakya vakya;
    vakya.Calculate(in.Day, in.Month, in.Year, in.Hour, in.Minutes, in.Seconds, in.LatDeg, in.LatMin, 0.0, 0.0, 0.0);
    const double kaliDin = vakya.FindKaliDin();
    // What a chart receives: an object whose fields were never filled.
    clsVakya fresh;
    const double freshAyanamsha = fresh.CalcVakyaAyanamsha(fresh.FindKaliDin());

    if (args.Flag("json")) std::cout << DumpJson(VakyaJson(vakya, kaliDin, freshAyanamsha));
    else PrintReadable(vakya, kaliDin, freshAyanamsha);
    return 0;
}

}  // namespace ranvel::cli
