// The search is what users wait for. A year's scan (ten moments a day) is
// measured against the 3,650 chart calculations it cannot avoid, in the same
// run. Targets: BM_ScanYear_Plain at most 1.5 times BM_Calculate3650, and
// the same year with every code, BM_ScanYear_All (the Vish windows' sunrise
// at every moment), at most 1.5 times BM_ScanYear_Plain. The calendar of a
// year's marriage search, every day's lagna span included, BM_CalendarYear,
// at most 1.5 times BM_ScanYear_All.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>

#include "ranvel/engine/calendar.h"
#include "ranvel/engine/muhurtha.h"
#include "ranvel/engine/request_state.h"
#include "ranvel/platform/settings.h"
#include "ranvel/platform/sinks.h"
#include "support/places.h"

using namespace ranvel;

namespace {

struct Quiet {
    MemorySettingsStore store;
    HeadlessMessageSink messages{true};
    HeadlessProgressSink progress;
    Quiet()
    {
        SetSettingsStore(&store);
        SetMessageSink(&messages);
        SetProgressSink(&progress);
    }
};
Quiet quiet;

std::shared_ptr<Database> Catalogue()
{
    static std::shared_ptr<Database> db = [] {
        auto path = std::filesystem::temp_directory_path() / "ranvel-bench-muhu.dat";
        std::filesystem::remove(path);
        auto d = Database::Create(path.string());
        d->ExecuteScript(
            "CREATE TABLE Muhu (MCode TEXT, mname TEXT, Category TEXT, val TEXT, Elements TEXT);"
            "CREATE TABLE Score (element TEXT COLLATE NOCASE, Presence INTEGER, maxeffect INTEGER);"
            "CREATE TABLE MuhuConvert (Muhuname TEXT, MuhuPredcode TEXT);"
            "INSERT INTO Muhu VALUES ('PLAIN','Plain','Journey',"
            "'T:2,T:3,T:5,T:7,T:10,T:11,T:13,N:1,N:4,N:5,N:7,N:8,N:13,N:14,N:15,N:17,N:22,D:2,D:4,D:5,D:6,"
            "L:2,L:3,L:6,L:7,L:9,L:12,M12,TG,MDIR,RIKTABAD,RAHUKAAL,BHADRA,PH,SD,SSD,DISHASHULA,LAGNASHUDDHI,"
            "YUTIDOSHA,JAMITRADOSHA,LATTADOSHA,PAATDOSHA,UPAGRAHADOSHA,TITHIDAGDHADOSHA',"
            "'T,N,D,L,M12,TG,MDIR,RIKTABAD,RAHUKAAL,BHADRA,PH,SD,SSD,DISHASHULA,LAGNASHUDDHI');"
            "INSERT INTO Muhu VALUES ('ALL','All','Journey',"
            "'T:2,N:4,D:2,D2:3,L:2,L2:5,M12,TG,M:1,KP:5,SP:7,RIKTABAD,UTTARAYAN,RAHUKAAL,DP,TP,PH,SD,SSD,DP2,TP2,"
            "MN:2,BHADRA,BHADRABAD,MDIR,YOGNIV,DISHASHULA,VISHDAY,VISHTITHI,JUPVENCOMBUST,LAGNASHUDDHI,VEDHANAK,"
            "LATTADOSHA,PAATDOSHA,KRANTISAMYA,YUTIDOSHA,JAMITRADOSHA,EKARGALADOSHA,UPAGRAHADOSHA,TITHIDAGDHADOSHA,"
            "EARTHSLEEPING,HARISHAYAN,KHARMAAS,BOYSURYA,GIRLGURU,BOYMOON,GIRLMOON','T,N,D');"
            "INSERT INTO Muhu VALUES ('MARR','Wedding','Marriage',"
            "'T:2,T:3,T:5,T:7,T:10,T:11,T:13,N:4,N:5,N:13,N:14,N:17,D:2,D:4,D:5,D:6,L:2,L:3,L:6,L:7,L:9,L:12,M12,"
            "TG,M:1,RIKTABAD,RAHUKAAL,BHADRA,PH,VISHDAY,VISHTITHI,LAGNASHUDDHI,JAMITRADOSHA,KHARMAAS,BOYSURYA,"
            "GIRLGURU,BOYMOON,GIRLMOON','T,N,D,L,M12,TG,RIKTABAD,RAHUKAAL,PH,VISHDAY,VISHTITHI');"
            "INSERT INTO Score VALUES ('T',10,-1),('N',10,-1),('D',5,-1),('L',8,-1),('M12',5,0),('TG',5,0),"
            "('RIKTABAD',-8,0),('RAHUKAAL',-6,0),('PH',-5,0),('VISHDAY',-7,0),('VISHTITHI',-7,0);");
        return d;
    }();
    return db;
}

std::shared_ptr<clsPlanets> Place()
{
    auto c = std::make_shared<clsPlanets>();
    test::AtDelhi(c->clsPerson(), 1, 1, 2024, 0, 0);
    c->Calculate();
    return c;
}

void ScanYear(benchmark::State& state, const char* name)
{
    auto place = Place();
    PersonChart() = Place();
    for (auto _ : state) {
        clsMuhurtha e(Catalogue());
        e.CheckMuhurtha(name, "Journey", DateTime::FromParts(2024, 1, 1), DateTime::FromParts(2024, 12, 30), 0.0, 23.59,
                        *place);
        benchmark::DoNotOptimize(e.BestMuhuScore());
    }
}

// The headings and band sentences the calendar reads, one for each.
std::shared_ptr<Database> Texts()
{
    static std::shared_ptr<Database> db = [] {
        auto path = std::filesystem::temp_directory_path() / "ranvel-bench-text.dat";
        std::filesystem::remove(path);
        auto d = Database::Create(path.string());
        std::string sql = "CREATE TABLE Muhu (Head TEXT, Category TEXT, Val TEXT);";
        for (const char* code : {"T", "N", "D", "L", "M12", "TG", "M", "RIKTABAD", "RAHUKAAL", "BHADRA", "PH", "VISHDAY",
                                 "VISHTITHI", "LAGNASHUDDHI", "JAMITRADOSHA", "KHARMAAS", "BOYSURYA", "GIRLGURU",
                                 "BOYMOON", "GIRLMOON"})
            sql += std::string("INSERT INTO Muhu VALUES ('") + code + "','MuhuElems','Heading of " + code + "');";
        for (int band = 10; band <= 100; band += 10)
            sql += "INSERT INTO Muhu VALUES ('" + std::to_string(band) + "','Muhuscore','Band sentence');";
        d->ExecuteScript(sql);
        return d;
    }();
    return db;
}

std::shared_ptr<clsPlanets> Born(int day, int month, int year, int hour, int minute)
{
    auto c = std::make_shared<clsPlanets>();
    test::AtDelhi(c->clsPerson(), day, month, year, hour, minute);
    c->Calculate();
    return c;
}

}  // namespace

static void BM_Calculate3650(benchmark::State& state)
{
    auto c = Place();
    for (auto _ : state) {
        // Each moment's bodies are read, as the scan's tests read them.
        for (int i = 0; i < 3650; ++i) {
            c->clsPerson().AddMinutes(150);
            c->Calculate();
            benchmark::DoNotOptimize(c->LysPlnt(7));
        }
    }
}
BENCHMARK(BM_Calculate3650)->Unit(benchmark::kMillisecond);

static void BM_ScanYear_Plain(benchmark::State& state) { ScanYear(state, "Plain"); }
BENCHMARK(BM_ScanYear_Plain)->Unit(benchmark::kMillisecond);

static void BM_ScanYear_All(benchmark::State& state) { ScanYear(state, "All"); }
BENCHMARK(BM_ScanYear_All)->Unit(benchmark::kMillisecond);

static void BM_CalendarYear(benchmark::State& state)
{
    auto place = Place();
    BoyChart() = Born(14, 8, 1994, 9, 20);
    GirlChart() = Born(3, 2, 1996, 17, 45);
    MarriageRequest() = true;
    for (auto _ : state) {
        clsMuhurtha e(Catalogue());
        e.MuhuChart->setTextDB(Texts(), nullptr);
        e.CheckMuhurtha("Wedding", "Marriage", DateTime::FromParts(2024, 1, 1), DateTime::FromParts(2024, 12, 30), 6.0,
                        22.0, *place);
        MuhurthaCalendar cal = BuildCalendar(e);
        benchmark::DoNotOptimize(cal.Ranked.data());
    }
    MarriageRequest() = false;
}
BENCHMARK(BM_CalendarYear)->Unit(benchmark::kMillisecond);
