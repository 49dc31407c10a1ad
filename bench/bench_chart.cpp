// Costs on the search's hot path: moving the moment record and reading its
// date. The chart calculation joins this program when it exists.
#include <benchmark/benchmark.h>

#include "ranvel/chart/person.h"

using namespace ranvel;

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

static void BM_GetBirthDate(benchmark::State& state)
{
    clsPerson p;
    p.Day(15);
    p.Month(3);
    p.Year(2024);
    p.Hour(10);
    p.Minutes(30);
    for (auto _ : state) benchmark::DoNotOptimize(p.GetBirthDate());
}
BENCHMARK(BM_GetBirthDate);
