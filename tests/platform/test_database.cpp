#include "ranvel/platform/database.h"

#include <gtest/gtest.h>

#include "platform/scratch.h"

namespace ranvel {
namespace {

using testing::ReadFile;
using testing::ScratchDir;

class DatabaseTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        path_ = (ScratchDir() / "RECOS.Dat").string();
        auto db = Database::Create(path_);
        db->ExecuteScript(R"(
            CREATE TABLE City (City TEXT COLLATE NOCASE, Country TEXT COLLATE NOCASE, Lat TEXT,
                               GMTDIFF TEXT, Pop INTEGER, Area REAL);
            INSERT INTO City VALUES ('Pune', 'India', '018.31', '+05.30', 3, 331.26);
            INSERT INTO City VALUES ('Delhi', 'India', '028.39', '+05.30', 16, 1484.0);
            INSERT INTO City VALUES ('Kathmandu', 'Nepal', '027.42', NULL, 1, NULL);
            INSERT INTO City VALUES ('Agra', 'India', '027.10', '+05.30', 2, 188.4);
            CREATE TABLE Language (Name TEXT COLLATE NOCASE, directory TEXT,
                                   Include INTEGER DEFAULT 0, HeaderSize INTEGER DEFAULT 14);
            INSERT INTO Language VALUES ('English', 'ENGLISH', -1, 16);
            INSERT INTO Language VALUES ('Hindi', 'HINDI', 0, 12);
            CREATE VIEW qryCityName AS SELECT * FROM City ORDER BY City;
            CREATE VIEW qryCityCount AS SELECT Country, count(*) AS N FROM City GROUP BY Country;
        )");
    }

    std::vector<std::string> Column(Recordset& rs, const char* field)
    {
        std::vector<std::string> out;
        for (rs.MoveFirst(); !rs.IsEOF(); rs.MoveNext()) out.push_back(rs.Field(field).ToText());
        return out;
    }

    std::string path_;
};

TEST_F(DatabaseTest, ReadsRowsInOrderWithFieldsByAnyCase)
{
    auto db = Database::Open(path_);
    auto rs = db->OpenRecordset("city");  // a bare name opens the whole table
    EXPECT_EQ(rs->FieldNames(), (std::vector<std::string>{"City", "Country", "Lat", "GMTDIFF", "Pop", "Area"}));
    EXPECT_EQ(Column(*rs, "CITY"), (std::vector<std::string>{"Pune", "Delhi", "Kathmandu", "Agra"}));

    rs->MoveFirst();
    rs->Move(2);
    EXPECT_EQ(rs->Field("country").ToText(), "Nepal");
    EXPECT_TRUE(rs->Field("GmtDiff").IsNull());
    EXPECT_TRUE(rs->Field("area").IsNull());
    EXPECT_EQ(rs->Field("pop"), Variant(1LL));
    rs->MoveFirst();
    EXPECT_EQ(rs->Field("Area"), Variant(331.26));
    EXPECT_EQ(rs->Field("Lat"), Variant("018.31"));  // text stays text, leading zero and all

    EXPECT_THROW(rs->Field("Longy"), DatabaseError);
    try {
        rs->Field("Longy");
    } catch (const DatabaseError& e) {
        EXPECT_NE(std::string(e.what()).find("Longy"), std::string::npos);
    }
    rs->MoveLast();
    rs->MoveNext();
    EXPECT_TRUE(rs->IsEOF());
    EXPECT_THROW(rs->Field("City"), DatabaseError);
    EXPECT_THROW(rs->MoveNext(), DatabaseError);

    auto sorted = db->OpenRecordset("SELECT * FROM City WHERE Country = 'INDIA' ORDER BY Pop DESC");
    EXPECT_EQ(Column(*sorted, "City"), (std::vector<std::string>{"Delhi", "Pune", "Agra"}));
    auto none = db->OpenRecordset("SELECT * FROM City WHERE City = 'Nowhere'");
    EXPECT_FALSE(none->HasRows());
    EXPECT_TRUE(none->IsEOF() && none->IsBOF());
}

TEST_F(DatabaseTest, EditAddAndDeleteReachTheFile)
{
    {
        auto db = Database::Open(path_);
        auto rs = db->OpenRecordset("SELECT * FROM City WHERE Country = 'India'");
        ASSERT_TRUE(rs->Updatable());
        rs->MoveNext();  // Delhi
        rs->Edit();
        rs->SetField("gmtdiff", Variant("+05.45"));
        rs->SetField("Pop", Variant(17.0));  // an INTEGER column keeps a whole double as integer
        EXPECT_EQ(rs->Field("GMTDIFF").ToText(), "+05.45");  // the pending value reads back before Update
        rs->Update();
        EXPECT_EQ(rs->Field("Pop"), Variant(17LL));

        rs->AddNew();
        rs->SetField("City", Variant("Chennai"));
        rs->SetField("Country", Variant("India"));
        rs->Update();
        // The row current before AddNew stays current; the new row is last.
        EXPECT_EQ(rs->AbsolutePosition(), 1);
        EXPECT_EQ(rs->Field("City").ToText(), "Delhi");
        rs->MoveLast();
        EXPECT_EQ(rs->Field("City").ToText(), "Chennai");
        EXPECT_TRUE(rs->Field("Lat").IsNull());

        rs->MoveFirst();
        rs->Move(2);  // Agra
        rs->Delete();
        // The deleted row stays current until the next move.
        EXPECT_THROW(rs->Field("City"), DatabaseError);
        EXPECT_THROW(rs->Edit(), DatabaseError);
        EXPECT_EQ(rs->RecordCount(), 3);
        rs->MoveNext();
        EXPECT_EQ(rs->Field("City").ToText(), "Chennai");  // the row after it

        EXPECT_THROW(rs->Update(), DatabaseError);  // no Edit or AddNew pending
        rs->Edit();
        rs->SetField("City", Variant("Madras"));
        rs->MovePrevious();  // moving away drops the change
        auto lang = db->OpenTable("Language");
        lang->AddNew();
        lang->SetField("Name", Variant("Tamil"));
        lang->SetField("Include", Variant(true));
        lang->Update();
        lang->MoveLast();
        // Defaults are read back from the file; a yes/no value is stored as 1.
        EXPECT_EQ(lang->Field("HeaderSize"), Variant(14LL));
        EXPECT_EQ(lang->Field("Include"), Variant(1LL));
    }
    auto db = Database::Open(path_);
    auto rs = db->OpenTable("City");
    EXPECT_EQ(Column(*rs, "City"), (std::vector<std::string>{"Pune", "Delhi", "Kathmandu", "Chennai"}));
    rs->FindFirst("City = 'Delhi'");
    EXPECT_EQ(rs->Field("GMTDIFF").ToText(), "+05.45");
    auto lang = db->OpenRecordset("SELECT * FROM Language WHERE Include <> 0");
    EXPECT_EQ(Column(*lang, "Name"), (std::vector<std::string>{"English", "Tamil"}));
    for (lang->MoveFirst(); !lang->IsEOF(); lang->MoveNext()) EXPECT_TRUE(lang->Field("Include").ToBool());
}

TEST_F(DatabaseTest, SavedQueryOverOneTableCanBeChanged)
{
    auto db = Database::Open(path_);
    EXPECT_TRUE(db->HasTable("QRYCITYNAME"));
    EXPECT_TRUE(db->HasTable("language"));
    EXPECT_FALSE(db->HasTable("Person"));

    auto rs = db->OpenRecordset("qryCityName");
    ASSERT_TRUE(rs->Updatable());
    EXPECT_EQ(rs->FieldNames().size(), 6u);  // the rowid stays hidden
    EXPECT_EQ(Column(*rs, "City"), (std::vector<std::string>{"Agra", "Delhi", "Kathmandu", "Pune"}));
    rs->MoveLast();
    rs->Edit();
    rs->SetField("Lat", Variant("018.32"));
    rs->Update();
    auto check = db->OpenRecordset("SELECT * FROM City WHERE City = 'Pune'");
    EXPECT_EQ(check->Field("Lat").ToText(), "018.32");
    auto filtered = db->OpenRecordset("SELECT * FROM qryCityName WHERE Country = 'India'");
    EXPECT_TRUE(filtered->Updatable());
    EXPECT_EQ(Column(*filtered, "City"), (std::vector<std::string>{"Agra", "Delhi", "Pune"}));
}

TEST_F(DatabaseTest, ReadOnlyRecordsetsRefuseChanges)
{
    auto db = Database::Open(path_);
    for (const char* sql : {"SELECT City, Country FROM City", "SELECT * FROM City c WHERE c.Pop > 1",
                            "SELECT * FROM City, Language", "qryCityCount",
                            "SELECT * FROM City UNION SELECT * FROM City"}) {
        SCOPED_TRACE(sql);
        auto rs = db->OpenRecordset(sql);
        EXPECT_FALSE(rs->Updatable());
        EXPECT_THROW(rs->Edit(), DatabaseError);
        EXPECT_THROW(rs->AddNew(), DatabaseError);
        EXPECT_THROW(rs->Delete(), DatabaseError);
    }
    auto rs = db->OpenRecordset("qryCityCount");
    try {
        rs->Edit();
        FAIL();
    } catch (const DatabaseError& e) {
        EXPECT_STREQ(e.what(), "Operation is not supported for this type of object.");
    }
    // Finding works on read-only rows too.
    rs->FindFirst("Country = 'nepal'");
    EXPECT_FALSE(rs->NoMatch());
    EXPECT_EQ(rs->Field("N"), Variant(1LL));
}

TEST_F(DatabaseTest, FindMovesToMatchingRowsInRecordsetOrder)
{
    auto db = Database::Open(path_);
    auto rs = db->OpenTable("City");
    rs->FindFirst("Country = 'INDIA'");
    EXPECT_EQ(rs->Field("City").ToText(), "Pune");
    rs->FindNext("Country = 'INDIA'");
    EXPECT_EQ(rs->Field("City").ToText(), "Delhi");
    rs->FindNext("Country = 'India'");
    rs->FindNext("Country = 'India'");
    EXPECT_TRUE(rs->NoMatch());
    EXPECT_EQ(rs->Field("City").ToText(), "Agra");  // stays where it was

    rs->FindFirst("City LIKE 'k*'");
    EXPECT_EQ(rs->Field("City").ToText(), "Kathmandu");
    rs->FindFirst("City LIKE 'De?hi' AND Pop > 10");
    EXPECT_EQ(rs->Field("City").ToText(), "Delhi");
    rs->FindFirst("City LIKE '[!p-z]*'");
    EXPECT_EQ(rs->Field("City").ToText(), "Delhi");
    rs->FindFirst("Lat LIKE '02#.4?' OR City LIKE '*I'");  // # one digit; text without regard to case
    EXPECT_EQ(rs->Field("City").ToText(), "Delhi");
    rs->FindNext("Lat LIKE '02#.4?' OR City LIKE '*I'");
    EXPECT_EQ(rs->Field("City").ToText(), "Kathmandu");
    rs->FindFirst("(City = 'Nowhere' OR Country <> 'India') AND GMTDIFF IS NULL");
    EXPECT_EQ(rs->Field("City").ToText(), "Kathmandu");
    rs->FindFirst("Area = 188.4");
    EXPECT_EQ(rs->Field("City").ToText(), "Agra");
    rs->FindFirst("City = 'Nowhere'");
    EXPECT_TRUE(rs->NoMatch());
    EXPECT_EQ(rs->Field("City").ToText(), "Agra");

    auto lang = db->OpenTable("Language");
    lang->FindFirst("Include = True");  // stored as -1
    EXPECT_EQ(lang->Field("Name").ToText(), "English");

    EXPECT_THROW(rs->FindFirst("City = 'O'Brien'"), DatabaseError);
    EXPECT_THROW(rs->FindFirst("Town = 'Pune'"), DatabaseError);
    EXPECT_THROW(rs->FindFirst("City = "), DatabaseError);
    EXPECT_EQ(rs->Field("City").ToText(), "Agra");
}

TEST_F(DatabaseTest, FailuresLeaveTheFileAsItWas)
{
    const std::string before = ReadFile(path_);
    {
        auto db = Database::Open(path_);
        EXPECT_THROW(db->OpenRecordset("SELEC * FROM City"), DatabaseError);
        EXPECT_THROW(db->OpenRecordset("SELECT * FROM Person"), DatabaseError);
        EXPECT_THROW(db->OpenRecordset("SELECT * FROM City WHERE City = 'O'Brien'"), DatabaseError);
        EXPECT_THROW(db->OpenRecordset("DELETE FROM City"), DatabaseError);
        EXPECT_THROW(db->OpenRecordset("SELECT * FROM City; DELETE FROM City"), DatabaseError);
        EXPECT_THROW(db->Execute("UPDATE City SET Pop = 0; DELETE FROM City"), DatabaseError);
        EXPECT_THROW(db->ExecuteScript("UPDATE City SET Pop = 0; INSERT INTO Nowhere VALUES (1);"), DatabaseError);
        try {
            db->Execute("UPDATE City SET Lat = '0' WHERE City = 'O'Brien'");
            FAIL();
        } catch (const DatabaseError& e) {
            // The message carries the query, so the user can tell which failed.
            EXPECT_NE(std::string(e.what()).find("O'Brien"), std::string::npos);
        }
        EXPECT_EQ(db->Execute("UPDATE City SET Pop = Pop WHERE City = 'Nowhere';  "), 0);
    }
    EXPECT_TRUE(ReadFile(path_) == before);  // byte for byte
}

TEST(DatabaseOpen, MissingOrForeignFilesAreErrorsNamingTheFile)
{
    auto dir = ScratchDir();
    testing::WriteFile(dir / "LANGS.Dat", "this is plain text, not a database file at all\n");
    for (auto name : {"NOFILE.DAT", "LANGS.Dat"}) {
        std::string path = (dir / name).string();
        try {
            Database::Open(path);
            ADD_FAILURE() << name;
        } catch (const DatabaseError& e) {
            EXPECT_NE(std::string(e.what()).find(path), std::string::npos) << e.what();
        }
    }
    EXPECT_FALSE(std::filesystem::exists(dir / "NOFILE.DAT"));  // opening never creates
}

}  // namespace
}  // namespace ranvel
