#include "ranvel/chart/planets.h"

#include "ranvel/chart/wrap.h"
#include "ranvel/data/textlookup.h"
#include "ranvel/platform/settings.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

clsPlanets::clsPlanets()
{
    // Read once, when the chart is made; the property then lives on the
    // object.
    rahuKetuMode_ = Variant(GetSetting("Init", "RahuKetuMode", "1")).ToLong();
}

ranvel::clsPerson& clsPlanets::clsPerson()
{
    if (!person_) person_ = std::make_shared<ranvel::clsPerson>();
    return *person_;
}

void clsPlanets::clsPerson(std::shared_ptr<ranvel::clsPerson> person) { person_ = std::move(person); }

std::shared_ptr<ranvel::clsPerson> clsPlanets::PersonRef()
{
    clsPerson();
    return person_;
}

void clsPlanets::SetBirthDate(const DateTime& date) { clsPerson().SetBirthDate(date); }

void clsPlanets::setTextDB(std::shared_ptr<Database> textDB, std::shared_ptr<Database> recosDB)
{
    textDB_ = std::move(textDB);
    recosDB_ = std::move(recosDB);
    if (recosDB_) clsPerson().SetDB(recosDB_);
}

Variant clsPlanets::GetTextBetween(std::string_view table, const Variant& head, std::string_view category)
{
    return ranvel::GetTextBetween(textDB_.get(), table, head, category);
}

Variant clsPlanets::GetHeadValue(int mode, const Variant& head, std::string_view category)
{
    return ranvel::GetHeadValue(textDB_.get(), mode, head, category);
}

Variant clsPlanets::GetConjText(const Variant& head) { return ranvel::GetConjText(textDB_.get(), head); }

std::string clsPlanets::GetGenText(const Variant& head) { return ranvel::GetGenText(textDB_.get(), head); }

double clsPlanets::DegToDec(int d, int m, int s)
{
    return d + (100.0 / 60.0 * m) / 100.0 + (100.0 / 60.0 / 60.0 * s) / 100.0;
}

namespace {
// The fraction of a number as read from its text: the characters from the
// point on, 0 when there is no point.
double TextFraction(double x)
{
    std::string t = vb::CStr(x);
    std::size_t p = t.find('.');
    return p == std::string::npos ? 0.0 : vb::Val(t.substr(p));
}
}  // namespace

std::string clsPlanets::DecToDeg(double x)
{
    double d = vb::Int(x);
    double mins = TextFraction(x) * 60.0;
    double m = vb::Int(mins);
    double s = vb::RoundHalfEven(TextFraction(mins) * 60.0);
    return vb::CStr(d) + ":" + vb::CStr(m) + ":" + vb::CStr(s);
}

double clsPlanets::MinToDec(double x) { return vb::Fix(x) + FractionOf(x) / 0.6; }

const std::string& clsPlanets::RashiNameOf(int sign)
{
    // Entries 0 and 13 of the table hold no name.
    static const std::string none;
    CheckIndex(sign, 0, 13);
    if (sign == 0 || sign == 13) return none;
    if (!rashiNamesFilled_) {
        for (int i = 0; i < 12; ++i) rashiNames_[static_cast<std::size_t>(i)] = GetTextBetween("CNVT", i + 1, "Rashi").ToText();
        rashiNamesFilled_ = true;
    }
    return rashiNames_[static_cast<std::size_t>(sign - 1)];
}

void clsPlanets::CheckIndex(int i, int lo, int hi)
{
    if (i < lo || i > hi) throw vb::RuntimeError("Subscript out of range");
}

std::string clsPlanets::ConvertToDegNoVal(double lon)
{
    double sign = vb::Fix(lon / 30.0) + 1;
    if (sign < 0 || sign > 13) throw vb::RuntimeError("Subscript out of range");
    return RashiNameOf(static_cast<int>(sign));
}

namespace {
struct DegMinSec {
    double d, m, s;
};
DegMinSec WithinSign(double x)
{
    while (x > 30) x -= 30;
    double d = vb::Int(x);
    double mf = 60.0 * (x - d);
    double m = vb::Int(mf);
    double s = vb::RoundHalfEven(60.0 * (mf - m));
    return {d, m, s};
}
}  // namespace

std::string clsPlanets::ConvertValNoDeg(double x)
{
    DegMinSec v = WithinSign(x);
    return TwoDigits(v.d) + ":" + TwoDigits(v.m) + ":" + TwoDigits(v.s);
}

std::string clsPlanets::ConvertValNoDegNoSec(double x)
{
    DegMinSec v = WithinSign(x);
    return vb::CStr(v.d) + GetSymbolText(1, textDB_.get()) + vb::CStr(v.m);
}

DateTime clsPlanets::DateAddEx(std::string_view interval, double amount, const DateTime& date)
{
    return date.Add(interval, amount);
}

DateTime clsPlanets::AddDecValToDate(const DateTime& date, int& unit, double& value)
{
    DateTime d = date;
    struct Step {
        int code;
        const char* interval;
        double next;  // how many of the next unit one of this unit holds
        int nextCode;
    };
    static const Step steps[] = {{1, "yyyy", 365.2564, 3}, {3, "d", 24, 4}, {4, "h", 60, 5}, {5, "n", 60, 6}, {6, "s", 0, 6}};
    for (const Step& st : steps) {
        if (unit != st.code) continue;
        d = d.Add(st.interval, vb::Fix(value));
        if (st.code == 6) break;
        value = FractionOf(value) * st.next;
        unit = st.nextCode;
    }
    return d;
}

std::string clsPlanets::ConvertDateToText(const DateTime& date)
{
    return vb::CStr(date.Day()) + " " + GetMonthNameByNum(date.Month()) + " " + vb::CStr(date.Year());
}

long clsPlanets::ConvertDateToNum(const DateTime& date)
{
    return date.Year() * 10000L + date.Month() * 100L + date.Day();
}

std::string clsPlanets::GetMonthNameByNum(int n)
{
    static const char* const names[12] = {"January", "February", "March",     "April",   "May",      "June",
                                          "July",    "August",   "September", "October", "November", "December"};
    if (n < 1 || n > 12) throw vb::RuntimeError("Subscript out of range");
    return GetTextBetween("CNVT", names[n - 1], "Months").ToText();
}

std::string clsPlanets::GetDayName(int& n)
{
    n -= 1;
    return GetTextBetween("CNVT", n, "DAY").ToText();
}

}  // namespace ranvel
