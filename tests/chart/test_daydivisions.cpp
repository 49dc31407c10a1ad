// Day divisions: the week-day sequences of Chowgadiya and Hora, the starts
// and spans reckoned on the plain HH.MM readings of a real Delhi sunrise and
// sunset, and the Hora lord of a planet about the middle of its sign.
#include <climits>

#include "chart_fixture.h"
#include "ranvel/platform/sinks.h"

using namespace ranvel;
using namespace ranvel::test;

namespace {
class DayDivisions : public ChartTest {};
}  // namespace

TEST(DayDivisionTypes, ChowgadiyaAndHoraFollowTheWeekDay)
{
    // The first part of each day, Sunday to Saturday: Udveg, Amrit, Rog,
    // Laabh, Shubh, Chara, Kaal; the first Hora shares the day's base.
    const int firstOfDay[8] = {0, 1, 4, 7, 3, 6, 2, 5};
    for (int d = 1; d <= 7; ++d) {
        EXPECT_EQ(clsPlanets::GetChogadiyaType(1, d), firstOfDay[d]) << d;
        EXPECT_EQ(clsPlanets::GetHoraType(1, d), firstOfDay[d]) << d;
    }
    EXPECT_EQ(clsPlanets::GetChogadiyaType(8, 1), 1);
    EXPECT_EQ(clsPlanets::GetHoraType(8, 3), 7);
    // Sunday night: Shubh, then five on each time; past the sixteenth part
    // the night's base drops out of the sum.
    const int sundayNight[9] = {6, 4, 2, 7, 5, 3, 1, 6, 5};
    for (int k = 9; k <= 17; ++k) EXPECT_EQ(clsPlanets::GetChogadiyaType(k, 1), sundayNight[k - 9]) << k;
    EXPECT_EQ(clsPlanets::GetChogadiyaType(9, 8), 0);
    EXPECT_THROW(clsPlanets::GetChogadiyaType(INT_MAX, 1), vb::RuntimeError);

    for (int d = -1; d <= 8; ++d) EXPECT_EQ(clsPlanets::GetDayHora(d), d >= 1 && d <= 7 ? d : 0) << d;
    const int element[14] = {0, 1, 2, 3, 4, 1, 2, 3, 4, 1, 2, 3, 4, 0};
    for (int s = 0; s <= 13; ++s) EXPECT_EQ(clsPlanets::GetRashiElement(s), element[s]) << s;
}

TEST_F(DayDivisions, StartsAndSpansRestOnThePlainClockReadings)
{
    auto c = Delhi(17, 3, 2024, 11, 0);  // a Sunday
    c->Calculate();
    const double rise = c->SunRiseTime();
    const double set = c->SunSetTime();
    const double D = (set - rise) / 8;
    const double N = ((rise + 12) - (set - 12)) / 8;
    ASSERT_NE(D, c->DayDuration() / 8);  // minutes read as hundredths

    for (int k : {1, 8}) EXPECT_EQ(c->GetChogadiyaSpan(k), D);
    for (int k : {9, 16}) EXPECT_EQ(c->GetChogadiyaSpan(k), N);
    for (int k : {0, 17}) {
        EXPECT_EQ(c->GetChogadiyaSpan(k), 0);
        EXPECT_EQ(c->GetChogadiyaStart(k), 0);
    }
    EXPECT_DOUBLE_EQ(c->GetChogadiyaStart(1), rise);
    EXPECT_DOUBLE_EQ(c->GetChogadiyaStart(9), set);
    for (int k = 1; k < 8; ++k) EXPECT_NEAR(c->GetChogadiyaStart(k + 1) - c->GetChogadiyaStart(k), D, 1e-12) << k;
    // The night's parts run past midnight and are folded back below 24.
    EXPECT_NEAR(c->GetChogadiyaStart(16), set + 7 * N - 24, 1e-12);

    // Sunday's Rahu Kaal is the last eighth of the day; its evil Muhurthas
    // begin the 7th, 4th, 5th and 3rd.
    EXPECT_NEAR(c->GetRahuKaalStartToday() + c->GetRahuKaalSpanToday(), set, 1e-12);
    EXPECT_EQ(c->GetMuhurthaLength(), D);
    const int part[6] = {0, 7, 4, 5, 3, 0};
    for (int e = 0; e <= 5; ++e) EXPECT_NEAR(c->GetEvilMuhurthaStart(e), rise + (part[e] - 1) * D, 1e-12) << e;

    // A Hora is a clock hour from sunrise, folded once past 24.
    EXPECT_NEAR(c->GetHoraStart(3), rise + 2, 1e-12);
    EXPECT_NEAR(c->GetHoraStart(20), rise + 19 - 24, 1e-12);

    auto m = Delhi(18, 3, 2024, 11, 0);  // a Monday: the second eighth
    m->Calculate();
    const double mD = (m->SunSetTime() - m->SunRiseTime()) / 8;
    EXPECT_NEAR(m->GetRahuKaalStartToday(), m->SunRiseTime() + mD, 1e-12);
}

TEST_F(DayDivisions, HoraLordTurnsAfterFifteenDegrees)
{
    for (auto [lon, lord] : {std::pair{0.0, 1}, {15.0, 1}, {15.0001, 7}, {30.0, 7}, {45.0, 7}, {45.0001, 1}}) {
        clsPlanets c;
        c.PlanetLongi(2, lon);
        EXPECT_EQ(c.CheckHora(2), lord) << lon;
        EXPECT_EQ(c.HoraLord(2), lord) << lon;
    }
    // HoraLord takes the sign from the chart's memo: moved on into Taurus,
    // the planet still counts as in Aries there.
    clsPlanets c;
    c.PlanetLongi(4, 10);
    EXPECT_EQ(c.HoraLord(4), 1);
    c.PlanetLongi(4, 40);
    EXPECT_EQ(c.KrishAmsha(4), 10);
    EXPECT_EQ(c.CheckHora(4), 7);
    EXPECT_EQ(c.HoraLord(4), 1);
}

TEST_F(DayDivisions, NamesComeFromTheTextStore)
{
    auto db = Database::Create(":memory:");
    db->ExecuteScript("CREATE TABLE CNVT (Head TEXT COLLATE NOCASE, Val TEXT, Category TEXT COLLATE NOCASE);"
                      "INSERT INTO CNVT VALUES ('Laabh','Labh','Chowgadiya'),('3','Laabh','Other'),('4','Moon','Hora');");
    HeadlessMessageSink sink(true);
    SetMessageSink(&sink);
    clsPlanets chart;
    chart.setTextDB(db, nullptr);
    EXPECT_EQ(chart.GetChowGadiyaName(3), "Labh");
    EXPECT_EQ(chart.GetHoraName(4), "Moon");
    // An unknown Hora gives nothing at once; an unknown type still asks.
    EXPECT_EQ(chart.GetHoraName(8), "");
    EXPECT_TRUE(sink.Messages().empty());
    EXPECT_EQ(chart.GetChowGadiyaName(8), "");
    EXPECT_EQ(sink.Messages().size(), 1u);
    SetMessageSink(nullptr);
}
