// The data tree that the build leaves beside the executables: every file
// the program opens or checks at start-up, the tables it names, and the
// English texts that the chart and the result pages ask for.
#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "data/data_tree.h"
#include "ranvel/data/textlookup.h"
#include "ranvel/platform/database.h"

namespace ranvel {
namespace {

namespace fs = std::filesystem;
using testing::BuiltTree;
using testing::Slurp;

std::shared_ptr<Database> OpenIn(const char* relative)
{
    return Database::Open((BuiltTree() / relative).string());
}

std::set<std::string> Fields(Database& db, const std::string& table)
{
    auto rs = db.OpenRecordset("SELECT name FROM pragma_table_info('" + table + "')");
    std::set<std::string> out;
    for (; !rs->IsEOF(); rs->MoveNext()) out.insert(rs->Field("name").ToText());
    return out;
}

const std::set<std::string> kPersonFields = {
    "Name", "Sex",    "Day",   "Month",  "Year",    "Hour",   "Minutes", "seconds", "AMPM",     "Country",
    "City", "LatDeg", "LatMT", "TextNS", "LongDeg", "LongMT", "TextEW",  "GMTDIFF", "TCorrVal", "Tcorrinde"};

TEST(DataTree, EveryFileIsThereUnderItsExactName)
{
    RANVEL_REQUIRE_BUILD_TREE();
    const char* databases[] = {"EPHE/COMMON/RECOS.Dat",   "EPHE/COMMON/LANGS.Dat",   "EPHE/COMMON/MUHU.DAT",
                               "EPHE/COMMON/CONYEAR.DAT", "EPHE/COMMON/SADESAT.Dat", "EPHE/COMMON/SCGRAHA.DAT",
                               "EPHE/COMMON/SCRASI.DAT",  "EPHE/COMMON/SCYONI.DAT",  "EPHE/COMMON/ExpTemp.JKP",
                               "EPHE/ENGLISH/ENGLISH.DAT"};
    for (const char* name : databases) {
        // Listing the folder, not asking the file system, so that the
        // spelling must match even where the disk ignores case.
        fs::path p = BuiltTree() / name;
        bool listed = false;
        for (const auto& e : fs::directory_iterator(p.parent_path())) listed |= e.path().filename() == p.filename();
        EXPECT_TRUE(listed) << name;
        EXPECT_NO_THROW(Database::Open(p.string())) << name;
    }
    EXPECT_TRUE(fs::is_regular_file(BuiltTree() / "DATA/INIFILES/GENDAT.INI"));

    std::string avi = Slurp(BuiltTree() / "EPHE/COMMON/Wait.avi");
    ASSERT_GT(avi.size(), 12u);
    EXPECT_EQ(avi.substr(0, 4), "RIFF");
    EXPECT_EQ(avi.substr(8, 4), "AVI ");
    std::uint32_t riffLength = 0;
    for (int k = 3; k >= 0; --k) riffLength = riffLength << 8 | static_cast<unsigned char>(avi[4 + k]);
    EXPECT_EQ(riffLength + 8, avi.size());
    EXPECT_NE(avi.find("idx1"), std::string::npos);
}

TEST(DataTree, DatabasesHoldTheTablesAndFieldsTheProgramNames)
{
    RANVEL_REQUIRE_BUILD_TREE();
    auto recos = OpenIn("EPHE/COMMON/RECOS.Dat");
    EXPECT_EQ(Fields(*recos, "Person"), kPersonFields);
    EXPECT_EQ(Fields(*recos, "Country"), (std::set<std::string>{"Name", "GMTDIF"}));
    // The city's time zone follows the fields the place editor works on.
    EXPECT_EQ(Fields(*recos, "City"),
              (std::set<std::string>{"City", "Country", "Lat", "NOSO", "Longy", "EaWe", "GMTDIFF", "Zone"}));
    EXPECT_EQ(Fields(*recos, "DisplayThemes"), (std::set<std::string>{"ThemeName", "Themesection"}));
    EXPECT_EQ(Fields(*recos, "PrintMods"), (std::set<std::string>{"Name", "HoroMode", "file"}));
    // The person browser edits through the saved query.
    EXPECT_TRUE(recos->OpenRecordset("qryPersonName")->Updatable());

    auto templ = OpenIn("EPHE/COMMON/ExpTemp.JKP");
    std::set<std::string> exchanged = kPersonFields;
    exchanged.erase("TCorrVal");
    exchanged.erase("Tcorrinde");
    EXPECT_EQ(Fields(*templ, "Person"), exchanged);
    EXPECT_EQ(templ->OpenTable("Person")->RecordCount(), 0);

    auto muhu = OpenIn("EPHE/COMMON/MUHU.DAT");
    EXPECT_EQ(Fields(*muhu, "Muhu"), (std::set<std::string>{"MCode", "mname", "Category", "val", "Elements"}));
    EXPECT_EQ(Fields(*muhu, "Score"), (std::set<std::string>{"element", "Presence", "maxeffect"}));
    EXPECT_EQ(Fields(*muhu, "MuhuConvert"), (std::set<std::string>{"Muhuname", "MuhuPredcode"}));

    auto text = OpenIn("EPHE/ENGLISH/ENGLISH.DAT");
    for (const char* t : {"CNVT", "Muhu", "Bhava", "Nakshatra", "FORTUNE", "Daily"})
        EXPECT_EQ(Fields(*text, t), (std::set<std::string>{"Head", "Val", "Category"})) << t;
    for (const char* t : {"ASP", "VPHALA", "YOGNAME", "YOGAS", "MarMatch", "Transits"})
        EXPECT_EQ(Fields(*text, t), (std::set<std::string>{"Head", "Val"})) << t;
}

TEST(DataTree, EnglishIsOfferedWithItsTextDatabase)
{
    RANVEL_REQUIRE_BUILD_TREE();
    auto langs = OpenIn("EPHE/COMMON/LANGS.Dat");
    auto rs = langs->OpenRecordset("SELECT * FROM Language WHERE Name = 'english'");
    ASSERT_TRUE(rs->HasRows());
    EXPECT_EQ(rs->Field("Name").ToText(), "English");
    const std::string dir = rs->Field("directory").ToText();
    EXPECT_TRUE(fs::is_regular_file(BuiltTree() / "EPHE" / dir / (dir + ".DAT")));
    EXPECT_EQ(rs->Field("Include").ToLong(), -1);
    EXPECT_EQ(rs->Field("Extended").ToLong(), 0);
    for (const char* size :
         {"HeaderSize", "NormalSize", "SubHeadSize", "KundliSize", "EngSize", "SmallSize", "TextSize", "TextHeadSize"})
        EXPECT_GE(rs->Field(size).ToLong(), 6) << size;
}

// Keys "first".."last" as the chart passes them.
std::vector<std::string> Numbers(int first, int last)
{
    std::vector<std::string> out;
    for (int i = first; i <= last; ++i) out.push_back(std::to_string(i));
    return out;
}

TEST(EnglishTexts, EveryCategoryTheChartAndPagesAskIsComplete)
{
    RANVEL_REQUIRE_BUILD_TREE();
    const std::map<std::string, std::vector<std::string>> asked = {
        {"PLANETS", Numbers(0, 12)},
        {"PLNTABBSU", Numbers(0, 12)},
        {"Rashi", Numbers(1, 12)},
        {"Nakshatra", Numbers(1, 28)},
        {"Naklord", Numbers(1, 9)},
        {"Tithi", Numbers(1, 30)},
        {"Yoga", Numbers(1, 27)},
        {"KARAN", Numbers(0, 11)},
        {"DAY", Numbers(0, 6)},
        {"EngDay", Numbers(1, 7)},
        {"Months",
         {"January", "February", "March", "April", "May", "June", "July", "August", "September", "October", "November",
          "December"}},
        {"EngMonth", Numbers(1, 12)},
        {"IndianMonths", Numbers(0, 12)},
        {"SunSign",
         {"ARIES", "Taurus", "Gemini", "Cancer", "Leo", "Virgo", "Libra", "Scorpio", "Sagittarius", "Capricorn",
          "Aquarius", "Pisces"}},
        {"Gana", Numbers(1, 3)},
        {"Nadi", Numbers(1, 3)},
        {"Yoni", Numbers(1, 14)},
        {"VARNA", Numbers(1, 4)},
        {"VASYA", {"MANAV", "CHATUSPAD", "JALCHAR", "VANACHAR", "KEET"}},
        {"EXALTCLASS", {"Exalted", "Debilitated", "Mooltrikona", "Own House", "-"}},
        {"GEN", {"DIRECT", "RETRO"}},
        {"X1-", Numbers(1, 9)},
        {"LysY1", Numbers(1, 9)},
        {"Symbols", {":", "/", "-", "+"}},
        {"AyanName", Numbers(1, 15)},
        {"Upagrahas", Numbers(1, 17)},
        {"Chowgadiya", {"Udveg", "Chara", "Laabh", "Amrit", "Kaal", "Shubh", "Rog"}},
        {"Hora", Numbers(1, 7)},
        {"Muhurtha", {"Muhurtha", "MuhuDet", "BestMuhurtha", "MuhuResult"}},
        {"Gen", {"Name",    "Date",   "Time",      "Place", "OnlyPlace", "Latitude",   "Longitude", "Lat",   "Long",
                 "Sunrise", "Sunset", "Ayanamsha", "Score", "Percent",   "From",       "To",        "Lagna", "Tithi",
                 "Day",     "Rashi",  "Nak",       "Yoga",  "Karan",     "HinduMonth", "Nakl",      "Rashil"}},
    };
    auto text = OpenIn("EPHE/ENGLISH/ENGLISH.DAT");
    std::vector<std::string> missing;
    for (const auto& [category, keys] : asked)
        for (const std::string& key : keys)
            if (GetTextBetween(text.get(), "CNVT", Variant(key), category).ToTextOrEmpty().empty())
                missing.push_back(category + "/" + key);
    EXPECT_EQ(missing, std::vector<std::string>{});
}

TEST(EnglishTexts, NumberedNamesFollowTheChartsNumbering)
{
    RANVEL_REQUIRE_BUILD_TREE();
    auto text = OpenIn("EPHE/ENGLISH/ENGLISH.DAT");
    auto name = [&](int key, const char* category) {
        return GetTextBetween(text.get(), "CNVT", key, category).ToText();
    };
    // The chart checks the short planet names against these on every lookup.
    const char* shortNames[] = {"Asc",  "Sun", "Mer", "Ven", "Mar", "Jup", "Sat",
                                "Moon", "Rah", "Ket", "Ura", "Nep", "Plu"};
    for (int p = 0; p <= 12; ++p) EXPECT_EQ(name(p, "PLNTABB"), shortNames[p]) << p;
    // The karana rule gives 11 just after new moon and the seven movable
    // ones as 1 to 7.
    EXPECT_EQ(name(11, "KARAN"), "Kimstughna");
    EXPECT_EQ(name(1, "KARAN"), "Bava");
    EXPECT_EQ(name(7, "KARAN"), "Vishti");
    EXPECT_EQ(name(8, "KARAN"), "Shakuni");
    EXPECT_EQ(name(10, "KARAN"), "Naga");
    EXPECT_EQ(name(15, "Tithi"), "Purnima");
    EXPECT_EQ(name(30, "Tithi"), "Amavasya");
    EXPECT_EQ(name(28, "Nakshatra"), "Abhijit");
    EXPECT_EQ(name(0, "DAY"), "Sunday");  // week day less one
    // The lord's digit of a nakshatra: Ashwini, Magha and Mula give 1.
    EXPECT_EQ(name(1, "Naklord"), "Ketu");
    EXPECT_EQ(name(9, "Naklord"), "Mercury");
    // The Hari Shayan test runs from month 3 to month 7: Ashadha to Kartika.
    EXPECT_EQ(name(3, "IndianMonths"), "Ashadha");
    EXPECT_EQ(name(7, "IndianMonths"), "Kartika");
}

TEST(EnglishTexts, EveryTextTableIsSearchedThroughAnIndex)
{
    RANVEL_REQUIRE_BUILD_TREE();
    auto text = OpenIn("EPHE/ENGLISH/ENGLISH.DAT");
    auto plan = [&](const std::string& sql) {
        std::string all;
        for (auto rs = text->OpenRecordset("EXPLAIN QUERY PLAN " + sql); !rs->IsEOF(); rs->MoveNext())
            all += rs->Field("detail").ToText() + "\n";
        return all;
    };
    for (const char* t : {"CNVT", "Muhu", "Bhava", "Nakshatra", "FORTUNE", "Daily"}) {
        std::string p = plan(std::string("SELECT Val From ") + t + " WHERE  Head = '1' AND Category = 'Rashi'");
        EXPECT_NE(p.find("USING INDEX"), std::string::npos) << t << ": " << p;
    }
    // The index is on the head alone, so rows of one head still come in
    // table order when no category is given: the first row answers.
    auto rs = text->OpenRecordset("SELECT Val From CNVT WHERE  Head = '1'");
    ASSERT_TRUE(rs->HasRows());
    rs->MoveFirst();
    EXPECT_EQ(rs->Field("Val").ToText(), "Sun");
    for (const char* t : {"ASP", "VPHALA", "YOGNAME", "YOGAS", "MarMatch", "Transits"}) {
        std::string p = plan(std::string("SELECT Val From ") + t + " WHERE  Head = '1'");
        EXPECT_NE(p.find("USING INDEX"), std::string::npos) << t << ": " << p;
    }
}

}  // namespace
}  // namespace ranvel
