// The rest of the codes, each on a sky where it holds and one where it does
// not; the sunrise windows on real charts at Delhi.
#include "engine_fixture.h"

using namespace ranvel;
using namespace ranvel::test;

class ElementCodes : public ElementTest {
protected:
    // A day of March 2024 at 10:00; 17 March was a Sunday.
    void Sky(int day, std::initializer_list<std::pair<int, double>> points)
    {
        ElementTest::Sky(day, 3, 2024, 10, 0, points);
    }
};

TEST_F(ElementCodes, YogasOfDayTithiAndNakshatra)
{
    Sky(19, {{1, 0}, {7, 30}});  // Tuesday, tithi 3 (Jaya)
    EXPECT_TRUE(Holds("SD"));
    Sky(20, {{1, 0}, {7, 30}});  // Wednesday asks for Bhadra tithis
    EXPECT_FALSE(Holds("SD"));
    Sky(17, {{1, 282}, {7, 300}});  // Sunday, tithi 2, nakshatra 23
    EXPECT_TRUE(Holds("DP"));
    EXPECT_TRUE(Holds("DP2"));
    EXPECT_FALSE(Holds("TP"));
    Sky(17, {{1, 12}, {7, 30}});  // Sunday, tithi 2, nakshatra 3
    EXPECT_TRUE(Holds("TP2"));
    EXPECT_FALSE(Holds("DP"));
    Sky(17, {{7, 5}});  // Sunday, nakshatra 1
    EXPECT_TRUE(Holds("SSD"));
    Sky(17, {{7, 20}});
    EXPECT_FALSE(Holds("SSD"));
}

TEST_F(ElementCodes, DirectionsAndTheYogini)
{
    Sky(17, {{1, 0}, {7, 20}});  // tithi 2, Moon in sign 1: direction 1
    EXPECT_TRUE(Holds("YOGNIV"));
    EXPECT_TRUE(Holds("MDIR"));
    Sky(17, {{1, 0}, {7, 185}});  // tithi 16, Moon in sign 7: direction 2
    EXPECT_FALSE(Holds("YOGNIV"));
    EXPECT_FALSE(Holds("MDIR"));
}

TEST_F(ElementCodes, TheLunarMonthAndTheSleepOfHari)
{
    // Far from the intercalary span, the Sun's band is the month.
    Sky(17, {{1, 100}, {7, 110}});  // band 4, tithi 1
    EXPECT_TRUE(Holds("M:4"));
    EXPECT_TRUE(Holds("MN:4"));
    EXPECT_FALSE(Holds("M:3"));
    EXPECT_TRUE(Holds("HARISHAYAN"));
    Sky(17, {{1, 200}, {7, 330}});  // month 7, tithi 11
    EXPECT_TRUE(Holds("HARISHAYAN"));
    Sky(17, {{1, 200}, {7, 342}});  // month 7, tithi 12
    EXPECT_FALSE(Holds("HARISHAYAN"));
}

TEST_F(ElementCodes, CombustionAndThePurityOfTheLagna)
{
    Sky(17, {{1, 100}, {5, 105}});
    EXPECT_TRUE(Holds("JUPVENCOMBUST"));
    Sky(17, {{1, 100}, {5, 120}, {3, 115}});
    EXPECT_FALSE(Holds("JUPVENCOMBUST"));

    // Lagna in sign 1: a body's house is its sign plus two, counted round
    // the twelve. Venus in the fourth and Ketu in the ninth keep all free.
    Sky(17, {{0, 15}, {1, 10}, {7, 10}, {4, 10}, {2, 10}, {5, 10}, {3, 40}, {6, 10}, {8, 10}, {9, 190}});
    EXPECT_FALSE(Holds("LAGNASHUDDHI"));
    Sky(17, {{0, 15}, {1, 130}, {7, 10}, {4, 10}, {2, 10}, {5, 10}, {3, 40}, {6, 10}, {8, 10}, {9, 190}});
    EXPECT_TRUE(Holds("LAGNASHUDDHI"));  // the Sun in the seventh
}

TEST_F(ElementCodes, NakshatraDoshas)
{
    // Latta: the Sun's nakshatra kicks the twelfth from it.
    Sky(17, {{1, 5}, {7, 150}});
    EXPECT_TRUE(Holds("LATTADOSHA"));
    Sky(17, {{1, 20}, {7, 150}});
    EXPECT_FALSE(Holds("LATTADOSHA"));

    Sky(17, {{7, 45}, {1, 70}});  // Moon in 4, Sun in 6
    EXPECT_TRUE(Holds("PAATDOSHA"));
    Sky(17, {{7, 45}, {1, 100}});
    EXPECT_FALSE(Holds("PAATDOSHA"));

    Sky(17, {{7, 5}, {1, 6}});
    EXPECT_TRUE(Holds("YUTIDOSHA"));
    EXPECT_FALSE(Holds("UPAGRAHADOSHA"));  // x = 1
    Sky(17, {{7, 55}, {1, 5}});            // x = 5
    EXPECT_TRUE(Holds("UPAGRAHADOSHA"));
    EXPECT_FALSE(Holds("YUTIDOSHA"));

    Sky(17, {{1, 250}, {7, 268}});  // Sun in sign 9, tithi 2
    EXPECT_TRUE(Holds("TITHIDAGDHADOSHA"));
    Sky(17, {{1, 250}, {7, 280}});  // tithi 3
    EXPECT_FALSE(Holds("TITHIDAGDHADOSHA"));

    for (const char* never : {"EKARGALADOSHA", "GIRLGURU", "BOYMOON", "GIRLMOON", "BOYSURYA", "VEDHANAK"})
        EXPECT_FALSE(Holds(never)) << never;
}

TEST_F(ElementCodes, PoisonWindowsFollowTheDaysSunrise)
{
    // On a Sunday the window opens 20 ghatis (8 hours) after the Lagna
    // meets the Sun, and lasts 1.6 on the mixed clock.
    auto at = [&](int hour, int minute) {
        engine->MuhuChart = Delhi(17, 3, 2024, hour, minute);
        engine->MuhuChart->Calculate();
        return Holds("VISHDAY");
    };
    EXPECT_FALSE(at(13, 0));
    EXPECT_TRUE(at(15, 0));
    EXPECT_FALSE(at(17, 0));

    // The tithi's window opens within three ghatis of sunrise and lasts
    // four: some moment of the early morning holds it, noon does not.
    bool seen = false;
    for (int minutes = 5 * 60; minutes <= 11 * 60 && !seen; minutes += 10) {
        engine->MuhuChart = Delhi(17, 3, 2024, minutes / 60, minutes % 60);
        engine->MuhuChart->Calculate();
        seen = Holds("VISHTITHI");
    }
    EXPECT_TRUE(seen);
    engine->MuhuChart = Delhi(17, 3, 2024, 12, 0);
    engine->MuhuChart->Calculate();
    EXPECT_FALSE(Holds("VISHTITHI"));
}
