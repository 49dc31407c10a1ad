// clsGochara: starting from the moment of a chart, when does a body reach a
// given sidereal longitude? It steps a private copy of the chart through
// time, with the full chart computation at every step, and hands the copy
// back at the moment it has found. Sunrise, sunset and the Lagna spans of a
// Muhurtha all rest on it, so it lives with the chart.
#pragma once

#include <memory>

#include "ranvel/chart/planets.h"
#include "ranvel/platform/datetime.h"

namespace ranvel {

class clsGochara {
public:
    // The first moment from Chart at which the body reaches Target (degrees)
    // within Tolerance (arc minutes). Chart is only read. The result is a
    // new calculated chart holding that moment; after 26 steps the search
    // returns the moment it has, without saying so.
    std::shared_ptr<clsPlanets> Gochara(int Planet, double Target, double Tolerance, clsPlanets& Chart);

    // The state of the last search, for those who look into it.
    int StepCount() const { return StepCount_; }
    bool IsWrapped() const { return Wrapped_; }
    std::shared_ptr<clsPlanets> WorkChart() const { return WorkChart_; }

    struct RateRecord {
        double MeanRate;  // minutes of time per degree
        double MaxRate;   // its ceiling
        double NearSpan;  // degrees
    };
    static RateRecord GetRateRecord(int planet);

private:
    void ResetSearch();
    void SeekTarget();
    void ComputeStep();
    double MeasuredRate() const;
    bool TargetBehindStart() const;
    double CrossingThreshold() const;
    bool CheckCrossing();

    std::shared_ptr<clsPlanets> WorkChart_;
    std::shared_ptr<clsPlanets> StartChart_;
    double GocharaStep_ = 0;
    double GocharaDiff_ = 0;
    int GocharaPlanet_ = 0;
    double GocharaTarget_ = 0;
    double GocharaTolerance_ = 0;
    double PrevDiff_ = 0;
    double PrevLongi_ = 0;
    double PrevRate_ = 0;
    int StepCount_ = 0;
    DateTime PrevMoment_;
    bool Wrapped_ = false;
    double GocharaRate_ = 0;
    double GocharaLongi_ = 0;
};

}  // namespace ranvel
