// The time search behind sunrise, sunset and the Lagna spans. The rate
// table, the clamps and the near-target rules are there to end a search in
// a handful of steps; their asymmetries (Mars above its ceiling, the nodes'
// turned step) are part of the answers and stay.
#include "ranvel/chart/gochara.h"

#include <cmath>

#include "ranvel/platform/vbmath.h"

namespace ranvel {

namespace {
// Division as the runtime does it: by zero is a run-time fault.
double Div(double a, double b)
{
    if (b == 0) throw vb::RuntimeError(a == 0 ? "Overflow" : "Division by zero");
    return a / b;
}
bool IsOuterSlow(int p) { return p == 4 || p == 5 || p == 6; }
}  // namespace

clsGochara::RateRecord clsGochara::GetRateRecord(int planet)
{
    switch (planet) {
    case 0: return {3.5, 5, 5};
    case 1: return {1450, 5000, 30};
    case 2: return {1200, 5000, 30};
    case 3: return {1300, 5000, 30};
    case 4: return {1800, 8000, 30};
    case 5: return {9500, 50000, 30};
    case 6: return {10000, 40000, 30};
    case 7: return {105, 300, 30};
    case 8:
    case 9: return {23000, 60000, 30};
    case 10: return {28000, 60000, 30};
    case 11:
    case 12: return {50000, 120000, 30};
    default: return {0, 0, 0};
    }
}

void clsGochara::ResetSearch()
{
    GocharaStep_ = 0;
    GocharaDiff_ = 0;
    GocharaPlanet_ = 0;
    GocharaTarget_ = 0;
    GocharaTolerance_ = 0;
    PrevDiff_ = 0;
    PrevLongi_ = 0;
    PrevRate_ = 0;
    StepCount_ = 0;
    PrevMoment_ = DateTime();
    Wrapped_ = false;
    GocharaRate_ = 0;
    GocharaLongi_ = 0;
}

std::shared_ptr<clsPlanets> clsGochara::Gochara(int Planet, double Target, double Tolerance, clsPlanets& Chart)
{
    ResetSearch();
    WorkChart_ = std::make_shared<clsPlanets>();
    StartChart_ = std::make_shared<clsPlanets>();
    Chart.CopySettingTo(*WorkChart_);
    Chart.CopySettingTo(*StartChart_);
    GocharaPlanet_ = Planet;
    GocharaTarget_ = Target;
    GocharaTolerance_ = Tolerance;
    Wrapped_ = false;
    StartChart_->Calculate();
    WorkChart_->Calculate();
    StepCount_ = 0;
    SeekTarget();
    return WorkChart_;
}

void clsGochara::SeekTarget()
{
    // A loop in place of the recursion: each pass is one step, and the
    // first step is taken even when the start lies within tolerance.
    for (;;) {
        StepCount_ += 1;
        ComputeStep();
        WorkChart_->clsPerson().AddMinutes(GocharaStep_);
        WorkChart_->Calculate();
        if (StepCount_ > 25) return;
        const double p = WorkChart_->PlanetLongi(GocharaPlanet_) * 60.0;
        const double tol = GocharaTolerance_;
        if (GocharaTarget_ == 0) {
            if (std::abs(p - 21600.0) <= tol || p <= tol) return;
        } else if (GocharaTarget_ == 360) {
            if (21600.0 - tol <= p || p <= tol) return;
        } else if (std::abs(p - GocharaTarget_ * 60.0) <= tol) {
            return;
        }
    }
}

bool clsGochara::TargetBehindStart() const { return StartChart_->PlanetLongi(GocharaPlanet_) > GocharaTarget_; }

double clsGochara::MeasuredRate() const
{
    if (PrevLongi_ == 0) return 0;
    return std::abs(Div(60.0, Div((PrevLongi_ - GocharaLongi_) * 60.0, GocharaStep_)));
}

double clsGochara::CrossingThreshold() const
{
    const double minutes =
        std::abs(static_cast<double>(DateTime::DiffMinutes(PrevMoment_, WorkChart_->clsPerson().GetBirthDate())));
    const double k = vb::RoundHalfEven(Div(minutes, vb::RoundHalfEven(GetRateRecord(GocharaPlanet_).MeanRate)));
    const double lo = GocharaPlanet_ == 2 ? 90 : 60;
    if (k < lo) return lo;
    if (k > 150) return 150;
    return k;
}

bool clsGochara::CheckCrossing()
{
    if (PrevLongi_ == 0) return false;
    const double K = CrossingThreshold();
    const double r = WorkChart_->PlanetLongi(GocharaPlanet_);
    const DateTime W = WorkChart_->clsPerson().GetBirthDate();
    const DateTime S = StartChart_->clsPerson().GetBirthDate();
    const bool behind = TargetBehindStart();
    if (!Wrapped_) {
        if (behind) return r > PrevLongi_ + K && W < S;
        return r < PrevLongi_ - K && W > S;
    }
    if (behind) {
        if (r < PrevLongi_ - K && W < S) Wrapped_ = false;
    } else {
        if (r > PrevLongi_ + K && W > S) Wrapped_ = false;
    }
    return false;
}

void clsGochara::ComputeStep()
{
    const int planet = GocharaPlanet_;
    const RateRecord rate = GetRateRecord(planet);
    clsPlanets& work = *WorkChart_;

    // 1-2. The longitude, shifted by a turn once the search has passed
    // 0 Aries. The second check runs whatever the first said.
    const double raw = work.PlanetLongi(planet);
    GocharaLongi_ = raw;
    if (CheckCrossing() || Wrapped_) GocharaLongi_ = TargetBehindStart() ? raw - 360.0 : raw + 360.0;
    if (CheckCrossing()) Wrapped_ = !Wrapped_;

    // 3-4.
    GocharaDiff_ = (GocharaTarget_ - GocharaLongi_) * 60.0;
    if (GocharaStep_ != 0 && GocharaLongi_ != PrevLongi_) GocharaRate_ = MeasuredRate();
    else GocharaRate_ = rate.MeanRate;

    // 5-6. Near the target the body's own speed decides.
    const double s = work.PlanetSpeed(planet);
    const double v = std::abs(Div(60.0, s));
    const double d = std::abs(GocharaDiff_ / 60.0);
    if (d < rate.NearSpan && v < rate.MaxRate) GocharaRate_ = v;

    // 7. Above the ceiling.
    if (GocharaRate_ > rate.MaxRate) {
        if (IsOuterSlow(planet)) GocharaRate_ = (rate.MeanRate + v) / 2.0;
        else GocharaRate_ = d < rate.NearSpan ? rate.MeanRate : (rate.MeanRate + v) / 2.0;
    }
    // 8. Moving back.
    if (s < 0) {
        if (IsOuterSlow(planet)) {
            if (d < rate.NearSpan) GocharaRate_ = rate.MeanRate + v;
        } else {
            GocharaRate_ = d < rate.NearSpan ? rate.MeanRate : (rate.MeanRate + v) / 2.0;
        }
    }
    // 9. Mars alone may run above its ceiling.
    if (planet != 4 && GocharaRate_ > rate.MaxRate) GocharaRate_ = rate.MaxRate;
    // 10.
    if (planet != 8 && planet != 9 && work.RetroGrade(planet) && std::abs(GocharaDiff_) <= 120) GocharaRate_ *= 2;
    // 11.
    if (GocharaRate_ < 1) {
        GocharaRate_ = MeasuredRate();
        if (GocharaRate_ == 0) GocharaRate_ = rate.MeanRate;
        if (GocharaRate_ < 1 && planet == 2) GocharaRate_ = rate.MeanRate;
    }
    // 12.
    if (GocharaLongi_ < 0 || GocharaLongi_ > 360) GocharaLongi_ = raw;

    // 13-14. Never less than a whole minute; the nodes walk the other way.
    double t = (GocharaDiff_ / 60.0) * GocharaRate_;
    if (t > -1 && t < 0) t = -1;
    else if (t > 0 && t < 1) t = 1;
    GocharaStep_ = t;
    if (planet == 8 || planet == 9) GocharaStep_ = -GocharaStep_;

    // 15.
    PrevDiff_ = GocharaDiff_;
    PrevLongi_ = GocharaLongi_;
    PrevRate_ = GocharaRate_;
    PrevMoment_ = work.clsPerson().GetBirthDate();
}

}  // namespace ranvel
