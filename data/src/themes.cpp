#include "ranvel/data/themes.h"

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <utility>

#include "ranvel/platform/ini.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

namespace {

constexpr const char* kPageSection = "PAGECOLORS";
constexpr const char* kChartSection = "KUNCOLOR";
constexpr const char* kThemeSection = "THEME";
constexpr const char* kThemeNameKey = "ThemeName";

using PageMember = long PageColors::*;
using ChartMember = long ChartColors::*;

const std::vector<std::pair<std::string, PageMember>>& PageMembers()
{
    static const std::vector<std::pair<std::string, PageMember>> members = {
        {"TopLineCol", &PageColors::TopLineCol},
        {"TopLogoBackCol", &PageColors::TopLogoBackCol},
        {"TopLogoCol", &PageColors::TopLogoCol},
        {"PerNameCol", &PageColors::PerNameCol},
        {"FrontLogoCol", &PageColors::FrontLogoCol},
        {"FrontLogoBackCol", &PageColors::FrontLogoBackCol},
        {"HeadingCol", &PageColors::HeadingCol},
        {"SubHeadCol", &PageColors::SubHeadCol},
        {"NormTextCol", &PageColors::NormTextCol},
        {"TableBackCol", &PageColors::TableBackCol},
        {"TableHeadCol", &PageColors::TableHeadCol},
        {"CompanyNameCol", &PageColors::CompanyNameCol},
        {"CompanyAddressCol", &PageColors::CompanyAddressCol},
        {"CircleBorderCol", &PageColors::CircleBorderCol},
        {"TableHeadText", &PageColors::TableHeadText},
    };
    return members;
}

const std::vector<std::pair<std::string, ChartMember>>& ChartMembers()
{
    static const std::vector<std::pair<std::string, ChartMember>> members = {
        {"KunBackColor", &ChartColors::KunBackColor},   {"KunBorderColor", &ChartColors::KunBorderColor},
        {"KunLineColor", &ChartColors::KunLineColor},   {"KunNumColor", &ChartColors::KunNumColor},
        {"KunTxtColor", &ChartColors::KunTxtColor},     {"KunLineWidth", &ChartColors::KunLineWidth},
        {"KunBorderWidth", &ChartColors::KunBorderWidth},
    };
    return members;
}

template <typename Members>
std::vector<std::string> NamesOf(const Members& members)
{
    std::vector<std::string> names;
    for (const auto& m : members) names.push_back(m.first);
    return names;
}

template <typename Colors, typename Members>
long& Member(Colors& c, const Members& members, const std::string& key)
{
    for (const auto& m : members)
        if (vb::EqualsNoCase(m.first, key)) return c.*(m.second);
    throw std::invalid_argument("no colour key '" + key + "'");
}

// A stored value is read by its leading number, as the pages always read
// it; a key that is missing gives the value of a fresh set.
long ReadNumber(const std::string& key, long deflt, const std::string& section, const std::string& file)
{
    return vb::CLng(vb::Val(clsIni().GetIniString(key, std::to_string(deflt), section, file)));
}

void ReadPage(PageColors& page, const std::string& section, const std::string& file)
{
    const PageColors fresh;
    for (const auto& [key, member] : PageMembers()) page.*member = ReadNumber(key, fresh.*member, section, file);
}

void ReadChart(ChartColors& chart, const std::string& section, const std::string& file)
{
    const ChartColors fresh;
    for (const auto& [key, member] : ChartMembers()) chart.*member = ReadNumber(key, fresh.*member, section, file);
}

void WritePage(const PageColors& page, const std::string& section, const std::string& file)
{
    for (const auto& [key, member] : PageMembers())
        clsIni().WriteIniString(key, std::to_string(page.*member), section, file);
}

void WriteChart(const ChartColors& chart, const std::string& section, const std::string& file)
{
    for (const auto& [key, member] : ChartMembers())
        clsIni().WriteIniString(key, std::to_string(chart.*member), section, file);
}

std::string ThemeFile(const std::string& section) { return section + ".ini"; }

// The one query the themes are found by. The name goes in as it stands, so
// a name with an apostrophe breaks it.
std::unique_ptr<Recordset> FindTheme(Database& recos, const std::string& name)
{
    return recos.OpenRecordset("SELECT * FROM DisplayThemes WHERE ThemeName = '" + name + "'");
}

}  // namespace

const std::vector<std::string>& PageColorKeys()
{
    static const std::vector<std::string> keys = NamesOf(PageMembers());
    return keys;
}

const std::vector<std::string>& ChartColorKeys()
{
    static const std::vector<std::string> keys = NamesOf(ChartMembers());
    return keys;
}

long& PageColor(PageColors& c, const std::string& key) { return Member(c, PageMembers(), key); }
long& ChartColor(ChartColors& c, const std::string& key) { return Member(c, ChartMembers(), key); }

PageColors& ActivePageColors()
{
    static PageColors active;
    return active;
}

ChartColors& ActiveChartColors()
{
    static ChartColors active;
    return active;
}

void LoadActiveColors()
{
    PageColors page;
    ChartColors chart;
    ReadPage(page, kPageSection, "");
    ReadChart(chart, kChartSection, "");
    ActivePageColors() = page;
    ActiveChartColors() = chart;
}

std::string ActiveThemeName() { return clsIni().GetIniString(kThemeNameKey, "", kPageSection, ""); }

void SaveActiveColors(const PageColors& page, const ChartColors& chart, const std::string& themeName)
{
    WriteChart(chart, kChartSection, "");
    WritePage(page, kPageSection, "");
    clsIni().WriteIniString(kThemeNameKey, themeName, kPageSection, "");
    LoadActiveColors();
}

void SaveChartColors(const ChartColors& chart)
{
    WriteChart(chart, kChartSection, "");
    LoadActiveColors();
}

void ReadThemeFile(const std::string& section, PageColors& page, ChartColors& chart)
{
    ReadPage(page, kThemeSection, ThemeFile(section));
    ReadChart(chart, kThemeSection, ThemeFile(section));
}

void WriteThemeFile(const std::string& section, const PageColors& page, const ChartColors& chart)
{
    WritePage(page, kThemeSection, ThemeFile(section));
    WriteChart(chart, kThemeSection, ThemeFile(section));
}

std::vector<ThemeRow> ListThemes(Database& recos)
{
    std::vector<ThemeRow> rows;
    for (auto rs = recos.OpenRecordset("SELECT * FROM DisplayThemes"); !rs->IsEOF(); rs->MoveNext())
        rows.push_back({rs->Field("ThemeName").ToTextOrEmpty(), rs->Field("Themesection").ToTextOrEmpty()});
    return rows;
}

bool HasTheme(Database& recos, const std::string& name) { return FindTheme(recos, name)->HasRows(); }

std::string ThemeSectionAt(int index) { return kThemeSection + std::to_string(index + 1); }

void SaveTheme(Database& recos, const std::string& name, const PageColors& page, const ChartColors& chart)
{
    auto found = FindTheme(recos, name);
    if (found->HasRows()) {
        WriteThemeFile(found->Field("Themesection").ToTextOrEmpty(), page, chart);
        return;
    }
    // The new name joins the end of the list, so its number is the list's
    // count with it: the sections stay THEME1 ... THEMEn in list order.
    const std::string section = ThemeSectionAt(static_cast<int>(ListThemes(recos).size()));
    found->AddNew();
    found->SetField("ThemeName", Variant(name));
    found->SetField("Themesection", Variant(section));
    found->Update();
    WriteThemeFile(section, page, chart);
}

bool DeleteTheme(Database& recos, const std::string& name)
{
    namespace fs = std::filesystem;
    auto found = FindTheme(recos, name);
    if (!found->HasRows()) return false;
    std::error_code ec;
    fs::remove(clsIni::IniPath(ThemeFile(found->Field("Themesection").ToTextOrEmpty())), ec);
    found->Delete();

    // The dialog finds a theme's file by its place in the list, so the
    // sections that follow the deleted one move down, their files with them.
    int index = 0;
    for (auto rs = recos.OpenRecordset("SELECT * FROM DisplayThemes"); !rs->IsEOF(); rs->MoveNext(), ++index) {
        const std::string wanted = ThemeSectionAt(index);
        const std::string section = rs->Field("Themesection").ToTextOrEmpty();
        if (section == wanted) continue;
        const std::string from = clsIni::IniPath(ThemeFile(section));
        if (fs::is_regular_file(from, ec)) {
            fs::copy_file(from, clsIni::IniPath(ThemeFile(wanted)), fs::copy_options::overwrite_existing);
            fs::remove(from, ec);
        }
        rs->Edit();
        rs->SetField("Themesection", Variant(wanted));
        rs->Update();
    }
    return true;
}

}  // namespace ranvel
