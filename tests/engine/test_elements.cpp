// The element tests on skies set directly: each code true and false where
// its rule turns, the fruct list it writes, and the persons' paths.
#include "engine_fixture.h"

using namespace ranvel;
using namespace ranvel::test;

using Elements = ElementTest;

TEST_F(Elements, EqualityCodesCompareTheirArgumentAsText)
{
    Sky(17, 3, 2024, 10, 0, {{1, 10}, {7, 9.9}, {0, 350}});  // Moon a hair behind the Sun: tithi 30
    EXPECT_TRUE(Holds("T:30"));
    EXPECT_FALSE(Holds("T:0"));
    EXPECT_FALSE(Holds("T"));
    EXPECT_FALSE(Holds("T:30:1"));  // two colons: a code and no argument
    EXPECT_TRUE(Holds("t:30"));     // the code is upper-cased
    EXPECT_TRUE(Holds("KP:30"));
    EXPECT_TRUE(Holds("N:1"));
    EXPECT_TRUE(Holds("D:1"));  // 17 March 2024 was a Sunday
    EXPECT_FALSE(Holds("D:01"));
    EXPECT_TRUE(Holds("L:12"));
    EXPECT_EQ(engine->Results.back().FructElems, "T-10:T-10:KP-0:N-10:D-5:L-5:");
}

TEST_F(Elements, TheLagnasSignIsTheFirstOneAsked)
{
    Sky(17, 3, 2024, 10, 0, {{0, 350}});
    EXPECT_TRUE(Holds("L:12"));
    engine->MuhuChart->PlanetLongi(0, 15);  // the same chart object, another sky
    EXPECT_TRUE(Holds("L:12"));
    EXPECT_FALSE(Holds("L:1"));
}

TEST_F(Elements, CalendarDefectsAndYogas)
{
    Sky(18, 3, 2024, 7, 30, {{1, 0}, {7, 342}});  // tithi 29, a Monday at 07:30
    EXPECT_TRUE(Holds("RIKTABAD"));
    EXPECT_TRUE(Holds("RAHUKAAL"));
    EXPECT_EQ(engine->Results.back().FructElems, "RIKTABAD--8:RAHUKAAL--6:");
    Sky(18, 3, 2024, 9, 0, {{1, 0}, {7, 354}});  // tithi 30; 09:00 is past the window
    EXPECT_FALSE(Holds("RIKTABAD"));
    EXPECT_FALSE(Holds("RAHUKAAL"));
    Sky(17, 3, 2024, 18, 0, {});  // Sunday's window ends before 18:00
    EXPECT_FALSE(Holds("RAHUKAAL"));

    Sky(17, 3, 2024, 10, 0, {{7, 300}});
    EXPECT_TRUE(Holds("PH"));
    EXPECT_FALSE(Holds("DISHASHULA"));  // Sunday
    Sky(18, 3, 2024, 10, 0, {});
    EXPECT_TRUE(Holds("DISHASHULA"));  // Monday
    // Bhadra: the karana of the cycle's seventh half-tithi on tithi 4 of a
    // morning.
    Sky(17, 3, 2024, 12, 59, {{1, 0}, {7, 42.5}});
    EXPECT_EQ(engine->MuhuChart->KaranNumber(), 7);
    EXPECT_EQ(engine->MuhuChart->Tithi(), 4);
    EXPECT_TRUE(Holds("BHADRA"));
    Sky(17, 3, 2024, 13, 0, {{1, 0}, {7, 42.5}});
    EXPECT_FALSE(Holds("BHADRABAD"));
}

TEST_F(Elements, SunMoonAndLagnaDoshas)
{
    Sky(17, 3, 2024, 10, 0, {{1, 280}, {7, 70}, {0, 100}});
    EXPECT_TRUE(Holds("UTTARAYAN"));        // Sun in sign 10
    EXPECT_TRUE(Holds("EARTHSLEEPING"));    // sign 10 read as a degree
    EXPECT_FALSE(Holds("KRANTISAMYA"));
    EXPECT_FALSE(Holds("JAMITRADOSHA"));
    engine->MuhuChart->PlanetLongi(6, 345);  // a body in the twelfth from a lagna in sign 4
    EXPECT_TRUE(Holds("JAMITRADOSHA"));

    Sky(17, 3, 2024, 10, 0, {{1, 75}, {7, 80}});
    EXPECT_TRUE(Holds("KRANTISAMYA"));  // both in sign 3
    Sky(17, 3, 2024, 10, 0, {{1, 220}});
    EXPECT_FALSE(Holds("EARTHSLEEPING"));  // sign 8
    Sky(17, 3, 2024, 10, 0, {{1, 310}});
    EXPECT_FALSE(Holds("EARTHSLEEPING"));  // sign 11
    Sky(17, 3, 2024, 10, 0, {{1, 250}});
    EXPECT_TRUE(Holds("KHARMAAS"));
    EXPECT_FALSE(clsMuhurtha::GetHariShayan(10, 3));
    EXPECT_TRUE(clsMuhurtha::GetHariShayan(11, 3));
    EXPECT_TRUE(clsMuhurtha::GetHariShayan(11, 7));
    EXPECT_FALSE(clsMuhurtha::GetHariShayan(12, 7));
}

TEST_F(Elements, TheTaraAndTheMoonOfThePersons)
{
    auto person = Delhi(2, 9, 1990, 7, 5);
    person->PlanetLongi(7, 355);  // natal nakshatra 27, Moon in sign 12
    PersonChart() = person;
    Sky(17, 3, 2024, 10, 0, {{7, 5}});  // moment nakshatra 1, Moon in sign 1
    EXPECT_TRUE(Holds("TG"));            // x = 1 - 27 + 1 + 27 = 2
    EXPECT_TRUE(Holds("M12"));           // 12 - 1 = 11 is no bad distance

    // A marriage: bad for the boy alone still passes; bad for both fails.
    MarriageRequest() = true;
    BoyChart() = Delhi(1, 1, 1995, 6, 0);
    GirlChart() = Delhi(1, 1, 1996, 6, 0);
    BoyChart()->PlanetLongi(7, 185);   // sign 7: six from the moment's sign 1
    GirlChart()->PlanetLongi(7, 5);    // the same sign
    EXPECT_TRUE(Holds("M12"));
    GirlChart()->PlanetLongi(7, 245);  // sign 9: eight from sign 1
    EXPECT_FALSE(Holds("M12"));
    MarriageRequest() = false;
}

TEST_F(Elements, UnknownAndEmptyItemsSpeakAndScoreNothing)
{
    Sky(17, 3, 2024, 10, 0, {});
    EXPECT_EQ(engine->CheckElement("NOSUCH:1"), 0);
    EXPECT_EQ(engine->CheckElement(""), 0);
    ASSERT_EQ(messages.Messages().size(), 2u);
    EXPECT_EQ(messages.Messages()[0].text, "NOSUCH");
    EXPECT_EQ(messages.Messages()[1].text, "");
    // The codes that never hold still read their charts, and make the
    // boy's and girl's charts when they are missing.
    BoyChart().reset();
    EXPECT_FALSE(Holds("BOYSURYA"));
    EXPECT_TRUE(BoyChart() != nullptr);
    EXPECT_FALSE(Holds("VEDHANAK"));
    EXPECT_TRUE(messages.Messages().size() == 2u);
}

TEST_F(Elements, ScoreElementsAddsEveryPassingItem)
{
    db->Execute("INSERT INTO Muhu VALUES ('TST1','Test','Journey','T:30,T:29,N:1,RAHUKAAL,D:1','T,N,RAHUKAAL,D')");
    engine->LoadMuhurtha("TST1");
    Sky(17, 3, 2024, 16, 30, {{1, 10}, {7, 9.9}});
    engine->CurrentScore = 0;
    engine->ScoreElements();
    EXPECT_EQ(engine->CurrentScore, 10 + 10 - 6 + 5);
    EXPECT_TRUE(clsMuhurtha::ElementIsGood("T", engine->Results.back().FructElems));
    EXPECT_FALSE(clsMuhurtha::ElementIsGood("RAHUKAAL", engine->Results.back().FructElems));
}
