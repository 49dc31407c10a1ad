// A date and time value as the classic runtime knows it: whole seconds on
// the proleptic Gregorian calendar, years 100 to 9999, convertible to and
// from the "days with a time fraction" number (day 0 is 30 December 1899).
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace ranvel {

class DateTime {
public:
    DateTime() = default;  // 30 December 1899 00:00:00, the zero date

    // Throws vb::RuntimeError when day, month and year do not form a real
    // date (no silent shifting) or the clock is outside 0:00:00 to 23:59:59.
    static DateTime FromParts(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
    static bool IsValidDate(int year, int month, int day);
    // Day-first text "d/M/yyyy", optionally followed by a blank and
    // "h:mm[:ss]". Separators "/", "-" or "." between the date parts.
    static DateTime ParseDayFirst(std::string_view text);
    static DateTime FromSerial(double days);

    // Days since 30 December 1899 with the time as a fraction; before that
    // day the whole part is negative and the fraction still counts forward,
    // as the runtime stores it.
    double Serial() const;
    std::int64_t SecondsSinceEpoch() const { return seconds_; }

    int Year() const;
    int Month() const;
    int Day() const;
    int Hour() const;
    int Minute() const;
    int Second() const;
    // 1 Sunday to 7 Saturday.
    int WeekDay() const;
    DateTime DateOnly() const;

    // Date arithmetic. Amounts with a fraction are rounded half to even.
    DateTime AddYears(double n) const;
    DateTime AddMonths(double n) const;
    DateTime AddDays(double n) const;
    DateTime AddHours(double n) const;
    DateTime AddMinutes(double n) const;
    DateTime AddSeconds(double n) const;
    // DateAdd with the runtime's interval codes: "yyyy", "q", "m", "y", "d",
    // "w", "ww", "h", "n", "s".
    DateTime Add(std::string_view interval, double amount) const;

    // Whole units between two values, counted as unit boundaries crossed
    // (DateDiff): later minus earlier is positive.
    static std::int64_t DiffDays(const DateTime& from, const DateTime& to);
    static std::int64_t DiffHours(const DateTime& from, const DateTime& to);
    static std::int64_t DiffMinutes(const DateTime& from, const DateTime& to);

    // "dd/MM/yyyy"
    std::string ToDayFirstText() const;
    // "yyyy-MM-ddTHH:mm:ss"
    std::string ToIsoText() const;

    auto operator<=>(const DateTime&) const = default;

private:
    explicit DateTime(std::int64_t seconds) : seconds_(seconds) {}
    static DateTime Checked(std::int64_t seconds);
    std::chrono::year_month_day Ymd() const;

    std::int64_t seconds_ = 0;  // since 1899-12-30 00:00:00
};

}  // namespace ranvel
