#include "ranvel/platform/datetime.h"

#include <cmath>
#include <cstdio>

#include "ranvel/platform/vbmath.h"

namespace ranvel {

namespace {
using namespace std::chrono;

constexpr std::int64_t kDay = 86400;
const sys_days kEpoch = sys_days(year{1899} / December / 30);

std::int64_t FloorDiv(std::int64_t a, std::int64_t b)
{
    std::int64_t q = a / b;
    if ((a % b != 0) && ((a < 0) != (b < 0))) --q;
    return q;
}

std::int64_t DaysOf(const year_month_day& ymd) { return (sys_days(ymd) - kEpoch).count(); }

// The years 100 to 9999 span 3.2E+11 seconds: an amount of more units than
// this, or a serial of more days, can't land inside them. It is an overflow,
// found before the amount is made a whole number, which it could not be.
constexpr double kWidestAmount = 1e13;

std::int64_t WholeAmount(double n)
{
    const double whole = vb::RoundHalfEven(n);
    if (!(std::fabs(whole) <= kWidestAmount)) throw vb::RuntimeError("Overflow");
    return static_cast<std::int64_t>(whole);
}

std::string Two(int v)
{
    char b[16];
    std::snprintf(b, sizeof b, "%02d", v);
    return b;
}
}  // namespace

bool DateTime::IsValidDate(int y, int m, int d)
{
    if (y < 100 || y > 9999) return false;
    return year_month_day(year{y}, month{static_cast<unsigned>(m)}, day{static_cast<unsigned>(d)}).ok() && m >= 1 &&
           d >= 1;
}

DateTime DateTime::Checked(std::int64_t seconds)
{
    // Years 100 to 9999 are the runtime's range of dates.
    static const std::int64_t lo = DaysOf(year{100} / January / 1) * kDay;
    static const std::int64_t hi = (DaysOf(year{9999} / December / 31) + 1) * kDay - 1;
    if (seconds < lo || seconds > hi) throw vb::RuntimeError("Overflow");
    return DateTime(seconds);
}

DateTime DateTime::FromParts(int y, int m, int d, int hh, int mm, int ss)
{
    if (!IsValidDate(y, m, d))
        throw vb::RuntimeError("Type mismatch: day " + std::to_string(d) + ", month " + std::to_string(m) + ", year " +
                               std::to_string(y) + " do not form a date");
    if (hh < 0 || hh > 23 || mm < 0 || mm > 59 || ss < 0 || ss > 59) throw vb::RuntimeError("Type mismatch");
    auto ymd = year{y} / month{static_cast<unsigned>(m)} / day{static_cast<unsigned>(d)};
    return DateTime(DaysOf(ymd) * kDay + hh * 3600 + mm * 60 + ss);
}

namespace {
[[noreturn]] void Bad(std::string_view text)
{
    throw vb::RuntimeError("Type mismatch: '" + std::string(text) + "' is not a valid date");
}
}  // namespace

DateTime DateTime::ParseDayFirst(std::string_view text)
{
    std::string t = vb::Trim(text);
    int parts[6] = {0, 0, 0, 0, 0, 0};
    int digitsOf[6] = {0, 0, 0, 0, 0, 0};
    int count = 0;
    std::size_t i = 0;
    bool inTime = false;
    while (i < t.size() && count < 6) {
        if (!std::isdigit(static_cast<unsigned char>(t[i]))) Bad(text);
        int v = 0, digits = 0;
        while (i < t.size() && std::isdigit(static_cast<unsigned char>(t[i]))) {
            v = v * 10 + (t[i] - '0');
            if (++digits > 4) Bad(text);
            ++i;
        }
        digitsOf[count] = digits;
        parts[count++] = v;
        if (i >= t.size()) break;
        char sep = t[i];
        if (!inTime && count < 3 && (sep == '/' || sep == '-' || sep == '.')) {
            ++i;
        } else if (!inTime && count == 3 && sep == ' ') {
            while (i < t.size() && t[i] == ' ') ++i;
            inTime = true;
        } else if (inTime && sep == ':' && count < 6) {
            ++i;
        } else {
            Bad(text);
        }
    }
    if (count < 3 || (inTime && count < 5) || i < t.size()) Bad(text);
    // A year of one or two digits falls in the window 1930 to 2029.
    if (digitsOf[2] <= 2) parts[2] += parts[2] < 30 ? 2000 : 1900;
    if (!IsValidDate(parts[2], parts[1], parts[0]) || parts[3] > 23 || parts[4] > 59 || parts[5] > 59) Bad(text);
    return FromParts(parts[2], parts[1], parts[0], parts[3], parts[4], parts[5]);
}

DateTime DateTime::FromSerial(double days)
{
    // The whole part counts days from the zero date; the fraction is the
    // clock, forward from midnight even for negative values.
    double whole = vb::Fix(days);
    if (!(std::fabs(whole) <= kWidestAmount)) throw vb::RuntimeError("Overflow");
    double frac = std::fabs(days - whole);
    std::int64_t secs = static_cast<std::int64_t>(whole) * kDay + static_cast<std::int64_t>(std::llround(frac * kDay));
    return Checked(secs);
}

double DateTime::Serial() const
{
    std::int64_t d = FloorDiv(seconds_, kDay);
    double frac = static_cast<double>(seconds_ - d * kDay) / kDay;
    return d >= 0 ? static_cast<double>(d) + frac : static_cast<double>(d) - frac;
}

year_month_day DateTime::Ymd() const { return year_month_day(kEpoch + days(FloorDiv(seconds_, kDay))); }

int DateTime::Year() const { return static_cast<int>(Ymd().year()); }
int DateTime::Month() const { return static_cast<int>(static_cast<unsigned>(Ymd().month())); }
int DateTime::Day() const { return static_cast<int>(static_cast<unsigned>(Ymd().day())); }
int DateTime::Hour() const { return static_cast<int>((seconds_ - FloorDiv(seconds_, kDay) * kDay) / 3600); }
int DateTime::Minute() const { return static_cast<int>((seconds_ - FloorDiv(seconds_, kDay) * kDay) % 3600 / 60); }
int DateTime::Second() const { return static_cast<int>((seconds_ - FloorDiv(seconds_, kDay) * kDay) % 60); }

int DateTime::WeekDay() const
{
    weekday wd(kEpoch + days(FloorDiv(seconds_, kDay)));
    return static_cast<int>(wd.c_encoding()) + 1;
}

DateTime DateTime::DateOnly() const { return DateTime(FloorDiv(seconds_, kDay) * kDay); }

DateTime DateTime::AddMonths(double n) const
{
    std::int64_t months = WholeAmount(n);
    auto ymd = Ymd();
    std::int64_t total = static_cast<int>(ymd.year()) * 12LL + (static_cast<unsigned>(ymd.month()) - 1) + months;
    std::int64_t y = FloorDiv(total, 12);
    unsigned m = static_cast<unsigned>(total - y * 12) + 1;
    if (y < 100 || y > 9999) throw vb::RuntimeError("Overflow");
    // A day past the end of the target month becomes its last day.
    auto last = year_month_day_last(year{static_cast<int>(y)}, month_day_last{month{m}});
    unsigned d = std::min(static_cast<unsigned>(ymd.day()), static_cast<unsigned>(last.day()));
    auto target = year{static_cast<int>(y)} / month{m} / day{d};
    std::int64_t clock = seconds_ - FloorDiv(seconds_, kDay) * kDay;
    return Checked(DaysOf(target) * kDay + clock);
}

DateTime DateTime::AddYears(double n) const { return AddMonths(static_cast<double>(WholeAmount(n) * 12)); }
DateTime DateTime::AddDays(double n) const { return Checked(seconds_ + WholeAmount(n) * kDay); }
DateTime DateTime::AddHours(double n) const { return Checked(seconds_ + WholeAmount(n) * 3600); }
DateTime DateTime::AddMinutes(double n) const { return Checked(seconds_ + WholeAmount(n) * 60); }
DateTime DateTime::AddSeconds(double n) const { return Checked(seconds_ + WholeAmount(n)); }

DateTime DateTime::Add(std::string_view interval, double amount) const
{
    std::string k = vb::LCase(interval);
    if (k == "yyyy") return AddYears(amount);
    if (k == "q") return AddMonths(static_cast<double>(WholeAmount(amount) * 3));
    if (k == "m") return AddMonths(amount);
    if (k == "y" || k == "d" || k == "w") return AddDays(amount);
    if (k == "ww") return AddDays(static_cast<double>(WholeAmount(amount) * 7));
    if (k == "h") return AddHours(amount);
    if (k == "n") return AddMinutes(amount);
    if (k == "s") return AddSeconds(amount);
    throw vb::RuntimeError("Invalid procedure call or argument");
}

std::int64_t DateTime::DiffDays(const DateTime& from, const DateTime& to)
{
    return FloorDiv(to.seconds_, kDay) - FloorDiv(from.seconds_, kDay);
}

std::int64_t DateTime::DiffHours(const DateTime& from, const DateTime& to)
{
    return FloorDiv(to.seconds_, 3600) - FloorDiv(from.seconds_, 3600);
}

std::int64_t DateTime::DiffMinutes(const DateTime& from, const DateTime& to)
{
    return FloorDiv(to.seconds_, 60) - FloorDiv(from.seconds_, 60);
}

std::string DateTime::ToDayFirstText() const
{
    char b[32];
    std::snprintf(b, sizeof b, "%02d/%02d/%04d", Day(), Month(), Year());
    return b;
}

std::string DateTime::ToIsoText() const
{
    char b[32];
    std::snprintf(b, sizeof b, "%04d-%02d-%02dT%s:%s:%s", Year(), Month(), Day(), Two(Hour()).c_str(),
                  Two(Minute()).c_str(), Two(Second()).c_str());
    return b;
}

}  // namespace ranvel
