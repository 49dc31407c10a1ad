// Persons between installations: a merge of a large person database into
// the store, every row checked before any is added. Target: at least
// 10,000 persons a second (items_per_second), in memory that does not grow
// with the file.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "ranvel/chart/person.h"
#include "ranvel/data/exchange.h"
#include "ranvel/platform/sinks.h"

using namespace ranvel;
namespace fs = std::filesystem;

namespace {

const char* const kPersonTable =
    "CREATE TABLE Person (Name TEXT COLLATE NOCASE, Sex TEXT, Day TEXT, Month TEXT, Year TEXT, Hour TEXT,"
    " Minutes TEXT, seconds TEXT, AMPM TEXT, Country TEXT, City TEXT, LatDeg TEXT, LatMT TEXT, TextNS TEXT,"
    " LongDeg TEXT, LongMT TEXT, TextEW TEXT, GMTDIFF TEXT, TCorrVal TEXT, Tcorrinde TEXT);";

constexpr int kPersons = 100020;

fs::path Folder()
{
    static const fs::path dir = [] {
        fs::path d = fs::temp_directory_path() / "ranvel-bench-exchange";
        fs::remove_all(d);
        fs::create_directories(d);
        auto file = Database::Create((d / "many.JKD").string());
        file->ExecuteScript(kPersonTable);
        Database::Transaction t(*file);
        for (int i = 0; i < kPersons; ++i)
            file->InsertRow("Person", ExchangeFields(),
                            {Variant("Person " + std::to_string(i)), Variant("1"), Variant(std::to_string(1 + i % 28)),
                             Variant("3"), Variant("1990"), Variant(std::to_string(i % 24)), Variant("45"),
                             Variant("0"), Variant("1"), Variant("India"), Variant("18"), Variant("31"),
                             Variant("N"), Variant("73"), Variant("51"), Variant("E"), Variant("Pune"),
                             Variant("+05.30")});
        t.Commit();
        return d;
    }();
    return dir;
}

void BM_ImportPersons(benchmark::State& state)
{
    HeadlessProgressSink quiet;
    SetProgressSink(&quiet);
    const fs::path dir = Folder();
    for (auto _ : state) {
        state.PauseTiming();
        fs::remove(dir / "RECOS.Dat");
        auto store = Database::Create((dir / "RECOS.Dat").string());
        store->ExecuteScript(kPersonTable);
        state.ResumeTiming();
        benchmark::DoNotOptimize(ImportPersons((dir / "many.JKD").string(), *store, &clsPerson::CheckRow));
    }
    state.SetItemsProcessed(state.iterations() * kPersons);
    SetProgressSink(nullptr);
}
BENCHMARK(BM_ImportPersons)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
