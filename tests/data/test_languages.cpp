// The choice of language: which rows are offered, the saved index, the
// Include flag kept in step with the folders, and the opening of the text
// database. Each test builds its own small installation.
#include <gtest/gtest.h>

#include <filesystem>

#include "data_tree.h"
#include "ranvel/data/datafiles.h"
#include "ranvel/data/settings_keys.h"
#include "ranvel/platform/apppaths.h"
#include "ranvel/platform/ini.h"
#include "ranvel/platform/sinks.h"

using namespace ranvel;
namespace fs = std::filesystem;

class Languages : public ::testing::Test {
protected:
    void SetUp() override
    {
        app = ranvel::testing::DataScratch();
        fs::create_directories(app / "EPHE" / "COMMON");
        fs::create_directories(app / "DATA" / "INIFILES");
        SetAppDir(app.string());
        SetMessageSink(&sink);
        TextDB().reset();
        Database::Create((app / "EPHE" / "COMMON" / "MUHU.DAT").string())->Execute("PRAGMA user_version = 0");
        langs = Database::Create((app / "EPHE" / "COMMON" / "LANGS.Dat").string());
        langs->ExecuteScript(
            "CREATE TABLE Language (Name TEXT COLLATE NOCASE, directory TEXT COLLATE NOCASE, Include INTEGER,"
            " HeaderSize INTEGER, NormalSize INTEGER, HeadBold INTEGER, SubHeadSize INTEGER, SubHeadBold INTEGER,"
            " KundliSize INTEGER, EngSize INTEGER, SmallSize INTEGER, TextSize INTEGER, TextHeadSize INTEGER,"
            " Extended INTEGER);"
            "INSERT INTO Language VALUES ('Hindi','HINDI',-1,18,11,-1,13,0,10,10,8,12,13,-1);"
            "INSERT INTO Language VALUES ('English','ENGLISH',0,16,10,-1,12,-1,9,10,8,11,12,0);");
    }
    void TearDown() override
    {
        SetAppDir("");
        SetMessageSink(nullptr);
        TextDB().reset();
    }
    void AddLanguageFolder(const std::string& dir)
    {
        fs::create_directories(app / "EPHE" / dir);
        auto db = Database::Create((app / "EPHE" / dir / (dir + ".DAT")).string());
        db->ExecuteScript("CREATE TABLE CNVT (Head TEXT, Val TEXT, Category TEXT);");
    }
    bool Included(const std::string& name)
    {
        auto rs = langs->OpenRecordset("SELECT * FROM Language WHERE Name = '" + name + "'");
        rs->MoveFirst();
        return rs->Field("Include").ToBool();
    }

    fs::path app;
    HeadlessMessageSink sink{true};
    std::shared_ptr<Database> langs;
};

TEST_F(Languages, IncludeFollowsTheFolders)
{
    AddLanguageFolder("ENGLISH");
    RefreshLanguageInclude();
    EXPECT_TRUE(Included("English"));
    EXPECT_FALSE(Included("Hindi"));  // no HINDI folder
    fs::remove_all(app / "EPHE" / "ENGLISH");
    RefreshLanguageInclude();
    EXPECT_FALSE(Included("English"));
}

TEST_F(Languages, OnlyAnIncludedEnglishIsOffered)
{
    AddLanguageFolder("HINDI");
    RefreshLanguageInclude();
    LanguageList list;
    list.Fill();
    EXPECT_TRUE(list.Items().empty());  // English excluded; Hindi is kept but not offered
    EXPECT_FALSE(TextDB());

    AddLanguageFolder("ENGLISH");
    RefreshLanguageInclude();
    list.Fill();
    ASSERT_EQ(list.Items(), std::vector<std::string>{"English"});
    EXPECT_EQ(list.Index(), 0);
    EXPECT_TRUE(TextDB());
    EXPECT_EQ(LangSettings().LangDir, "ENGLISH");
    EXPECT_EQ(LangSettings().HeaderSize, 16);
    EXPECT_TRUE(LangSettings().SubHeadBold);
    EXPECT_EQ(LangSettings().KundliFont, "Arial");
}

TEST_F(Languages, ASavedIndexBeyondTheListFallsBackToTheFirst)
{
    AddLanguageFolder("ENGLISH");
    RefreshLanguageInclude();
    WriteIni(keys::SelLang, "5");
    LanguageList list;
    list.Fill();
    EXPECT_EQ(list.Index(), 0);
    EXPECT_EQ(ReadIni(keys::SelLang), "0");  // written back
}

TEST_F(Languages, AMissingTextDatabaseKeepsThePreviousOne)
{
    AddLanguageFolder("ENGLISH");
    LangSettings().LangDir = "ENGLISH";
    OpenTextDatabase();
    auto before = TextDB();
    ASSERT_TRUE(before);
    LangSettings().LangDir = "TAMIL";
    OpenTextDatabase();
    EXPECT_EQ(TextDB(), before);
    ASSERT_EQ(sink.Messages().size(), 1u);
    EXPECT_EQ(sink.Messages()[0].title, "File Not Found");
    EXPECT_EQ(sink.Messages()[0].text, "Could Not Locate Data File For This Language.\nPlease Re-install Software.");
}

TEST_F(Languages, RequiredFilesAreCheckedInTheirOrder)
{
    EXPECT_THROW(CheckStartupFiles(), FileAccessError);  // no RECOS.Dat
    EXPECT_FALSE(FileInEphe("COMMON\\RECOS.Dat"));
    EXPECT_TRUE(FileInEphe("common\\langs.dat"));  // found without regard to case
    try {
        CheckDataFile("COMMON\\CONYEAR.DAT");
        FAIL();
    } catch (const FileAccessError& e) {
        EXPECT_EQ(e.Number(), 75);
        EXPECT_EQ(e.RelativeName(), "COMMON\\CONYEAR.DAT");
    }
}
