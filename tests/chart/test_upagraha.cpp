// The sensitive points: the arcs from a Sun set by hand, the memo that only
// the mode's setter clears, and the day-part points on real days at Delhi,
// each against the Lagna of a chart built apart at the moment it stands for.
#include "chart_fixture.h"
#include "ranvel/chart/wrap.h"
#include "ranvel/platform/sinks.h"

using namespace ranvel;
using namespace ranvel::test;

namespace {

class Upagraha : public ChartTest {
protected:
    // The Lagna at Delhi on that date at decimal hour t.
    double LagnaAt(int day, int month, int year, double t)
    {
        auto c = Delhi(day, month, year, static_cast<int>(vb::Fix(t)), 0);
        c->clsPerson().Minutes(FractionOf(t) * 60);
        c->Calculate();
        return c->PlanetLongi(0);
    }
    static double Rise(clsPlanets& c) { return clsPlanets::MinToDec(c.SunRiseTime()); }

    clsPlanets chart;
};

}  // namespace

TEST_F(Upagraha, ArcsChainFromTheSunAndAreNamedByNumber)
{
    chart.PlanetLongi(1, 101);
    const double expected[10] = {0, 234 + 1.0 / 3, 125 + 2.0 / 3, 305 + 2.0 / 3, 54 + 1.0 / 3, 71,
                                 181, 221, 287 + 2.0 / 3, 7 + 2.0 / 3};
    for (int n = 1; n <= 9; ++n) EXPECT_NEAR(chart.UpagrahaLongi(n), expected[n], 1e-9) << n;
    EXPECT_EQ(chart.UpagrahaLongi(18), 0);
    // Ulka at 221: Scorpio, ruled by Mars; Nakshatra 17, third quarter.
    EXPECT_EQ(chart.UpagrahaSign(7), 8);
    EXPECT_EQ(chart.UpagrahaLord(7), 4);
    EXPECT_EQ(chart.UpagrahaNak(7), 17);
    EXPECT_EQ(chart.UpaNakPada(7), 3);

    // The chain through IndraChapa ends 30 degrees short of a full turn.
    for (double sun : {0.5, 29.9, 359.0}) {
        clsPlanets c;
        c.PlanetLongi(1, sun);
        EXPECT_NEAR(c.UpaketuLongi(), Norm360(sun - 30), 1e-9) << sun;
    }

    auto db = Database::Create(":memory:");
    db->ExecuteScript("CREATE TABLE CNVT (Head TEXT COLLATE NOCASE, Val TEXT, Category TEXT COLLATE NOCASE);"
                      "INSERT INTO CNVT VALUES ('16','Gulika','Upagrahas'),('1','Dhuma','Other');");
    HeadlessMessageSink sink(true);
    SetMessageSink(&sink);
    chart.setTextDB(db, nullptr);
    EXPECT_EQ(chart.UpagrahaName(16), "Gulika");
    EXPECT_EQ(chart.UpagrahaNameSmall(16), "Gul");
    EXPECT_TRUE(sink.Messages().empty());
    EXPECT_EQ(chart.UpagrahaName(1), "");
    EXPECT_EQ(sink.Messages().size(), 1u);
    SetMessageSink(nullptr);
}

TEST_F(Upagraha, PointsAndTheDaySpanAreKeptUntilTheModeIsSet)
{
    EXPECT_EQ(chart.UpagrahaMode(), 1);
    chart.PlanetLongi(1, 10);
    EXPECT_EQ(chart.BhukampaLongi(), 90);
    chart.PlanetLongi(1, 20);
    EXPECT_EQ(chart.BhukampaLongi(), 90);
    EXPECT_EQ(chart.UlkaLongi(), 130);  // built on the kept Bhukampa
    chart.UpagrahaMode(2);
    EXPECT_EQ(store.Get("Settings", "UpagrahaMode"), "2");
    EXPECT_EQ(chart.UpagrahaMode(), 2);
    EXPECT_EQ(chart.BhukampaLongi(), 100);

    // A point that comes out at 0 reads as not yet computed.
    clsPlanets c;
    c.PlanetLongi(1, -80);
    EXPECT_EQ(c.BhukampaLongi(), 0);
    c.PlanetLongi(1, 20);
    EXPECT_EQ(c.BhukampaLongi(), 100);

    auto d = Delhi(17, 3, 2024, 11, 0);
    const double rise = d->SunRiseTime();
    d->clsPerson().Month(9);
    EXPECT_EQ(d->SunRiseTime(), rise);
    d->UpagrahaMode(1);
    EXPECT_NE(d->SunRiseTime(), rise);
}

TEST_F(Upagraha, DayPointsAreLagnasAtTheEighthsOfTheDay)
{
    auto c = Delhi(17, 3, 2024, 11, 0);  // a Sunday morning
    c->Calculate();
    ASSERT_TRUE(c->DayBirth());
    const double rise = Rise(*c);
    const double day = c->DayDuration();
    const double gulika = c->GulikaLong();
    EXPECT_DOUBLE_EQ(gulika, LagnaAt(17, 3, 2024, rise + 7 * day / 8));
    EXPECT_EQ(c->GulikaSign(), static_cast<int>(gulika / 30) + 1);
    EXPECT_DOUBLE_EQ(c->KalaBelaLong(), LagnaAt(17, 3, 2024, rise + day / 8));
    EXPECT_DOUBLE_EQ(c->MandiLong(), LagnaAt(17, 3, 2024, rise + 26.0 / 30 * day));
    const double kodanda = c->KodandaLong();

    // On a Monday mode 1 puts KalaBela at sunrise itself.
    auto m = Delhi(18, 3, 2024, 11, 0);
    m->Calculate();
    EXPECT_DOUBLE_EQ(m->KalaBelaLong(), LagnaAt(18, 3, 2024, Rise(*m)));
    const double mondayGulika = m->GulikaLong();
    EXPECT_DOUBLE_EQ(mondayGulika, LagnaAt(18, 3, 2024, Rise(*m) + 6 * m->DayDuration() / 8));

    // Under the other mode each point moves back an eighth, and Monday's
    // KalaBela wraps round to the sixth, where mode 1 has Gulika.
    c->UpagrahaMode(2);
    EXPECT_DOUBLE_EQ(c->GulikaLong(), kodanda);
    EXPECT_DOUBLE_EQ(c->KalaBelaLong(), LagnaAt(17, 3, 2024, rise));
    m->UpagrahaMode(0);
    EXPECT_DOUBLE_EQ(m->KalaBelaLong(), mondayGulika);
}

TEST_F(Upagraha, NightPointsRunFromSunsetAndStayOnTheDate)
{
    auto c = Delhi(17, 3, 2024, 22, 0);  // Sunday night
    c->Calculate();
    ASSERT_FALSE(c->DayBirth());
    const double set = clsPlanets::MinToDec(c->SunSetTime());
    const double night = c->NightDuration();
    EXPECT_DOUBLE_EQ(c->GulikaLong(), LagnaAt(17, 3, 2024, set + 3 * night / 8));
    EXPECT_DOUBLE_EQ(c->MandiLong(), LagnaAt(17, 3, 2024, set + 10.0 / 30 * night));
    // The last eighth falls past midnight: the hour wraps but the date is
    // not moved on, so the point is the Lagna of that morning's small hours.
    const double t = set + 7 * night / 8;
    ASSERT_GT(t, 24);
    EXPECT_DOUBLE_EQ(c->ArdhaPraharLong(), LagnaAt(17, 3, 2024, t - 24));
}
