#include "ranvel/chart/person.h"

#include <cstdlib>

#include "ranvel/chart/wrap.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

namespace {
std::string Num(std::int64_t n) { return vb::CStr(n); }
}  // namespace

std::string clsPerson::Name() const { return vb::Trim(name_); }
void clsPerson::Name(const Variant& v) { name_ = v.ToText(); }
void clsPerson::Sex(const Variant& v) { sex_ = vb::CInt(v.ToDouble()); }
std::string clsPerson::Day() const { return vb::Format(day_, "00"); }
void clsPerson::Day(const Variant& v) { day_ = v.ToLong(); }
std::string clsPerson::Month() const { return vb::Format(month_, "00"); }
void clsPerson::Month(const Variant& v) { month_ = v.ToLong(); }
std::string clsPerson::Year() const { return Num(year_); }
void clsPerson::Year(const Variant& v) { year_ = v.ToLong(); }
std::string clsPerson::Hour() const { return Num(hour_); }
void clsPerson::Hour(const Variant& v) { hour_ = v.ToLong(); }
std::string clsPerson::Minutes() const { return Num(minutes_); }
void clsPerson::Minutes(const Variant& v) { minutes_ = v.ToLong(); }
std::string clsPerson::seconds() const { return Num(seconds_); }
void clsPerson::seconds(const Variant& v) { seconds_ = v.ToLong(); }
std::string clsPerson::AMPM() const { return Num(ampm_); }
void clsPerson::AMPM(const Variant& v) { ampm_ = vb::CInt(v.ToDouble()); }
std::string clsPerson::Country() const { return vb::Trim(country_); }
void clsPerson::Country(const Variant& v) { country_ = v.ToText(); }
std::string clsPerson::LatDeg() const { return Num(latDeg_); }
void clsPerson::LatDeg(const Variant& v) { latDeg_ = v.ToLong(); }
std::string clsPerson::LatMT() const { return Num(latMT_); }
void clsPerson::LatMT(const Variant& v) { latMT_ = v.ToLong(); }
std::string clsPerson::TextNS() const { return vb::Trim(textNS_); }
void clsPerson::TextNS(const Variant& v) { textNS_ = v.ToText(); }
std::string clsPerson::LongDeg() const { return Num(longDeg_); }
void clsPerson::LongDeg(const Variant& v) { longDeg_ = v.ToLong(); }
std::string clsPerson::LongMT() const { return Num(longMT_); }
void clsPerson::LongMT(const Variant& v) { longMT_ = v.ToLong(); }
std::string clsPerson::TextEW() const { return vb::Trim(textEW_); }
void clsPerson::TextEW(const Variant& v) { textEW_ = v.ToText(); }
std::string clsPerson::PLOB() const { return vb::Trim(plob_); }
void clsPerson::PLOB(const Variant& v) { plob_ = v.ToText(); }
void clsPerson::GMTDIFF(const Variant& v) { gmtDiff_ = v.ToText(); }
void clsPerson::TimeCorr(const Variant& v) { timeCorr_ = v.ToText(); }
void clsPerson::TimeCorrInde(const Variant& v) { timeCorrInde_ = v.ToLong(); }

// The record's date as its text reads day-first. A real date of a
// four-digit year reads as itself; anything else goes through the text,
// which also words the fault of an impossible date.
DateTime clsPerson::DateOfRecord() const
{
    if (year_ >= 1000 && year_ <= 9999 && DateTime::IsValidDate(year_, month_, day_))
        return DateTime::FromParts(year_, month_, day_);
    return DateTime::ParseDayFirst(Day() + "/" + Month() + "/" + Year());
}

DateTime clsPerson::GetBirthDate() const { return DateOfRecord().AddHours(hour_).AddMinutes(minutes_); }

int clsPerson::WeekDayOfBirth() const { return DateOfRecord().WeekDay(); }

std::string clsPerson::GetBirthTime() const { return vb::Format(hour_, "00") + "." + vb::Format(minutes_, "00"); }

double clsPerson::GetBirthDecimalTime() const
{
    return vb::Val(vb::Format(hour_, "00") + "." + vb::Format(minutes_ / 60.0 * 100.0, "00"));
}

std::string clsPerson::GetBirthTimeFull()
{
    if (ampm_ == 0) ampm_ = hour_ >= 12 ? 2 : 1;
    return vb::Format(Hour12(hour_), "00") + ":" + vb::Format(minutes_, "00") + " " + (ampm_ == 1 ? "AM" : "PM");
}

std::string clsPerson::GetLatti() const { return Num(latDeg_) + "." + Num(latMT_) + TextNS(); }
std::string clsPerson::GetLongi() const { return Num(longDeg_) + "." + Num(longMT_) + TextEW(); }
std::string clsPerson::GetLatitudeFull() const { return Num(latDeg_) + "." + Num(latMT_) + " " + TextNS(); }
std::string clsPerson::GetLongitudeFull() const { return Num(longDeg_) + "." + Num(longMT_) + " " + TextEW(); }
double clsPerson::Latitude() const { return latDeg_ + latMT_ / 100.0; }
double clsPerson::Longitude() const { return longDeg_ + longMT_ / 100.0; }
std::string clsPerson::GetBirthPlace() const { return PLOB() + ", " + Country(); }

void clsPerson::SetBirthDate(const DateTime& date)
{
    day_ = date.Day();
    month_ = date.Month();
    year_ = date.Year();
    hour_ = date.Hour();
    minutes_ = date.Minute();
    ampm_ = hour_ >= 12 ? 2 : 1;
}

double clsPerson::AdjustHour(double hour, int day, int month, int year)
{
    // The date is read from its day-first text, as the record's own date is.
    auto dateOf = [&] {
        return DateTime::ParseDayFirst(vb::Format(day, "00") + "/" + vb::Format(month, "00") + "/" + vb::CStr(year));
    };
    if (hour > 24) {
        hour -= 24;
        DateTime d = dateOf().AddDays(1);
        day_ = d.Day();
        month_ = d.Month();
        year_ = d.Year();
    } else if (hour < 0) {
        hour += 24;
        DateTime d = dateOf().AddDays(-1);
        day_ = d.Day();
        month_ = d.Month();
        year_ = d.Year();
    }
    return hour;
}

void clsPerson::AddDays(double days)
{
    // Written back through the "dd/MM/yyyy" text of the moved date.
    std::string t = GetBirthDate().AddDays(days).ToDayFirstText();
    day_ = static_cast<std::int32_t>(vb::Val(vb::Mid(t, 1, 2)));
    month_ = static_cast<std::int32_t>(vb::Val(vb::Mid(t, 4, 2)));
    year_ = static_cast<std::int32_t>(vb::Val(vb::Right(t, 4)));
}

double clsPerson::AddMinutes(double x)
{
    bool negative = x < 0;
    double value = std::abs(x);
    double hours = 0;
    double minutes = value;
    if (value > 60) {
        std::int64_t whole = static_cast<std::int64_t>(vb::RoundHalfEven(value));
        hours = static_cast<double>(whole / 60);
        minutes = static_cast<double>(whole % 60);
    }
    if (minutes == 0) minutes = 1;
    if (negative) {
        hours = -hours;
        minutes = -minutes;
    }
    hour_ = vb::CLng(hour_ + hours);
    minutes_ = vb::CLng(minutes_ + minutes);
    if (minutes_ >= 60) {
        hour_ += 1;
        minutes_ -= 60;
    } else if (minutes_ < 0) {
        hour_ -= 1;
        minutes_ += 60;
    }
    std::int32_t days = 0;
    if (std::abs(hour_) >= 24) {
        days = hour_ / 24;  // both truncate towards zero, as the runtime's \ and Mod
        hour_ = hour_ % 24;
    }
    while (hour_ < 0) {
        days -= 1;
        hour_ += 24;
    }
    if (days != 0) AddDays(days);
    return vb::Val(Num(hour_) + "." + Num(minutes_));
}

}  // namespace ranvel
