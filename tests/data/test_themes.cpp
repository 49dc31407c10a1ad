// The colour store: the active colours in GENDAT.INI, named themes kept
// numbered THEME1 ... in list order when one is deleted, names that break
// their queries, and the themes an installation comes with.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "data_tree.h"
#include "ranvel/data/themes.h"
#include "ranvel/platform/apppaths.h"
#include "ranvel/platform/ini.h"

using namespace ranvel;
namespace fs = std::filesystem;

namespace {

// A pair of sets in which every key holds a value of its own.
using Colours = std::pair<PageColors, ChartColors>;
Colours Set(long seed)
{
    Colours c;
    long i = 0;
    for (const std::string& key : PageColorKeys()) PageColor(c.first, key) = seed * 1000 + ++i;
    for (const std::string& key : ChartColorKeys()) ChartColor(c.second, key) = seed * 1000 + ++i;
    return c;
}

class ThemeStore : public ::testing::Test {
protected:
    void SetUp() override
    {
        app = ranvel::testing::DataScratch();
        fs::create_directories(app / "DATA" / "INIFILES");
        SetAppDir(app.string());
        recos = Database::Create(":memory:");
        recos->ExecuteScript(
            "CREATE TABLE DisplayThemes (ThemeName TEXT COLLATE NOCASE, Themesection TEXT COLLATE NOCASE);");
    }
    void TearDown() override
    {
        ActivePageColors() = {};
        ActiveChartColors() = {};
        SetAppDir("");
    }
    fs::path Ini(const std::string& name) const { return app / "DATA" / "INIFILES" / name; }
    Colours File(const std::string& section) const
    {
        Colours c = Set(9);  // nothing of what was there may leak through
        ReadThemeFile(section, c.first, c.second);
        return c;
    }
    void Save(const std::string& name, long seed) { SaveTheme(*recos, name, Set(seed).first, Set(seed).second); }

    fs::path app;
    std::shared_ptr<Database> recos;
};

TEST_F(ThemeStore, ActiveColoursRoundTripThroughGendatWithDefaultsForMissingKeys)
{
    std::ofstream(Ini("GENDAT.INI")) << "[Ranvel]\nDispName=Tessaly\n"
                                        "[PAGECOLORS]\nHeadingCol=255\n[KUNCOLOR]\nKunLineWidth=3\n";
    LoadActiveColors();
    EXPECT_EQ(ActivePageColors(), PageColors{.HeadingCol = 255});
    EXPECT_EQ(ActiveChartColors(), ChartColors{.KunLineWidth = 3});

    SaveActiveColors(Set(4).first, Set(4).second, "Monsoon");
    EXPECT_EQ(ActivePageColors(), Set(4).first);  // reloaded
    EXPECT_EQ(ActiveChartColors(), Set(4).second);
    EXPECT_EQ(ActiveThemeName(), "Monsoon");
    auto stored = [](const char* key, const char* section) { return clsIni().GetIniString(key, "", section, ""); };
    EXPECT_EQ(stored("TableHeadText", "PAGECOLORS"), std::to_string(Set(4).first.TableHeadText));
    EXPECT_EQ(stored("KunBorderWidth", "KUNCOLOR"), std::to_string(Set(4).second.KunBorderWidth));
    EXPECT_EQ(stored("DispName", "Ranvel"), "Tessaly");

    // The chart's own save leaves the page colours and the name alone.
    SaveChartColors(Set(5).second);
    EXPECT_EQ(ActiveChartColors(), Set(5).second);
    EXPECT_EQ(ActivePageColors(), Set(4).first);
    EXPECT_EQ(ActiveThemeName(), "Monsoon");

    // A theme file missing keys reads their defaults.
    std::ofstream(Ini("THEME1.ini")) << "[THEME]\nHeadingCol=128\n";
    EXPECT_EQ(File("THEME1"), Colours(PageColors{.HeadingCol = 128}, ChartColors{}));
}

TEST_F(ThemeStore, ANewNameTakesTheNextNumberAndAKnownNameRewritesOnlyItsFile)
{
    Save("Dawn", 1);
    Save("Noon", 2);
    EXPECT_EQ(ListThemes(*recos), (std::vector<ThemeRow>{{"Dawn", "THEME1"}, {"Noon", "THEME2"}}));
    EXPECT_EQ(File("THEME2"), Set(2));

    const std::string noon = ranvel::testing::Slurp(Ini("THEME2.ini"));
    Save("DAWN", 7);  // found without regard to case, as the table compares
    EXPECT_EQ(ListThemes(*recos).size(), 2u);
    EXPECT_EQ(File("THEME1"), Set(7));
    EXPECT_EQ(ranvel::testing::Slurp(Ini("THEME2.ini")), noon);
}

TEST_F(ThemeStore, DeletingTheFirstOfThreeMovesTheOthersDownWithTheirColours)
{
    Save("Dawn", 1);
    Save("Noon", 2);
    Save("Dusk", 3);
    EXPECT_FALSE(DeleteTheme(*recos, "Midnight"));
    EXPECT_TRUE(DeleteTheme(*recos, "Dawn"));
    EXPECT_EQ(ListThemes(*recos), (std::vector<ThemeRow>{{"Noon", "THEME1"}, {"Dusk", "THEME2"}}));
    EXPECT_EQ(File("THEME1"), Set(2));
    EXPECT_EQ(File("THEME2"), Set(3));
    EXPECT_FALSE(fs::exists(Ini("THEME3.ini")));

    // The free number at the end goes to the next new theme.
    Save("Night", 4);
    EXPECT_EQ(ListThemes(*recos).back(), (ThemeRow{"Night", "THEME3"}));
    EXPECT_EQ(File("THEME2"), Set(3));
}

TEST_F(ThemeStore, ANameWithAnApostropheBreaksTheQueryAndChangesNothing)
{
    Save("Dawn", 1);
    EXPECT_THROW(Save("Raj's", 2), DatabaseError);
    EXPECT_THROW(DeleteTheme(*recos, "Raj's"), DatabaseError);
    EXPECT_THROW(HasTheme(*recos, "Raj's"), DatabaseError);
    EXPECT_EQ(ListThemes(*recos).size(), 1u);
    EXPECT_FALSE(fs::exists(Ini("THEME2.ini")));
}

// Each shipped row has a complete file numbered by its place, and
// GENDAT.INI holds the first theme.
TEST(ShippedThemes, EachRowHasACompleteFileAndGendatHoldsTheFirst)
{
    RANVEL_REQUIRE_BUILD_TREE();
    const fs::path ini = ranvel::testing::SourceDir() / "resources" / "ini";
    const std::string gendat = (ini / "GENDAT.INI").string();
    std::vector<std::string> keys = PageColorKeys();
    keys.insert(keys.end(), ChartColorKeys().begin(), ChartColorKeys().end());
    std::istringstream csv(ranvel::testing::Slurp(ini / ".." / "db" / "recos" / "DisplayThemes.csv"));
    std::string line, first;
    std::getline(csv, line);
    int count = 0;
    for (; std::getline(csv, line) && !line.empty(); ++count) {
        EXPECT_EQ(line.substr(line.find(',') + 1), ThemeSectionAt(count));
        if (count == 0) first = line.substr(0, line.find(','));
        const std::string file = (ini / (ThemeSectionAt(count) + ".ini")).string();
        for (const std::string& key : keys) {
            const std::string value = clsIni().GetIniString(key, "<none>", "THEME", file);
            EXPECT_NE(value, "<none>") << file << " " << key;
            const char* section = key.rfind("Kun", 0) == 0 ? "KUNCOLOR" : "PAGECOLORS";
            if (count == 0) {
                EXPECT_EQ(clsIni().GetIniString(key, "<none>", section, gendat), value) << key;
            }
        }
    }
    EXPECT_EQ(count, 3);
    EXPECT_EQ(first, "Plain");
    EXPECT_EQ(clsIni().GetIniString("ThemeName", "", "PAGECOLORS", gendat), first);
}

}  // namespace
