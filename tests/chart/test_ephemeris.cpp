// Which ephemeris the positions come from: the library's files where they
// are installed, named with their folder; and asking it changes no chart.
// (Asking before the first chart of a process is what ranvel-cli does on
// every run, so the golden reports hold that case; the files hidden are
// tried by the cli tests, in a process of their own.)
#include <filesystem>

#include "chart_fixture.h"
#include "ranvel/chart/ephemeris.h"

using namespace ranvel;
using namespace ranvel::test;

namespace {

class Ephemeris : public ChartTest {
protected:
    // Every number of the chart read from the library: the bodies now and an
    // hour later, the ayanamsha, the KP cusps, and the day's sunrise.
    std::vector<double> Numbers(int day, int month, int year)
    {
        auto c = Delhi(day, month, year, 10, 0);
        c->Calculate();
        std::vector<double> n;
        for (int p = 0; p <= 26; ++p) n.push_back(c->LysPlnt(p));
        for (int i = 1; i <= 12; ++i) n.push_back(c->KPHouse(i));
        n.push_back(c->SunRiseTime());
        return n;
    }
};

TEST_F(Ephemeris, TheInstalledFilesAreFoundAndNamedWithTheirFolder)
{
    const EphemerisInfo& info = EphemerisInUse();
    ASSERT_TRUE(info.files) << "the ephemeris files are missing: run scripts/setup";
    EXPECT_TRUE(std::filesystem::exists(std::filesystem::path(info.folder) / "sepl_18.se1")) << info.folder;
    EXPECT_GT(info.denum, 0);
    const std::string sentence = EphemerisSentence();
    EXPECT_EQ(sentence.rfind("Ephemeris: Swiss Ephemeris " + info.version + " files (", 0), 0u) << sentence;
    EXPECT_NE(sentence.find(info.folder), std::string::npos) << sentence;
}

TEST_F(Ephemeris, AskingLeavesEveryChartAsItWas)
{
    // Dates in the probe's file and far from it, and the probe's own day
    // (the library keeps its last answer per body).
    for (auto [d, m, y] : {std::tuple{15, 3, 2024}, std::tuple{1, 1, 2000}, std::tuple{9, 7, 1850}}) {
        const std::vector<double> before = Numbers(d, m, y);
        DetectEphemeris();
        const std::vector<double> after = Numbers(d, m, y);
        ASSERT_EQ(before.size(), after.size());
        for (std::size_t i = 0; i < before.size(); ++i)
            EXPECT_EQ(before[i], after[i]) << "number " << i << " of " << d << "/" << m << "/" << y;
    }
}

}  // namespace
