#include "input_check.h"

#include <unistd.h>

#include <charconv>
#include <cstdio>
#include <cmath>
#include <filesystem>

namespace ranvel::cli {

namespace {
bool Digit(char c) { return c >= '0' && c <= '9'; }

bool AllDigits(std::string_view s)
{
    if (s.empty()) return false;
    for (char c : s)
        if (!Digit(c)) return false;
    return true;
}

int Number(std::string_view digits)
{
    int v = 0;
    for (char c : digits) v = v * 10 + (c - '0');
    return v;
}
}  // namespace

void Refusals::ThrowIfAny() const
{
    if (lines_.empty()) return;
    std::string text;
    for (const std::string& line : lines_) text += (text.empty() ? "" : "\n") + line;
    throw std::invalid_argument(text);
}

std::optional<double> PlainNumber(std::string_view text)
{
    std::string_view body = text;
    if (!body.empty() && (body[0] == '+' || body[0] == '-')) body.remove_prefix(1);
    const std::size_t point = body.find('.');
    const std::string_view whole = body.substr(0, point);
    const std::string_view fraction = point == std::string_view::npos ? std::string_view() : body.substr(point + 1);
    if (whole.empty() && fraction.empty()) return std::nullopt;
    if ((!whole.empty() && !AllDigits(whole)) || (point != std::string_view::npos && !AllDigits(fraction)))
        return std::nullopt;
    // from_chars reads the C locale's way, never the machine's.
    double v = 0;
    std::string_view unsigned_ = text[0] == '+' ? text.substr(1) : text;
    auto [end, ec] = std::from_chars(unsigned_.data(), unsigned_.data() + unsigned_.size(), v);
    if (ec != std::errc() || end != unsigned_.data() + unsigned_.size()) return std::nullopt;
    return v;
}

std::optional<long long> PlainWhole(std::string_view text)
{
    if (text.find('.') != std::string_view::npos) return std::nullopt;
    std::string_view body = text;
    if (!body.empty() && body[0] == '+') body.remove_prefix(1);
    if (body.empty() || body.size() > 18) return std::nullopt;
    long long v = 0;
    auto [end, ec] = std::from_chars(body.data(), body.data() + body.size(), v);
    if (ec != std::errc() || end != body.data() + body.size()) return std::nullopt;
    return v;
}

std::optional<long long> JsonWhole(const nlohmann::ordered_json& value)
{
    if (value.is_number_integer()) return value.get<long long>();
    if (value.is_number_float()) {
        const double d = value.get<double>();
        if (d == std::floor(d) && std::fabs(d) < 1e15) return static_cast<long long>(d);
        return std::nullopt;
    }
    if (value.is_string()) return PlainWhole(value.get<std::string>());
    return std::nullopt;
}

std::optional<double> JsonNumber(const nlohmann::ordered_json& value)
{
    if (value.is_number()) return value.get<double>();
    if (value.is_string()) return PlainNumber(value.get<std::string>());
    return std::nullopt;
}

std::string Shown(const nlohmann::ordered_json& value)
{
    if (value.is_string()) return "'" + value.get<std::string>() + "'";
    // A list or an object is named, not written out: it may be large.
    if (value.is_array()) return "a list";
    if (value.is_object()) return "an object";
    return value.dump();
}

std::optional<DateTime> FormDate(std::string_view text)
{
    if (text.size() != 10 || text[2] != '/' || text[5] != '/') return std::nullopt;
    const std::string_view dd = text.substr(0, 2), mm = text.substr(3, 2), yyyy = text.substr(6, 4);
    if (!AllDigits(dd) || !AllDigits(mm) || !AllDigits(yyyy)) return std::nullopt;
    const int day = Number(dd), month = Number(mm), year = Number(yyyy);
    if (year < kFirstYear || year > kLastYear || !DateTime::IsValidDate(year, month, day)) return std::nullopt;
    return DateTime::FromParts(year, month, day);
}

bool FormClock(std::string_view text, int maxHour)
{
    if (text.size() != 5 || text[2] != '.') return false;
    const std::string_view hh = text.substr(0, 2), mm = text.substr(3, 2);
    return AllDigits(hh) && AllDigits(mm) && Number(hh) <= maxHour && Number(mm) <= 59;
}

bool FormDegrees(std::string_view text, int maxDegrees)
{
    if (text.size() != 6 || text[3] != ':') return false;
    const std::string_view ddd = text.substr(0, 3), mm = text.substr(4, 2);
    if (!AllDigits(ddd) || !AllDigits(mm)) return false;
    const int degrees = Number(ddd), minutes = Number(mm);
    return minutes <= 59 && (degrees < maxDegrees || (degrees == maxDegrees && minutes == 0));
}

bool FormLetter(std::string_view text, char first, char second)
{
    if (text.size() != 1) return false;
    const char c = static_cast<char>(text[0] >= 'a' && text[0] <= 'z' ? text[0] - 'a' + 'A' : text[0]);
    return c == first || c == second;
}

bool FormZone(std::string_view text)
{
    if (text.size() != 6 || (text[0] != '+' && text[0] != '-') || text[3] != '.') return false;
    const std::string_view hh = text.substr(1, 2), mm = text.substr(4, 2);
    if (!AllDigits(hh) || !AllDigits(mm)) return false;
    const int hours = Number(hh), minutes = Number(mm);
    return minutes <= 59 && hours * 60 + minutes <= static_cast<int>(kWidestZone) * 60;
}

std::string DateRule()
{
    return "a real date (dd/MM/yyyy) from " + std::to_string(kFirstYear) + " to " + std::to_string(kLastYear);
}

// A target the command will write: its folder must be there and writable,
// and the target itself must not be a folder. Checked before the search.
void CheckTarget(const Args& args, const std::string& name)
{
    if (!args.Has(name)) return;
    const std::string path = args.Value(name);
    if (path.empty()) throw std::invalid_argument("--" + name + " needs a file name");
    std::error_code ec;
    const std::filesystem::path target(path);
    const std::filesystem::path folder = target.has_parent_path() ? target.parent_path() : std::filesystem::path(".");
    if (std::filesystem::is_directory(target, ec))
        throw std::invalid_argument("--" + name + ": cannot write '" + path + "': it is a folder");
    if (!std::filesystem::is_directory(folder, ec))
        throw std::invalid_argument("--" + name + ": cannot write '" + path + "': the folder '" + folder.string() +
                                    "' does not exist");
    if (::access(folder.c_str(), W_OK) != 0)
        throw std::invalid_argument("--" + name + ": cannot write '" + path + "': the folder '" + folder.string() +
                                    "' is not writable");
}

DateTime ReadDayDate(const std::string& option, const std::string& text)
{
    int d = 0, m = 0, y = 0;
    char tail = 0;
    const bool shaped = text.size() == 10 && text[2] == '/' && text[5] == '/' &&
                        std::sscanf(text.c_str(), "%2d/%2d/%4d%c", &d, &m, &y, &tail) == 3;
    if (!shaped || y < kFirstYear || y > kLastYear || !DateTime::IsValidDate(y, m, d))
        throw std::invalid_argument(option + " must be a real date dd/MM/yyyy from " + std::to_string(kFirstYear) +
                                    " to " + std::to_string(kLastYear) + ", not '" + text + "'");
    return DateTime::FromParts(y, m, d);
}

SunriseOption::SunriseOption(const Args& args)
{
    if (!args.Has("sunrise")) return;
    const std::string rule = args.Value("sunrise");
    if (rule != "astronomical" && rule != "ecliptic")
        throw std::invalid_argument("--sunrise must be astronomical or ecliptic, not '" + rule + "'");
    previous_ = &Settings();
    overlay_ = std::make_unique<OverlaySettingsStore>(*previous_);
    overlay_->Set("Settings", "AstroSunrise", rule == "astronomical" ? "1" : "0");
    SetSettingsStore(overlay_.get());
}

SunriseOption::~SunriseOption()
{
    if (overlay_) SetSettingsStore(previous_);
}

}  // namespace ranvel::cli
