// The two colour dialogs: a colour picked through a swatch shows on the
// sample chart at once and is stored only by "Save", which tells the main
// window (Saved); the page designer stays open after it, keeps, selects and
// deletes named themes and refuses a theme's name with an apostrophe; the
// Kundli Designer stores the style and the chart's keys, and Close stores
// nothing.
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QLabel>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>

#include "app/app_fixture.h"
#include "ranvel/app/frmColorEnv.h"
#include "ranvel/app/frmKunEdit.h"
#include "ranvel/data/settings_keys.h"
#include "ranvel/output/Kundali.h"
#include "ranvel/output/controls.h"
#include "ranvel/platform/ini.h"

namespace ranvel::test {
namespace {

namespace fs = std::filesystem;

// A pair of sets in which every key holds a colour of its own.
using Colours = std::pair<PageColors, ChartColors>;
Colours Set(long seed)
{
    Colours c;
    long i = 0;
    for (const std::string& key : PageColorKeys()) PageColor(c.first, key) = seed * 0x10000 + ++i;
    for (const std::string& key : ChartColorKeys()) ChartColor(c.second, key) = seed * 0x10000 + ++i;
    c.second.KunLineWidth = seed;
    c.second.KunBorderWidth = seed + 1;
    return c;
}

class ColourDialog : public AppTest {
protected:
    void SetUp() override
    {
        AppTest::SetUp();
        if (IsSkipped()) return;
        // Three themes of the test's own, whatever the built tree holds.
        RecosDB()->Execute("DELETE FROM DisplayThemes");
        for (const auto& e : fs::directory_iterator(app / "DATA" / "INIFILES"))
            if (e.path().filename().string().rfind("THEME", 0) == 0) fs::remove(e.path());
        for (auto [name, seed] : {std::pair{"Dawn", 1}, {"Noon", 2}, {"Dusk", 3}})
            SaveTheme(*RecosDB(), name, Set(seed).first, Set(seed).second);
        SaveActiveColors(Set(5).first, Set(5).second, "Noon");
        gendat = Gendat();
    }
    void TearDown() override
    {
        AppTest::TearDown();
        ActivePageColors() = {};
        ActiveChartColors() = {};
    }

    template <typename D>
    D* Show(D* dialog)
    {
        shown = dialog;
        dialog->show();
        return dialog;
    }
    template <typename T = QWidget>
    T* Find(const char* name)
    {
        return Child<T>(shown, name);
    }
    // Clicks a button; an option on its circle.
    void Click(const char* name)
    {
        auto* b = Find<QAbstractButton>(name);
        const QPoint at = qobject_cast<QRadioButton*>(b) ? QPoint(8, b->height() / 2) : b->rect().center();
        QTest::mouseClick(b, Qt::LeftButton, {}, at);
    }
    // Picks a colour through a swatch, as the user does in the colour dialog.
    void Pick(const char* swatch, const QColor& c)
    {
        dialogs.colours.push_back(c);
        Click(swatch);
    }
    void Name(const QString& text)
    {
        QLineEdit* e = Find<QComboBox>("cmbTheme")->lineEdit();
        e->clear();
        QTest::keyClicks(e, text);
    }
    void SelectTheme(int index)
    {
        auto* themes = Find<QComboBox>("cmbTheme");
        themes->setCurrentIndex(index);
        emit themes->activated(index);
    }
    QStringList Themes()
    {
        QStringList items;
        auto* themes = Find<QComboBox>("cmbTheme");
        for (int i = 0; i < themes->count(); ++i) items << themes->itemText(i);
        return items;
    }
    Kundali* Demo() { return Find<Kundali>("kunDemo"); }
    std::string Gendat() const { return testing::Slurp(app / "DATA" / "INIFILES" / "GENDAT.INI"); }
    std::string Stored(const std::string& key, const char* section) const
    {
        return clsIni().GetIniString(key, "<none>", section, "");
    }
    Colours File(const std::string& section) const
    {
        Colours c;
        ReadThemeFile(section, c.first, c.second);
        return c;
    }

    QWidget* shown = nullptr;
    std::string gendat;
    const QColor saffron{0xFF, 0x99, 0x33};
    const QColor indigo{0x4B, 0x00, 0x82};
};

using PageDesigner = ColourDialog;
using KundliDesigner = ColourDialog;

TEST_F(PageDesigner, APickedColourShowsAtOnceButCloseStoresNothing)
{
    auto* form = Show(new frmColorEnv);
    EXPECT_EQ(Colours(form->Page(), form->Chart()), Set(5));
    EXPECT_EQ(Themes(), (QStringList{"Dawn", "Noon", "Dusk"}));
    EXPECT_EQ(Find<QComboBox>("cmbTheme")->currentText(), "Noon");
    for (int box = 1; box <= 12; ++box) EXPECT_EQ(Demo()->HouseText(box), "Pl ") << box;

    Pick("picKunLineColor", indigo);
    EXPECT_EQ(Demo()->LineColor(), indigo);
    Find<QSpinBox>("txtKunBorderWidth")->setValue(4);
    EXPECT_EQ(Demo()->BorderWidth(), 4);
    Pick("picHeadingCol", saffron);
    EXPECT_EQ(form->Page().HeadingCol, ColorToSetting(saffron));
    Click("picHeadingCol");  // the colour dialog cancelled
    EXPECT_EQ(form->Page().HeadingCol, ColorToSetting(saffron));

    Click("cmdClose");
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(Gendat(), gendat);
    EXPECT_EQ(Colours(ActivePageColors(), ActiveChartColors()), Set(5));
}

TEST_F(PageDesigner, SaveStoresEveryKeyAndTheNameReloadsTheActiveColoursAndStaysOpen)
{
    auto* form = Show(new frmColorEnv);
    QSignalSpy saved(form, &frmColorEnv::Saved);
    SelectTheme(2);
    EXPECT_EQ(Colours(form->Page(), form->Chart()), Set(3));
    EXPECT_EQ(Demo()->BackColor(), ColorFromSetting(Set(3).second.KunBackColor));
    Pick("picTableHeadCol", saffron);
    Colours want(form->Page(), form->Chart());
    Click("cmdSaveAyanKundStyle");

    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(saved.count(), 1);
    EXPECT_FALSE(Find<QLabel>("lblStatus")->text().isEmpty());
    // Every key, the address's colour too, though it has no swatch: it is
    // the theme's own, carried through.
    EXPECT_EQ(want.first.CompanyAddressCol, Set(3).first.CompanyAddressCol);
    for (const std::string& key : PageColorKeys())
        EXPECT_EQ(Stored(key, "PAGECOLORS"), std::to_string(PageColor(want.first, key))) << key;
    for (const std::string& key : ChartColorKeys())
        EXPECT_EQ(Stored(key, "KUNCOLOR"), std::to_string(ChartColor(want.second, key))) << key;
    EXPECT_EQ(Stored("ThemeName", "PAGECOLORS"), "Dusk");
    EXPECT_EQ(Colours(ActivePageColors(), ActiveChartColors()), want);

    // Still open, a second change is saved the same way.
    Pick("picHeadingCol", indigo);
    Click("cmdSaveAyanKundStyle");
    EXPECT_EQ(saved.count(), 2);
    EXPECT_EQ(ActivePageColors().HeadingCol, ColorToSetting(indigo));
    Click("cmdClose");
    EXPECT_EQ(saved.count(), 2);
    EXPECT_TRUE(messages.Messages().empty());
}

TEST_F(PageDesigner, AThemeNameWithAnApostropheIsRefusedBeforeAnythingIsWritten)
{
    auto* form = Show(new frmColorEnv);
    QSignalSpy saved(form, &frmColorEnv::Saved);
    Pick("picNormTextCol", saffron);
    Name("Asha's theme");
    for (const char* command : {"cmdSaveTheme", "cmdSaveAyanKundStyle", "cmdDelTheme"}) {
        messages.Clear();
        Click(command);
        ASSERT_EQ(messages.Messages().size(), 1u) << command;
        EXPECT_EQ(messages.Messages()[0].title, "Invalid Name") << command;
        EXPECT_EQ(messages.Messages()[0].icon, MsgIcon::Exclamation) << command;
        EXPECT_NE(messages.Messages()[0].text.find("Asha's theme"), std::string::npos) << command;
    }
    EXPECT_EQ(Gendat(), gendat);
    EXPECT_EQ(Colours(ActivePageColors(), ActiveChartColors()), Set(5));
    EXPECT_EQ(Themes(), (QStringList{"Dawn", "Noon", "Dusk"}));
    EXPECT_EQ(ListThemes(*RecosDB()).size(), 3u);
    EXPECT_EQ(saved.count(), 0);
    EXPECT_TRUE(form->isVisible());
}

TEST_F(PageDesigner, SaveSchemeAddsANameAndDeleteRenumbersTheRest)
{
    auto* form = Show(new frmColorEnv);
    Pick("picNormTextCol", saffron);
    Name("Harvest");
    Click("cmdSaveTheme");
    const Colours harvest(form->Page(), form->Chart());
    EXPECT_EQ(Themes(), (QStringList{"Dawn", "Noon", "Dusk", "Harvest"}));
    EXPECT_EQ(ListThemes(*RecosDB()).back(), (ThemeRow{"Harvest", "THEME4"}));
    EXPECT_EQ(File("THEME4"), harvest);

    Name("Dawn");
    Click("cmdDelTheme");
    EXPECT_EQ(Themes(), (QStringList{"Noon", "Dusk", "Harvest"}));
    EXPECT_EQ(File("THEME2"), Set(3));
    EXPECT_FALSE(fs::exists(app / "DATA" / "INIFILES" / "THEME4.ini"));
    // Selecting by place in the list finds the moved file.
    SelectTheme(2);
    EXPECT_EQ(Colours(form->Page(), form->Chart()), harvest);
    EXPECT_EQ(Gendat(), gendat);
    EXPECT_TRUE(messages.Messages().empty());
}

TEST_F(KundliDesigner, SaveStoresTheStyleAndTheChartKeysAndCloseStoresNothing)
{
    auto* form = Show(new frmKunEdit);
    QSignalSpy closed(form, &frmKunEdit::Saved);
    EXPECT_EQ(form->Chart(), Set(5).second);
    EXPECT_EQ(Demo()->HouseText(7), "Planet ");
    Pick("picLineColor", indigo);
    EXPECT_EQ(Demo()->LineColor(), indigo);
    Click("optNorthKundli");
    Click("cmdClose");
    EXPECT_EQ(Gendat(), gendat);
    EXPECT_FALSE(settings.Get("Init", "KundStyle"));
    EXPECT_EQ(closed.count(), 0);

    QSignalSpy saved(Show(new frmKunEdit), &frmKunEdit::Saved);
    Pick("picNumberColor", indigo);
    EXPECT_EQ(Demo()->NumberColor(), indigo);
    Find<QSpinBox>("txtBorderWidth")->setValue(3);
    EXPECT_EQ(Demo()->BorderWidth(), 3);
    Click("optEastKundli");
    EXPECT_EQ(Demo()->ChartStyle(), Kundali::East);
    Click("cmdSave");
    EXPECT_EQ(saved.count(), 1);
    EXPECT_EQ(ReadSetting(keys::KundStyle), "1");
    ChartColors want = Set(5).second;
    want.KunNumColor = ColorToSetting(indigo);
    want.KunBorderWidth = 3;
    for (const std::string& key : ChartColorKeys())
        EXPECT_EQ(Stored(key, "KUNCOLOR"), std::to_string(ChartColor(want, key))) << key;
    EXPECT_EQ(ActiveChartColors(), want);
    // The page's colours and the theme's name belong to the page designer.
    EXPECT_EQ(Stored("HeadingCol", "PAGECOLORS"), std::to_string(Set(5).first.HeadingCol));
    EXPECT_EQ(Stored("ThemeName", "PAGECOLORS"), "Noon");
}

}  // namespace
}  // namespace ranvel::test
