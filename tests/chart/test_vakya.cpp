// The Vakya reckoning: whole moments against a separate working of the same
// arithmetic, the constant ayanamsha a chart receives, the inverse
// trigonometry at its edges, and the Lagna walk worked by hand at the equator,
// where every sign's rising time is its bare base figure and sunrise is 6:00.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "ranvel/chart/vakya.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

struct VakyaInnerSteps {
    static double RashiMana(const clsVakya& v, int n) { return v.RashiMana(n); }
    static double CalcLagna(const clsVakya& v) { return v.CalcLagna(); }
    static double ArcSin(double x) { return clsVakya::ArcSin(x); }
};

namespace {

constexpr double kPi15 = 3.14159265358979;

struct Moment {
    int day, month, year, hour, minutes, seconds;
    double latDeg, latMin;
    double ayanamsha, sun, moon, mars, mercury, jupiter, venus, saturn, ketu, rahu, lagna;
};

// Worked out independently of this code from the same rules.
const Moment kMoments[] = {
    {1, 1, 2000, 12, 0, 0, 13, 5, 24.190491662193182, 256.032022413825, 195.33937538104854, 303.002561680607,
     246.62674969947946, 2.0199416595530977, 218.04621847144736, 15.083000675725517, 281.68284257480894,
     101.68284257480894, 348.6792402073021},
    {15, 6, 1985, 3, 10, 20, 28, 38, 23.972374923625182, 59.93552086894156, 19.74153765656743, 69.0821987546902,
     66.88916300907762, 295.3045218025694, 14.231576283401743, 207.9795633156403, 203.22022712907614,
     23.220227129076136, 31.2874756369186},
};

TEST(Vakya, WholeMomentsMatchASeparateWorking)
{
    for (const Moment& m : kMoments) {
        SCOPED_TRACE(m.year);
        clsVakya v;
        v.Calculate(m.day, m.month, m.year, m.hour, m.minutes, m.seconds, m.latDeg, m.latMin, 77, 12, 99.0);
        const double tol = 1e-9;
        EXPECT_NEAR(v.VakyaAyanamsha, m.ayanamsha, tol);
        EXPECT_NEAR(v.VakyaSun, m.sun, tol);
        EXPECT_NEAR(v.VakyaMoon, m.moon, tol);
        EXPECT_NEAR(v.VakyaMars, m.mars, tol);
        EXPECT_NEAR(v.VakyaMercury, m.mercury, tol);
        EXPECT_NEAR(v.VakyaJupiter, m.jupiter, tol);
        EXPECT_NEAR(v.VakyaVenus, m.venus, tol);
        EXPECT_NEAR(v.VakyaSaturn, m.saturn, tol);
        EXPECT_NEAR(v.VakyaKetu, m.ketu, tol);
        EXPECT_NEAR(v.VakyaRahu, m.rahu, tol);
        EXPECT_NEAR(v.VakyaLagna, m.lagna, tol);
        // The longitude and the ayanamsha passed in leave no trace.
        EXPECT_EQ(v.VakyaLongDeg, 0);
        EXPECT_EQ(v.VakyaLongMin, 0);
        EXPECT_EQ(v.VakyaLatMin, m.latMin);
        EXPECT_EQ(v.VakyaSeconds, m.seconds);
    }
}

TEST(Vakya, NoonOfFirstJanuary2000)
{
    clsVakya v;
    v.Calculate(1, 1, 2000, 12, 0, 0, 13, 5, 0, 0, 0);
    EXPECT_EQ(v.FindKaliDin(), 2451545 - 588466);
    EXPECT_NEAR(v.VakyaAyanamsha, clsVakya::CalcVakyaAyanamsha(1863079.5), 1e-12);
    EXPECT_NEAR(v.VakyaAyanamsha, 24.1905, 5e-5);
    EXPECT_NEAR(v.VakyaSun, 256.03, 0.005);
    EXPECT_NEAR(v.VakyaMoon, 195.34, 0.005);
    EXPECT_NEAR(v.VakyaKetu, 281.68, 0.005);
    EXPECT_NEAR(v.VakyaRahu, 101.68, 0.005);
}

TEST(Vakya, ChartAyanamshaComesFromTheZeroDate)
{
    clsVakya v;
    EXPECT_EQ(v.VakyaSun, 0);
    EXPECT_EQ(v.VakyaAyanamsha, 0);
    EXPECT_EQ(v.FindKaliDin(), 1132562);
    EXPECT_NEAR(v.CalcVakyaAyanamsha(v.FindKaliDin()), -5.79767, 5e-6);
    // The clock is no part of the Kali day.
    v.VakyaHour = 23;
    v.VakyaMinutes = 59;
    EXPECT_EQ(v.FindKaliDin(), 1132562);
}

TEST(Vakya, DayCountAndLagnaClockReadSecondsDifferently)
{
    // In the day count 36 seconds weigh as much as 6 minutes; the Lagna's
    // clock reads them as 36 seconds.
    clsVakya byMinutes, bySeconds;
    byMinutes.Calculate(1, 1, 2000, 12, 6, 0, 13, 5, 0, 0, 0);
    bySeconds.Calculate(1, 1, 2000, 12, 0, 36, 13, 5, 0, 0, 0);
    EXPECT_EQ(byMinutes.VakyaAyanamsha, bySeconds.VakyaAyanamsha);
    EXPECT_EQ(byMinutes.VakyaSun, bySeconds.VakyaSun);
    EXPECT_EQ(byMinutes.VakyaMoon, bySeconds.VakyaMoon);
    EXPECT_EQ(byMinutes.VakyaVenus, bySeconds.VakyaVenus);
    EXPECT_NEAR(byMinutes.VakyaLagna, 350.4753962394692, 1e-9);
    EXPECT_NEAR(bySeconds.VakyaLagna, 348.86375214802126, 1e-9);

    // Hour 24 runs the day count into the next day.
    clsVakya late, next;
    late.Calculate(1, 1, 2000, 24, 0, 0, 13, 5, 0, 0, 0);
    next.Calculate(2, 1, 2000, 0, 0, 0, 13, 5, 0, 0, 0);
    EXPECT_EQ(late.VakyaSun, next.VakyaSun);
    EXPECT_EQ(late.VakyaMoon, next.VakyaMoon);
    EXPECT_NE(late.VakyaLagna, next.VakyaLagna);
}

TEST(Vakya, InverseSineAndCosineAtTheirEdges)
{
    EXPECT_EQ(clsVakya::Acos(1), 0);
    EXPECT_EQ(clsVakya::Acos(-1), kPi15);
    EXPECT_DOUBLE_EQ(clsVakya::Acos(0), kPi15 / 2);
    EXPECT_NEAR(clsVakya::Acos(0.5), std::acos(0.5), 1e-14);
    EXPECT_THROW(clsVakya::Acos(1.0000001), vb::RuntimeError);

    EXPECT_EQ(VakyaInnerSteps::ArcSin(1), kPi15 / 2);
    EXPECT_EQ(VakyaInnerSteps::ArcSin(-1), -kPi15 / 2);
    EXPECT_NEAR(VakyaInnerSteps::ArcSin(-0.5), std::asin(-0.5), 1e-14);
    EXPECT_THROW(VakyaInnerSteps::ArcSin(1.0000000001), vb::RuntimeError);
    EXPECT_THROW(VakyaInnerSteps::ArcSin(-2), vb::RuntimeError);
    EXPECT_THROW(VakyaInnerSteps::ArcSin(std::numeric_limits<double>::quiet_NaN()), vb::RuntimeError);

    // Where the Sun neither rises nor sets the half day has no cosine.
    clsVakya polar;
    EXPECT_THROW(polar.Calculate(1, 1, 2000, 12, 0, 0, 80, 0, 0, 0, 0), vb::RuntimeError);
}

TEST(Vakya, RisingTimesSumToTheDayAtEveryLatitude)
{
    for (double lat : {0.0, 13.0, 28.5, 51.5, 65.0}) {
        SCOPED_TRACE(lat);
        clsVakya v;
        v.VakyaLatDeg = lat;
        v.VakyaLatMin = 30;
        double sum = 0;
        for (int n = 1; n <= 12; ++n) sum += VakyaInnerSteps::RashiMana(v, n);
        EXPECT_NEAR(sum, 3600.0000009, 1e-9);
        // North of the equator Aries rises faster than Virgo.
        EXPECT_LT(VakyaInnerSteps::RashiMana(v, 1), VakyaInnerSteps::RashiMana(v, 6));
    }
    clsVakya equator;
    EXPECT_NEAR(VakyaInnerSteps::RashiMana(equator, 1) - VakyaInnerSteps::RashiMana(equator, 12), 3e-7, 1e-12);
    EXPECT_EQ(VakyaInnerSteps::RashiMana(equator, 3), 322.5);
}

// At the equator with the tropical Sun at 15 (Sun 5, ayanamsha 10): sunrise
// is 6:00, 2.5 vinadis go by a minute, and the Sun's sign has r = 278.3333333
// / 2 vinadis left to rise.
double EquatorLagna(int hour)
{
    clsVakya v;
    v.VakyaSun = 5;
    v.VakyaAyanamsha = 10;
    v.VakyaHour = hour;
    return VakyaInnerSteps::CalcLagna(v);
}

TEST(Vakya, LagnaWalkAtTheEquator)
{
    const double r = 278.3333333 / 2;
    // Before sunrise the Lagna lies behind the Sun, at the pace of its sign.
    EXPECT_NEAR(EquatorLagna(3), 360 + (-450 / 278.3333333 * 30 + 15) - 10, 1e-9);
    // At sunrise the Lagna is the Sun.
    EXPECT_NEAR(EquatorLagna(6), 5, 1e-9);
    // The walk ends in its first pass: inside Taurus.
    EXPECT_NEAR(EquatorLagna(8), (300 - r) / 299.166667 * 30 + 30 - 10, 1e-9);
    // It ends in the second pass: the first pass's value stays, beyond
    // Taurus, where Gemini's own pace would give 60 + (...) / 322.5 * 30.
    EXPECT_NEAR(EquatorLagna(10), (600 - r) / 299.166667 * 30 + 30 - 10, 1e-9);
    EXPECT_GT(EquatorLagna(10), (600 - r - 299.166667) / 322.5 * 30 + 60 - 10 + 1);
    // Twelve passes without reaching the clock: the Lagna is 0 less the
    // ayanamsha.
    EXPECT_NEAR(EquatorLagna(31), 350, 1e-12);
}

}  // namespace
}  // namespace ranvel
