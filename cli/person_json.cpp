#include "person_json.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <stdexcept>

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

Variant FromJson(const std::string& name, const nlohmann::ordered_json& value)
{
    if (value.is_number_integer()) return Variant(value.get<long long>());
    if (value.is_number()) return Variant(value.get<double>());
    if (value.is_string()) return Variant(value.get<std::string>());
    if (value.is_boolean()) return Variant(value.get<bool>());
    throw std::invalid_argument("person field '" + name + "' must be a number or a text");
}

}  // namespace

void PersonFromJson(const nlohmann::ordered_json& object, clsPerson& person)
{
    if (!object.is_object()) throw std::invalid_argument("'person' must be a JSON object");
    for (auto it = object.begin(); it != object.end(); ++it) {
        auto s = Setters().find(it.key());
        if (s == Setters().end()) throw std::invalid_argument("unknown person field '" + it.key() + "'");
        try {
            s->second(person, FromJson(it.key(), it.value()));
        } catch (const vb::RuntimeError& e) {
            throw std::invalid_argument("person field '" + it.key() + "': " + e.what());
        }
    }
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
    try {
        return nlohmann::ordered_json::parse(buf.str());
    } catch (const nlohmann::ordered_json::parse_error& e) {
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

}  // namespace ranvel::cli
