// The seventeen sensitive points of a chart: nine arcs at fixed distances
// from the Sun, seven Lagnas at the eighths of the day or night that the week
// day picks, and Mandi at a ghati of the day. Each is kept on the object from
// its first computation, since a day-part point costs a chart of its own and
// the sunrise and sunset searches behind it.
#include "ranvel/chart/planets.h"
#include "ranvel/chart/wrap.h"
#include "ranvel/data/settings_keys.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

namespace {

// Into 0 to 7 by sevens: unlike Norm7, a part number of 0 stays 0.
double Norm7Zero(double x)
{
    while (x > 7) x -= 7;
    while (x < 0) x += 7;
    return x;
}

// The part of the day and of the night for each of KalaBela to Gulika: the
// end of the planet's eighth under mode 1, its beginning otherwise.
constexpr int kDayPartAtEnd[7] = {1, 2, 3, 4, 5, 6, 7};
constexpr int kNightPartAtEnd[7] = {4, 5, 6, 7, 1, 2, 3};
constexpr int kDayPartAtStart[7] = {0, 1, 2, 3, 4, 5, 6};
constexpr int kNightPartAtStart[7] = {3, 4, 5, 6, 7, 1, 2};

// Mandi's ghati out of thirty, by week day from Sunday.
constexpr int kMandiGhatiDay[7] = {26, 22, 18, 14, 10, 6, 2};
constexpr int kMandiGhatiNight[7] = {10, 6, 2, 26, 22, 18, 14};

constexpr int kFirstDayPartPoint = 10;  // KalaBela
constexpr int kLastPoint = 17;          // Mandi

}  // namespace

// ---------------------------------------------------------------------------
// The setting

int clsPlanets::UpagrahaMode() const { return Variant(ReadSetting(keys::UpagrahaMode)).ToLong(); }

void clsPlanets::UpagrahaMode(int value)
{
    WriteSetting(keys::UpagrahaMode, vb::CStr(value));
    // A new reckoning: every kept point goes, and with them the day span the
    // day-part points hang on.
    upagraha_.fill(0);
    sunRise_ = 0;
    sunSet_ = 0;
    nightSpan_ = 0;
    sunWithoutHorizon_ = false;
}

// ---------------------------------------------------------------------------
// The arcs. Each reads the kept value of the point it builds on.

namespace {
// A kept value, computed when it reads 0 (so a point that comes out at
// exactly 0 is computed again at every call).
template <typename F>
double Kept(double& slot, F compute)
{
    if (slot == 0) slot = compute();
    return slot;
}
}  // namespace

double clsPlanets::DhumaLongi()
{
    return Kept(upagraha_[1], [&] { return Norm360(PlanetLongi(1) + 400.0 / 3.0); });
}

double clsPlanets::VyatipataLongi()
{
    return Kept(upagraha_[2], [&] { return Norm360(360 - DhumaLongi()); });
}

double clsPlanets::PariveshaLongi()
{
    return Kept(upagraha_[3], [&] { return Norm360(VyatipataLongi() + 180); });
}

double clsPlanets::IndraChapaLongi()
{
    return Kept(upagraha_[4], [&] { return Norm360(360 - PariveshaLongi()); });
}

double clsPlanets::UpaketuLongi()
{
    // The chain so far ends 30 degrees short of a full turn from the Sun.
    return Kept(upagraha_[5], [&] { return Norm360(IndraChapaLongi() + 50.0 / 3.0); });
}

double clsPlanets::BhukampaLongi()
{
    return Kept(upagraha_[6], [&] { return Norm360(PlanetLongi(1) + 80); });
}

double clsPlanets::UlkaLongi()
{
    return Kept(upagraha_[7], [&] { return Norm360(BhukampaLongi() + 40); });
}

double clsPlanets::BrahmadandaLongi()
{
    return Kept(upagraha_[8], [&] { return Norm360(UlkaLongi() + 200.0 / 3.0); });
}

double clsPlanets::DhwajaLongi()
{
    return Kept(upagraha_[9], [&] { return Norm360(BrahmadandaLongi() + 80); });
}

// ---------------------------------------------------------------------------
// The day parts

double clsPlanets::LagnaAtHour(double t)
{
    clsPlanets scratch;
    CopySettingTo(scratch);
    ranvel::clsPerson& from = clsPerson();
    ranvel::clsPerson& to = scratch.clsPerson();
    double hour = vb::Fix(t);
    if (hour > 24) hour = Norm24(hour);  // the date stays: the small hours of the same day
    to.Hour(hour);
    to.Minutes(FractionOf(t) * 60);
    // Unlike the sunrise search, the point is taken at the place as it is,
    // hemisphere letters included.
    to.AMPM(from.AMPMN());
    to.LatDeg(from.LatDegN());
    to.LatMT(from.LatMTN());
    to.TextNS(from.TextNSRaw());
    to.LongDeg(from.LongDegN());
    to.LongMT(from.LongMTN());
    to.TextEW(from.TextEWRaw());
    to.Country(from.Country());
    to.PLOB(from.PLOB());
    scratch.Calculate();
    return scratch.PlanetLongi(0);
}

double clsPlanets::UpagrahaAtPart(int DayPart, int NightPart)
{
    const int W = clsPerson().GetBirthDate().WeekDay();
    double t;
    if (DayBirth()) {
        const double q = Norm7Zero(DayPart - (W - 1));
        t = MinToDec(SunRiseTime()) + q * DayDuration() / 8;
    } else {
        const double q = Norm7Zero(NightPart - (W - 1));
        t = MinToDec(SunSetTime()) + q * NightDuration() / 8;
    }
    return LagnaAtHour(t);
}

namespace {
// The point of number n (10 KalaBela to 16 Gulika) at its part, by mode.
struct PartOf {
    int day, night;
};
PartOf PartsOfPoint(int n, int mode)
{
    const int i = n - kFirstDayPartPoint;
    if (mode == 1) return {kDayPartAtEnd[i], kNightPartAtEnd[i]};
    return {kDayPartAtStart[i], kNightPartAtStart[i]};
}
}  // namespace

double clsPlanets::DayPartPoint(int n)
{
    return Kept(upagraha_[static_cast<std::size_t>(n)], [&] {
        const PartOf parts = PartsOfPoint(n, UpagrahaMode());
        return UpagrahaAtPart(parts.day, parts.night);
    });
}

double clsPlanets::KalaBelaLong() { return DayPartPoint(10); }
double clsPlanets::ParidhiLong() { return DayPartPoint(11); }
double clsPlanets::MrityuLong() { return DayPartPoint(12); }
double clsPlanets::ArdhaPraharLong() { return DayPartPoint(13); }
double clsPlanets::YamaKantakaLong() { return DayPartPoint(14); }
double clsPlanets::KodandaLong() { return DayPartPoint(15); }
double clsPlanets::GulikaLong() { return DayPartPoint(16); }

double clsPlanets::MandiLong()
{
    return Kept(upagraha_[kLastPoint], [&] {
        const int W = clsPerson().GetBirthDate().WeekDay();
        if (DayBirth()) return LagnaAtHour(MinToDec(SunRiseTime()) + kMandiGhatiDay[W - 1] / 30.0 * DayDuration());
        return LagnaAtHour(MinToDec(SunSetTime()) + kMandiGhatiNight[W - 1] / 30.0 * NightDuration());
    });
}

// ---------------------------------------------------------------------------
// By number

double clsPlanets::UpagrahaLongi(int n)
{
    switch (n) {
    case 1: return DhumaLongi();
    case 2: return VyatipataLongi();
    case 3: return PariveshaLongi();
    case 4: return IndraChapaLongi();
    case 5: return UpaketuLongi();
    case 6: return BhukampaLongi();
    case 7: return UlkaLongi();
    case 8: return BrahmadandaLongi();
    case 9: return DhwajaLongi();
    case 10: return KalaBelaLong();
    case 11: return ParidhiLong();
    case 12: return MrityuLong();
    case 13: return ArdhaPraharLong();
    case 14: return YamaKantakaLong();
    case 15: return KodandaLong();
    case 16: return GulikaLong();
    case 17: return MandiLong();
    default: return 0;
    }
}

std::string clsPlanets::UpagrahaName(int n) { return GetHeadValue(1, n, "Upagrahas").ToText(); }

std::string clsPlanets::UpagrahaNameSmall(int n) { return vb::Left(UpagrahaName(n), 3); }

int clsPlanets::UpagrahaSign(int n) { return static_cast<int>(vb::CLng(vb::Int(UpagrahaLongi(n) / 30.0) + 1)); }

int clsPlanets::UpagrahaNak(int n) { return NakshatraNum(UpagrahaLongi(n)); }

int clsPlanets::UpaNakPada(int n) { return NakPadaNum(UpagrahaLongi(n)); }

int clsPlanets::UpagrahaLord(int n) { return GetRashiLordNum(UpagrahaSign(n)); }

int clsPlanets::GulikaSign() { return UpagrahaSign(16); }

}  // namespace ranvel
