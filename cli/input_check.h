// What ranvel-cli refuses to read. The desktop's fields have masks, pickers
// and lists that let through only what the program can work with; a file or
// an option has none of that, so every value is checked here before any
// work starts, and a refusal names the field.
#pragma once

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "ranvel/platform/datetime.h"
#include "ranvel/platform/settings.h"
#include "commands.h"

namespace ranvel::cli {

// The years the request form's date pickers offer.
constexpr int kFirstYear = 1900;
constexpr int kLastYear = 2099;
// The longest range of days a search takes: ten years from its first day.
constexpr int kLongestRangeYears = 10;
// The farthest a clock stands from Greenwich.
constexpr double kWidestZone = 14.0;

// The refusals of one input, gathered so that one run names every field
// that is wrong. Thrown as std::invalid_argument, which ends the command
// with exit 2 before anything is written.
class Refusals {
public:
    void Add(std::string line) { lines_.push_back(std::move(line)); }
    bool Empty() const { return lines_.empty(); }
    // Throws when anything was refused, one line a field.
    void ThrowIfAny() const;

private:
    std::vector<std::string> lines_;
};

// A number written the plain way, "." before the fraction whatever the
// locale: an optional sign, digits, optionally a point and digits. Nothing
// else (no blanks, exponent or comma).
std::optional<double> PlainNumber(std::string_view text);
// The same, a whole number (no point).
std::optional<long long> PlainWhole(std::string_view text);

// A JSON value that holds a whole number, as a number (2, 2.0) or as its
// plain text ("2").
std::optional<long long> JsonWhole(const nlohmann::ordered_json& value);
// A JSON value that holds a number, as a number or as its plain text.
std::optional<double> JsonNumber(const nlohmann::ordered_json& value);
// A JSON value as it reads in a refusal: a text in quotes, anything else as
// JSON writes it.
std::string Shown(const nlohmann::ordered_json& value);

// "dd/MM/yyyy", a real date from 1900 to 2099.
std::optional<DateTime> FormDate(std::string_view text);
// "HH.MM" with hours 00 to maxHour and minutes 00 to 59.
bool FormClock(std::string_view text, int maxHour);
// "DDD:MM" with degrees up to maxDegrees and minutes 00 to 59, the whole
// value not beyond maxDegrees.
bool FormDegrees(std::string_view text, int maxDegrees);
// One of two letters, upper or lower case.
bool FormLetter(std::string_view text, char first, char second);
// "+HH.MM" or "-HH.MM", minutes under 60, at most 14.00 from Greenwich.
bool FormZone(std::string_view text);

// How a refusal words the date rule: "a real date (dd/MM/yyyy) from 1900
// to 2099".
std::string DateRule();

// A file an option names for the command to write (--pdf, --ics, ...): its
// folder must be there and writable, and the file itself not a folder.
// Checked before any work, so a refusal leaves nothing half-done.
void CheckTarget(const Args& args, const std::string& name);

// A date given to an option as the form's date boxes take it: dd/MM/yyyy,
// a real day of 1900 to 2099. A refusal names the option.
DateTime ReadDayDate(const std::string& option, const std::string& text);

// --sunrise astronomical or ecliptic: the sunrise rule for this run alone,
// over the settings in force; without the option they decide. Anything
// else is refused naming the option.
class SunriseOption {
public:
    explicit SunriseOption(const Args& args);
    ~SunriseOption();
    SunriseOption(const SunriseOption&) = delete;
    SunriseOption& operator=(const SunriseOption&) = delete;

private:
    std::unique_ptr<OverlaySettingsStore> overlay_;
    SettingsStore* previous_ = nullptr;
};

}  // namespace ranvel::cli
