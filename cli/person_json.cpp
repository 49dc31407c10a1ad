#include "person_json.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cmath>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <stdexcept>

#include "input_check.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel::cli {

namespace {

using Setter = std::function<void(clsPerson&, const Variant&)>;

const std::map<std::string, Setter>& Setters()
{
    static const std::map<std::string, Setter> setters = {
        {"Name", [](clsPerson& p, const Variant& v) { p.Name(v); }},
        {"Sex", [](clsPerson& p, const Variant& v) { p.Sex(v); }},
        {"Day", [](clsPerson& p, const Variant& v) { p.Day(v); }},
        {"Month", [](clsPerson& p, const Variant& v) { p.Month(v); }},
        {"Year", [](clsPerson& p, const Variant& v) { p.Year(v); }},
        {"Hour", [](clsPerson& p, const Variant& v) { p.Hour(v); }},
        {"Minutes", [](clsPerson& p, const Variant& v) { p.Minutes(v); }},
        {"seconds", [](clsPerson& p, const Variant& v) { p.seconds(v); }},
        {"AMPM", [](clsPerson& p, const Variant& v) { p.AMPM(v); }},
        {"Country", [](clsPerson& p, const Variant& v) { p.Country(v); }},
        {"LatDeg", [](clsPerson& p, const Variant& v) { p.LatDeg(v); }},
        {"LatMT", [](clsPerson& p, const Variant& v) { p.LatMT(v); }},
        {"TextNS", [](clsPerson& p, const Variant& v) { p.TextNS(v); }},
        {"LongDeg", [](clsPerson& p, const Variant& v) { p.LongDeg(v); }},
        {"LongMT", [](clsPerson& p, const Variant& v) { p.LongMT(v); }},
        {"TextEW", [](clsPerson& p, const Variant& v) { p.TextEW(v); }},
        {"PLOB", [](clsPerson& p, const Variant& v) { p.PLOB(v); }},
        {"GMTDIFF", [](clsPerson& p, const Variant& v) { p.GMTDIFF(v); }},
        {"TimeCorr", [](clsPerson& p, const Variant& v) { p.TimeCorr(v); }},
        {"TimeCorrInde", [](clsPerson& p, const Variant& v) { p.TimeCorrInde(v); }},
    };
    return setters;
}

Variant FromJson(const nlohmann::ordered_json& value)
{
    if (value.is_number_integer()) return Variant(value.get<long long>());
    if (value.is_number()) return Variant(value.get<double>());
    return Variant(value.get<std::string>());
}

// The whole-number fields and their ranges; the date's three are checked
// together once every field is in.
struct WholeRange {
    const char* key;
    long long low, high;
    const char* meaning;
};
const WholeRange kWholes[] = {
    {"Sex", 1, 2, " (1 male, 2 female)"},
    {"AMPM", 1, 2, " (1 AM, 2 PM)"},
    {"Day", 1, 31, ""},
    {"Month", 1, 12, ""},
    {"Year", kFirstYear, kLastYear, ""},
    {"Hour", 0, 23, " (a 24-hour clock)"},
    {"Minutes", 0, 59, ""},
    {"seconds", 0, 59, ""},
    {"LatDeg", 0, 90, " (the hemisphere is TextNS)"},
    {"LatMT", 0, 59, ""},
    {"LongDeg", 0, 180, " (the side of Greenwich is TextEW)"},
    {"LongMT", 0, 59, ""},
    {"TimeCorrInde", INT32_MIN, INT32_MAX, ""},
};

// A correction of the clock (war or summer time) in decimal hours, as the
// record reads it.
constexpr double kWidestCorrection = 12.0;

// Why the value of a field is refused; empty when it is taken.
std::string Refusal(const std::string& key, const nlohmann::ordered_json& v)
{
    const std::string field = "person field '" + key + "'";
    for (const WholeRange& w : kWholes) {
        if (key != w.key) continue;
        auto n = JsonWhole(v);
        if (n && *n >= w.low && *n <= w.high) return {};
        if (w.high == w.low + 1)
            return field + " must be " + std::to_string(w.low) + " or " + std::to_string(w.high) + w.meaning +
                   ", not " + Shown(v);
        return field + " must be a whole number from " + std::to_string(w.low) + " to " + std::to_string(w.high) +
               w.meaning + ", not " + Shown(v);
    }
    if (key == "Name" || key == "Country" || key == "PLOB")
        return v.is_string() ? std::string() : field + " must be a text, not " + Shown(v);
    if (key == "TextNS")
        return v.is_string() && FormLetter(v.get<std::string>(), 'N', 'S') ? std::string()
                                                                           : field + " must be N or S, not " + Shown(v);
    if (key == "TextEW")
        return v.is_string() && FormLetter(v.get<std::string>(), 'E', 'W') ? std::string()
                                                                           : field + " must be E or W, not " + Shown(v);
    if (key == "GMTDIFF") {
        auto d = JsonNumber(v);
        if (d && std::fabs(*d) <= kWidestZone) return {};
        return field + " must be the time zone in hours, a number from -14 to 14 written with '.', not " + Shown(v);
    }
    if (key == "TimeCorr") {
        auto d = JsonNumber(v);
        if (d && std::fabs(*d) <= kWidestCorrection) return {};
        return field + " must be a correction in hours, a number from -12 to 12 written with '.', not " + Shown(v);
    }
    return {};
}

}  // namespace

void PersonFromJson(const nlohmann::ordered_json& object, clsPerson& person)
{
    if (!object.is_object()) throw std::invalid_argument("'person' must be a JSON object");
    Refusals refused;
    bool dateRefused = false;
    for (auto it = object.begin(); it != object.end(); ++it) {
        auto s = Setters().find(it.key());
        if (s == Setters().end()) {
            refused.Add("unknown person field '" + it.key() + "'");
            continue;
        }
        const std::string why = Refusal(it.key(), it.value());
        if (!why.empty()) {
            refused.Add(why);
            dateRefused = dateRefused || it.key() == "Day" || it.key() == "Month" || it.key() == "Year";
            continue;
        }
        s->second(person, FromJson(it.value()));
    }
    // The place stops at the pole and at the far side of Greenwich.
    if (person.LatDegN() == 90 && person.LatMTN() > 0)
        refused.Add("person fields 'LatDeg' and 'LatMT' go beyond 90 degrees: " + person.LatDeg() + ":" +
                    person.LatMT());
    if (person.LongDegN() == 180 && person.LongMTN() > 0)
        refused.Add("person fields 'LongDeg' and 'LongMT' go beyond 180 degrees: " + person.LongDeg() + ":" +
                    person.LongMT());
    if (!dateRefused && (person.YearN() < kFirstYear || person.YearN() > kLastYear ||
                         !DateTime::IsValidDate(person.YearN(), person.MonthN(), person.DayN())))
        refused.Add("person fields 'Day', 'Month' and 'Year' must form " + DateRule() + ", not " + person.Day() + "/" +
                    person.Month() + "/" + person.Year() +
                    (object.contains("Day") && object.contains("Month") && object.contains("Year")
                         ? std::string()
                         : " (a field not given is 0)"));
    refused.ThrowIfAny();
}

nlohmann::ordered_json PersonToJson(const clsPerson& p)
{
    nlohmann::ordered_json j = nlohmann::ordered_json::object();
    j["Name"] = p.Name();
    j["Sex"] = p.Sex();
    j["Day"] = p.DayN();
    j["Month"] = p.MonthN();
    j["Year"] = p.YearN();
    j["Hour"] = p.HourN();
    j["Minutes"] = p.MinutesN();
    j["seconds"] = p.secondsN();
    j["AMPM"] = p.AMPMN();
    j["Country"] = p.Country();
    j["LatDeg"] = p.LatDegN();
    j["LatMT"] = p.LatMTN();
    j["TextNS"] = p.TextNS();
    j["LongDeg"] = p.LongDegN();
    j["LongMT"] = p.LongMTN();
    j["TextEW"] = p.TextEW();
    j["PLOB"] = p.PLOB();
    j["GMTDIFF"] = p.GMTDIFF();
    j["TimeCorr"] = p.TimeCorr();
    j["TimeCorrInde"] = p.TimeCorrInde();
    return j;
}

nlohmann::ordered_json ReadJsonFile(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::invalid_argument("cannot read '" + path + "'");
    std::stringstream buf;
    buf << in.rdbuf();
    // No input of the program nests deeper than a few levels; a deeper one
    // is refused before anything walks it.
    constexpr int kDeepest = 32;
    auto shallow = [&](int depth, nlohmann::ordered_json::parse_event_t, nlohmann::ordered_json&) {
        if (depth > kDeepest)
            throw std::invalid_argument("'" + path + "' nests its values more than " + std::to_string(kDeepest) +
                                        " levels deep");
        return true;
    };
    try {
        return nlohmann::ordered_json::parse(buf.str(), shallow);
    } catch (const nlohmann::ordered_json::exception& e) {
        throw std::invalid_argument("'" + path + "' is not valid JSON: " + e.what());
    }
}

namespace {
void Dump(const nlohmann::ordered_json& v, std::string& out, int depth)
{
    auto pad = [&](int d) { out.append(static_cast<std::size_t>(d) * 2, ' '); };
    switch (v.type()) {
    case nlohmann::ordered_json::value_t::object: {
        if (v.empty()) {
            out += "{}";
            break;
        }
        out += "{\n";
        bool first = true;
        for (auto it = v.begin(); it != v.end(); ++it) {
            if (!first) out += ",\n";
            first = false;
            pad(depth + 1);
            out += nlohmann::ordered_json(it.key()).dump() + ": ";
            Dump(it.value(), out, depth + 1);
        }
        out += "\n";
        pad(depth);
        out += "}";
        break;
    }
    case nlohmann::ordered_json::value_t::array: {
        // Arrays of plain values stay on one line; they are the tables.
        bool flat = std::none_of(v.begin(), v.end(), [](const auto& e) { return e.is_structured(); });
        if (v.empty()) {
            out += "[]";
            break;
        }
        out += flat ? "[" : "[\n";
        bool first = true;
        for (const auto& e : v) {
            if (!first) out += flat ? ", " : ",\n";
            first = false;
            if (!flat) pad(depth + 1);
            Dump(e, out, depth + 1);
        }
        if (!flat) {
            out += "\n";
            pad(depth);
        }
        out += "]";
        break;
    }
    case nlohmann::ordered_json::value_t::number_float: {
        double d = v.get<double>();
        if (!std::isfinite(d)) {
            out += "null";
            break;
        }
        std::string t = vb::ShortestText(d);
        // Keep it a JSON number that reads back as a double.
        if (t.find_first_of(".eE") == std::string::npos) t += ".0";
        out += t;
        break;
    }
    default:
        out += v.dump();
    }
}
}  // namespace

std::string DumpJson(const nlohmann::ordered_json& value)
{
    std::string out;
    Dump(value, out, 0);
    out += "\n";
    return out;
}

nlohmann::ordered_json MessagesJson(const HeadlessMessageSink& sink)
{
    nlohmann::ordered_json out = nlohmann::ordered_json::array();
    for (const Message& m : sink.Messages()) out.push_back(m.text);
    return out;
}

nlohmann::ordered_json ZoneNotesJson(const std::vector<ZoneNote>& notes)
{
    nlohmann::ordered_json out = nlohmann::ordered_json::array();
    for (const ZoneNote& n : notes) out.push_back({{"Field", n.Field}, {"Text", n.Text}, {"Offset", n.Offset}});
    return out;
}

std::string ZoneNotesText(const std::vector<ZoneNote>& notes)
{
    std::string out;
    for (const ZoneNote& n : notes) out += "Note on the " + n.Field + "'s offset: " + n.Text + "\n";
    return out;
}

}  // namespace ranvel::cli
