// Persons between installations: the one-person file and the whole-table
// file are copies of the template, and a merge adds rows without looking
// at the names already there.
#include <gtest/gtest.h>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>

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

TEST_F(Exchange, NeitherTheStoreNorTheTemplateIsEverATargetAndAFailedWriteKeepsTheOldFile)
{
    const std::string store = (app / "EPHE/COMMON/RECOS.Dat").string();
    EXPECT_THROW(SaveDatabaseFile(store, *recos), DatabaseError);
    EXPECT_THROW(SavePersonFile(store, {{"Name", Variant("X")}}, recos.get()), DatabaseError);
    EXPECT_THROW(SaveDatabaseFile(ExchangeTemplatePath(), *recos), DatabaseError);
    EXPECT_THROW(ImportPersons(store, *recos), DatabaseError);
    // The store is whole: its other tables and its persons.
    EXPECT_TRUE(recos->HasTable("Country"));
    EXPECT_EQ(Count(*recos), 2);

    // A good file, then a write that fails half-way (a store whose persons
    // can't be read): the good file stays, and no work file is left.
    const std::string path = (app / "family.JKD").string();
    SaveDatabaseFile(path, *recos);
    const std::string broken = (app / "broken.Dat").string();
    auto bad = Database::Create(broken);
    bad->ExecuteScript("CREATE TABLE Person (Name TEXT);INSERT INTO Person VALUES ('only a name');");
    try {
        SaveDatabaseFile(path, *bad);
        FAIL() << "a store without the person fields was written out";
    } catch (const DatabaseError& e) {
        const std::string what = e.what();
        EXPECT_NE(what.find("left as it was"), std::string::npos) << what;
        EXPECT_EQ(what.find("query:"), std::string::npos) << what;
    }
    EXPECT_EQ(Count(*Database::Open(path)), 2);
    for (const auto& entry : fs::directory_iterator(app))
        EXPECT_EQ(entry.path().filename().string().find(".part-"), std::string::npos) << entry.path();
}

TEST_F(Exchange, AnImportTakesEveryPersonOrNone)
{
    const std::string path = (app / "mixed.JKD").string();
    SaveDatabaseFile(path, *recos);
    {
        auto file = Database::Open(path);
        file->Execute("INSERT INTO Person (Name, Day, Month, Year) VALUES ('Ravi', 'xx', '1', '2000')");
    }
    // The check the store's loading makes: the third row fails it.
    auto check = [](const Recordset& row) {
        if (!row.Field("Day").ToText().empty() && !std::isdigit(static_cast<unsigned char>(row.Field("Day").ToText()[0])))
            throw std::runtime_error("Type mismatch");
    };
    try {
        ImportPersons(path, *recos, check);
        FAIL() << "a file with a bad row was taken";
    } catch (const DatabaseError& e) {
        const std::string what = e.what();
        EXPECT_NE(what.find("Person 3 of"), std::string::npos) << what;
        EXPECT_NE(what.find("Type mismatch"), std::string::npos) << what;
    }
    EXPECT_EQ(Count(*recos), 2);

    // A file cut short is refused whole, whatever its first pages held.
    const std::string big = (app / "big.JKD").string();
    {
        Database::Transaction t(*recos);
        for (int i = 0; i < 3000; ++i)
            recos->InsertRow("Person", {"Name", "Day", "Month", "Year"},
                             {Variant("P" + std::to_string(i)), Variant("1"), Variant("1"), Variant("2000")});
        t.Commit();
    }
    SaveDatabaseFile(big, *recos);
    recos->Execute("DELETE FROM Person WHERE Name LIKE 'P%'");
    fs::resize_file(big, fs::file_size(big) * 2 / 3);
    EXPECT_THROW(ImportPersons(big, *recos), DatabaseError);
    EXPECT_EQ(Count(*recos), 2);
}

TEST_F(Exchange, AKillInTheMiddleOfAnExportLeavesTheOldFileWhole)
{
    const std::string path = (app / "family.JKD").string();
    SaveDatabaseFile(path, *recos);  // the old file: 2 persons
    {
        Database::Transaction t(*recos);
        for (int i = 0; i < 20000; ++i)
            recos->InsertRow("Person", {"Name", "Day", "Month", "Year"},
                             {Variant("P" + std::to_string(i)), Variant("1"), Variant("1"), Variant("2000")});
        t.Commit();
    }
    const std::string store = recos->Path();
    recos.reset();
    std::srand(19);
    for (int round = 0; round < 12; ++round) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            auto own = Database::Open(store);
            for (;;) SaveDatabaseFile(path, *own);
        }
        usleep(static_cast<useconds_t>(2000 + std::rand() % 60000));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        const long persons = Count(*Database::Open(path));
        EXPECT_TRUE(persons == 2 || persons == 20002) << "round " << round << ": " << persons;
    }
}

TEST_F(Exchange, AFileThatWouldNeverEndOrFillTheMemoryIsRefused)
{
    std::string fields;
    for (const std::string& f : ExchangeFields()) fields += (fields.empty() ? "" : ", ") + ("'1' AS " + f);
    const std::string endless = (app / "endless.JKD").string();
    Database::Create(endless)->ExecuteScript(
        "CREATE VIEW Person AS WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x+1 FROM c) SELECT " + fields +
        " FROM c;");
    EXPECT_THROW(ImportPersons(endless, *recos), DatabaseError);

    std::string columns;
    for (const std::string& f : ExchangeFields())
        columns += (columns.empty() ? "" : ", ") + (f == "Name" ? "Name AS (zeroblob(900000000))" : f + " TEXT");
    const std::string huge = (app / "huge.JKD").string();
    Database::Create(huge)->ExecuteScript("CREATE TABLE Person (" + columns + "); INSERT INTO Person (Sex) VALUES ('1');");
    EXPECT_THROW(ImportPersons(huge, *recos), DatabaseError);
    EXPECT_EQ(Count(*recos), 2);
}
