// Signs, dignity, combustion and the planet names of a chart whose
// longitudes are set by hand: the unwrapped combustion distance, the
// one-sided enemy table, the sign memo that outlives a change of sky, and
// the short-name check against a damaged text store.
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>

#include "chart_fixture.h"
#include "ranvel/platform/sinks.h"

using namespace ranvel;
using namespace ranvel::test;

namespace {

class Predicates : public ChartTest {
protected:
    clsPlanets chart;
};


}  // namespace

TEST_F(Predicates, CombustionTakesThePlainDistanceWithoutWrap)
{
    chart.PlanetLongi(1, 100);
    for (double moon : {112.0, 88.0}) {
        chart.PlanetLongi(7, moon);
        EXPECT_TRUE(chart.Combust(7).ToBool()) << moon;
    }
    for (double moon : {112.01, 87.99}) {
        chart.PlanetLongi(7, moon);
        EXPECT_FALSE(chart.Combust(7).ToBool()) << moon;
    }
    chart.PlanetLongi(1, 359);
    chart.PlanetLongi(2, 1);  // two degrees apart across 0 Aries, yet 358 here
    EXPECT_FALSE(chart.Combust(2).ToBool());
    EXPECT_TRUE(chart.WithinOrbOfSun(2));  // this one does wrap
    EXPECT_FALSE(chart.WithinOrbOfSun(1));

    EXPECT_EQ(chart.Combust(1), Variant(false));
    EXPECT_TRUE(chart.Combust(8).IsEmpty());
    EXPECT_TRUE(chart.Combust(0).IsEmpty());

    EXPECT_TRUE(clsPlanets::CheckIfCombust(100, 4, 108));
    EXPECT_FALSE(clsPlanets::CheckIfCombust(100, 4, 108.5));
    EXPECT_FALSE(clsPlanets::CheckIfCombust(100, 1, 100));  // no orb, no combustion
    EXPECT_FALSE(clsPlanets::CheckIfCombust(100, 8, 100));
}

TEST_F(Predicates, RetrogradeNarrowsTheOrbButNotCombustion)
{
    chart.PlanetLongi(1, 100);
    chart.PlanetLongi(3, 106.5);
    chart.PlanetLongi(16, 106.6);  // Venus an hour later: direct
    EXPECT_EQ(chart.PlanetOrb(3), 7);
    chart.PlanetLongi(16, 106.4);
    EXPECT_TRUE(chart.RetroGrade(3));
    EXPECT_EQ(chart.PlanetOrb(3), 6);
    EXPECT_TRUE(chart.Combust(3).ToBool());  // still within 7
    EXPECT_EQ(chart.PlanetMutOrb(1, 7), 13.5);
    EXPECT_EQ(chart.PlanetOrb(8), 0);

    chart.PlanetLongi(1, 359.9);
    chart.PlanetLongi(14, 0.05);  // a direct Sun crossing 0 Aries
    EXPECT_TRUE(chart.RetroGrade(1));
    EXPECT_FALSE(chart.RetroGrade(13));
    EXPECT_THROW(chart.RetroGrade(14), vb::RuntimeError);

    // The Lagna compares the empty slot 0 with the ayanamsha, not itself.
    chart.PlanetLongi(0, 200);
    chart.PlanetLongi(13, 23.5);
    EXPECT_FALSE(chart.RetroGrade(0));
    chart.PlanetLongi(13, -0.5);
    EXPECT_TRUE(chart.RetroGrade(0));
}

TEST_F(Predicates, TablesOfDignityLordshipAndEnmity)
{
    EXPECT_TRUE(clsPlanets::IsPlanetEnemy(2, 4));
    EXPECT_FALSE(clsPlanets::IsPlanetEnemy(4, 2));
    EXPECT_TRUE(clsPlanets::IsPlanetEnemy(1, 3));
    EXPECT_TRUE(clsPlanets::IsPlanetEnemy(3, 1));
    EXPECT_FALSE(clsPlanets::IsPlanetEnemy(1, 2));
    EXPECT_FALSE(clsPlanets::IsPlanetEnemy(2, 1));
    EXPECT_TRUE(clsPlanets::IsPlanetEnemy(9, 7));
    EXPECT_FALSE(clsPlanets::IsPlanetEnemy(7, 9));
    for (int x = 0; x <= 13; ++x) EXPECT_FALSE(clsPlanets::IsPlanetEnemy(5, x)) << x;

    int sign = 4;
    EXPECT_EQ(clsPlanets::FindRashiLordNo(sign), 7);
    EXPECT_EQ(clsPlanets::GetRashiLordNum(12), 5);
    EXPECT_EQ(clsPlanets::GetRashiLordNum(13), 0);
    EXPECT_TRUE(clsPlanets::CheckOwnHouse(12, 8));  // the outer planets have a house too
    EXPECT_FALSE(clsPlanets::CheckOwnHouse(13, 8));
    EXPECT_FALSE(clsPlanets::CheckIfDebi(10, 2));

    chart.PlanetLongi(5, 95);  // Jupiter in Cancer
    chart.PlanetLongi(4, 95);  // Mars there too
    EXPECT_TRUE(chart.Exalted(5));
    EXPECT_TRUE(chart.Debilitated(4));
    EXPECT_FALSE(chart.Exalted(4));
    chart.PlanetLongi(10, 95);
    EXPECT_FALSE(chart.Exalted(10));
}

TEST_F(Predicates, SignsAndTheMemoThatOutlivesTheSky)
{
    chart.PlanetLongi(1, 10);
    EXPECT_EQ(chart.PlanetSign(1), 1);
    chart.PlanetLongi(1, 40);
    EXPECT_EQ(chart.PlanetSign(1), 1);  // the first sign stands
    EXPECT_EQ(chart.Sign(1), 1);        // shared with Sign
    EXPECT_EQ(chart.PlanetRashiNum(1), 2);

    chart.PlanetLongi(14, 10);
    EXPECT_EQ(chart.PlanetSign(14), 1);
    chart.PlanetLongi(14, 40);
    EXPECT_EQ(chart.PlanetSign(14), 2);  // beyond the memo: always afresh

    // Sign cuts towards zero where PlanetRashiNum floors.
    chart.PlanetLongi(2, -10);
    EXPECT_EQ(chart.PlanetRashiNum(2), 0);
    EXPECT_EQ(chart.Sign(2), 1);

    chart.PlanetLongi(7, 359.9);
    EXPECT_EQ(chart.RashiNum(), 12);
    chart.PlanetLongi(7, 360);
    EXPECT_EQ(chart.RashiNum(), 0);

    // The sum of the signs, not their difference.
    chart.PlanetLongi(0, 350);
    chart.PlanetLongi(3, 355);
    EXPECT_EQ(chart.PlanetHouse(3), 1);  // 12 + 12 + 1 is 25
    chart.PlanetLongi(0, 5);
    EXPECT_EQ(chart.PlanetHouse(3), 2);

    for (auto [sun, ayan] : {std::pair{100.0, 1}, {120.0, 2}, {269.0, 2}, {270.0, 1}, {360.0, 0}}) {
        chart.PlanetLongi(1, sun);
        EXPECT_EQ(chart.GetSunAyan(), ayan) << sun;
    }
}

TEST_F(Predicates, NamesAndTheShortNameCheck)
{
    auto db = Database::Create(":memory:");
    db->ExecuteScript(
        "CREATE TABLE CNVT (Head TEXT COLLATE NOCASE, Val TEXT, Category TEXT COLLATE NOCASE);"
        "INSERT INTO CNVT VALUES ('1','Aries','Rashi'),('2','Taurus','Rashi'),('3','Gemini','Rashi'),"
        "('4','Cancer','Rashi'),('5','Leo','Rashi'),('6','Virgo','Rashi'),('7','Libra','Rashi'),"
        "('8','Scorpio','Rashi'),('9','Sagittarius','Rashi'),('10','Capricorn','Rashi'),('11','Aquarius','Rashi'),"
        "('12','Pisces','Rashi'),('1','Sun','PLNTABB'),('2','Bud','PLNTABB'),('7','moon','PLNTABB'),"
        "('7','Mo','PLNTABBSU'),('0','Ascendant','PLANETS'),('1','Surya','PLANETS'),('5','Guru','PLANETS');");
    HeadlessMessageSink sink(true);
    SetMessageSink(&sink);
    chart.setTextDB(db, nullptr);

    EXPECT_EQ(chart.ConvertRashi(45.5), "Taurus");  // a fraction: a longitude
    EXPECT_EQ(chart.ConvertRashi(12), "Pisces");
    EXPECT_EQ(chart.ConvertRashi(13), "");  // a longitude of exactly 360
    EXPECT_THROW(chart.ConvertRashi(14), vb::RuntimeError);
    chart.PlanetLongi(0, 100);
    EXPECT_EQ(chart.PlanetRashiName(0), "Cancer");
    chart.PlanetLongi(7, 200);
    EXPECT_EQ(chart.RashiName(), "Libra");
    EXPECT_EQ(chart.PlanetNameSmall(7), "Mo");

    EXPECT_EQ(chart.PlanetName(1), "Sun");
    EXPECT_TRUE(sink.Messages().empty());
    // A tampered or differently cased row: the box, then the text as read.
    for (auto [p, text] : {std::pair{2, "Bud"}, {7, "moon"}}) {
        sink.Clear();
        EXPECT_EQ(chart.PlanetName(p), text);
        ASSERT_EQ(sink.Messages().size(), 1u);
        const Message& m = sink.Messages()[0];
        EXPECT_EQ(m.title, "Invalid Data File");
        EXPECT_EQ(m.text, "Invalid Data File. Please Re-install. Program will Terminate");
        EXPECT_EQ(m.icon, MsgIcon::Critical);
        EXPECT_EQ(m.buttons, MsgButtons::OK);
    }

    // The full names are all read at the first use of any: the missing ones
    // are reported then, and never again.
    sink.Clear();
    EXPECT_EQ(chart.PlanetNameFull(5), "Guru");
    EXPECT_EQ(sink.Messages().size(), 10u);
    EXPECT_EQ(chart.PlanetNameFull(1), "Surya");
    EXPECT_EQ(chart.PlanetNameFull(12), "");
    EXPECT_EQ(sink.Messages().size(), 10u);
    EXPECT_EQ(chart.PlanetNameFull(13), "");
    EXPECT_THROW(chart.PlanetNameFull(14), vb::RuntimeError);
    SetMessageSink(nullptr);
}
