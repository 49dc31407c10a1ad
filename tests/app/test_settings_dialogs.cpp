// The settings dialogs and the setup wizard as a user drives them: the
// place editor's cities and countries, the range check on leaving a degrees
// field, the settings tabs and dialogs that write only when saved, and the
// wizard's two ways out.
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>

#include "app/app_fixture.h"
#include "ranvel/app/frmCalcOptions.h"
#include "ranvel/app/frmEditLongLat.h"
#include "ranvel/app/frmKunEdit.h"
#include "ranvel/app/frmWizard.h"
#include "ranvel/chart/planets.h"
#include "ranvel/data/settings_keys.h"

namespace ranvel::test {
namespace {

class DialogTest : public AppTest {
protected:
    template <typename T = QWidget>
    T* Find(const char* name)
    {
        return Child<T>(shown, name);
    }
    template <typename D>
    D* Show(D* dialog)
    {
        shown = dialog;
        dialog->show();
        QApplication::setActiveWindow(dialog);
        return dialog;
    }
    // Clicks a button; an option on its circle, as its caption may not
    // reach the middle of its box.
    void Click(const char* name)
    {
        auto* b = Find<QAbstractButton>(name);
        const QPoint at = qobject_cast<QRadioButton*>(b) ? QPoint(8, b->height() / 2) : b->rect().center();
        QTest::mouseClick(b, Qt::LeftButton, {}, at);
    }
    void Type(QLineEdit* e, const QString& text)
    {
        e->setFocus();
        e->selectAll();
        QTest::keyClicks(e, text);
    }
    void Type(const char* field, const QString& text) { Type(Find<QLineEdit>(field), text); }
    // Types a name into a list's box and takes it with Enter.
    void Pick(const char* combo, const QString& text)
    {
        auto* c = Find<QComboBox>(combo);
        c->setFocus();
        c->lineEdit()->clear();
        QTest::keyClicks(c, text);
        QTest::keyClick(c, Qt::Key_Return);
    }
    QString Field(const char* name) { return Find<QLineEdit>(name)->displayText(); }
    bool Checked(const char* name) { return Find<QAbstractButton>(name)->isChecked(); }
    std::optional<std::string> Stored(const char* section, const char* key) { return settings.Get(section, key); }
    long Rows(const std::string& sql) { return RecosDB()->OpenRecordset(sql)->RecordCount(); }

    QWidget* shown = nullptr;
};

// ---------------------------------------------------------------------------
// The place editor

class PlaceEditorForm : public DialogTest {
protected:
    void SetUp() override
    {
        DialogTest::SetUp();
        editor = Show(new frmEditLongLat(frmEditLongLat::Tab::City));
    }
    frmEditLongLat* editor = nullptr;
};

TEST_F(PlaceEditorForm, LeavingADegreesFieldChecksTheBoundOf180)
{
    auto* lat = Find<QLineEdit>("txtLat");
    const auto leave = [&](QLineEdit* field, const QString& text) {
        Type(field, text);
        QTest::keyClick(field, Qt::Key_Tab);
        EXPECT_FALSE(field->hasFocus());
    };
    leave(lat, "12000");  // a latitude of 120 passes: the bound is 180 here too
    EXPECT_TRUE(messages.Messages().empty());

    leave(lat, "18001");
    ASSERT_EQ(messages.Messages().size(), 1u);
    EXPECT_EQ(messages.Messages()[0].title, "Invalid Latitude");
    EXPECT_EQ(messages.Messages()[0].text, "Please enter a value under 180.");
    EXPECT_EQ(lat->displayText(), "180:01");  // the value stays for the user to mend

    leave(Find<QLineEdit>("txtLong"), "20000");
    ASSERT_EQ(messages.Messages().size(), 2u);
    EXPECT_EQ(messages.Messages()[1].title, "Invalid Longitude");
}

TEST_F(PlaceEditorForm, PickingACountryFillsTheZonesAndTheCityList)
{
    Pick("cbocCountry", "India");
    EXPECT_EQ(Field("txtCitGMT"), "+05.30");
    auto* cities = Find<QComboBox>("cmbCityList");
    EXPECT_GE(cities->findText("Agra"), 0);
    EXPECT_LT(cities->findText("Santiago"), 0);
    // The Country tab follows, ready to change India.
    EXPECT_EQ(Find<QComboBox>("cboCNTRY")->currentText(), "India");
    EXPECT_EQ(Field("txtGMTDiff"), "+05.30");
}

TEST_F(PlaceEditorForm, PickingACountryOnItsOwnTabOffersItsZoneToTheCityToo)
{
    Pick("cbocCountry", "Chile");
    EXPECT_EQ(Field("txtCitGMT"), "-04.00");
    editor->ShowTab(frmEditLongLat::Tab::Country);
    Pick("cboCNTRY", "Japan");
    EXPECT_EQ(Field("txtGMTDiff"), "+09.00");
    EXPECT_EQ(Field("txtCitGMT"), "+09.00");
    EXPECT_TRUE(messages.Messages().empty());
}

TEST_F(PlaceEditorForm, APickedCityIsChangedInPlaceAndANewOneAdded)
{
    Pick("cbocCountry", "India");
    Pick("cmbCityList", "Agra");
    EXPECT_EQ(Field("txtLat"), "027:10");
    EXPECT_EQ(Field("txtLong"), "078:01");
    EXPECT_TRUE(Checked("optNorth"));
    EXPECT_TRUE(Checked("optEast"));
    EXPECT_EQ(Field("txtCitGMT"), "+05.30");
    EXPECT_TRUE(Find<QLabel>("lblCityMode")->text().contains("Changing"));
    // The city's zone is told beside its field, which it leaves alone.
    EXPECT_EQ(Find<QLabel>("lblCitZone")->text(), "Asia/Kolkata: +05.30 today");

    Type("txtLat", "02720");
    Click("cmdSave");
    EXPECT_TRUE(messages.Messages().empty());
    auto agra = RecosDB()->OpenRecordset("SELECT * FROM City WHERE City = 'Agra'");
    ASSERT_EQ(agra->RecordCount(), 1);
    EXPECT_EQ(agra->Field("Lat").ToText(), "027.20");

    Click("cmdNewCity");
    EXPECT_TRUE(Find<QLabel>("lblCityMode")->text().contains("Adding"));
    EXPECT_EQ(Find<QLabel>("lblCitZone")->text(), "");
    EXPECT_EQ(Field("txtLat"), "000:00");
    EXPECT_EQ(Field("txtCitGMT"), "+05.30");  // the country's zone is offered
    Pick("cmbCityList", "Testpur");
    Type("txtLat", "01234");
    Click("optSouth");
    Type("txtLong", "07715");
    Click("optWest");
    Click("cmdSave");
    EXPECT_TRUE(messages.Messages().empty());
    EXPECT_EQ(Rows("SELECT * FROM City WHERE City = 'Agra'"), 1);

    // Found again by a fresh editor, with what was typed.
    shown->close();
    Show(new frmEditLongLat(frmEditLongLat::Tab::City));
    Pick("cmbCityList", "Testpur");
    EXPECT_EQ(Find<QComboBox>("cbocCountry")->currentText(), "India");
    EXPECT_EQ(Field("txtLat"), "012:34");
    EXPECT_TRUE(Checked("optSouth"));
    EXPECT_EQ(Field("txtLong"), "077:15");
    EXPECT_TRUE(Checked("optWest"));

    Click("cmdDelete");
    EXPECT_EQ(Rows("SELECT * FROM City WHERE City = 'Testpur'"), 0);
    EXPECT_TRUE(Find<QLabel>("lblCityMode")->text().contains("Adding"));
}

TEST_F(PlaceEditorForm, DeletingACountryLeavesItsCities)
{
    const long cities = Rows("SELECT * FROM City WHERE Country = 'India'");
    ASSERT_GT(cities, 0);
    editor->ShowTab(frmEditLongLat::Tab::Country);
    EXPECT_EQ(Find<QTabWidget>("tabEdit")->currentIndex(), 1);
    Pick("cboCNTRY", "India");
    Click("cmdCDelete");
    EXPECT_EQ(Rows("SELECT * FROM Country WHERE Name = 'India'"), 0);
    EXPECT_EQ(Rows("SELECT * FROM City WHERE Country = 'India'"), cities);
    EXPECT_LT(Find<QComboBox>("cbocCountry")->findText("India"), 0);

    // Added back as a new country, under a zone of its own.
    Pick("cboCNTRY", "India");
    Type("txtGMTDiff", "+0530");
    Click("cmdCSave");
    auto india = RecosDB()->OpenRecordset("SELECT * FROM Country WHERE Name = 'India'");
    ASSERT_EQ(india->RecordCount(), 1);
    EXPECT_EQ(india->Field("GMTDIF").ToText(), "+05.30");
    EXPECT_TRUE(messages.Messages().empty());
}

TEST_F(PlaceEditorForm, ANameWithAnApostropheEndsTheCommandWithItsFault)
{
    Pick("cmbCityList", "O'Hare");
    ASSERT_EQ(messages.Messages().size(), 1u);
    EXPECT_EQ(messages.Messages()[0].icon, MsgIcon::Critical);
    // Deleting looks the name up too: the fault ends that command alone.
    Click("cmdDelete");
    ASSERT_EQ(messages.Messages().size(), 2u);
    EXPECT_EQ(messages.Messages()[1].icon, MsgIcon::Critical);
    EXPECT_TRUE(shown->isVisible());
}

TEST_F(PlaceEditorForm, ANameWithAnApostropheIsRefusedBeforeAnythingIsWritten)
{
    const long cities = Rows("SELECT * FROM City"), countries = Rows("SELECT * FROM Country");
    auto refused = [&](const char* what) {
        ASSERT_FALSE(messages.Messages().empty());
        const Message& m = messages.Messages().back();
        EXPECT_EQ(m.title, "Invalid Name");
        EXPECT_EQ(m.icon, MsgIcon::Exclamation);
        EXPECT_NE(m.text.find(what), std::string::npos) << m.text;
        EXPECT_EQ(Rows("SELECT * FROM City"), cities);
        EXPECT_EQ(Rows("SELECT * FROM Country"), countries);
    };
    // A new city of that name, in a country of the list.
    Pick("cbocCountry", "India");
    Click("cmdNewCity");
    Pick("cmbCityList", "Ranjit's Nagar");
    messages.Clear();
    Click("cmdSave");
    refused("city");
    // A city of a country whose name holds one.
    Pick("cmbCityList", "Testpur");
    Find<QComboBox>("cbocCountry")->setEditText("Cote d'Ivoire");
    Click("cmdSave");
    refused("country");
    // A country, new or renamed.
    editor->ShowTab(frmEditLongLat::Tab::Country);
    Click("cmdNewCountry");
    Pick("cboCNTRY", "Cote d'Ivoire");
    Click("cmdCSave");
    refused("country");
    Pick("cboCNTRY", "India");
    Find<QComboBox>("cboCNTRY")->setEditText("Bharat's India");
    Click("cmdCSave");
    refused("country");
    EXPECT_EQ(Rows("SELECT * FROM Country WHERE Name = 'India'"), 1);
    EXPECT_TRUE(shown->isVisible());
}

// ---------------------------------------------------------------------------
// Settings tabs and dialogs: written on save, left as they were otherwise

using SettingsDialogs = DialogTest;

TEST_F(SettingsDialogs, TheEditorsSettingsTabsWriteOnlyWhenSaved)
{
    auto* editor = Show(new frmEditLongLat(frmEditLongLat::Tab::Ayanamsh));
    EXPECT_EQ(Find<QTabWidget>("tabEdit")->currentIndex(), 2);
    EXPECT_TRUE(Checked("optLahiri"));
    Click("optKP");
    editor->ShowTab(frmEditLongLat::Tab::RahuKetu);
    Click("optRahuTrue");
    editor->ShowTab(frmEditLongLat::Tab::Details);
    Type("txtDispName", "Asha");
    EXPECT_TRUE(Checked("optKP") && Checked("optRahuTrue"));
    Click("cmdClose");
    EXPECT_FALSE(editor->isVisible());
    EXPECT_FALSE(Stored("Init", "AyanType"));
    EXPECT_FALSE(Stored("Init", "RahuKetuMode"));
    EXPECT_EQ(ReadIni(keys::DispName), "Tessaly");

    editor = Show(new frmEditLongLat(frmEditLongLat::Tab::Ayanamsh));
    Click("optCustom");
    Type("txtCustAyan", "2351");
    Click("cmdAyanSave");
    EXPECT_EQ(Stored("Init", "AyanType"), "13");
    EXPECT_EQ(Stored("Init", "CustAyan"), "23.51");
    editor->ShowTab(frmEditLongLat::Tab::RahuKetu);
    Click("optRahuTrue");
    Click("cmdRahuSave");
    EXPECT_EQ(Stored("Init", "RahuKetuMode"), "2");
    editor->ShowTab(frmEditLongLat::Tab::Details);
    Type("txtDispName", "Asha");
    Type("txtDispAdd", "7 Temple Road, Pune");
    Click("cmdDetSave");
    EXPECT_EQ(ReadIni(keys::DispName), "Asha");
    EXPECT_EQ(ReadIni(keys::DispAdd), "7 Temple Road, Pune");
    EXPECT_TRUE(messages.Messages().empty());

    // Opened again, the tabs show what was saved.
    Show(new frmEditLongLat(frmEditLongLat::Tab::RahuKetu));
    EXPECT_TRUE(Checked("optCustom"));
    EXPECT_EQ(Field("txtCustAyan"), "23.51");
    EXPECT_TRUE(Checked("optRahuTrue"));
    EXPECT_EQ(Field("txtDispName"), "Asha");
}

TEST_F(SettingsDialogs, RegionalSettingsWriteOnOkAndNotOnCancel)
{
    settings.Set("Settings", "CalcMangMod", "2");
    Show(new frmCalcOptions);
    EXPECT_TRUE(Checked("optNorthMar"));
    EXPECT_TRUE(Checked("optSouthMang"));
    Click("optSouthMar");
    Click("cmdCancel");
    EXPECT_FALSE(Stored("Settings", "CalcVarMod"));

    Show(new frmCalcOptions);
    Click("optSouthMar");
    Click("optNorthMang");
    Click("cmdOK");
    EXPECT_EQ(Stored("Settings", "CalcVarMod"), "2");
    EXPECT_EQ(Stored("Settings", "CalcMangMod"), "1");
    // The astronomical sunrise stays off, and unwritten, until chosen.
    EXPECT_FALSE(Stored("Settings", "AstroSunrise"));
    Show(new frmCalcOptions);
    EXPECT_FALSE(Checked("chkAstroSunrise"));
    Click("chkAstroSunrise");
    Click("cmdOK");
    EXPECT_EQ(Stored("Settings", "AstroSunrise"), "1");
    EXPECT_TRUE(clsPlanets::AstronomicalSunrise());
}

TEST_F(SettingsDialogs, TheChartStyleIsWrittenOnSaveAndNotOnClose)
{
    Show(new frmKunEdit);
    EXPECT_TRUE(Checked("optSouthKundli"));  // the default
    Click("optNorthKundli");
    Click("cmdClose");
    EXPECT_FALSE(Stored("Init", "KundStyle"));

    Show(new frmKunEdit);
    Click("optEastKundli");
    Click("cmdSave");
    EXPECT_EQ(ReadSetting(keys::KundStyle), "1");
}

// ---------------------------------------------------------------------------
// The setup wizard

class SetupWizard : public DialogTest {
protected:
    void SetUp() override
    {
        DialogTest::SetUp();
        settings.Set("Settings", "DoneSetup", "False");
        wizard = Show(new frmWizard([this] { ++ended; }));
    }
    frmWizard* wizard = nullptr;
    int ended = 0;
};

TEST_F(SetupWizard, FinishWritesEveryChoiceAndCountsTheSetupAsDone)
{
    EXPECT_FALSE(Find<QPushButton>("cmdBack")->isEnabled());
    EXPECT_FALSE(Find<QPushButton>("cmdFinish")->isEnabled());
    EXPECT_EQ(Find<QLineEdit>("txtName")->text(), "Tessaly");
    Click("cmdNext");
    Type("txtName", "Asha");
    Type("txtAddress", "7 Temple Road, Pune");
    Click("cmdNext");
    Click("optRahuTrue");
    Click("cmdNext");
    Click("optKP");
    Click("cmdBack");
    Click("cmdNext");
    EXPECT_TRUE(Checked("optKP"));  // going back keeps the choices
    Click("cmdNext");
    Click("optNorthKundli");
    Click("cmdNext");
    EXPECT_FALSE(Find<QPushButton>("cmdNext")->isEnabled());
    Click("optVarnSouth");
    Click("optMangSouth");
    EXPECT_EQ(ended, 0);
    Click("cmdFinish");

    EXPECT_EQ(ended, 1);
    EXPECT_FALSE(wizard->isVisible());
    EXPECT_EQ(wizard->result(), QDialog::Accepted);
    EXPECT_EQ(ReadIni(keys::DispName), "Asha");
    EXPECT_EQ(ReadIni(keys::DispAdd), "7 Temple Road, Pune");
    EXPECT_EQ(Stored("Init", "RahuKetuMode"), "2");
    EXPECT_EQ(Stored("Init", "AyanType"), "3");
    EXPECT_EQ(Stored("Init", "Kundstyle"), "0");
    EXPECT_EQ(Stored("Settings", "CalcVarMod"), "2");
    EXPECT_EQ(Stored("Settings", "CalcMangMod"), "2");
    EXPECT_EQ(Stored("Settings", "DoneSetup"), "True");
    EXPECT_TRUE(messages.Messages().empty());
}

TEST_F(SetupWizard, AnAyanamshaTheWizardDoesNotOfferSurvivesFinish)
{
    wizard->close();
    settings.Set("Init", "AyanType", "13");
    settings.Set("Init", "RahuKetuMode", "2");
    Show(new frmWizard);
    for (const char* option : {"optLahiri", "optRaman", "optKP", "optSayan", "optAyanVakya"})
        EXPECT_FALSE(Checked(option)) << option;
    EXPECT_TRUE(Checked("optRahuTrue"));  // the others show what is stored
    for (int page = 1; page < 6; ++page) Click("cmdNext");
    Click("cmdFinish");
    EXPECT_EQ(Stored("Init", "AyanType"), "13");
    EXPECT_EQ(Stored("Init", "RahuKetuMode"), "2");
}

TEST_F(SetupWizard, CancelOrCloseKeepsTheDefaultsButCountsTheSetupAsDone)
{
    const std::string text =
        "You have chosen to cancel Setup Wizard, Ranvel will run on default settings.\n"
        "You can run Setup Wizard later by clicking on 'Settings-->Setup Wizard.'";
    Click("cmdNext");
    Type("txtName", "Asha");
    Click("cmdCancel");
    EXPECT_EQ(ended, 1);
    EXPECT_FALSE(wizard->isVisible());
    EXPECT_EQ(Stored("Settings", "DoneSetup"), "True");
    ASSERT_EQ(messages.Messages().size(), 1u);
    EXPECT_EQ(messages.Messages()[0].title, "Setup not completed");
    EXPECT_EQ(messages.Messages()[0].text, text);
    EXPECT_FALSE(Stored("Init", "AyanType"));
    EXPECT_EQ(ReadIni(keys::DispName), "Tessaly");

    // The window's close box is a cancel too.
    settings.Set("Settings", "DoneSetup", "False");
    int closed = 0;
    auto* again = Show(new frmWizard([&closed] { ++closed; }));
    again->close();
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(Stored("Settings", "DoneSetup"), "True");
    ASSERT_EQ(messages.Messages().size(), 2u);
    EXPECT_EQ(messages.Messages()[1].text, text);
    EXPECT_EQ(ended, 1);
}

}  // namespace
}  // namespace ranvel::test
