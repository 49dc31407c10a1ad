// The desktop on screen: the main window with the request form built from
// the shipped data, and the lookups that answer each keystroke of the
// type-ahead boxes over the shipped 7,209 cities.
// Targets: BM_MainWindowWithRequestForm under 0.5 s; every lookup far
// under a keystroke (a few milliseconds); a year's month grids of the
// Muhurtha calendar, BM_CalendarGridsYear, drawn within 100 ms.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <QPainter>

#include "ranvel/app/mdiMother.h"
#include "ranvel/app/startup.h"
#include "ranvel/data/datafiles.h"
#include "ranvel/output/calendarsheet.h"
#include "ranvel/platform/apppaths.h"
#include "ranvel/platform/settings.h"
#include "ranvel/platform/sinks.h"

using namespace ranvel;

namespace {

void BM_MainWindowWithRequestForm(benchmark::State& state)
{
    for (auto _ : state) {
        auto* main = new mdiMother;
        benchmark::DoNotOptimize(main);
        delete main;
    }
}
BENCHMARK(BM_MainWindowWithRequestForm)->Unit(benchmark::kMillisecond);

// Typing into the city box of the place: the lookup with the country.
void BM_CityTyped(benchmark::State& state)
{
    const char* typed[] = {"N", "Ne", "New", "New ", "New D", "New De"};
    std::size_t i = 0;
    for (auto _ : state) {
        auto rs = RecosDB()->OpenRecordset(std::string("SELECT * FROM CITY WHERE CITY LIKE '") + typed[i++ % 6] +
                                           "%' AND Country Like 'India'");
        benchmark::DoNotOptimize(rs->HasRows());
    }
}
BENCHMARK(BM_CityTyped)->Unit(benchmark::kMicrosecond);

// A click on a city: the lookup by the city alone, over every country; "S"
// is the widest first letter.
void BM_CityChosenWidest(benchmark::State& state)
{
    for (auto _ : state) {
        auto rs = RecosDB()->OpenRecordset("SELECT * FROM CITY WHERE CITY LIKE 'S%'");
        benchmark::DoNotOptimize(rs->RecordCount());
    }
}
BENCHMARK(BM_CityChosenWidest)->Unit(benchmark::kMicrosecond);

void BM_CountryTyped(benchmark::State& state)
{
    for (auto _ : state) {
        auto rs = RecosDB()->OpenRecordset("SELECT * FROM Country WHERE Name LIKE 'In%'");
        benchmark::DoNotOptimize(rs->HasRows());
    }
}
BENCHMARK(BM_CountryTyped)->Unit(benchmark::kMicrosecond);

// A year of days, every one tested, drawn as the calendar window draws them.
void BM_CalendarGridsYear(benchmark::State& state)
{
    MuhurthaCalendar cal;
    cal.StartDate = DateTime::FromParts(2025, 1, 1);
    cal.EndDate = DateTime::FromParts(2025, 12, 31);
    int n = 0;
    for (DateTime d = cal.StartDate; d <= cal.EndDate; d = d.AddDays(1), ++n) {
        CalendarDay day;
        day.Day = d;
        day.Tested = true;
        day.Band = 10 + (n * 7 % 10) * 10;
        day.Percent = day.Band - 3.5;
        cal.Days.push_back(day);
    }
    cal.Days[200].EngineBest = true;
    constexpr int kColumns = 3, kCell = 30;  // as the window lays them out
    const QSize size = CalendarGridsSize(cal, kColumns, kCell);
    QImage image(size, QImage::Format_RGB32);
    const CalendarColours colours = CalendarColours::FromActive();
    for (auto _ : state) {
        image.fill(colours.Paper);
        QPainter p(&image);
        PaintCalendarGrids(p, QRect(QPoint(0, 0), size), cal, colours, kColumns, kCell, &cal.Days[40]);
    }
}
BENCHMARK(BM_CalendarGridsYear)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    PrepareApplication(app);
    // Settings and messages stay in memory: the benchmark changes nothing
    // of the user's.
    MemorySettingsStore settings;
    SetSettingsStore(&settings);
    HeadlessMessageSink quiet(true);
    SetMessageSink(&quiet);
    CheckStartupFiles();
    CheckFonts();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    RecosDB().reset();
    return 0;
}
