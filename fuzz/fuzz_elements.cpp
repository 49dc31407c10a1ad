// A Muhurtha's two lists of element items as the catalogue could hold them:
// the first line of the input is the test list ("CODE" or "CODE:ARG" items
// joined by ","), the rest the element list. The tests run against one
// calculated moment, with the shipped catalogue in a scratch MUHU.DAT.
//
// Beyond not crashing: the Score and sunrise caches must not change a
// result, so a short list is scored again with them off and must give the
// same score and the same notes.
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>

#include "harness.h"
#include "ranvel/engine/muhurtha.h"
#include "ranvel/engine/request.h"
#include "ranvel/engine/request_state.h"
#include "ranvel/platform/database.h"
#include "ranvel/platform/vbmath.h"

using namespace ranvel;

namespace {

std::unique_ptr<clsMuhurtha> g_engine;

std::shared_ptr<clsPlanets> ChartAt(const std::string& date, const std::string& time)
{
    RequestPerson f;
    f.Name = "Fuzz";
    f.BDate = date;
    f.BTime = time;
    f.City = "Delhi";
    f.Country = "India";
    f.Lati = "028:38";
    f.Longi = "077:12";
    f.GMT = "5.5";
    auto chart = std::make_shared<clsPlanets>();
    FillPersonRecord(chart->clsPerson(), f);
    chart->Calculate();
    return chart;
}

struct Scored {
    bool failed = false;
    std::int32_t score = 0;
    std::string notes;
};

Scored Score(const std::string& tests)
{
    clsMuhurtha& e = *g_engine;
    e.MuhuTests = tests;
    e.CurrentScore = 0;
    e.Results.assign(2, MomentResult{});
    Scored s;
    try {
        e.ScoreElements();
    } catch (const std::exception&) {
        // A quote in a code breaks its Score query, as it always has; the
        // command ends there.
        s.failed = true;
    }
    s.score = e.CurrentScore;
    s.notes = e.Results.back().FructElems;
    return s;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fuzz::Init();
    g_engine = std::make_unique<clsMuhurtha>(fuzz::ScratchCatalogue());
    g_engine->MuhuChart = ChartAt("17/03/2024", "10.30");
    MarriageRequest() = false;
    PersonChart() = ChartAt("15/08/1990", "06.30");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::vector<std::string> lists = fuzz::Lines(data, size, 2);
    const std::string& tests = lists[0];
    const std::string& elements = lists[1];
    fuzz::Messages().Clear();
    clsMuhurtha& e = *g_engine;

    const Scored cached = Score(tests);
    if (vb::Split(tests, ',').size() <= 16) {
        e.SetCaching(false);
        const Scored plain = Score(tests);
        e.SetCaching(true);
        if (plain.failed != cached.failed || plain.score != cached.score || plain.notes != cached.notes)
            fuzz::Fail("the caches changed the result of '" + tests + "': " + std::to_string(cached.score) + " '" +
                       cached.notes + "' against " + std::to_string(plain.score) + " '" + plain.notes + "'");
    }

    e.MuhuElements = elements;
    try {
        (void)e.MaxPossibleScore();
    } catch (const std::exception&) {
        // As above: an element with a quote breaks its query.
    }
    for (const std::string& element : vb::Split(elements, ','))
        (void)clsMuhurtha::ElementIsGood(element, cached.notes);
    return 0;
}
