// The divisions of the chart's day: Chowgadiya, Hora, Rahu Kaal and the evil
// Muhurthas, with the element of a sign and the Hora lord of a planet.
//
// Every start and span here is reckoned on sunrise and sunset exactly as
// they are kept, HH.MM values read as plain numbers: 18.30 less 6.30 is a
// day of 12 and a part of 1.5. The minutes of a start or a span are
// therefore not true sixtieths, and that is how this chart divides its day.
#include <cstdint>

#include "ranvel/chart/planets.h"
#include "ranvel/chart/wrap.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

namespace {

// Week-day tables, Sunday first.
constexpr int kDayBase[7] = {1, 4, 7, 3, 6, 2, 5};    // day Chowgadiya and Hora
constexpr int kNightBase[7] = {6, 2, 5, 1, 4, 7, 3};  // night Chowgadiya
constexpr int kRahuKaalPart[7] = {8, 2, 7, 5, 6, 4, 3};
constexpr int kEvilMuhurtha[4][7] = {
    {14, 12, 10, 8, 6, 4, 2},
    {8, 6, 4, 2, 14, 12, 10},
    {10, 8, 6, 4, 2, 14, 12},
    {6, 4, 2, 14, 12, 10, 8},
};

// The English keys of the Chowgadiya types 1 to 7.
const char* const kChowgadiyaKeys[7] = {"Udveg", "Chara", "Laabh", "Amrit", "Kaal", "Shubh", "Rog"};

bool IsWeekDay(int d) { return d >= 1 && d <= 7; }

// A week-day table's entry; a day off the week reads 0.
int OfDay(const int (&table)[7], int d) { return IsWeekDay(d) ? table[d - 1] : 0; }

// Sums of part numbers are whole numbers of the 32-bit kind and the types
// come back as the 16-bit kind; neither is bounded beforehand, so a wild
// part number overflows as a run-time error.
std::int16_t TypeOf(double sum) { return vb::CInt(Norm7(static_cast<double>(vb::CLng(sum)))); }

}  // namespace

// ---------------------------------------------------------------------------
// Small classifiers

int clsPlanets::GetDayHora(int TheDay) { return IsWeekDay(TheDay) ? TheDay : 0; }

int clsPlanets::GetRashiElement(int RashiName)
{
    switch (RashiName) {
    case 1: case 5: case 9: return 1;
    case 2: case 6: case 10: return 2;
    case 3: case 7: case 11: return 3;
    case 4: case 8: case 12: return 4;
    default: return 0;
    }
}

// ---------------------------------------------------------------------------
// The two parts: an eighth of the day and of the night

double clsPlanets::PlainDayPart() { return (SunSetTime() - SunRiseTime()) / 8; }

double clsPlanets::PlainNightPart() { return ((SunRiseTime() + 12) - (SunSetTime() - 12)) / 8; }

// ---------------------------------------------------------------------------
// Chowgadiya

int clsPlanets::GetChogadiyaType(int ChogadiyaNum, int TheDay)
{
    if (ChogadiyaNum <= 8) return TypeOf(static_cast<double>(ChogadiyaNum) + OfDay(kDayBase, TheDay) - 1);
    const int nightBase = OfDay(kNightBase, TheDay);
    if (ChogadiyaNum == 9) return nightBase;
    // Past the sixteenth part the night's base no longer counts.
    const int base = ChogadiyaNum <= 16 ? nightBase : 0;
    return TypeOf((static_cast<double>(ChogadiyaNum) - 9) * 5 + base);
}

double clsPlanets::GetChogadiyaStart(int ChogNum)
{
    if (ChogNum >= 1 && ChogNum <= 8) {
        const double D = PlainDayPart();
        return ChogNum * D - D + SunRiseTime();
    }
    if (ChogNum >= 9 && ChogNum <= 16) {
        const double N = PlainNightPart();
        double start = (ChogNum - 8) * N - N + SunSetTime();
        if (start > 24) start -= 24;
        return start;
    }
    return 0;
}

double clsPlanets::GetChogadiyaSpan(int ChogNum)
{
    if (ChogNum >= 1 && ChogNum <= 8) return PlainDayPart();
    if (ChogNum >= 9 && ChogNum <= 16) return PlainNightPart();
    return 0;
}

std::string clsPlanets::GetChowGadiyaName(int ChogType)
{
    // A type off the table still asks, with an empty key.
    const std::string key = ChogType >= 1 && ChogType <= 7 ? kChowgadiyaKeys[ChogType - 1] : "";
    return GetHeadValue(1, key, "Chowgadiya").ToText();
}

// ---------------------------------------------------------------------------
// Rahu Kaal and the evil Muhurthas: eighths of the day by the record's
// week day

double clsPlanets::GetRahuKaalSpanToday() { return PlainDayPart(); }

double clsPlanets::GetRahuKaalStartToday()
{
    const int w = clsPerson().WeekDayOfBirth();
    const double D = PlainDayPart();
    return SunRiseTime() + OfDay(kRahuKaalPart, w) * D - D;
}

double clsPlanets::GetEvilMuhurthaStart(int EvilM)
{
    const int w = clsPerson().WeekDayOfBirth();
    const int v = EvilM >= 1 && EvilM <= 4 ? OfDay(kEvilMuhurtha[EvilM - 1], w) : 0;
    const double k = vb::RoundHalfEven(v / 2.0);
    const double D = PlainDayPart();
    return k * D - D + SunRiseTime();
}

double clsPlanets::GetMuhurthaLength() { return PlainDayPart(); }

// ---------------------------------------------------------------------------
// Hora

double clsPlanets::GetHoraStart(int HoraNum)
{
    double start = HoraNum + SunRiseTime() - 1;
    if (start > 24) start -= 24;
    return start;
}

int clsPlanets::GetHoraType(int HoraNum, int TheDay)
{
    return TypeOf(static_cast<double>(HoraNum) + OfDay(kDayBase, TheDay) - 1);
}

std::string clsPlanets::GetHoraName(int HoraNum)
{
    if (HoraNum < 1 || HoraNum > 7) return {};
    return GetHeadValue(1, vb::CStr(HoraNum), "Hora").ToText();
}

// ---------------------------------------------------------------------------
// The Hora lord of a planet: the Sun rules the first half of an odd sign and
// the second half of an even one, the Moon the rest. Exactly 15 degrees
// still belongs to the first half.

namespace {
int HoraOf(int sign, double degree)
{
    const bool firstHalf = degree <= 15;
    const bool odd = sign % 2 != 0;  // a sign number's parity, not a wrap
    return odd == firstHalf ? 1 : 7;
}
}  // namespace

double clsPlanets::KrishAmsha(int p) const
{
    const double lon = PlanetLongi(p);
    return lon - 30 * vb::Fix(lon / 30);
}

int clsPlanets::CheckHora(int p) const
{
    const int sign = PlanetRashiNum(p);
    return HoraOf(sign, PlanetLongi(p) - 30.0 * (sign - 1));
}

int clsPlanets::HoraLord(int p) { return HoraOf(Sign(p), KrishAmsha(p)); }

}  // namespace ranvel
