// The panchanga of a chart whose Sun and Moon are set by hand: the Moon
// numbers at their bounds, the two karana rules, the lunar month around its
// uneven bands and the intercalary window, and the names behind the numbers.
#include <cstdlib>
#include <filesystem>
#include <string>

#include "chart_fixture.h"
#include "ranvel/platform/sinks.h"

using namespace ranvel;
using namespace ranvel::test;

namespace {

class Panchanga : public ChartTest {
protected:
    // Sun and Moon at the given longitudes, the Moon numbers worked out.
    void Sky(double sun, double moon)
    {
        chart.PlanetLongi(1, sun);
        chart.PlanetLongi(7, moon);
        chart.ComputeMoonNumbers();
    }
    // The elongation of the Moon from a Sun at 0.
    void Elongation(double x) { Sky(0, x); }

    clsPlanets chart;
};


const DateTime kEpoch = DateTime::FromParts(2004, 7, 3);
// Well outside the intercalary window: the plain solar month.
const DateTime kPlain = kEpoch.AddHours(5000);

}  // namespace

TEST_F(Panchanga, TithiTurnsAtTheNewMoonAndYogaFoldsOnce)
{
    Sky(100, 100);
    EXPECT_EQ(chart.Tithi(), 1);
    Sky(100, 100 - 1e-9);  // a hair behind the Sun: the last tithi
    EXPECT_EQ(chart.Tithi(), 30);
    Sky(100, 280);
    EXPECT_EQ(chart.Tithi(), 16);
    EXPECT_DOUBLE_EQ(chart.TithiValue(), 180);
    Sky(280, 100);
    EXPECT_DOUBLE_EQ(chart.TithiValue(), 180);  // negative lifted by 360

    EXPECT_EQ(clsPlanets::TithiShuklaKrishna(15), 1);
    EXPECT_EQ(clsPlanets::TithiShuklaKrishna(16), 2);
    EXPECT_EQ(clsPlanets::GetTithiType(5), 1);
    EXPECT_EQ(clsPlanets::GetTithiType(17), 2);
    EXPECT_EQ(clsPlanets::GetTithiType(29), 4);
    EXPECT_EQ(clsPlanets::GetTithiType(30), 1);
    EXPECT_EQ(clsPlanets::GetTithiType(0), 0);
    EXPECT_EQ(clsPlanets::GetTithiType(31), 0);

    Sky(359, 360);  // sum 719: 54, less 27
    EXPECT_EQ(chart.YogaNumber(), 27);
    Sky(360, 360);  // sum 720 is taken down only once
    EXPECT_EQ(chart.YogaNumber(), 28);
}

TEST_F(Panchanga, PadaKeepsTheSliverAboveItsLastBound)
{
    Sky(0, 13.33333332);  // beyond 13.3333333: the distance itself
    EXPECT_DOUBLE_EQ(chart.NakPada(), 13.33333332);
    Sky(0, 13.33333334);  // just into the next nakshatra
    EXPECT_EQ(chart.Pada(), 1);
    Sky(0, 0);  // on the boundary ModReal gives the whole span
    EXPECT_DOUBLE_EQ(chart.Pada(), 360.0 / 27);
    Sky(0, 3.3333333334);
    EXPECT_EQ(chart.Pada(), 2);
    Sky(0, 10);  // bounds count as inside: the earlier band wins
    EXPECT_EQ(chart.Pada(), 3);
    Sky(0, 13.3333333);
    EXPECT_EQ(chart.Pada(), 4);
    Sky(0, 40 + 11);
    EXPECT_EQ(chart.Pada(), 4);

    EXPECT_EQ(clsPlanets::NakPadaNum(3.4), 2);
    EXPECT_EQ(clsPlanets::NakPadaNum(0), 5);  // the lifted zero again
}

TEST_F(Panchanga, NakshatraAndItsSchemeOfTwentyEight)
{
    Sky(0, 360);
    EXPECT_EQ(chart.Nakshatra(), 28);
    Sky(0, 276.4);
    EXPECT_EQ(chart.Nak28GetNakshatra(), 28);
    EXPECT_EQ(chart.Nakshatra(), 21);
    Sky(0, 280.54);
    EXPECT_EQ(chart.Nak28GetNakshatra(), 28);
    Sky(0, 280.55);
    EXPECT_EQ(chart.Nak28GetNakshatra(), 22);

    chart.PlanetLongi(0, 30);  // the Lagna, not the never-written slot 0
    EXPECT_EQ(chart.NakOf(0), 3);

    EXPECT_EQ(clsPlanets::GetTaraNum(5, 5), 1);
    EXPECT_EQ(clsPlanets::GetTaraNum(5, 4), 9);
    EXPECT_EQ(clsPlanets::GetTaraNum(1, 27), 9);
    EXPECT_EQ(clsPlanets::GetTaraNum(20, 3), 2);  // 3 - 20 + 1 wraps to 11
}

TEST_F(Panchanga, TheTwoKaranaRulesPartAtTheEnds)
{
    struct Case {
        double x;
        int number;  // the engine's
        int named;   // the pages'
    };
    const Case cases[] = {{3, 11, 11},   {6, 1, 11},    {12, 2, 2},    {48, 8, 8},    {342, 8, 8},
                          {345, 1, 8},   {348, 2, 9},   {353.9, 2, 9}, {354, 3, 10}, {359, 3, 10},
                          {360, 4, 0}};
    for (const Case& c : cases) {
        Elongation(c.x);
        EXPECT_EQ(chart.KaranNumber(), c.number) << "x = " << c.x;
        EXPECT_EQ(chart.KaranNum(), c.named) << "x = " << c.x;
    }
}

TEST_F(Panchanga, SolarMonthBandsAndTheIntercalaryWindow)
{
    EXPECT_EQ(clsPlanets::VikramiMonth(0, kPlain), 1);
    EXPECT_EQ(clsPlanets::VikramiMonth(269.99, kPlain), 9);
    EXPECT_EQ(clsPlanets::VikramiMonth(300, kPlain), 10);  // the tenth runs to 310
    EXPECT_EQ(clsPlanets::VikramiMonth(310, kPlain), 11);
    EXPECT_EQ(clsPlanets::VikramiMonth(315, kPlain), 11);
    EXPECT_EQ(clsPlanets::VikramiMonth(330, kPlain), 12);
    EXPECT_EQ(clsPlanets::VikramiMonth(360, kPlain), 0);
    EXPECT_EQ(clsPlanets::VikramiMonth(-0.01, kPlain), 0);

    EXPECT_EQ(clsPlanets::VikramiMonth(300, kEpoch), 9);
    EXPECT_EQ(clsPlanets::VikramiMonth(0, kEpoch), 0);
    EXPECT_EQ(clsPlanets::VikramiMonth(360, kEpoch), -1);
    // Half an hour before is one whole hour back, the end of the last cycle.
    EXPECT_EQ(clsPlanets::VikramiMonth(300, DateTime::FromParts(2004, 7, 2, 23, 30)), 10);
    EXPECT_EQ(clsPlanets::VikramiMonth(300, kEpoch.AddHours(1392).AddMinutes(59)), 9);
    EXPECT_EQ(clsPlanets::VikramiMonth(300, kEpoch.AddHours(1393)), 10);
    EXPECT_EQ(clsPlanets::VikramiMonth(300, kEpoch.AddHours(24816)), 9);
    EXPECT_EQ(clsPlanets::VikramiMonth(300, kEpoch.AddHours(-24816 + 5)), 9);
}

TEST_F(Panchanga, WeekDayLordsAndDirections)
{
    EXPECT_EQ(clsPlanets::WeekDayLordFromDay(1), 1);
    EXPECT_EQ(clsPlanets::WeekDayLordOfDay(7), 6);
    EXPECT_EQ(clsPlanets::WeekDayLordOfDay(8), 0);

    chart.SetBirthDate(DateTime::FromParts(2024, 3, 15, 23, 59));  // a Friday
    EXPECT_EQ(chart.WeekDayLord(), 3);
    chart.clsPerson().Minutes(60);  // the clock runs over into Saturday
    EXPECT_EQ(chart.WeekDayLord(), 6);

    Sky(0, 45);
    EXPECT_EQ(chart.FindPlanetDirection(7), 4);
    Sky(0, 100);
    EXPECT_EQ(chart.FindPlanetDirection(7), 3);
    Sky(0, 360);
    EXPECT_EQ(chart.FindPlanetDirection(7), 0);
}

TEST_F(Panchanga, NamesComeFromTheTextStoreUnderTheNumber)
{
    std::string rows;
    for (int i = 1; i <= 28; ++i) rows += "('" + std::to_string(i) + "','Nak" + std::to_string(i) + "','Nakshatra'),";
    auto db = Database::Create(":memory:");
    db->ExecuteScript(
        "CREATE TABLE CNVT (Head TEXT COLLATE NOCASE, Val TEXT, Category TEXT COLLATE NOCASE);"
        "INSERT INTO CNVT VALUES " + rows +
        "('1','Pratipada','Tithi'),('5','Panchami','Tithi'),('30','Amavasya','Tithi'),"
        "('1','Ketu lord','Naklord'),('9','Mercury lord','Naklord'),"
        "('3','Ayushman','Yoga'),('27','Vaidhriti','Yoga'),('11','Kimstughna','KARAN'),('8','Vishti','KARAN'),"
        "('0','Sravan','IndianMonths');");
    HeadlessMessageSink sink(true);
    SetMessageSink(&sink);
    chart.setTextDB(db, nullptr);

    Sky(100, 100 - 1e-9);
    EXPECT_EQ(chart.TithiName(), "Amavasya");
    Variant t = std::string("4.2");
    EXPECT_EQ(chart.GetTithiName(t), "Panchami");
    EXPECT_EQ(t.ToText(), "5");  // raised in place

    Variant n = 45.5;  // a longitude
    EXPECT_EQ(chart.GetNakshatraName(n), "Nak4");
    EXPECT_EQ(n.ToLong(), 4);
    n = 28;
    EXPECT_EQ(chart.GetNakshatraName(n), "Nak28");
    n = 29;
    EXPECT_THROW(chart.GetNakshatraName(n), vb::RuntimeError);

    EXPECT_EQ(chart.GetNakLordName(19), "Ketu lord");  // 19, 10, 1
    EXPECT_EQ(chart.GetNakLordName(27), "Mercury lord");

    Sky(359, 360);
    EXPECT_EQ(chart.YogaName(), "Vaidhriti");
    Variant y = 2.5;
    EXPECT_EQ(chart.ConvertYoga(y), "Ayushman");
    EXPECT_EQ(y.ToDouble(), 3);
    EXPECT_EQ(chart.FindYoga(3).ToText(), "Ayushman");

    Elongation(6);
    EXPECT_EQ(chart.KaranName(), "Kimstughna");
    Elongation(345);
    EXPECT_EQ(chart.KaranName(), "Vishti");
    EXPECT_EQ(chart.GetVikramiMonth(clsPlanets::VikramiMonth(0, kEpoch)), "Sravan");
    EXPECT_TRUE(sink.Messages().empty());
    SetMessageSink(nullptr);
}
