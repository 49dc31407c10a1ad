// Sunrise and sunset on the true horizon, when the user chooses them: the
// Sun's disc centre without refraction at the true place, against swetest's
// Hindu rising at places west, south and far north; a day the Sun does not
// rise; and a chart's copy, which carries no hemisphere letters, finding
// the same sunrise as the chart it was copied from.
#include <regex>

#include "chart/chart_fixture.h"

extern "C" {
#include <swephexp.h>
}

namespace ranvel::test {
namespace {

using Place = TestPlace;

class SunHorizon : public ChartTest {
protected:
    void SetUp() override
    {
        ChartTest::SetUp();
        store.Set("Settings", "AstroSunrise", "1");
    }
    std::unique_ptr<clsPlanets> At(const Place& p, int day, int month, int year, int hour)
    {
        auto c = std::make_unique<clsPlanets>();
        PutAt(c->clsPerson(), p, day, month, year, hour, 0);
        c->clsPerson().TimeCorr("0");
        c->Calculate();
        return c;
    }
};

// The rises and sets (Julian days, UT) swetest gives from a date on.
std::vector<std::pair<char, double>> SwetestRiseSet(const Place& p, int day, int month, int year)
{
    const double lon = (p.lonDeg + p.lonMin / 60.0) * (std::string(p.ew) == "W" ? -1 : 1);
    const double lat = (p.latDeg + p.latMin / 60.0) * (std::string(p.ns) == "S" ? -1 : 1);
    char cmd[256];
    std::snprintf(cmd, sizeof cmd, "swetest -b%d.%d.%d -rise -hindu -p0 -n4 -geopos%.6f,%.6f,0 -head 2>/dev/null",
                  day, month, year, lon, lat);
    std::vector<std::pair<char, double>> out;
    FILE* f = popen(cmd, "r");
    if (!f) return out;
    static const std::regex item(R"((rise|set)\s+(\d+)\.(\d+)\.(\d+)\s+(\d+):(\d+):([\d.]+))");
    char line[512];
    while (std::fgets(line, sizeof line, f)) {
        const std::string s(line);
        for (std::sregex_iterator it(s.begin(), s.end(), item), end; it != end; ++it) {
            const std::smatch& m = *it;
            const double hours = std::stod(m[5]) + std::stod(m[6]) / 60 + std::stod(m[7]) / 3600;
            out.push_back({m[1].str()[0], swe_julday(std::stoi(m[4]), std::stoi(m[3]), std::stoi(m[2]), hours, SE_GREG_CAL)});
        }
    }
    pclose(f);
    return out;
}

// A chart's HH.MM number as minutes of the day.
int Minutes(double hhmm) { return static_cast<int>(std::floor(hhmm + 1e-9)) * 60 + static_cast<int>(std::lround((hhmm - std::floor(hhmm + 1e-9)) * 100)); }

// The first rise or set after a moment, as minutes of the clock gmt hours
// after Greenwich.
int ClockMinutesOfFirst(const std::vector<std::pair<char, double>>& events, char kind, double afterUt, double gmt)
{
    for (const auto& [k, jd] : events)
        if (k == kind && jd > afterUt) {
            const double h = std::fmod((jd + 0.5 - std::floor(jd + 0.5)) * 24 + gmt + 48, 24);
            return static_cast<int>(std::lround(h * 60)) % 1440;
        }
    return -1;
}

int Apart(int a, int b)
{
    const int d = std::abs(a - b) % 1440;
    return std::min(d, 1440 - d);
}

TEST_F(SunHorizon, RiseAndSetAgreeWithSwetestWestSouthAndFarNorth)
{
    const Place places[] = {
        {"New York", 40, 43, "N", 74, 0, "W", "-4"},
        {"Sydney", 33, 52, "S", 151, 13, "E", "10"},
        {"Reykjavik", 64, 9, "N", 21, 57, "W", "0"},
    };
    for (const Place& p : places) {
        auto chart = At(p, 15, 6, 2024, 12);
        const double gmt = vb::Val(p.gmt);
        // From the day itself: swetest lists a second, earlier set at high
        // latitudes when it is asked from the day before.
        const auto events = SwetestRiseSet(p, 15, 6, 2024);
        ASSERT_FALSE(events.empty()) << "swetest is missing: run scripts/setup";
        const double midnight = swe_julday(2024, 6, 15, -gmt, SE_GREG_CAL);
        const double noon = swe_julday(2024, 6, 15, 12 - gmt, SE_GREG_CAL);
        EXPECT_LE(Apart(Minutes(chart->SunRiseTime()), ClockMinutesOfFirst(events, 'r', midnight, gmt)), 1) << p.name;
        EXPECT_LE(Apart(Minutes(chart->SunSetTime()), ClockMinutesOfFirst(events, 's', noon, gmt)), 1) << p.name;
        EXPECT_FALSE(chart->SunWithoutHorizon()) << p.name;

        // A copy of the chart, as the search makes them, has no letters of
        // its own and still stands at the true place.
        clsPlanets copy;
        chart->CopySettingTo(copy);
        copy.clsPerson().TimeCorr("0");
        copy.Calculate();
        EXPECT_EQ(copy.SunRiseTime(), chart->SunRiseTime()) << p.name;
    }
}

TEST_F(SunHorizon, ADayWithoutSunriseFallsBackToTheEclipticRule)
{
    const Place tromso = {"Tromso", 69, 39, "N", 18, 57, "E", "2"};
    auto chart = At(tromso, 21, 6, 2024, 12);
    const double rise = chart->SunRiseTime();
    EXPECT_TRUE(chart->SunWithoutHorizon());
    store.Set("Settings", "AstroSunrise", "0");
    auto plain = At(tromso, 21, 6, 2024, 12);
    EXPECT_EQ(rise, plain->SunRiseTime());
    EXPECT_FALSE(plain->SunWithoutHorizon());
}

}  // namespace
}  // namespace ranvel::test
