// Sunrise, sunset and the span of the day. The chart does not solve for the
// Sun's altitude: sunrise is the moment the Lagna reaches the Sun's point,
// sunset the moment it reaches the point opposite, found by the time search.
// No refraction, no disc, no height: the centre of the Sun's ecliptic point
// on a flat horizon. The values are kept on the object from the first call.
#include <cmath>

#include "ranvel/chart/gochara.h"
#include "ranvel/chart/planets.h"
#include "ranvel/chart/wrap.h"
#include "ranvel/platform/vbmath.h"

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
}  // namespace

double clsPlanets::SunRiseTime()
{
    if (sunRise_ != 0) return sunRise_;
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
    clsPlanets scratch;
    CopySettingTo(scratch);
    // From the chart's own moment: after sunset this finds the next day's.
    sunSet_ = LagnaReaches(scratch, 180);
    return sunSet_;
}

double clsPlanets::DayDuration() { return MinToDec(SunSetTime()) - MinToDec(SunRiseTime()); }

double clsPlanets::NightDuration()
{
    if (nightSpan_ != 0) return nightSpan_;
    clsPlanets scratch;
    CopySettingTo(scratch);
    const double next = LagnaReaches(scratch, 0);  // always ahead of the moment
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
