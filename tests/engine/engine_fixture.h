// Shared set-up of the engine tests: settings in memory, quiet sinks that
// keep what they were given, a small catalogue of our own in a scratch
// database, and a place at Delhi.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "ranvel/chart/wrap.h"
#include "ranvel/engine/muhurtha.h"
#include "ranvel/engine/request_state.h"
#include "ranvel/platform/settings.h"
#include "ranvel/platform/sinks.h"
#include "support/places.h"

namespace ranvel::test {

inline std::string ScratchPath(const std::string& name)
{
    const char* dir = std::getenv("RANVEL_TEST_TMP");
    std::filesystem::path p = dir ? dir : std::filesystem::temp_directory_path();
    std::filesystem::create_directories(p);
    p /= name;
    std::filesystem::remove(p);
    return p.string();
}

class EngineTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        SetSettingsStore(&store);
        SetMessageSink(&messages);
        SetProgressSink(&progress);
        db = Database::Create(ScratchPath(std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()) +
                                          ".muhu.dat"));
        db->ExecuteScript(
            "CREATE TABLE Muhu (MCode TEXT COLLATE NOCASE, mname TEXT COLLATE NOCASE, Category TEXT COLLATE NOCASE,"
            " val TEXT, Elements TEXT);"
            "CREATE TABLE Score (element TEXT COLLATE NOCASE, Presence INTEGER, maxeffect INTEGER);"
            "CREATE TABLE MuhuConvert (Muhuname TEXT COLLATE NOCASE, MuhuPredcode TEXT);"
            "INSERT INTO Score VALUES ('T',10,-1),('N',10,-1),('D',5,-1),('L',5,0),('TG',4,0),('M12',4,0),"
            "('RIKTABAD',-8,0),('RAHUKAAL',-6,0),('PH',-5,0),('VISHDAY',-7,0),('VISHTITHI',-7,0),"
            "('LAGNASHUDDHI',-4,0),('UTTARAYAN',3,-1);"
            "INSERT INTO MuhuConvert VALUES ('TST1','PTEST');");
        PersonChart().reset();
        MarriageRequest() = false;
    }
    void TearDown() override
    {
        SetSettingsStore(nullptr);
        SetMessageSink(nullptr);
        SetProgressSink(nullptr);
    }

    void AddMuhurtha(const std::string& code, const std::string& name, const std::string& category,
                     const std::string& val, const std::string& elements)
    {
        db->Execute("INSERT INTO Muhu VALUES ('" + code + "','" + name + "','" + category + "','" + val + "','" +
                    elements + "')");
    }

    // A chart at Delhi (28N38, 77E12, GMT 5.5) for the given moment.
    static std::shared_ptr<clsPlanets> Delhi(int day, int month, int year, int hour, int minute)
    {
        auto c = std::make_shared<clsPlanets>();
        AtDelhi(c->clsPerson(), day, month, year, hour, minute);
        return c;
    }

    MemorySettingsStore store;
    HeadlessMessageSink messages{true};
    HeadlessProgressSink progress;
    std::shared_ptr<Database> db;
};

// The working chart set by hand, and whether an item holds on it.
class ElementTest : public EngineTest {
protected:
    void SetUp() override
    {
        EngineTest::SetUp();
        engine = std::make_unique<clsMuhurtha>(db);
        engine->Results.assign(2, MomentResult{});
    }

    // The working chart on a date and clock, with the given longitudes
    // (Lagna as point 0) and every other body parked far from them.
    void Sky(int day, int month, int year, int hour, int minute, std::initializer_list<std::pair<int, double>> points)
    {
        engine->MuhuChart = Delhi(day, month, year, hour, minute);
        clsPlanets& c = *engine->MuhuChart;
        for (int p = 1; p <= 12; ++p) {
            c.PlanetLongi(p, 100 + p);
            c.PlanetLongi(p + 13, 100 + p + 0.01);
        }
        c.PlanetLongi(0, 200);
        for (auto [p, v] : points) {
            c.PlanetLongi(p, v);
            if (p > 0) c.PlanetLongi(p + 13, Norm360(v + 0.01));
        }
        c.ComputeMoonNumbers();
    }

    // Present when the item noted itself in the fruct list (a code without a
    // Score row scores 0 but is noted all the same).
    bool Holds(const std::string& item)
    {
        const std::size_t before = engine->Results.back().FructElems.size();
        engine->CheckElement(item);
        return engine->Results.back().FructElems.size() != before;
    }

    std::unique_ptr<clsMuhurtha> engine;
};

}  // namespace ranvel::test
