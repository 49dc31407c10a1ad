// The day sheet against the chart it reads: each limb's limits agree with a
// fresh chart a minute either side, the limbs chain from before sunrise to
// past the next, skipped and repeated tithis read right, the divisions are
// the chart's members, names are the text store's, and a sample of tithi
// limits lies on the Moon's distance from the Sun as swetest gives it.
#include <cmath>
#include <cstdio>
#include <random>

#include "engine_fixture.h"
#include "ranvel/chart/wrap.h"
#include "ranvel/engine/daysheet.h"
#include "ranvel/platform/apppaths.h"
#include "ranvel/platform/vbmath.h"

using namespace ranvel;
using namespace ranvel::test;

namespace {

using Place = TestPlace;

const Place kPlaces[] = {
    {"Delhi", 28, 38, "N", 77, 12, "E", "5.5"},
    {"Chennai", 13, 5, "N", 80, 17, "E", "5.5"},
    {"New York", 40, 43, "N", 74, 0, "W", "-5"},
    {"Sydney", 33, 52, "S", 151, 12, "E", "10"},
};

std::shared_ptr<clsPlanets> ChartAt(const Place& at, const DateTime& moment, std::shared_ptr<Database> texts = nullptr)
{
    auto c = std::make_shared<clsPlanets>();
    PutAt(c->clsPerson(), at, moment.Day(), moment.Month(), moment.Year(), moment.Hour(), moment.Minute());
    if (texts) c->setTextDB(texts, nullptr);
    return c;
}

int NumberAt(const Place& at, const DateTime& moment, Limb which)
{
    auto c = ChartAt(at, moment);
    c->Calculate();
    return LimbNumberOf(*c, which);
}

}  // namespace

class DaySheetTest : public EngineTest {
protected:
    DaySheet Sheet(const Place& at, const DateTime& date)
    {
        auto place = ChartAt(at, date, texts);
        return BuildDaySheet(*place, date);
    }
    void SetUp() override
    {
        EngineTest::SetUp();
        const std::string path = AppPath("EPHE\\ENGLISH\\ENGLISH.DAT");
        if (std::FILE* f = std::fopen(path.c_str(), "rb")) {
            std::fclose(f);
            texts = Database::Open(path);
        }
    }
    std::shared_ptr<Database> texts;
};

TEST_F(DaySheetTest, LimitsAgreeWithTheChartAMinuteEitherSideAndChainAcrossTheDay)
{
    std::mt19937 random(20261125);
    const Limb limbs[] = {Limb::Tithi, Limb::Nakshatra, Limb::Yoga, Limb::Karana};
    for (int round = 0; round < 6; ++round) {
        const Place& at = kPlaces[round % 4];
        const DateTime date = DateTime::FromParts(2024, 1, 1).AddDays(static_cast<double>(random() % 700));
        const DaySheet s = Sheet(at, date);
        SCOPED_TRACE(std::string(at.name) + " " + date.ToDayFirstText());
        // Sunrise and sunset are searched as north and east whatever the
        // place, so only there do they stand in the day's order.
        if (std::string(at.ew) == "E" && std::string(at.ns) == "N") {
            EXPECT_LT(s.SunriseMoment, s.SunsetMoment);
            EXPECT_LT(s.SunsetMoment, s.NextSunriseMoment);
        }
        for (Limb which : limbs) {
            const std::vector<LimbSpan>& spans = which == Limb::Tithi       ? s.Tithis
                                                 : which == Limb::Nakshatra ? s.Nakshatras
                                                 : which == Limb::Yoga      ? s.Yogas
                                                                            : s.Karanas;
            ASSERT_FALSE(spans.empty());
            EXPECT_LE(spans.front().Start, s.SunriseMoment);
            EXPECT_GE(spans.back().End, s.NextSunriseMoment);
            for (std::size_t i = 0; i < spans.size(); ++i) {
                const LimbSpan& l = spans[i];
                if (i > 0) {
                    EXPECT_EQ(l.Start, spans[i - 1].End);
                    EXPECT_LT(l.Start, s.NextSunriseMoment);
                }
                EXPECT_NE(NumberAt(at, l.Start.AddMinutes(-1), which), l.Number) << l.Start.ToIsoText();
                EXPECT_EQ(NumberAt(at, l.Start.AddMinutes(1), which), l.Number) << l.Start.ToIsoText();
                EXPECT_EQ(NumberAt(at, l.End.AddMinutes(-1), which), l.Number) << l.End.ToIsoText();
                EXPECT_NE(NumberAt(at, l.End.AddMinutes(1), which), l.Number) << l.End.ToIsoText();
            }
        }
    }
}

TEST_F(DaySheetTest, SkippedAndRepeatedTithisReadRight)
{
    bool skipped = false, repeated = false;
    for (int d = 0; d < 90 && !(skipped && repeated); ++d) {
        const DaySheet s = Sheet(kPlaces[0], DateTime::FromParts(2024, 3, 1).AddDays(d));
        if (s.Tithis.size() == 3 && !skipped) {
            // A tithi that begins after sunrise and ends before the next.
            skipped = true;
            EXPECT_GT(s.Tithis[1].Start, s.SunriseMoment);
            EXPECT_LT(s.Tithis[1].End, s.NextSunriseMoment);
        }
        if (s.Tithis.size() == 1 && !repeated) {
            // One tithi holds at both sunrises.
            repeated = true;
            EXPECT_LE(s.Tithis[0].Start, s.SunriseMoment);
            EXPECT_GE(s.Tithis[0].End, s.NextSunriseMoment);
            const DaySheet next = Sheet(kPlaces[0], DateTime::FromParts(2024, 3, 1).AddDays(d + 1));
            EXPECT_EQ(next.Tithis.front().Number, s.Tithis[0].Number);
        }
    }
    EXPECT_TRUE(skipped) << "no skipped tithi in three months";
    EXPECT_TRUE(repeated) << "no repeated tithi in three months";
}

TEST_F(DaySheetTest, DivisionsAreTheChartsMembersAndNamesTheTextStores)
{
    // 7 January 2024 is a Sunday: Rahu Kaal is the last eighth of the day.
    const DaySheet s = Sheet(kPlaces[0], DateTime::FromParts(2024, 1, 7));
    EXPECT_EQ(s.WeekDay, 1);
    const double d = (s.Sunset - s.Sunrise) / 8;
    EXPECT_DOUBLE_EQ(s.RahuKaalSpan, d);
    EXPECT_DOUBLE_EQ(s.RahuKaalStart, s.Sunrise + 7 * d);
    EXPECT_DOUBLE_EQ(s.Chowgadiya[8].Start, s.Sunset);  // part 9 begins at sunset
    ASSERT_EQ(s.Chowgadiya.size(), 16u);
    ASSERT_EQ(s.Horas.size(), 24u);
    EXPECT_EQ(s.Horas[0].Type, 1);  // Sunday's first Hora is the Sun's
    EXPECT_EQ(s.Chowgadiya[8].Type, 6);
    for (const DayPart& h : s.Horas) EXPECT_LT(h.Start, 24);

    if (!texts) GTEST_SKIP() << "the text store of the build is missing";
    auto text = [&](const std::string& category, int key) {
        auto rs = texts->OpenRecordset("SELECT Val FROM CNVT WHERE Head = '" + std::to_string(key) +
                                       "' AND Category = '" + category + "'");
        if (!rs->HasRows()) return std::string();
        rs->MoveFirst();
        return rs->Field("Val").ToTextOrEmpty();
    };
    for (const LimbSpan& l : s.Tithis) EXPECT_EQ(l.Name, text("Tithi", l.Number));
    for (const LimbSpan& l : s.Nakshatras) EXPECT_EQ(l.Name, text("Nakshatra", l.Number));
    for (const LimbSpan& l : s.Yogas) EXPECT_EQ(l.Name, text("Yoga", l.Number));
    for (const LimbSpan& l : s.Karanas) EXPECT_EQ(l.Name, text("KARAN", l.Number));
    EXPECT_EQ(s.DayName, text("DAY", 0));
    for (const LimbSpan& l : s.Tithis) EXPECT_FALSE(l.Name.empty());
}

TEST_F(DaySheetTest, TithiLimitsLieOnTheMoonsDistanceFromTheSunAsSwetestGivesIt)
{
    const DaySheet s = Sheet(kPlaces[0], DateTime::FromParts(2024, 5, 17));
    int checked = 0;
    for (const LimbSpan& l : s.Tithis) {
        // The place's clock less 5.5 hours, asked as ephemeris time as the
        // chart asks it (no delta T for positions).
        const DateTime g = l.End.AddMinutes(-330);
        char args[96];
        std::snprintf(args, sizeof args, "-b%d.%d.%d -t%d:%02d -p01 -fl", g.Day(), g.Month(), g.Year(), g.Hour(),
                      g.Minute());
        std::string cmd = std::string("swetest ") + args + " -head 2>/dev/null";
        std::FILE* f = popen(cmd.c_str(), "r");
        ASSERT_NE(f, nullptr);
        double sun = 0, moon = 0;
        const int read = std::fscanf(f, "%lf %lf", &sun, &moon);
        pclose(f);
        ASSERT_EQ(read, 2) << "swetest is missing: run scripts/setup";
        const double elongation = Norm360(moon - sun);
        const double off = std::remainder(elongation, 12.0);
        // The Moon gains about 0.0085 degrees a minute on the Sun.
        EXPECT_LT(std::fabs(off), 0.01) << "at " << l.End.ToIsoText() << " the distance is " << elongation;
        ++checked;
    }
    EXPECT_GT(checked, 0);
}

// A place the sheet can't be made for is told by the field that is wrong;
// the limits themselves pass.
TEST(DayPlace, RefusalsNameTheField)
{
    auto place = [](const char* lati, const char* longi) {
        RequestPlace p;
        p.Lati = lati;
        p.Longi = longi;
        return p;
    };
    struct Case {
        const char *lati, *longi, *names;
    };
    for (const Case& c : {Case{"090:01", "077:12", "Latitude"}, Case{"028:60", "077:12", "Latitude"},
                          Case{"28:36", "077:12", "Latitude"}, Case{"028:36", "180:01", "Longitude"},
                          Case{"028:36", "", "Longitude"}, Case{"000:00", "000:00", "blank"}}) {
        const std::string why = DayPlaceRefusal(place(c.lati, c.longi));
        EXPECT_NE(why.find(c.names), std::string::npos) << c.lati << " " << c.longi << ": " << why;
    }
    for (const Case& c : {Case{"090:00", "180:00", ""}, Case{"000:00", "000:01", ""}})
        EXPECT_EQ(DayPlaceRefusal(place(c.lati, c.longi)), "") << c.lati << " " << c.longi;
}
