// clsVakya: the traditional reckoning of the sky beside the ephemeris. It
// counts civil days from the Kali epoch and derives every longitude from
// whole revolutions per Mahayuga with manda and sighra epicycle corrections.
// All its data are constants; every longitude it gives is sidereal.
//
// The chart uses two services of it, FindKaliDin and CalcVakyaAyanamsha, on
// an object it never calculates. Calculate fills the fields with the full
// reckoning for one moment.
#pragma once

#include <cstdint>

namespace ranvel {

class clsVakya {
public:
    // --- fields, in their order; a new object has them all at zero ---
    double VakyaSun = 0;
    double VakyaMoon = 0;
    double VakyaMars = 0;
    double VakyaMercury = 0;
    double VakyaJupiter = 0;
    double VakyaVenus = 0;
    double VakyaSaturn = 0;
    double VakyaKetu = 0;  // the descending node
    double VakyaRahu = 0;  // the ascending node
    double VakyaLagna = 0;
    std::int32_t VakyaHour = 0;
    std::int32_t VakyaMinutes = 0;
    std::int32_t VakyaSeconds = 0;
    std::int32_t VakyaDay = 0;
    std::int32_t VakyaMonth = 0;
    std::int32_t VakyaYear = 0;
    double VakyaLatDeg = 0;
    double VakyaLatMin = 0;
    double VakyaLongDeg = 0;  // no step sets or reads the longitude
    double VakyaLongMin = 0;
    double VakyaAyanamsha = 0;  // of the moment of the last Calculate

    // Fills the fields for one moment and latitude. The longitude and the
    // ayanamsha passed in have no effect; no hemisphere is passed, so a
    // southern place is reckoned as if north. Throws vb::RuntimeError where
    // the reckoning itself faults (a latitude whose sun never rises or sets
    // on that day, a 32-bit overflow of the day count).
    void Calculate(std::int32_t Day, std::int32_t Month, std::int32_t Year, std::int32_t Hour, std::int32_t Minutes,
                   std::int32_t Seconds, double LatDeg, double LatMin, double LongDeg, double LongMin,
                   double Ayanamsha);

    // The whole Kali day of the date held in the fields. On a new object
    // that is the day of the zero date, 1132562.
    double FindKaliDin() const;
    // The ayanamsha in degrees for a Kali day count; not normalised, and
    // negative for early counts.
    static double CalcVakyaAyanamsha(double KaliDay);
    // Inverse cosine in radians; exactly 1 gives 0. |x| above 1 throws.
    static double Acos(double x);

private:
    friend struct VakyaInnerSteps;  // the unit tests reach the steps through it

    static std::int32_t JulianDayNumber(std::int32_t Day, std::int32_t Month, std::int32_t Year);

    static double TrueSun(double A);
    static double MandaSun(double A, double e0);
    static double SunMandaCorrection(double A, double e0);
    static double MeanSun(double A);

    static double TrueMoon(double A);
    static double MandaMoon(double A, double e0);
    static double MoonMandaCorrection(double A, double e0);

    void CalcPlanets(double A);
    static double PlanetLongitude(double A, double offset, double revolutions, double apogeeBase, double sighra90,
                                  double sighra0, double manda0, double manda90, double apogeeRevolutions,
                                  double kind);
    static double TrueTaraGraha(double A, double meanSun, double offset, double revolutions, double apogeeBase,
                                double sighra90, double sighra0, double manda0, double manda90,
                                double apogeeRevolutions, double kind);

    static double NodeLongitude(double A);
    static double RawNodeLongitude(double A);

    double CalcLagna() const;
    double RashiMana(int n) const;
    double ClockHours() const;

    static double DegToRad(double degrees);
    static double RadToDeg(double radians);
    // Throws vb::RuntimeError ("Overflow") outside -1 to 1 and for NaN.
    static double ArcSin(double x);
};

}  // namespace ranvel
