// The five limbs of the day (tithi, week day, nakshatra, yoga, karana), the
// lunar month and their small tables. Names are never held here: they come
// from the text store under the number as head.
#include <cstdint>

#include "ranvel/chart/planets.h"
#include "ranvel/chart/wrap.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

namespace {

constexpr double kNakSpan = 360.0 / 27.0;  // one nakshatra of arc
constexpr double kPadaSpan = 10.0 / 3.0;   // a quarter of it

// A whole number computed in floating point, stored as the integer fields
// are ("Overflow" outside their range).
int Whole(double x) { return static_cast<int>(vb::CLng(x)); }

// Writes a new number into an argument given by reference, keeping it a text
// when it came as one.
void Store(Variant& v, double value)
{
    v = v.IsText() ? Variant(vb::CStr(value)) : Variant(value);
}

// A value with a fraction is raised to the next whole number, in place.
void RaiseFraction(Variant& v)
{
    double d = v.ToDouble();
    if (d != vb::Int(d)) Store(v, vb::Int(d) + 1);
}

// Planet numbers of the lords of the week days, Sunday first.
constexpr int kWeekDayLords[7] = {1, 7, 4, 2, 5, 3, 6};

}  // namespace

// ---------------------------------------------------------------------------
// The Moon numbers, last step of Calculate

void clsPlanets::ComputeMoonNumbers()
{
    EnsureBodies();
    const double S = lysPlnt_[1];
    const double M = lysPlnt_[7];

    tithi_ = TithiOf(S, M);

    // The quarter bounds are the old truncated decimals. A distance above
    // 13.3333333 matches none of them and stays in the field as it is: the
    // very start of a nakshatra reads about 13.33 there, ModReal giving the
    // whole span for a Moon on the boundary.
    const double r = ModReal(M, kNakSpan);
    pada_ = r;
    if (r <= 3.33333333333) pada_ = 1;
    else if (r >= 3.33333333 && r <= 6.6666667) pada_ = 2;
    else if (r >= 6.6666667 && r <= 10) pada_ = 3;
    else if (r >= 10 && r <= 13.3333333) pada_ = 4;

    yoga_ = YogaOf(S, M);

    nakIndex_ = Whole(vb::Int(M * 3.0 / 40.0));
    moonSignIndex_ = Whole(vb::Int(M / 30.0));
}

int clsPlanets::TithiOf(double sun, double moon)
{
    double x = (moon - sun) / 12.0;
    if (x < 0) x += 30.0;
    return Whole(vb::Int(x) + 1);
}

int clsPlanets::YogaOf(double sun, double moon)
{
    int y = Whole(vb::Int((sun + moon) * 3.0 / 40.0) + 1);
    if (y > 27) y -= 27;  // once: a sum of exactly 720 leaves 28
    return y;
}

// ---------------------------------------------------------------------------
// Tithi

std::string clsPlanets::TithiName()
{
    Variant t = Tithi();
    return GetTithiName(t);
}

std::string clsPlanets::GetTithiName(Variant& t)
{
    RaiseFraction(t);
    return GetTextBetween("CNVT", t, "Tithi").ToText();
}

double clsPlanets::TithiValue() const
{
    double x = PlanetLongi(7) - PlanetLongi(1);
    if (x < 0) x += 360.0;
    return x;
}

int clsPlanets::TithiShuklaKrishna(int t) { return t < 16 ? 1 : 2; }

int clsPlanets::GetTithiType(int t)
{
    // Each group of five closes with a tithi of the first class.
    static constexpr int kClass[30] = {1, 2, 3, 4, 1, 1, 2, 3, 4, 1, 1, 2, 3, 4, 1,
                                       1, 2, 3, 4, 1, 1, 2, 3, 4, 1, 1, 2, 3, 4, 1};
    if (t < 1 || t > 30) return 0;
    return kClass[t - 1];
}

// ---------------------------------------------------------------------------
// Nakshatra

int clsPlanets::Nakshatra() const { return NakshatraNum(PlanetLongi(7)); }

int clsPlanets::NakshatraNum(double lon) { return Whole(vb::Int(lon / kNakSpan) + 1); }

int clsPlanets::NakOf(int p) const { return NakshatraNum(PlanetLongi(p)); }

int clsPlanets::NakPadaNum(double lon) { return Whole(vb::Int(ModReal(lon, kNakSpan) / kPadaSpan) + 1); }

std::string clsPlanets::GetNakshatraName(Variant& n)
{
    const double d = n.ToDouble();
    if (d != vb::Int(d)) Store(n, NakshatraNum(d));
    const int k = n.ToLong();
    CheckIndex(k, 1, 28);
    if (!nakNamesFilled_) {
        for (int i = 1; i <= 28; ++i)
            nakNames_[static_cast<std::size_t>(i - 1)] = GetTextBetween("CNVT", i, "Nakshatra").ToText();
        nakNamesFilled_ = true;
    }
    return nakNames_[static_cast<std::size_t>(k - 1)];
}

std::string clsPlanets::GetNakLordName(int n)
{
    // Folded to one digit by adding the first and last digits: 19 goes by
    // 10 to 1.
    while (n >= 10) {
        std::string digits = vb::CStr(n);
        n = (digits.front() - '0') + (digits.back() - '0');
    }
    return GetHeadValue(1, n, "Naklord").ToText();
}

int clsPlanets::Nak28GetNakshatra() const
{
    const double M = PlanetLongi(7);
    if (M >= 276.4 && M <= 280.54) return 28;
    return NakshatraNum(M);
}

int clsPlanets::GetTaraNum(int a, int b)
{
    int n = Whole(Norm27(b - a + 1));
    int t = n % 9;  // n lies in 0 to 27 here
    return t == 0 ? 9 : t;
}

// ---------------------------------------------------------------------------
// Yoga

std::string clsPlanets::YogaName() { return GetTextBetween("CNVT", YogaNumber(), "Yoga").ToText(); }

Variant clsPlanets::FindYoga(const Variant& n) { return GetHeadValue(1, n, "Yoga"); }

std::string clsPlanets::ConvertYoga(Variant& n)
{
    RaiseFraction(n);
    return GetTextBetween("CNVT", n, "Yoga").ToText();
}

// ---------------------------------------------------------------------------
// Karana. Two rules on the same elongation: the engine scores by
// KaranNumber, which runs the seven-fold cycle right to the end of the month,
// while the pages name by KaranNum, which gives the last three half-tithis
// their fixed karanas.

int clsPlanets::KaranNumber() const
{
    const double x = Norm360(PlanetLongi(7) - PlanetLongi(1));
    if (x < 6) return 11;
    return Whole(vb::Int(Norm7((x - 6.0) / 6.0)) + 1);
}

int clsPlanets::KaranNum() const
{
    const double moon = PlanetLongi(7);
    return KaranNumOf(PlanetLongi(1), moon);
}

int clsPlanets::KaranNumOf(double sun, double moon)
{
    const double x = Norm360(moon - sun);
    if (x <= 6) return 11;
    if (x < 342) return Whole(vb::Int(Norm7((x - 6.0) / 6.0)) + 1);
    if (x < 348) return 8;
    if (x < 354) return 9;
    if (x < 360) return 10;
    return 0;
}

std::string clsPlanets::KaranName() { return GetTextBetween("CNVT", KaranNum(), "KARAN").ToText(); }

// ---------------------------------------------------------------------------
// Lunar month

int clsPlanets::VikramiMonth(double lon, const DateTime& date)
{
    // The solar month by the Sun's longitude. The tenth band runs over 40
    // degrees and the eleventh over 20.
    static constexpr double kBandStart[13] = {0, 30, 60, 90, 120, 150, 180, 210, 240, 270, 310, 330, 360};
    int m = 0;
    for (int i = 0; i < 12; ++i) {
        if (lon >= kBandStart[i] && lon < kBandStart[i + 1]) {
            m = i + 1;
            break;
        }
    }

    // The intercalary month: the first 1393 hours of every 24816 from the
    // epoch count one month back.
    const std::int64_t h = DateTime::DiffHours(DateTime::FromParts(2004, 7, 3), date);
    double c = ModReal(static_cast<double>(h), 24816.0);
    if (c == 24816.0) c = 0;
    if (c < 1393) m -= 1;
    return m;
}

std::string clsPlanets::GetVikramiMonth(int n) { return GetTextBetween("cnvt", n, "IndianMonths").ToText(); }

// ---------------------------------------------------------------------------
// Week day and direction

int clsPlanets::WeekDayLord() const
{
    // An unset record has no real date: reading it is an error, as it would
    // be on the record made on first read.
    if (!person_) return WeekDayLordOfDay(ranvel::clsPerson().GetBirthDate().WeekDay());
    return WeekDayLordOfDay(person_->GetBirthDate().WeekDay());
}

int clsPlanets::WeekDayLordOfDay(int n)
{
    if (n < 1 || n > 7) return 0;
    return kWeekDayLords[n - 1];
}

int clsPlanets::WeekDayLordFromDay(int n) { return WeekDayLordOfDay(n); }

int clsPlanets::FindPlanetDirection(int p) const
{
    switch (PlanetRashiNum(p)) {
    case 1: case 5: case 9: return 1;
    case 2: case 6: case 10: return 4;
    case 3: case 7: case 11: return 2;
    case 4: case 8: case 12: return 3;
    default: return 0;  // 13 for a longitude of exactly 360
    }
}

}  // namespace ranvel
