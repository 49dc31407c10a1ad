// The colours of the result pages and of the chart. The active ones lie in
// GENDAT.INI (sections PAGECOLORS and KUNCOLOR) and are read into
// process-wide values at start and after each save; named sets of them,
// the themes, are rows of DisplayThemes in RECOS.Dat, each with a file
// <Themesection>.ini of its own in DATA/INIFILES holding all the keys in
// one section "THEME". Colours are whole numbers with red in the low byte,
// then green, then blue.
#pragma once

#include <string>
#include <vector>

#include "ranvel/platform/database.h"

namespace ranvel {

struct PageColors {
    long TopLineCol = 0;
    long TopLogoBackCol = 16777215;
    long TopLogoCol = 0;
    long PerNameCol = 0;
    long FrontLogoCol = 0;
    long FrontLogoBackCol = 16777215;
    long HeadingCol = 0;
    long SubHeadCol = 0;
    long NormTextCol = 0;
    long TableBackCol = 16777215;
    long TableHeadCol = 16777215;
    long CompanyNameCol = 0;
    long CompanyAddressCol = 0;
    long CircleBorderCol = 0;
    long TableHeadText = 0;
    bool operator==(const PageColors&) const = default;
};

struct ChartColors {
    long KunBackColor = 16777215;
    long KunBorderColor = 0;
    long KunLineColor = 0;
    long KunNumColor = 0;
    long KunTxtColor = 0;
    long KunLineWidth = 1;
    long KunBorderWidth = 1;
    bool operator==(const ChartColors&) const = default;
};

// The fifteen page keys and the seven chart keys, in the order they are
// written.
const std::vector<std::string>& PageColorKeys();
const std::vector<std::string>& ChartColorKeys();
long& PageColor(PageColors& c, const std::string& key);
long& ChartColor(ChartColors& c, const std::string& key);

// The process-wide active values, and reading them anew from GENDAT.INI.
PageColors& ActivePageColors();
ChartColors& ActiveChartColors();
void LoadActiveColors();
// The name of the theme last applied (PAGECOLORS, ThemeName).
std::string ActiveThemeName();

// Writes both sets and the theme's name to GENDAT.INI, then reloads the
// process-wide values.
void SaveActiveColors(const PageColors& page, const ChartColors& chart, const std::string& themeName);
// Writes only the chart keys (the Kundli Designer's save).
void SaveChartColors(const ChartColors& chart);

// A theme file's colours; missing keys read as the defaults.
void ReadThemeFile(const std::string& section, PageColors& page, ChartColors& chart);
void WriteThemeFile(const std::string& section, const PageColors& page, const ChartColors& chart);

// The themes of DisplayThemes, in table order.
struct ThemeRow {
    std::string ThemeName;
    std::string Themesection;
    bool operator==(const ThemeRow&) const = default;
};
std::vector<ThemeRow> ListThemes(Database& recos);
// Whether a theme of that name is in DisplayThemes. The name goes into the
// query as it stands: an apostrophe breaks it (DatabaseError).
bool HasTheme(Database& recos, const std::string& name);
// The section, and so the file, of the list's entry index (from 0): the
// sections run THEME1, THEME2 ... in list order.
std::string ThemeSectionAt(int index);
// Saves a scheme under a name: a known name rewrites its file, a new one
// adds a row at the end of the list with the section "THEME" + the list's
// count with it, then writes the file. Names go into the query as they
// stand.
void SaveTheme(Database& recos, const std::string& name, const PageColors& page, const ChartColors& chart);
// Deletes the theme's file and row, then renumbers the rest so that the
// sections run THEME1, THEME2 ... in table order, their files following.
// False when there is no theme of that name.
bool DeleteTheme(Database& recos, const std::string& name);

}  // namespace ranvel
