// Shared set-up of the chart tests: settings in memory (never the user's
// store), a record at a place, and the outside reference swetest.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "ranvel/chart/planets.h"
#include "ranvel/platform/settings.h"
#include "ranvel/platform/vbmath.h"
#include "support/places.h"

namespace ranvel::test {

class ChartTest : public ::testing::Test {
protected:
    void SetUp() override { SetSettingsStore(&store); }
    void TearDown() override { SetSettingsStore(nullptr); }

    void Set(const std::string& key, const std::string& value) { store.Set("Init", key, value); }

    // A new chart whose record is at Delhi (28N38, 77E12, GMT +5.5).
    std::unique_ptr<clsPlanets> Delhi(int day, int month, int year, int hour, int minute)
    {
        auto c = std::make_unique<clsPlanets>();
        AtDelhi(c->clsPerson(), day, month, year, hour, minute);
        c->clsPerson().Name("Test");
        c->clsPerson().TimeCorr("0");
        return c;
    }

    MemorySettingsStore store;
};

// Runs swetest with the given arguments and reads one number per line.
inline std::vector<double> Swetest(const std::string& args)
{
    std::string cmd = "swetest " + args + " -head 2>/dev/null";
    std::vector<double> values;
    FILE* f = popen(cmd.c_str(), "r");
    if (!f) return values;
    char line[512];
    while (std::fgets(line, sizeof line, f)) {
        std::string s(line);
        // The value is the last field of the line.
        std::size_t end = s.find_last_not_of(" \t\r\n");
        if (end == std::string::npos) continue;
        std::size_t start = s.find_last_of(" \t", end);
        values.push_back(vb::ParseNumber(s.substr(start == std::string::npos ? 0 : start + 1, end - start)));
    }
    pclose(f);
    return values;
}

}  // namespace ranvel::test
