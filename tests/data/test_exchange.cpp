// Persons between installations: the one-person file and the whole-table
// file are copies of the template, and a merge adds rows without looking
// at the names already there.
#include <gtest/gtest.h>

#include <filesystem>

#include "data_tree.h"
#include "ranvel/data/exchange.h"
#include "ranvel/platform/apppaths.h"

using namespace ranvel;
namespace fs = std::filesystem;

class Exchange : public ::testing::Test {
protected:
    void SetUp() override
    {
        RANVEL_REQUIRE_BUILD_TREE();
        app = ranvel::testing::DataScratch();
        fs::create_directories(app / "EPHE" / "COMMON");
        fs::copy_file(ranvel::testing::BuiltTree() / "EPHE/COMMON/ExpTemp.JKP", app / "EPHE/COMMON/ExpTemp.JKP");
        fs::copy_file(ranvel::testing::BuiltTree() / "EPHE/COMMON/RECOS.Dat", app / "EPHE/COMMON/RECOS.Dat");
        SetAppDir(app.string());
        recos = Database::Open((app / "EPHE/COMMON/RECOS.Dat").string());
        recos->Execute("DELETE FROM Person");
        recos->Execute(
            "INSERT INTO Person VALUES ('Arjun','1','14','8','1994','9','20','0','1','India','New Delhi','28','36','N',"
            "'77','12','E','+05.30','+01.00','1')");
        recos->Execute(
            "INSERT INTO Person VALUES ('Meera','2','3','2','1996','5','45','0','2','India','Pune','18','31','N',"
            "'73','51','E','+05.30',NULL,NULL)");
    }
    void TearDown() override { SetAppDir(""); }

    long Count(Database& db, const std::string& where = "")
    {
        auto rs = db.OpenRecordset("SELECT * FROM Person" + where);
        return rs->RecordCount();
    }

    fs::path app;
    std::shared_ptr<Database> recos;
};

TEST_F(Exchange, OnePersonFileHoldsTheGivenFieldsAndReplacesAnOldFile)
{
    const std::string path = (app / "Arjun.JKP").string();
    {
        std::ofstream(path) << "an old file that is not a database";
    }
    SavePersonFile(path, {{"Name", Variant("Arjun")}, {"Day", Variant("14")}, {"GMTDIFF", Variant("+05.30")}});
    auto file = Database::Open(path);
    auto rs = file->OpenTable("Person");
    ASSERT_EQ(rs->RecordCount(), 1);
    EXPECT_EQ(rs->Field("Name").ToText(), "Arjun");
    EXPECT_EQ(rs->Field("Day").ToText(), "14");
    EXPECT_EQ(rs->Field("GMTDIFF").ToText(), "+05.30");
    EXPECT_TRUE(rs->Field("City").IsNull());
    // The time correction has no place in an exchange file.
    EXPECT_FALSE(rs->HasField("TCorrVal"));
}

TEST_F(Exchange, DatabaseRoundTripAndADoubleMergeDoublesThePersons)
{
    const std::string path = (app / "All.JKD").string();
    SaveDatabaseFile(path, *recos);
    EXPECT_EQ(Count(*Database::Open(path)), 2);

    // Into an installation of its own that has nobody yet.
    recos->Execute("DELETE FROM Person");
    EXPECT_EQ(ImportPersons(path, *recos), 2);
    auto rs = recos->OpenRecordset("SELECT * FROM Person WHERE Name = 'Meera'");
    ASSERT_TRUE(rs->HasRows());
    EXPECT_EQ(rs->Field("City").ToText(), "Pune");
    EXPECT_EQ(rs->Field("Year").ToText(), "1996");
    EXPECT_EQ(rs->Field("TextEW").ToText(), "E");
    // The correction stayed behind, on both sides.
    EXPECT_TRUE(recos->OpenRecordset("SELECT * FROM Person WHERE Name = 'Arjun'")->Field("TCorrVal").IsNull());

    EXPECT_EQ(ImportPersons(path, *recos), 2);
    EXPECT_EQ(Count(*recos), 4);
    EXPECT_EQ(Count(*recos, " WHERE Name = 'Arjun'"), 2);
}

TEST_F(Exchange, AFileWithoutPersonsAddsNothing)
{
    const std::string path = (app / "other.JKD").string();
    Database::Create(path)->ExecuteScript("CREATE TABLE Person (Name TEXT, Sex TEXT);INSERT INTO Person VALUES ('X','1');");
    EXPECT_THROW(ImportPersons(path, *recos), DatabaseError);
    std::ofstream(app / "text.JKP") << "not a database";
    EXPECT_THROW(ImportPersons((app / "text.JKP").string(), *recos), DatabaseError);
    EXPECT_EQ(Count(*recos), 2);
}
