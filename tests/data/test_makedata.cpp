// The tool that builds the data tree, run over a tree of its own: a second
// run keeps what the user saved, and a fault in a source leaves the files
// of the last good run in place.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "data/data_tree.h"
#include "ranvel/platform/database.h"

namespace ranvel {
namespace {

namespace fs = std::filesystem;
using testing::Slurp;

class MakeData : public ::testing::Test {
protected:
    void SetUp() override
    {
        RANVEL_REQUIRE_BUILD_TREE();
        root_ = testing::DataScratch();
        app_ = root_ / "app";
        resources_ = root_ / "resources";
        // The project's sources but the places, which a smaller test needn't load.
        fs::create_directories(resources_);
        for (const char* part : {"db", "text", "ini"})
            fs::copy(testing::SourceDir() / "resources" / part, resources_ / part, fs::copy_options::recursive);
    }

    // Runs the tool; gives its exit code, with what it said in output_.
    int Run()
    {
        const fs::path log = root_ / "tool.log";
        std::string cmd = "'" + testing::Tool().string() + "' --app '" + app_.string() + "' --resources '" +
                          resources_.string() + "' >'" + log.string() + "' 2>&1";
        int status = std::system(cmd.c_str());
        output_ = Slurp(log);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    void Append(const fs::path& relative, const std::string& text)
    {
        std::ofstream(resources_ / relative, std::ios::app | std::ios::binary) << text;
    }

    fs::path root_, app_, resources_;
    std::string output_;
};

TEST_F(MakeData, SecondRunKeepsTheUsersPersonsAndRestoresWhatIsMissing)
{
    ASSERT_EQ(Run(), 0) << output_;
    const std::string recos = (app_ / "EPHE/COMMON/RECOS.Dat").string();
    {
        auto db = Database::Open(recos);
        auto rs = db->OpenRecordset("qryPersonName");
        rs->AddNew();
        rs->SetField("Name", "Mira Kale");
        rs->SetField("GMTDIFF", "+05.30");
        rs->Update();
        db->Execute("DROP VIEW qryPersonName");
    }
    std::ofstream(app_ / "DATA/INIFILES/GENDAT.INI", std::ios::app) << "SelLang=3\n";

    ASSERT_EQ(Run(), 0) << output_;
    auto db = Database::Open(recos);
    auto rs = db->OpenRecordset("SELECT * FROM qryPersonName WHERE Name = 'mira kale'");
    ASSERT_EQ(rs->RecordCount(), 1);
    EXPECT_EQ(rs->Field("GMTDIFF").ToText(), "+05.30");
    EXPECT_NE(Slurp(app_ / "DATA/INIFILES/GENDAT.INI").find("SelLang=3"), std::string::npos);
}

TEST_F(MakeData, RunOverUnchangedSourcesRewritesNothing)
{
    ASSERT_EQ(Run(), 0) << output_;
    const fs::path text = app_ / "EPHE/ENGLISH/ENGLISH.DAT";
    const auto stamp = fs::last_write_time(text);
    const std::string bytes = Slurp(text);

    ASSERT_EQ(Run(), 0) << output_;
    EXPECT_EQ(output_, "");  // nothing reported as written
    EXPECT_EQ(fs::last_write_time(text), stamp);

    Append("text/english/CNVT.csv", "Horoscope,Horoscope,Gen\n");
    ASSERT_EQ(Run(), 0) << output_;
    EXPECT_NE(Slurp(text), bytes);
    auto db = Database::Open(text.string());
    EXPECT_TRUE(db->OpenRecordset("SELECT Val From CNVT WHERE  Head = 'Horoscope' AND Category = 'Gen'")->HasRows());
}

TEST_F(MakeData, FailedRunLeavesTheLastGoodFiles)
{
    ASSERT_EQ(Run(), 0) << output_;
    const fs::path text = app_ / "EPHE/ENGLISH/ENGLISH.DAT";
    const std::string before = Slurp(text);

    Append("text/english/CNVT.csv", "Broken,\"never closed,Gen\n");
    EXPECT_EQ(Run(), 1);
    EXPECT_NE(output_.find("CNVT.csv:"), std::string::npos) << output_;
    EXPECT_EQ(Slurp(text), before);
    EXPECT_NO_THROW(Database::Open(text.string()));
    for (const auto& e : fs::recursive_directory_iterator(app_))
        EXPECT_EQ(e.path().filename().string().find(".building"), std::string::npos) << e.path();
}

// Rows that the lookups could never reach, or that their query can't hold.
TEST_F(MakeData, RefusesTextsTheLookupCannotFind)
{
    const std::string original = Slurp(resources_ / "text/english/CNVT.csv");
    for (const char* bad : {"1,Other Aries,rashi\n",  // the same key, by another case
                            "Mira's,Mira,Gen\n",      // an apostrophe breaks the query
                            "Nothing,,Gen\n"}) {      // a Null text
        std::ofstream(resources_ / "text/english/CNVT.csv", std::ios::binary) << original << bad;
        EXPECT_EQ(Run(), 1) << bad;
        EXPECT_NE(output_.find("CNVT.csv"), std::string::npos) << output_;
    }
}

TEST_F(MakeData, LoadsCatalogueRowsWithTheirQuotingAndNulls)
{
    fs::create_directories(resources_ / "db/muhu");
    std::ofstream(resources_ / "db/muhu/Score.csv", std::ios::binary)
        << "element,Presence,maxeffect\r\nT,5,-1\r\nRIKTABAD,,0\r\n\"\",-3,0\r\n";
    std::ofstream(resources_ / "db/muhu/Muhu.csv", std::ios::binary)
        << "MCode,mname,Category,val,Elements\nGRUHA,\"House, entering\",HOUSE,\"T:2,T:3\nN:4\",\"T,N\"\n";
    ASSERT_EQ(Run(), 0) << output_;

    auto db = Database::Open((app_ / "EPHE/COMMON/MUHU.DAT").string());
    auto score = db->OpenTable("Score");
    ASSERT_EQ(score->RecordCount(), 3);
    EXPECT_EQ(score->Field("Presence"), Variant(5LL));
    EXPECT_EQ(score->Field("maxeffect"), Variant(-1LL));
    score->MoveNext();
    EXPECT_TRUE(score->Field("Presence").IsNull());
    score->MoveNext();
    EXPECT_EQ(score->Field("element"), Variant(""));
    auto muhu = db->OpenTable("Muhu");
    EXPECT_EQ(muhu->Field("mname").ToText(), "House, entering");
    EXPECT_EQ(muhu->Field("val").ToText(), "T:2,T:3\nN:4");

    std::ofstream(resources_ / "db/muhu/Scores.csv") << "element\nT\n";  // no such table
    EXPECT_EQ(Run(), 1);
}

}  // namespace
}  // namespace ranvel
