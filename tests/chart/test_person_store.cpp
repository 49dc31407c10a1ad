// The person table behind the moment record: round trips through the file,
// browsing order, and the odd corners (Null correction, unescaped names).
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "ranvel/chart/person.h"
#include "ranvel/platform/vbmath.h"

using namespace ranvel;

namespace {
std::shared_ptr<Database> PersonDatabase(const std::string& name)
{
    const char* dir = std::getenv("RANVEL_TEST_TMP");
    std::filesystem::path p = dir ? dir : std::filesystem::temp_directory_path();
    std::filesystem::create_directories(p);
    p /= name;
    std::filesystem::remove(p);
    auto db = Database::Create(p.string());
    db->ExecuteScript(
        "CREATE TABLE Person (Name TEXT COLLATE NOCASE, Sex INTEGER, Day INTEGER, Month INTEGER, Year INTEGER,"
        " Hour INTEGER, Minutes INTEGER, seconds INTEGER, AMPM INTEGER, Country TEXT COLLATE NOCASE,"
        " City TEXT COLLATE NOCASE, LatDeg INTEGER, LatMT INTEGER, TextNS TEXT, LongDeg INTEGER, LongMT INTEGER,"
        " TextEW TEXT, GMTDIFF TEXT, TCorrVal TEXT, Tcorrinde INTEGER);"
        "CREATE VIEW qryPersonName AS SELECT * FROM Person ORDER BY Name;");
    return db;
}

clsPerson Asha()
{
    clsPerson p;
    p.Name("Asha");
    p.Sex(2);
    p.Day(2);
    p.Month(9);
    p.Year(1990);
    p.Hour(7);
    p.Minutes(5);
    p.AMPM(1);
    p.Country("India");
    p.PLOB("Pune");
    p.LatDeg(18);
    p.LatMT(31);
    p.TextNS("N");
    p.LongDeg(73);
    p.LongMT(51);
    p.TextEW("E");
    p.GMTDIFF("+05.30");
    p.TimeCorr("+00.00");
    return p;
}
}  // namespace

TEST(PersonStore, AddBrowseSaveDeleteThroughTheFile)
{
    auto db = PersonDatabase("persons_roundtrip.dat");
    clsPerson p = Asha();
    p.SetDB(db);
    EXPECT_EQ(p.RecordCount(), 0);
    p.MoveTo(3);  // nothing to move to: nothing happens
    EXPECT_EQ(p.Name(), "Asha");
    p.AddNew();
    p.Name("Bharat");
    p.Sex(1);
    p.AddNew();

    clsPerson q;
    q.SetDB(db);  // browses by name
    EXPECT_EQ(q.RecordCount(), 2);
    q.MoveFirst();
    EXPECT_EQ(q.Name(), "Asha");
    EXPECT_EQ(q.GetBirthDate().ToIsoText(), "1990-09-02T07:05:00");
    EXPECT_EQ(q.PLOB(), "Pune");
    EXPECT_EQ(q.GetLatti(), "18.31N");
    q.MoveNext();
    EXPECT_EQ(q.Name(), "Bharat");
    q.Hour(23);
    q.Save();

    clsPerson r;
    r.SetDB(db);
    ASSERT_TRUE(r.FindPerson("bharat"));  // names compare without regard to case
    EXPECT_EQ(r.Hour(), "23");
    EXPECT_FALSE(r.FindPerson("Chitra"));
    r.MoveTo(1);
    r.Delete();
    clsPerson s;
    s.SetDB(db);
    EXPECT_EQ(s.RecordCount(), 1);
}

TEST(PersonStore, NullCorrectionAndUnescapedNames)
{
    auto db = PersonDatabase("persons_null.dat");
    db->Execute(
        "INSERT INTO Person VALUES ('Dev', 1, 1, 1, 2000, 6, 0, 0, 1, 'India', 'Delhi', 28, 38, 'N', 77, 12, 'E',"
        " '+05.30', NULL, NULL)");
    clsPerson p;
    p.SetDB(db);
    p.MoveFirst();
    EXPECT_EQ(p.TimeCorr(), "+00.00");
    EXPECT_EQ(p.TimeCorrInde(), 0);
    // An apostrophe breaks the search query; there is no escaping.
    EXPECT_THROW(p.FindPerson("D'Souza"), DatabaseError);
    clsPerson unbound;
    EXPECT_THROW(unbound.FindPerson("Dev"), vb::RuntimeError);
}

// The check an imported person passes: what the store could load back and
// a chart could be cast from.
TEST(PersonStore, ARowIsTakenOnlyWhenItLoadsBackAsAPerson)
{
    const std::vector<std::string> fields = {"Name",    "Sex",    "Day",   "Month",   "Year",   "Hour",
                                             "Minutes", "seconds", "AMPM", "Country", "City",   "LatDeg",
                                             "LatMT",   "TextNS", "LongDeg", "LongMT", "TextEW", "GMTDIFF",
                                             "TCorrVal", "Tcorrinde"};
    auto row = [&](const std::string& name, const Variant& day, const Variant& month, const Variant& hour) {
        std::vector<Variant> v = {name.empty() ? Variant::Null() : Variant(name), Variant("1"), day, month,
                                  Variant("1990"), hour, Variant("45"), Variant("0"), Variant("1"), Variant("India"),
                                  Variant("Pune"), Variant("18"), Variant("31"), Variant("N"), Variant("73"),
                                  Variant("51"), Variant("E"), Variant("+05.30"), Variant::Null(), Variant::Null()};
        return Recordset(nullptr, "Person", fields, {v}, {}, false);
    };
    EXPECT_NO_THROW(clsPerson::CheckRow(row("Asha", Variant("12"), Variant("3"), Variant("17"))));
    struct Case {
        const char* what;
        Recordset rs;
    } refused[] = {
        {"no name", row("", Variant("12"), Variant("3"), Variant("6"))},
        {"apostrophe", row("Sean O'Brien", Variant("12"), Variant("3"), Variant("6"))},
        {"day not a number", row("Ravi", Variant("xx"), Variant("3"), Variant("6"))},
        {"empty day", row("Ravi", Variant::Null(), Variant("3"), Variant("6"))},
        {"30 February", row("Ravi", Variant("30"), Variant("2"), Variant("6"))},
        {"hour 24", row("Ravi", Variant("12"), Variant("3"), Variant("24"))},
    };
    for (Case& c : refused) EXPECT_ANY_THROW(clsPerson::CheckRow(c.rs)) << c.what;
}
