// Sunrise, sunset and the span of the day. The chart does not solve for the
// Sun's altitude: sunrise is the moment the Lagna reaches the Sun's point,
// sunset the moment it reaches the point opposite, found by the time search.
// No refraction, no disc, no height: the centre of the Sun's ecliptic point
// on a flat horizon. The values are kept on the object from the first call.
#include <cmath>

#include "ranvel/chart/gochara.h"
#include "ranvel/chart/planets.h"
#include "ranvel/chart/wrap.h"
#include "ranvel/platform/settings.h"
#include "ranvel/platform/vbmath.h"

extern "C" {
#include <swephexp.h>
}

namespace ranvel {

namespace {
// The clock of a found moment, "HH.MM" read as a number.
double ClockOf(clsPlanets& chart) { return vb::Val(chart.clsPerson().GetBirthTime()); }

// The Lagna's search for the Sun's point (or a point from it) from the
// scratch chart's moment; the scratch chart carries no hemisphere letters.
double LagnaReaches(clsPlanets& scratch, double offsetFromSun)
{
    scratch.Calculate();
    double target = offsetFromSun == 0 ? scratch.PlanetLongi(1) : Norm360(scratch.PlanetLongi(1) + offsetFromSun);
    clsGochara search;
    auto found = search.Gochara(0, target, 9, scratch);
    return ClockOf(*found);
}

// ---- the Sun on the true horizon, when the user chose it ----

// Hours of the record's clock after Greenwich: its zone, less the time
// correction, as Calculate takes them the other way.
double ClockAfterGreenwich(const clsPerson& p) { return vb::Val(p.GMTDIFF()) - vb::Val(p.TimeCorr()); }

// The Julian day (UT) of an hour of the record's date on its clock.
double UtOfClock(const clsPerson& p, double hour)
{
    return swe_julday(p.YearN(), p.MonthN(), p.DayN(), hour - ClockAfterGreenwich(p), SE_GREG_CAL);
}

// A moment (UT) on the record's clock as the chart's HH.MM number, to the
// nearest minute, within the day.
double ClockNumberOf(const clsPerson& p, double ut)
{
    double h = std::fmod((ut + 0.5 - std::floor(ut + 0.5)) * 24.0 + ClockAfterGreenwich(p), 24.0);
    if (h < 0) h += 24.0;
    long minutes = std::lround(h * 60.0) % 1440;
    return static_cast<double>(minutes / 60) + static_cast<double>(minutes % 60) / 100.0;
}

// The next rising or setting of the Sun's disc centre on the true horizon,
// without refraction (the Hindu rising), after a moment (UT), at the true
// place; nothing where the Sun stays above or below the horizon.
std::optional<double> SunOnHorizon(const clsPerson& p, double fromUt, bool rising)
{
    double lon = p.LongDegN() + p.LongMTN() / 60.0;
    if (vb::UCase(p.PlaceEW()) == "W") lon = -lon;
    double lat = p.LatDegN() + p.LatMTN() / 60.0;
    if (vb::UCase(p.PlaceNS()) == "S") lat = -lat;
    double geopos[3] = {lon, lat, 0};
    double found = 0;
    char serr[256] = {0};
    const int flags = (rising ? SE_CALC_RISE : SE_CALC_SET) | SE_BIT_HINDU_RISING;
    if (swe_rise_trans(fromUt, SE_SUN, nullptr, SEFLG_SWIEPH, flags, geopos, 0, 0, &found, serr) != 0)
        return std::nullopt;
    // Further than a day and a half: the Sun does not cross the horizon on
    // this day.
    if (found - fromUt > 1.5) return std::nullopt;
    return found;
}
}  // namespace

bool clsPlanets::AstronomicalSunrise() { return GetSetting("Settings", "AstroSunrise", "0") == "1"; }

double clsPlanets::SunRiseTime()
{
    if (sunRise_ != 0) return sunRise_;
    if (AstronomicalSunrise()) {
        const ranvel::clsPerson& p = clsPerson();
        if (auto rise = SunOnHorizon(p, UtOfClock(p, 0), true)) {
            sunRise_ = ClockNumberOf(p, *rise);
            return sunRise_;
        }
        sunWithoutHorizon_ = true;  // no rising this day: the ecliptic rule stands in
    }
    clsPlanets scratch;
    CopySettingTo(scratch);
    // The Sun's point is taken at 03:30 of the day and not moved on to the
    // moment of rising.
    scratch.clsPerson().Hour(3);
    scratch.clsPerson().Minutes(30);
    sunRise_ = LagnaReaches(scratch, 0);
    return sunRise_;
}

double clsPlanets::SunSetTime()
{
    if (sunSet_ != 0) return sunSet_;
    if (AstronomicalSunrise()) {
        const ranvel::clsPerson& p = clsPerson();
        if (auto set = SunOnHorizon(p, UtOfClock(p, p.HourN() + p.MinutesN() / 60.0), false)) {
            sunSet_ = ClockNumberOf(p, *set);
            return sunSet_;
        }
        sunWithoutHorizon_ = true;
    }
    clsPlanets scratch;
    CopySettingTo(scratch);
    // From the chart's own moment: after sunset this finds the next day's.
    sunSet_ = LagnaReaches(scratch, 180);
    return sunSet_;
}

std::optional<double> clsPlanets::SunRiseAfterMoment()
{
    const ranvel::clsPerson& p = clsPerson();
    const auto rise = SunOnHorizon(p, UtOfClock(p, p.HourN() + p.MinutesN() / 60.0), true);
    if (!rise) return std::nullopt;
    return ClockNumberOf(p, *rise);
}

double clsPlanets::DayDuration() { return MinToDec(SunSetTime()) - MinToDec(SunRiseTime()); }

double clsPlanets::NightDuration()
{
    if (nightSpan_ != 0) return nightSpan_;
    double next = 0;
    std::optional<double> rise;
    if (AstronomicalSunrise()) {
        rise = SunRiseAfterMoment();
        if (rise) next = *rise;
        else sunWithoutHorizon_ = true;
    }
    if (!rise) {
        clsPlanets scratch;
        CopySettingTo(scratch);
        next = LagnaReaches(scratch, 0);  // always ahead of the moment
    }
    if (clsPerson().HourN() < 12) nightSpan_ = std::abs(24 + MinToDec(SunRiseTime()) - MinToDec(next));
    else nightSpan_ = std::abs(24 + MinToDec(next) - MinToDec(SunSetTime()));
    return nightSpan_;
}

bool clsPlanets::CheckIfDay() const
{
    // With the Sun past 180 degrees the opposite point lies below it and
    // this is never true; it stays so.
    const double sun = PlanetLongi(1);
    const double opposite = Norm360(sun + 180);
    const double lagna = PlanetLongi(0);
    return lagna > sun && lagna < opposite;
}

bool clsPlanets::DayBirth()
{
    const double now = vb::Val(clsPerson().GetBirthTime());
    return now > SunRiseTime() && now < SunSetTime();
}

double clsPlanets::LTCorrection()
{
    ranvel::clsPerson& P = clsPerson();
    const double a = vb::Val(P.GMTDIFF()) * 900;  // the zone meridian in arc minutes
    double d;
    if (vb::UCase(P.TextEW()) == "E") {
        const double b = std::abs(P.LongDegN() * 60.0) + P.LongMTN();
        d = std::abs(b - a);
    } else {
        const double b = P.LongDegN() * 60.0 + P.LongMTN();
        d = a + b;
    }
    const double m = d * 4 / 60;
    // Unsigned, whichever side of the meridian the place lies.
    return vb::Val(vb::CStr(vb::Int(m)) + "." + vb::CStr(vb::RoundHalfEven(FractionOf(m) * 60)));
}

std::string clsPlanets::Direction(int p)
{
    if (!directionWordsFilled_) {
        directionWords_[0] = GetTextBetween("CNVT", "DIRECT", "GEN").ToText();
        directionWords_[1] = GetTextBetween("CNVT", "RETRO", "GEN").ToText();
        directionWordsFilled_ = true;
    }
    return PlanetLongi(p) < PlanetLongi(p + 13) ? directionWords_[0] : directionWords_[1];
}

}  // namespace ranvel
