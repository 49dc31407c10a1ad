// Personal attributes from a Moon set by hand: the tables over all
// Nakshatras and signs, the two literal tables read by text search with
// their irregular entries, and the keys the names are asked under.
#include <map>
#include <string>

#include "chart_fixture.h"
#include "ranvel/platform/sinks.h"

using namespace ranvel;
using namespace ranvel::test;

namespace {

class Attributes : public ChartTest {
protected:
    void MoonInNakshatra(int n) { chart.PlanetLongi(7, (n - 0.5) * 360.0 / 27.0); }
    void MoonInSign(int s) { chart.PlanetLongi(7, s * 30.0 - 15.0); }

    clsPlanets chart;
};

}  // namespace

TEST_F(Attributes, NakshatraTables)
{
    // The Yoni string: the twelfth serves one Nakshatra only, and the
    // first and last share theirs with the far end of the list.
    for (auto [nak, y] : {std::pair{1, 1}, {24, 1}, {2, 2}, {27, 2}, {22, 12}}) {
        MoonInNakshatra(nak);
        EXPECT_EQ(chart.YoniNo(), y) << nak;
    }
    chart.PlanetLongi(7, 360);  // Nakshatra 28 is not in the table
    EXPECT_EQ(chart.YoniNo(), 0);
    EXPECT_EQ(clsPlanets::RajjuType(5), "H");
    EXPECT_EQ(clsPlanets::RajjuType(28), "");

    // A Gana asked for 0 is the birth Nakshatra's, written back.
    MoonInNakshatra(9);
    int k = 0;
    EXPECT_EQ(chart.Gana(k), 1);
    EXPECT_EQ(k, 9);
}

TEST_F(Attributes, VarnaTakesItsTableFromTheReckoning)
{
    EXPECT_EQ(chart.CalcModVarna(), 1);  // read now and held by this chart
    clsPlanets south;
    south.CalcModVarna(2);
    MoonInSign(3);
    south.PlanetLongi(7, 75);
    EXPECT_EQ(chart.VarnaNo(), 1);
    EXPECT_EQ(south.VarnaNo(), 2);
    EXPECT_EQ(chart.VasyaNo(), 1);
    chart.PlanetLongi(7, 360);  // off the signs
    EXPECT_EQ(chart.VarnaNo() + chart.VasyaNo() + chart.GrahaMaitriNo(), 0);
}

TEST(AttributeTables, GrahaRelationGoesByTheClosingTag)
{
    struct Pair {
        int a, b, relation;
    };
    for (Pair p : {Pair{1, 7, 1}, {1, 2, 2}, {1, 3, 3}, {2, 7, 3}, {3, 1, 3}, {6, 5, 2}, {6, 3, 1}, {7, 6, 2},
                   {8, 9, 3}, {9, 2, 1},
                   // Venus's neutrals close as friends, Saturn's enemies as neutrals.
                   {3, 4, 1}, {3, 5, 1}, {6, 1, 2}, {6, 7, 2}, {6, 4, 2}})
        EXPECT_EQ(clsPlanets::GrahaRelation(p.a, p.b), p.relation) << p.a << " " << p.b;
    // A planet the row does not hold is an error, not an answer.
    for (auto [a, b] : {std::pair{1, 1}, {7, 7}, {1, 8}, {8, 10}, {0, 1}, {10, 1}})
        EXPECT_THROW(clsPlanets::GrahaRelation(a, b), vb::RuntimeError) << a << " " << b;
}

TEST_F(Attributes, NamesAreAskedUnderTheirOwnKeys)
{
    auto db = Database::Create(":memory:");
    db->ExecuteScript(
        "CREATE TABLE CNVT (Head TEXT COLLATE NOCASE, Val TEXT, Category TEXT COLLATE NOCASE);"
        "INSERT INTO CNVT VALUES ('1','Brahmin','VARNA'),('2','Kshatriya','VARNA'),('3','Vaishya','VARNA'),"
        "('JALCHAR','Water-dweller','VASYA'),('1','Horse','Yoni'),('3','Deva','Gana'),('1','Adi','Nadi'),"
        "('1','Vata','NADIPADA'),('1H','Pada','Rajju'),('5H','Shiro','Rajju'),('F','Letter','Rajju');");
    HeadlessMessageSink sink(true);
    SetMessageSink(&sink);
    chart.setTextDB(db, nullptr);

    // Aries: Varna number 3 but key "2"; under the other reckoning number 2
    // and key "3".
    MoonInSign(1);
    EXPECT_EQ(chart.Varna(), "Kshatriya");
    chart.CalcModVarna(2);
    EXPECT_EQ(chart.Varna(), "Vaishya");
    MoonInSign(4);
    EXPECT_EQ(chart.Varna(), "Brahmin");
    EXPECT_EQ(chart.Vasya(), "Water-dweller");

    MoonInNakshatra(1);
    EXPECT_EQ(chart.YoniName(), "Horse");
    EXPECT_EQ(chart.AssignGana(), "Deva");
    EXPECT_EQ(chart.AssignNadi(), "Adi");
    EXPECT_EQ(chart.NadiPada(), "Vata");
    EXPECT_EQ(chart.Rajju(), "Pada");
    MoonInNakshatra(14);
    EXPECT_EQ(chart.Rajju(), "Shiro");
    EXPECT_TRUE(sink.Messages().empty());
    SetMessageSink(nullptr);
}
