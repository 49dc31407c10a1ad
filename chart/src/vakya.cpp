// The Vakya reckoning. Each body's mean place comes from its revolutions per
// Mahayuga and the Kali day count, and is then corrected on its epicycles.
// The bodies are deliberately not treated alike: the Sun's mean place is not
// wrapped after the meridian shift, the Moon's apogee takes the shift off its
// revolution count, the signs' rising times carry figures of unequal length.
// These are the reckoning's own numbers and stay as they are.
#include "ranvel/chart/vakya.h"

#include <cmath>
#include <cstdint>

#include "ranvel/chart/wrap.h"
#include "ranvel/platform/vbmath.h"

extern "C" {
#include <swephexp.h>
}

namespace ranvel {

namespace {

constexpr double kCivilDays = 1577917828.0;  // civil days per Mahayuga
constexpr std::int32_t kKaliEpoch = 588466;  // Julian day number of the Kali epoch
constexpr double kMeridianShift = 0.01875;   // part of a day the mean place is taken back
constexpr double kPi = 3.14159265358979;
constexpr double kRadian = 57.29578;  // degrees per radian, shortened
constexpr double kObliquity = 23.45;

// The circumference of an epicycle turned into degrees of correction.
constexpr double kSineRadiusRatio = 3438.0 / 21600.0;

// The daily-motion factor of the Sun's and the Moon's second correction
// term. It is zero, so the term adds nothing; the term is part of the
// reckoning all the same.
constexpr double kSunDailyMotion = 0.0;
constexpr double kMoonDailyMotion = 0.0;

// Planet kinds as the reckoning passes them: a true value for an outer
// planet, false for an inner one.
constexpr double kOuter = -1.0;
constexpr double kInner = 0.0;

double Frac(double x) { return x - vb::Int(x); }

// The unshifted mean place of a body: the fraction of its revolutions.
double MeanPlace(double revolutions, double A)
{
    double m = Frac(revolutions / kCivilDays * A) * 360.0;
    if (m > 360.0) m -= 360.0;
    return m;
}

// 27 minutes of the body's mean motion.
double MeridianShift(double revolutions) { return revolutions / kCivilDays * 360.0 * kMeridianShift; }

// The mean place shifted to the meridian and lifted once if negative: the
// Moon, the planets and the node.
double ShiftedMeanPlace(double revolutions, double A)
{
    double m = MeanPlace(revolutions, A) - MeridianShift(revolutions);
    if (m < 0) m += 360.0;
    return m;
}

double Sqr(double x)
{
    if (!(x >= 0)) throw vb::RuntimeError("Invalid procedure call or argument");
    return std::sqrt(x);
}

// Floating division as the runtime checks it.
double Divide(double a, double b)
{
    if (b == 0) throw vb::RuntimeError(a == 0 ? "Overflow" : "Division by zero");
    return a / b;
}

double Sgn(double x) { return x > 0 ? 1.0 : (x < 0 ? -1.0 : 0.0); }

// An anomaly of more than a full turn backwards never arises: one lift.
double LiftOnce(double x) { return x < 0 ? x + 360.0 : x; }

int SignWrapped(int n) { return static_cast<int>(Hour12(n)); }

}  // namespace

// ---------------------------------------------------------------------------
// Angles

double clsVakya::DegToRad(double degrees) { return degrees / kRadian; }
double clsVakya::RadToDeg(double radians) { return radians * 180.0 / kPi; }

double clsVakya::ArcSin(double x)
{
    if (!(x >= -1.0 && x <= 1.0)) throw vb::RuntimeError("Overflow");
    double root = std::sqrt(1.0 - x * x);
    if (root == 0) return Sgn(x) * kPi / 2.0;
    return std::atan(x / root);
}

double clsVakya::Acos(double x)
{
    if (std::fabs(x) != 1.0) return kPi / 2.0 - std::atan(x / Sqr(1.0 - x * x));
    if (x == -1.0) return kPi;
    return 0;  // x is exactly 1: the result stays empty
}

// ---------------------------------------------------------------------------
// Days

std::int32_t clsVakya::JulianDayNumber(std::int32_t Day, std::int32_t Month, std::int32_t Year)
{
    return vb::CLng(vb::Fix(swe_julday(Year, Month, Day, 0.0, SE_GREG_CAL)) + 1.0);
}

namespace {
// The Kali day as a 32-bit subtraction.
std::int32_t KaliDay(std::int32_t julianDayNumber)
{
    std::int64_t k = static_cast<std::int64_t>(julianDayNumber) - kKaliEpoch;
    if (k < INT32_MIN) throw vb::RuntimeError("Overflow");
    return static_cast<std::int32_t>(k);
}
}  // namespace

double clsVakya::FindKaliDin() const
{
    std::int32_t K = KaliDay(JulianDayNumber(VakyaDay, VakyaMonth, VakyaYear));
    // The clock's part of the day is formed but not added: the Kali day is
    // a whole day.
    [[maybe_unused]] double clock = (VakyaHour + VakyaMinutes / 60.0 + VakyaSeconds / 360.0) / 24.0;
    return K;
}

double clsVakya::CalcVakyaAyanamsha(double KaliDay)
{
    return Frac(KaliDay / kCivilDays * 179.929) * 360.0 - 52.29000000000002;
}

double clsVakya::ClockHours() const { return VakyaHour + VakyaMinutes / 60.0 + VakyaSeconds / 60.0 / 60.0; }

// ---------------------------------------------------------------------------
// The whole reckoning

void clsVakya::Calculate(std::int32_t Day, std::int32_t Month, std::int32_t Year, std::int32_t Hour,
                         std::int32_t Minutes, std::int32_t Seconds, double LatDeg, double LatMin, double LongDeg,
                         double LongMin, double Ayanamsha)
{
    VakyaDay = Day;
    VakyaMonth = Month;
    VakyaYear = Year;
    VakyaHour = Hour;
    VakyaMinutes = Minutes;
    VakyaSeconds = Seconds;
    VakyaLatDeg = LatDeg;
    VakyaLatMin = LatMin;

    std::int32_t K = KaliDay(JulianDayNumber(Day, Month, Year));
    // The day count. Its seconds are taken by 360 and not by 3600; the
    // clock of the Lagna step divides them properly.
    double A = K + (Hour + Minutes / 60.0 + Seconds / 360.0) / 24.0;

    // The Lagna reads the ayanamsha and the Sun, so they come first.
    VakyaAyanamsha = CalcVakyaAyanamsha(A);
    VakyaSun = TrueSun(A);
    VakyaMoon = TrueMoon(A);
    CalcPlanets(A);
    VakyaKetu = NodeLongitude(A);
    VakyaRahu = Norm360(VakyaKetu + 180.0);
    VakyaLagna = CalcLagna();
}

// ---------------------------------------------------------------------------
// Sun

namespace {
constexpr double kSunRevolutions = 4320000.0;
constexpr double kSunApogeeBase = 77.13;
constexpr double kSunApogeeRevolutions = 0.387;
constexpr double kSunManda0 = 15.0;
constexpr double kSunManda90 = 13.666666666666666;
}  // namespace

double clsVakya::MeanSun(double A)
{
    // Not wrapped after the shift: it can lie a hair below 0.
    return MeanPlace(kSunRevolutions, A) - MeridianShift(kSunRevolutions);
}

namespace {
// The mean place the Sun's manda step starts from. The test for a negative
// value looks at the place before the shift, which is never negative.
double SunMandaMean(double A)
{
    double before = MeanPlace(kSunRevolutions, A);
    double m = before - MeridianShift(kSunRevolutions);
    if (before < 0) m += 360.0;
    return m;
}
}  // namespace

double clsVakya::SunMandaCorrection(double A, double e0)
{
    double m = SunMandaMean(A);
    double apogee = Frac(kSunApogeeRevolutions / kCivilDays * A) * 360.0 + kSunApogeeBase;
    double k = LiftOnce(apogee - m);
    double s = std::sin(DegToRad(k));
    double c = e0 - std::fabs(s) * (e0 - kSunManda90);
    return s * (kSineRadiusRatio * c);
}

double clsVakya::MandaSun(double A, double e0)
{
    double result = SunMandaMean(A) + SunMandaCorrection(A, e0);
    if (result > 360.0) result -= 360.0;
    if (result < 0) result += 360.0;
    return result;
}

double clsVakya::TrueSun(double A)
{
    double t = SunMandaCorrection(A, kSunManda0) * 60.0 * kSunDailyMotion / 21600.0 / 60.0;
    return ModReal(MandaSun(A, kSunManda0) + t, 360.0);
}

// ---------------------------------------------------------------------------
// Moon

namespace {
constexpr double kMoonRevolutions = 57753336.0;
constexpr double kMoonApogeeBase = 90.0;
constexpr double kMoonApogeeRevolutions = 488199.0;
constexpr double kMoonManda0 = 33.0;
constexpr double kMoonManda90 = 31.666666666666668;
}  // namespace

double clsVakya::MoonMandaCorrection(double A, double e0)
{
    double m = ShiftedMeanPlace(kMoonRevolutions, A);
    // The apogee's shift is taken off its revolution count itself.
    double r = LiftOnce(kMoonApogeeRevolutions - (kMoonApogeeRevolutions / kCivilDays * 360.0 * kMeridianShift));
    double apogee = Frac(r / kCivilDays * A) * 360.0 + kMoonApogeeBase;
    double k = LiftOnce(apogee - m);
    double s = std::sin(DegToRad(k));
    double c = e0 - std::fabs(s) * (e0 - kMoonManda90);
    return s * (kSineRadiusRatio * c);
}

double clsVakya::MandaMoon(double A, double e0)
{
    return ModReal(ShiftedMeanPlace(kMoonRevolutions, A) + MoonMandaCorrection(A, e0), 360.0);
}

double clsVakya::TrueMoon(double A)
{
    double p = MandaMoon(A, kMoonManda0);
    double t = MoonMandaCorrection(A, kMoonManda0) * 60.0 * kMoonDailyMotion / 21600.0 / 60.0;
    return Norm360(ModReal(p + t, 360.0));
}

// ---------------------------------------------------------------------------
// The five planets

void clsVakya::CalcPlanets(double A)
{
    // In this order; for Mercury and Venus the revolutions are those of the
    // sighra, the true body's mean place being the mean Sun.
    VakyaMars = PlanetLongitude(A, 0.0, 2296832.0, 129.96, 232.0, 235.0, 75.0, 72.0, 0.204, kOuter);
    VakyaJupiter = PlanetLongitude(A, 0.0, 364212.0, 171.0, 72.0, 70.0, 33.0, 32.0, 0.9, kOuter);
    VakyaSaturn = PlanetLongitude(A, 0.0, 146580.0, 236.61, 40.0, 39.0, 49.0, 48.0, 0.039, kOuter);
    VakyaMercury = PlanetLongitude(A, 0.0, 17937044.0, 220.32, 132.0, 133.0, 30.0, 28.0, 0.368, kInner);
    VakyaVenus = PlanetLongitude(A, 0.0, 7022364.0, 79.65, 260.0, 262.0, 12.0, 11.0, 0.535, kInner);
}

double clsVakya::PlanetLongitude(double A, double offset, double revolutions, double apogeeBase, double sighra90,
                                 double sighra0, double manda0, double manda90, double apogeeRevolutions,
                                 double kind)
{
    double S = MeanSun(A);
    return Norm360(TrueTaraGraha(A, S, offset, revolutions, apogeeBase, sighra90, sighra0, manda0, manda90,
                                 apogeeRevolutions, kind));
}

double clsVakya::TrueTaraGraha(double A, double meanSun, double offset, double revolutions, double apogeeBase,
                               double sighra90, double sighra0, double manda0, double manda90,
                               double apogeeRevolutions, double kind)
{
    const double S = meanSun;
    const bool outer = kind != 0.0;  // the kind is a truth value

    // Linear in the absolute sine between the circumference at 0 and at 90.
    auto sighraCorrection = [&](double g) {
        double s = std::sin(DegToRad(g));
        double c = sighra0 - std::fabs(s) * (sighra0 - sighra90);
        double q = c / 360.0;
        double h = std::sqrt(q * q + (q + q) * std::cos(DegToRad(g)) + 1.0);
        return RadToDeg(ArcSin(s * q / h));
    };
    auto mandaCorrection = [&](double a) {
        double s = std::sin(DegToRad(a));
        double c = manda0 - std::fabs(s) * (manda0 - manda90);
        return s * (kSineRadiusRatio * c);
    };

    double P = Frac(revolutions / kCivilDays * A) * 360.0 + offset;
    if (P > 360.0) P -= 360.0;
    P = LiftOnce(P - MeridianShift(revolutions));

    double g1 = LiftOnce(outer ? S - P : P - S);
    const double base = outer ? P : S;
    double p1 = Norm360(base + sighraCorrection(g1) / 2.0);

    double apogee = Frac(apogeeRevolutions / kCivilDays * A) * 360.0 + apogeeBase;
    double a1 = LiftOnce(apogee - p1);
    double p2 = Norm360(p1 + mandaCorrection(a1) / 2.0);
    double a2 = LiftOnce(apogee - p2);
    double p3 = Norm360(base + mandaCorrection(a2));

    double g2 = LiftOnce(outer ? S - p3 : P - p3);
    return Norm360(p3 + sighraCorrection(g2));
}

// ---------------------------------------------------------------------------
// Nodes

double clsVakya::RawNodeLongitude(double A)
{
    constexpr double kNodeRevolutions = 232246.0;
    double x = Frac(kNodeRevolutions / kCivilDays * A) * 360.0 + 180.0;
    if (x > 360.0) x -= 360.0;
    x = LiftOnce(x - MeridianShift(kNodeRevolutions));
    return LiftOnce(180.0 - x);
}

double clsVakya::NodeLongitude(double A) { return Norm360(RawNodeLongitude(A)); }

// ---------------------------------------------------------------------------
// Lagna

double clsVakya::RashiMana(int n) const
{
    const double tanPhi = std::tan(DegToRad(VakyaLatDeg + VakyaLatMin / 60.0));
    const double b1 = std::tan(DegToRad(11.47699)) * tanPhi * 3438.0 / 6.0;
    const double b2full = std::tan(DegToRad(20.15943)) * tanPhi * 3438.0 / 6.0;
    const double b2 = b2full - b1;
    const double b3 = std::tan(DegToRad(kObliquity)) * tanPhi * 3438.0 / 6.0 - b2full;
    switch (n) {
    case 1: return 278.3333333 - b1;
    case 2: return 299.166667 - b2;
    case 3: return 322.5 - b3;
    case 4: return 322.5 + b3;
    case 5: return 299.166667 + b2;
    case 6: return 278.3333333 + b1;
    case 7: return 278.3333333 + b1;
    case 8: return 299.166667 + b2;
    case 9: return 322.5 + b3;
    case 10: return 322.5 - b3;
    case 11: return 299.166667 - b2;
    case 12: return 278.333333 - b1;  // one digit fewer in the base than 1, 6 and 7
    default: return 0;
    }
}

double clsVakya::CalcLagna() const
{
    const double T = Norm360(VakyaAyanamsha + VakyaSun);  // the tropical Sun
    const double d = std::sin(DegToRad(T)) * kObliquity;  // declination
    const double phi = VakyaLatDeg + VakyaLatMin / 60.0;
    const double halfDay = RadToDeg(Acos(-std::tan(DegToRad(phi)) * std::tan(DegToRad(d)))) / 15.0;
    const double sunrise = 12.0 - halfDay;

    const int n = static_cast<int>(vb::Int(T / 30.0)) + 1;
    const double M = RashiMana(n);
    const double r = M * (n * 30 - T) / 30;      // vinadis of the Sun's sign still to rise
    const double g = Divide(30.0, M) * (M - r);  // degrees of it risen
    const double b = (n - 1) * 30;               // its start

    const double I = (ClockHours() - sunrise) * 2.5 * 60.0;  // vinadis since sunrise

    double L = 0;
    if (I - r < 0) {
        L = Divide(I, M) * 30.0 + g + b;
    } else {
        double w = I - r;
        bool ended = false;
        for (int i = 1; i <= 12; ++i) {
            const double Mi = RashiMana(SignWrapped(n + i));
            const double v = w;
            w = w - Mi;
            const double q = SignWrapped(n + i - 1) * 30;
            if (w >= 0) {
                L = Divide(v, Mi) * 30.0 + q;
                continue;
            }
            // Past the first pass the walk keeps the previous pass's value,
            // which lies beyond that pass's sign.
            if (i == 1) L = Divide(v, Mi) * 30.0 + q;
            ended = true;
            break;
        }
        if (!ended) L = 0;
    }
    return Norm360(L - VakyaAyanamsha);
}

}  // namespace ranvel
