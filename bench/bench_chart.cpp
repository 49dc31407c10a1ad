// The chart calculation against the bare Swiss Ephemeris calls it makes,
// and the costs of moving the record on the search's hot path.
// Targets: BM_Calculate (its bodies read) costs at most 1.3 times
// BM_SweCalls; a whole Lagna search, BM_Gochara_Lagna, at most 0.5 times
// BM_Calculate (its steps need the record, the ayanamsha and the houses,
// not the ephemeris); BM_SunRiseTime at most 1.2 times BM_Calculate (the
// 03:30 chart reads the Sun alone). One day's sheet, BM_DaySheet, at most
// 40 times BM_Calculate.
#include <benchmark/benchmark.h>

#include "ranvel/chart/gochara.h"
#include "ranvel/engine/daysheet.h"
#include "ranvel/platform/apppaths.h"
#include "ranvel/platform/database.h"
#include "ranvel/chart/person.h"
#include "ranvel/chart/planets.h"
#include "ranvel/platform/settings.h"
#include "support/places.h"

extern "C" {
#include <swephexp.h>
}

using namespace ranvel;

namespace {

// Settings in memory, so the benchmark never reads the user's store.
struct MemorySettings {
    MemorySettingsStore store;
    MemorySettings() { SetSettingsStore(&store); }
};
MemorySettings memorySettings;

double JulianDay(int y, int m, int d, double hour)
{
    double J = swe_julday(y, m, d, hour, SE_GREG_CAL);
    swe_date_conversion(y, m, d, hour, 'g', &J);
    return J;
}

double KPAyanamsha(double hour)
{
    double J = JulianDay(2024, 3, 15, hour);
    swe_set_sid_mode(SE_SIDM_KRISHNAMURTI, 0, 0);
    return swe_get_ayanamsa(J);
}

}  // namespace

// The library calls of one Calculate, made directly and in the same order:
// the moment and an hour later (twelve bodies each), the houses, and the KP
// ayanamsha twice.
static void BM_SweCalls(benchmark::State& state)
{
    double xx[6];
    char serr[256];
    char name[20];
    double cusps[14], ascmc[10];
    double hour = 4.5;
    for (auto _ : state) {
        for (int pass = 0; pass < 2; ++pass) {
            double J = JulianDay(2024, 3, 15, hour + pass);
            double U = J - swe_deltat(J);
            for (int body = 0; body <= 11; ++body) {
                swe_get_planet_name(body, name);
                swe_calc(J, body, 0, xx, serr);
            }
            if (pass == 0) {
                swe_houses(U, 28.6333, 77.2, 'P', cusps, ascmc);
                benchmark::DoNotOptimize(KPAyanamsha(hour));
            }
        }
        benchmark::DoNotOptimize(KPAyanamsha(hour + 5.5));
        benchmark::DoNotOptimize(xx);
        hour += 1e-7;  // keep the library from serving a cached moment
    }
}
BENCHMARK(BM_SweCalls);

static void AtDelhi(clsPlanets& c) { test::AtDelhi(c.clsPerson(), 15, 3, 2024, 10, 0); }

static void BM_Calculate(benchmark::State& state)
{
    clsPlanets c;
    AtDelhi(c);
    clsPerson& p = c.clsPerson();
    for (auto _ : state) {
        c.Calculate();
        benchmark::DoNotOptimize(c.LysPlnt(7));
        p.AddMinutes(1);  // a new moment each time, as in a search
    }
}
BENCHMARK(BM_Calculate);

static void BM_AddMinutes(benchmark::State& state)
{
    clsPerson p;
    p.Day(1);
    p.Month(1);
    p.Year(2024);
    for (auto _ : state) {
        benchmark::DoNotOptimize(p.AddMinutes(150));
        if (p.YearN() > 2200) p.Year(2024);
    }
}
BENCHMARK(BM_AddMinutes);

// The Lagna's search for the start of its sign, as the engine asks it for
// the span of the best moment.
static void BM_Gochara_Lagna(benchmark::State& state)
{
    clsPlanets c;
    AtDelhi(c);
    c.Calculate();
    clsGochara search;
    double start = static_cast<int>(c.PlanetLongi(0) / 30) * 30;
    for (auto _ : state) benchmark::DoNotOptimize(search.Gochara(0, start, 30, c));
}
BENCHMARK(BM_Gochara_Lagna);

// Sunrise on a fresh chart: the memo is empty every time.
static void BM_SunRiseTime(benchmark::State& state)
{
    for (auto _ : state) {
        clsPlanets c;
        AtDelhi(c);
        benchmark::DoNotOptimize(c.SunRiseTime());
    }
}
BENCHMARK(BM_SunRiseTime);

static void BM_DaySheet(benchmark::State& state)
{
    clsPlanets place;
    AtDelhi(place);
    // The names come from the text store of the build.
    place.setTextDB(Database::Open(AppPath("EPHE\\ENGLISH\\ENGLISH.DAT")), nullptr);
    DateTime day = DateTime::FromParts(2024, 3, 15);
    for (auto _ : state) {
        DaySheet s = BuildDaySheet(place, day);
        benchmark::DoNotOptimize(s.Tithis.data());
        day = day.AddDays(1);  // a new day each time
    }
}
BENCHMARK(BM_DaySheet);
