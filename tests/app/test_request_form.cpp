// The request form as a user drives it: the pages and their order, the
// time fields and their AM/PM options, the range check, the type-ahead of
// places and persons, the person store and the exchange files, and a
// generation that answers as the command line does.
#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QDateTime>
#include <QDateEdit>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTreeWidget>
#include <fstream>

#include "app/app_fixture.h"
#include "commands.h"
#include "ranvel/app/frmLogin.h"
#include "ranvel/app/mdiMother.h"
#include "ranvel/data/messages.h"
#include "ranvel/engine/analysis.h"
#include "ranvel/engine/request_state.h"

namespace ranvel::test {
namespace {

class RequestForm : public AppTest {
protected:
    template <typename T = QWidget>
    T* Find(const char* name)
    {
        return Child<T>(form, name);
    }
    void SetUp() override
    {
        AppTest::SetUp();
        form = new frmLogin;
        form->show();
        QApplication::setActiveWindow(form);
    }
    void Next() { Find<QPushButton>("CmdGenerate")->click(); }
    void Back() { Find<QPushButton>("flpBack")->click(); }
    int Page() { return form->Request().RequestPage; }
    void Type(QComboBox* combo, const QString& text)
    {
        combo->setFocus();
        combo->lineEdit()->clear();
        QTest::keyClicks(combo->lineEdit(), text);
    }
    // The form made anew, as at a start, over what the store holds now.
    void Reopen()
    {
        delete form;
        form = new frmLogin;
        form->show();
        QApplication::setActiveWindow(form);
    }
    void SetDate(const char* name, int d, int m, int y) { Find<QDateEdit>(name)->setDate(QDate(y, m, d)); }

    frmLogin* form = nullptr;
};

TEST_F(RequestForm, PagesGoOnByTheCategoryAndBackOneAtATime)
{
    // Loading chose the post-birth rites and their first Muhurtha.
    EXPECT_EQ(Page(), 1);
    EXPECT_TRUE(Find<QWidget>("framMuhus")->isVisible());
    EXPECT_EQ(form->Request().Category, "BIRTHRITES");
    EXPECT_FALSE(form->Request().MuhuName.empty());
    EXPECT_EQ(form->Title().toStdString(), "Ranvel-" + form->Request().MuhuName);

    Next();
    EXPECT_EQ(Page(), 2);
    EXPECT_TRUE(Find<QWidget>("frmMuhurtha")->isVisible());
    EXPECT_FALSE(Find<QWidget>("framMuhus")->isVisible());
    // A range search is where page 2 starts.
    EXPECT_TRUE(Find<QRadioButton>("optMuhuRange")->isChecked());
    EXPECT_EQ(form->Request().SearchMode, 1);
    EXPECT_TRUE(Find<QGroupBox>("framMuhuRange")->isVisible());
    Find<QRadioButton>("optMuhuCheck")->click();
    EXPECT_EQ(form->Request().SearchMode, 2);
    EXPECT_FALSE(Find<QGroupBox>("framMuhuTimeRange")->isVisible());
    EXPECT_TRUE(Find<QGroupBox>("framMuhuMoment")->isVisible());

    Next();
    EXPECT_EQ(Page(), 3);
    EXPECT_TRUE(Find<QWidget>("frmSingleGuy")->isVisible());
    Back();
    EXPECT_EQ(Page(), 2);
    // Entering page 2 again chooses the range once more.
    EXPECT_EQ(form->Request().SearchMode, 1);
    Back();
    EXPECT_EQ(Page(), 1);
    Back();
    EXPECT_EQ(Page(), 1);

    // A marriage asks for the couple; a double click on a Muhurtha goes on.
    Find<QAbstractButton>("butMarriage")->click();
    EXPECT_EQ(form->Request().Category, "Marriage");
    auto* list = Find<QTreeWidget>("tvMuhuList");
    ASSERT_GT(list->topLevelItemCount(), 1);
    list->setCurrentItem(list->topLevelItem(1));
    EXPECT_EQ(form->Request().MuhuName, list->topLevelItem(1)->text(0).toStdString());
    emit list->itemDoubleClicked(list->topLevelItem(1), 0);
    EXPECT_EQ(Page(), 2);
    Next();
    EXPECT_EQ(Page(), 4);
    EXPECT_TRUE(Find<QWidget>("frmMatch")->isVisible());
    Back();
    EXPECT_EQ(Page(), 2);

    // A category with nothing in the catalogue still goes on, with no name.
    Back();
    form->FillMuhurthaList("NOSUCHCATEGORY");
    EXPECT_EQ(list->topLevelItemCount(), 0);
    EXPECT_EQ(form->Request().MuhuName, "");
    Next();
    EXPECT_EQ(Page(), 2);
}

TEST_F(RequestForm, TimeFieldsFollowTheirHalfOfTheDay)
{
    auto* time = Find<QLineEdit>("txtMuhuBTime");
    auto* am = Find<QRadioButton>("optMuhuAMPM(0)");
    auto* pm = Find<QRadioButton>("optMuhuAMPM(1)");
    time->setText("11.45");
    EXPECT_TRUE(am->isChecked());
    pm->click();
    EXPECT_EQ(time->text(), "23.45");
    EXPECT_TRUE(pm->isChecked());
    am->click();
    EXPECT_EQ(time->text(), "11.45");
    time->setText("12.30");
    EXPECT_TRUE(pm->isChecked());
    am->click();
    EXPECT_EQ(time->text(), "00.30");
    // The pairs of the window are their own.
    auto* from = Find<QLineEdit>("txtMuhDTFrom");
    from->setText("09.05");
    Find<QRadioButton>("optMuhuR1AMPM(1)")->click();
    EXPECT_EQ(from->text(), "21.05");
    EXPECT_EQ(time->text(), "00.30");
    Find<QLineEdit>("txtMuhDTTo")->setText("24.00");
    EXPECT_TRUE(Find<QRadioButton>("optMuhR2AMPM(1)")->isChecked());
    EXPECT_EQ(frmLogin::RewriteForHalf("24.00", 1), "24.00");
}

TEST_F(RequestForm, ARefusedTimeKeepsThePageAndTheFocus)
{
    EXPECT_TRUE(MuhurthaRequest::ValiDateTime("25.00"));
    EXPECT_TRUE(MuhurthaRequest::ValiDateTime("23.60"));
    EXPECT_TRUE(MuhurthaRequest::ValiDateTime("1_.30"));
    EXPECT_FALSE(MuhurthaRequest::ValiDateTime("24.00"));
    EXPECT_FALSE(MuhurthaRequest::ValiDateTime("00.59"));

    Next();
    auto* to = Find<QLineEdit>("txtMuhDTTo");
    to->setText("25.00");
    Next();
    EXPECT_EQ(Page(), 2);
    EXPECT_TRUE(to->hasFocus());
    EXPECT_TRUE(messages.Messages().empty());  // refused without a word

    // Leaving the field by the keyboard brings the focus back to it.
    QTest::keyClick(to, Qt::Key_Tab);
    QApplication::processEvents();
    EXPECT_TRUE(to->hasFocus());

    to->setText("24.00");
    Next();
    EXPECT_EQ(Page(), 3);
}

TEST_F(RequestForm, ToBeforeFromIsRefusedWithItsMessageAndEqualDatesPass)
{
    Next();
    SetDate("dtMuhuFrom", 10, 11, 2024);
    SetDate("dtMuhuTo", 9, 11, 2024);
    Next();
    EXPECT_EQ(Page(), 2);
    ASSERT_EQ(messages.Messages().size(), 1u);
    EXPECT_EQ(messages.Messages()[0].title, "Error in date.");
    EXPECT_EQ(messages.Messages()[0].text,
              "The 'To:' date can't be lesser than the 'From:' date.\nPlease provide another date.");
    EXPECT_TRUE(Find<QDateEdit>("dtMuhuTo")->hasFocus());

    // A moment is checked without looking at the range.
    Find<QRadioButton>("optMuhuCheck")->click();
    Next();
    EXPECT_EQ(Page(), 3);
    Back();
    SetDate("dtMuhuTo", 10, 11, 2024);
    Next();
    EXPECT_EQ(Page(), 3);
    EXPECT_EQ(messages.Messages().size(), 1u);
}

TEST_F(RequestForm, TypingAPlaceNamesItInTheHintAndEnterFillsTheFields)
{
    Next();
    auto* country = Find<QComboBox>("cmbMuhuCountry");
    auto* city = Find<QComboBox>("cmbMuhuCity");
    Type(country, "Indo");
    EXPECT_EQ(form->Hint(), "If the country is Indonesia, Press 'Enter' to update automatically.");
    EXPECT_EQ(Find<QLineEdit>("txtMuhuGMT")->text(), "+07.00");
    Type(country, "Atlantis");
    EXPECT_EQ(form->Hint(),
              "If the country is Atlantis is not in database, you'll have to provide GMT Difference manually.");
    Type(country, "India");
    emit country->activated(country->findText("India"));
    EXPECT_EQ(Find<QLineEdit>("txtMuhuGMT")->text(), "+05.30");
    EXPECT_EQ(city->count(), 211);

    Type(city, "New Del");
    EXPECT_EQ(form->Hint(), "If the City is New Delhi, Press 'Enter' to update automatically.");
    QTest::keyClick(city->lineEdit(), Qt::Key_Return);
    EXPECT_EQ(city->currentText(), "New Delhi");
    EXPECT_EQ(Find<QLineEdit>("txtMuhuLati")->text(), "028:36");
    EXPECT_EQ(Find<QLineEdit>("txtMuhuLongi")->text(), "077:12");
    EXPECT_EQ(Find<QLineEdit>("TxtMuhuNS")->text(), "N");
    EXPECT_EQ(Find<QLineEdit>("txtMuhuEW")->text(), "E");

    Type(city, "Xanadu");
    EXPECT_EQ(form->Hint(),
              "If the City is Xanadu is not in database, you'll have to provide Longitude & Latitude manually.");
    EXPECT_EQ(Find<QLineEdit>("txtMuhuLati")->text(), "000:00");

    // A typed apostrophe breaks the lookup, not the form.
    Type(city, "O'");
    EXPECT_NE(form->Hint().indexOf("apostrophe"), -1);

    // Only N and S in the place's hemisphere field.
    auto* ns = Find<QLineEdit>("TxtMuhuNS");
    ns->setFocus();
    QTest::keyClick(ns, Qt::Key_X);
    ASSERT_FALSE(messages.Messages().empty());
    EXPECT_EQ(messages.Messages().back().text, "You can only type 'N' - North, or 'S' - South in this box.");
    QTest::keyClick(Find<QLineEdit>("txtMuhuEW"), Qt::Key_N);
    EXPECT_EQ(messages.Messages().back().text, "You can only type 'E' - East, or 'W' - West in this box.");
}

TEST_F(RequestForm, APersonIsSavedFoundAndDeleted)
{
    Next();
    Next();
    ASSERT_EQ(Page(), 3);
    auto* name = Find<QComboBox>("cmbPerson");
    Type(name, "Ravi");
    EXPECT_EQ(form->Hint(),
              "If the Person is 'Ravi is not in database, please don't forget to fill in Date, Time & Place of birth.");
    Find<QRadioButton>("optMF(1)")->click();
    Find<QLineEdit>("txtBDate")->setText("02/09/2000");
    Find<QLineEdit>("txtBTime")->setText("07.05");
    Find<QComboBox>("cmbCity")->setEditText("Pune");
    Find<QComboBox>("cmbCountry")->setEditText("India");
    Find<QLineEdit>("txtLati")->setText("018:31");
    Find<QLineEdit>("txtLongi")->setText("073:51");
    Find<QLineEdit>("txtGMT")->setText("+05.30");
    Find<QPushButton>("cmdSavePerson")->click();
    ASSERT_FALSE(messages.Messages().empty());
    EXPECT_EQ(messages.Messages().back().text, Msg(117));
    EXPECT_EQ(RecosDB()->OpenRecordset("SELECT * FROM Person WHERE Name = 'Ravi'")->RecordCount(), 1);
    // Saving again writes over the same person.
    Find<QLineEdit>("txtBTime")->setText("08.15");
    Find<QPushButton>("cmdSavePerson")->click();
    auto rs = RecosDB()->OpenRecordset("SELECT * FROM Person WHERE Name = 'Ravi'");
    ASSERT_EQ(rs->RecordCount(), 1);
    EXPECT_EQ(rs->Field("Hour").ToText(), "8");

    // Found again by typing, and loaded with Enter.
    Find<QLineEdit>("txtBDate")->setText("00/00/0000");
    Type(name, "Rav");
    EXPECT_EQ(form->Hint(), "If the Person is 'Ravi', Press 'Enter' to update automatically.");
    QTest::keyClick(name->lineEdit(), Qt::Key_Return);
    EXPECT_EQ(Find<QLineEdit>("txtBDate")->text(), "02/09/2000");
    EXPECT_EQ(Find<QLineEdit>("txtBTime")->text(), "08.15");
    EXPECT_EQ(Find<QLineEdit>("txtLati")->text(), "018:31");
    EXPECT_EQ(Find<QComboBox>("cmbCity")->currentText(), "Pune");
    EXPECT_TRUE(Find<QRadioButton>("optMF(1)")->isChecked());
    EXPECT_NE(Find<QComboBox>("cmbBoyName")->findText("Ravi"), -1);

    Find<QPushButton>("cmdDelPerson")->click();
    EXPECT_EQ(messages.Messages().back().text, Msg(118));
    EXPECT_EQ(RecosDB()->OpenRecordset("SELECT * FROM Person WHERE Name = 'Ravi'")->RecordCount(), 0);
    EXPECT_EQ(Find<QComboBox>("cmbBoyName")->findText("Ravi"), -1);
}

TEST_F(RequestForm, ExchangeFilesRoundTripAndMergeTwice)
{
    Next();
    Next();
    Find<QComboBox>("cmbPerson")->setEditText("Asha");
    Find<QLineEdit>("txtBDate")->setText("21/03/1988");
    Find<QLineEdit>("txtBTime")->setText("16.40");
    Find<QRadioButton>("optAMPM(1)")->click();
    Find<QPushButton>("cmdSavePerson")->click();

    const std::string one = (app / "Asha.JKP").string();
    const std::string all = (app / "all.JKD").string();
    dialogs.files = {one, all};
    Find<QPushButton>("cmdSaveFile")->click();
    Find<QPushButton>("cmdExportDB")->click();
    ASSERT_EQ(dialogs.asked.size(), 2u);
    EXPECT_EQ(dialogs.asked[0].title, "Save Person Details To File");
    EXPECT_EQ(dialogs.asked[0].filter, "Person Details (*.JKP)|*.JKP|");
    EXPECT_EQ(dialogs.asked[0].suggested, "Asha.JKP");
    EXPECT_EQ(dialogs.asked[1].title, "Save Database To File");
    EXPECT_EQ(dialogs.asked[1].suggested, "Untitled.JKD");
    auto file = Database::Open(one)->OpenTable("Person");
    ASSERT_EQ(file->RecordCount(), 1);
    EXPECT_EQ(file->Field("Month").ToText(), "03");
    EXPECT_EQ(file->Field("Hour").ToText(), "16");
    EXPECT_EQ(file->Field("seconds").ToText(), "40");  // the time box's last two characters
    EXPECT_EQ(file->Field("AMPM").ToText(), "2");

    // A cancelled dialog does nothing; two merges give two more of each.
    Find<QPushButton>("cmdMergeDB")->click();
    dialogs.files = {all, all, one};
    Find<QPushButton>("cmdMergeDB")->click();
    Find<QPushButton>("cmdMergeDB")->click();
    Find<QPushButton>("cmdOpenFile")->click();
    EXPECT_EQ(dialogs.asked[3].title, "Merge Database");
    EXPECT_EQ(dialogs.asked[5].title, "Import Person Details");
    EXPECT_EQ(RecosDB()->OpenRecordset("SELECT * FROM Person WHERE Name = 'Asha'")->RecordCount(), 4);

    // A file that holds no persons is refused and adds nothing.
    std::ofstream(app / "bad.JKD") << "nothing";
    dialogs.files = {(app / "bad.JKD").string()};
    Find<QPushButton>("cmdMergeDB")->click();
    EXPECT_EQ(messages.Messages().back().title, Msg(4));
    EXPECT_EQ(RecosDB()->OpenRecordset("SELECT * FROM Person")->RecordCount(), 4);
}

// The request of the main job, entered through the form, finds what the
// command line finds for the same request.
TEST_F(RequestForm, AGenerationAnswersAsTheCommandLineDoes)
{
    auto* main = new mdiMother;
    frmLogin* f = main->EntryForm();
    auto find = [&](const char* n) { return f->findChild<QWidget*>(n); };
    static_cast<QAbstractButton*>(find("butMarriage"))->click();
    auto* list = f->findChild<QTreeWidget*>("tvMuhuList");
    list->setCurrentItem(list->findItems("Marriage ceremony (Vivaha)", Qt::MatchExactly).value(0));
    f->CmdGenerate();
    static_cast<QDateEdit*>(find("dtMuhuFrom"))->setDate(QDate(2024, 11, 1));
    static_cast<QDateEdit*>(find("dtMuhuTo"))->setDate(QDate(2024, 11, 30));
    static_cast<QDateEdit*>(find("dtMuhuDate"))->setDate(QDate(2024, 11, 1));
    static_cast<QLineEdit*>(find("txtMuhuBTime"))->setText("00.00");
    static_cast<QLineEdit*>(find("txtMuhDTFrom"))->setText("06.00");
    static_cast<QLineEdit*>(find("txtMuhDTTo"))->setText("22.00");
    auto place = [&](const char* country, const char* city, const char* lat, const char* lon, const char* gmt,
                     const char* const names[5]) {
        static_cast<QComboBox*>(find(names[0]))->setEditText(country);
        static_cast<QComboBox*>(find(names[1]))->setEditText(city);
        static_cast<QLineEdit*>(find(names[2]))->setText(lat);
        static_cast<QLineEdit*>(find(names[3]))->setText(lon);
        static_cast<QLineEdit*>(find(names[4]))->setText(gmt);
    };
    static const char* const muhu[5] = {"cmbMuhuCountry", "cmbMuhuCity", "txtMuhuLati", "txtMuhuLongi", "txtMuhuGMT"};
    place("India", "New Delhi", "028:36", "077:12", "+05.30", muhu);
    f->CmdGenerate();
    ASSERT_EQ(f->Request().RequestPage, 4);
    static const char* const boy[5] = {"cmbBoyCountry", "cmbBoyPlace", "txtBoyLatti", "txtBoyLongi", "txtBoyGMT"};
    static const char* const gal[5] = {"cmbGalCountry", "cmbGalPlace", "txtGalLatti", "txtGalLongi", "txtGalGMT"};
    static_cast<QComboBox*>(find("cmbBoyName"))->setEditText("Arjun");
    static_cast<QLineEdit*>(find("txtBoyDate"))->setText("14/08/1994");
    static_cast<QLineEdit*>(find("txtBoyTime"))->setText("09.20");
    place("India", "New Delhi", "028:36", "077:12", "+05.30", boy);
    static_cast<QComboBox*>(find("cmbGalName"))->setEditText("Meera");
    static_cast<QLineEdit*>(find("txtGalDate"))->setText("03/02/1996");
    static_cast<QLineEdit*>(find("txtGalTime"))->setText("17.45");
    static_cast<QRadioButton*>(find("optGalAMPM(1)"))->click();
    place("India", "Pune", "018:31", "073:51", "+05.30", gal);
    f->CmdGenerate();

    // The form is back on its first page, enabled, and the pages show the result.
    EXPECT_EQ(f->Request().RequestPage, 1);
    EXPECT_TRUE(f->isEnabled());
    ASSERT_EQ(main->TopicCount(), 2);
    EXPECT_EQ(main->CurrentTopic(), 0);
    EXPECT_EQ(main->windowTitle(), "Ranvel-Muhurtha Score");
    const std::string desktop = ResultReport(Engine());

    const std::string request = (app / "request.json").string();
    std::ofstream(request) << R"json({"Category": "Marriage", "MuhuName": "Marriage ceremony (Vivaha)", "SearchMode": 1,
      "MomentDate": "01/11/2024", "MomentTime": "00.00", "FromDate": "01/11/2024", "ToDate": "30/11/2024",
      "FromTime": "06.00", "ToTime": "22.00",
      "Place": {"Country": "India", "City": "New Delhi", "Lati": "028:36", "Longi": "077:12", "NS": "N", "EW": "E", "GMT": "+05.30"},
      "Boy": {"Name": "Arjun", "Sex": 1, "BDate": "14/08/1994", "BTime": "09.20", "AMPM": 1, "Country": "India", "City": "New Delhi", "Lati": "028:36", "Longi": "077:12", "NS": "N", "EW": "E", "GMT": "+05.30"},
      "Girl": {"Name": "Meera", "Sex": 2, "BDate": "03/02/1996", "BTime": "17.45", "AMPM": 2, "Country": "India", "City": "Pune", "Lati": "018:31", "Longi": "073:51", "NS": "N", "EW": "E", "GMT": "+05.30"}})json";
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(cli::CmdMuhurtha(cli::Args({"--request", request}, {"json"})), 0);
    const std::string commandLine = ::testing::internal::GetCapturedStdout();
    EXPECT_EQ(desktop, commandLine);
    EXPECT_NE(desktop.find("Best Muhurtha:"), std::string::npos);
    // The bride's time was typed as 17.45: her chart and her printed time
    // are both the evening's.
    EXPECT_EQ(GirlChart()->clsPerson().GetBirthTimeFull(), "05:45 PM");
}

// A stored person as an older version or an exchange file may have left
// it, the name and all; a name with an apostrophe goes in with its quote
// doubled.
void StorePerson(const std::string& name, const std::string& day, const std::string& hour, int ampm)
{
    std::string quoted = name;
    for (std::size_t i = quoted.find('\''); i != std::string::npos; i = quoted.find('\'', i + 2))
        quoted.insert(i, "'");
    RecosDB()->Execute("INSERT INTO Person (Name, Sex, Day, Month, Year, Hour, Minutes, seconds, AMPM, Country, "
                       "City, LatDeg, LatMT, TextNS, LongDeg, LongMT, TextEW, GMTDIFF) VALUES ('" +
                       quoted + "', 1, '" + day + "', '3', '1990', '" + hour + "', '45', '0', " +
                       std::to_string(ampm) + ", 'India', 'Pune', '18', '31', 'N', '73', '51', 'E', '+05.30')");
}

TEST_F(RequestForm, ANameWithAnApostropheNeverEndsTheProgramNorBorrowsABirth)
{
    StorePerson("Asha", "12", "6", 1);
    StorePerson("Sean O'Brien", "21", "9", 1);
    Reopen();
    Next();
    Next();
    ASSERT_EQ(Page(), 3);
    auto* name = Find<QComboBox>("cmbPerson");
    Type(name, "Ash");
    QTest::keyClick(name->lineEdit(), Qt::Key_Return);
    EXPECT_EQ(Find<QLineEdit>("txtBDate")->text(), "12/03/1990");

    // Picked from the list, the stored name breaks its query: the fault is
    // shown, and the fields keep no birth of Asha's under O'Brien's name.
    messages.Clear();
    name->setFocus();
    // Its item carries the row: the pick from the list.
    const int obrien = name->findText("Sean O'Brien");
    ASSERT_GE(obrien, 0);
    name->setCurrentIndex(obrien);
    emit name->activated(obrien);
    ASSERT_FALSE(messages.Messages().empty());
    EXPECT_NE(messages.Messages().back().text.find("syntax error"), std::string::npos);
    EXPECT_NE(messages.Messages().back().text.find("could not be read"), std::string::npos);
    EXPECT_EQ(name->currentText(), "Sean O'Brien");
    EXPECT_EQ(Find<QLineEdit>("txtBDate")->text(), "00/00/0000");
    EXPECT_EQ(Find<QLineEdit>("txtLati")->text(), "000:00");
    EXPECT_EQ(Find<QComboBox>("cmbCity")->currentText(), "");

    // Back and Next load the name again: the fault once more, the form goes on.
    Back();
    Next();
    EXPECT_EQ(Page(), 3);
    EXPECT_EQ(Find<QLineEdit>("txtBDate")->text(), "00/00/0000");
    // A generation from these fields ends in its message, not with a report.
    Next();
    EXPECT_EQ(Page(), 1);
    EXPECT_TRUE(form->isEnabled());

    // Such a name is refused where it would be stored, before any write.
    Next();
    Next();
    const long before = RecosDB()->OpenRecordset("SELECT * FROM Person")->RecordCount();
    name->setEditText("Asha's sister");
    Find<QLineEdit>("txtBDate")->setText("02/09/2000");
    messages.Clear();
    Find<QPushButton>("cmdSavePerson")->click();
    ASSERT_EQ(messages.Messages().size(), 1u);
    EXPECT_EQ(messages.Messages().back().title, "Invalid Name");
    EXPECT_EQ(RecosDB()->OpenRecordset("SELECT * FROM Person")->RecordCount(), before);
}

TEST_F(RequestForm, ARowTheStoreCantLoadNeitherBlocksSavingOthersNorStaysForever)
{
    StorePerson("Broken", "xx", "9", 1);  // left by an older version's import
    Next();
    Next();
    auto* name = Find<QComboBox>("cmbPerson");
    name->setEditText("Ravi");
    Find<QLineEdit>("txtBDate")->setText("02/09/2000");
    messages.Clear();
    Find<QPushButton>("cmdSavePerson")->click();
    ASSERT_FALSE(messages.Messages().empty());
    EXPECT_EQ(messages.Messages().back().text, Msg(117));
    name->setEditText("Broken");
    Find<QPushButton>("cmdDelPerson")->click();
    EXPECT_EQ(messages.Messages().back().text, Msg(118));
    EXPECT_EQ(RecosDB()->OpenRecordset("SELECT * FROM Person WHERE Name = 'Broken'")->RecordCount(), 0);
}

TEST_F(RequestForm, TheTypeAheadFillsTheRowItNamesAndNoOtherCountrysCity)
{
    Next();
    auto* country = Find<QComboBox>("cmbMuhuCountry");
    auto* city = Find<QComboBox>("cmbMuhuCity");
    auto* gmt = Find<QLineEdit>("txtMuhuGMT");
    auto* lati = Find<QLineEdit>("txtMuhuLati");

    // A country's first letters and Enter: the country the hint named.
    Type(country, "Ind");
    EXPECT_EQ(form->Hint(), "If the country is India, Press 'Enter' to update automatically.");
    QTest::keyClick(country->lineEdit(), Qt::Key_Return);
    EXPECT_EQ(country->currentText(), "India");
    EXPECT_EQ(gmt->text(), "+05.30");
    EXPECT_NE(city->findText("Pune"), -1);

    // A city's first letters: the hint, the popup and Enter agree on Pune.
    Type(city, "Pun");
    EXPECT_EQ(form->Hint(), "If the City is Pune, Press 'Enter' to update automatically.");
    auto* popup = city->lineEdit()->completer()->popup();
    ASSERT_GT(popup->model()->rowCount(), 0);
    EXPECT_EQ(popup->model()->index(0, 0).data().toString(), "Pune");
    QTest::keyClick(city->lineEdit(), Qt::Key_Return);
    EXPECT_EQ(city->currentText(), "Pune");
    EXPECT_EQ(country->currentText(), "India");
    EXPECT_EQ(lati->text(), "018:32");
    EXPECT_EQ(Find<QLineEdit>("TxtMuhuNS")->text(), "N");
    EXPECT_EQ(Find<QLineEdit>("txtMuhuEW")->text(), "E");
    EXPECT_EQ(gmt->text(), "+05.30");

    // Another country chosen: Pune's place does not stay under it.
    Type(country, "Argentina");
    QTest::keyClick(country->lineEdit(), Qt::Key_Return);
    EXPECT_EQ(country->currentText(), "Argentina");
    EXPECT_EQ(city->currentText(), "");
    EXPECT_EQ(lati->text(), "000:00");
    EXPECT_EQ(gmt->text(), "-03.00");
    // The same country chosen again keeps its city.
    Type(city, "Buenos");
    QTest::keyClick(city->lineEdit(), Qt::Key_Return);
    const QString buenos = lati->text();
    EXPECT_NE(buenos, "000:00");
    emit country->activated(country->findText("Argentina"));
    EXPECT_EQ(lati->text(), buenos);

    // A name that finds nothing takes back the zone a partial one gave.
    Type(country, "A");
    EXPECT_NE(gmt->text(), "+00.00");
    QTest::keyClicks(country->lineEdit(), "tlantis");
    EXPECT_EQ(form->Hint(),
              "If the country is Atlantis is not in database, you'll have to provide GMT Difference manually.");
    EXPECT_EQ(gmt->text(), "+00.00");
    // Enter on a name that finds nothing fills nothing.
    QTest::keyClick(country->lineEdit(), Qt::Key_Return);
    EXPECT_EQ(country->currentText(), "Atlantis");
    EXPECT_EQ(gmt->text(), "+00.00");
}

TEST_F(RequestForm, BirthTimesKeepTheirHalfOfTheDayAsTheMuhurthasDo)
{
    StorePerson("Vikram", "5", "17", 1);  // 17.45 kept with AM by an older version
    Reopen();
    Find<QAbstractButton>("butMarriage")->click();
    Next();
    Next();
    ASSERT_EQ(Page(), 4);
    auto* time = Find<QLineEdit>("txtGalTime");
    time->setFocus();
    time->selectAll();
    QTest::keyClicks(time, "1745");
    EXPECT_EQ(time->text(), "17.45");
    EXPECT_TRUE(Find<QRadioButton>("optGalAMPM(1)")->isChecked());
    form->GatherRequest();
    EXPECT_EQ(form->Request().Girl.AMPM, 2);
    // PM on a morning time rewrites it, as on the Muhurtha's own fields.
    auto* boyTime = Find<QLineEdit>("txtBoyTime");
    boyTime->setText("07.45");
    EXPECT_TRUE(Find<QRadioButton>("optBoyAMPM(0)")->isChecked());
    Find<QRadioButton>("optBoyAMPM(1)")->click();
    EXPECT_EQ(boyTime->text(), "19.45");
    // A stored person is shown with the half of the day of the hour the
    // chart is cast for.
    auto* boy = Find<QComboBox>("cmbBoyName");
    Type(boy, "Vikr");
    QTest::keyClick(boy->lineEdit(), Qt::Key_Return);
    EXPECT_EQ(boyTime->text(), "17.45");
    EXPECT_TRUE(Find<QRadioButton>("optBoyAMPM(1)")->isChecked());
}

TEST_F(RequestForm, TheWordsOnTheFormFollowWhatIsChosen)
{
    auto* step = Find<QLabel>("lblStep");
    Find<QAbstractButton>("butJourney")->click();
    auto* list = Find<QTreeWidget>("tvMuhuList");
    ASSERT_GT(list->topLevelItemCount(), 2);
    list->setCurrentItem(list->topLevelItem(2));
    const QString chosen = list->topLevelItem(2)->text(0);
    EXPECT_TRUE(step->text().endsWith(chosen)) << step->text().toStdString();
    EXPECT_EQ(form->Title(), "Ranvel-" + chosen);

    Next();
    auto* summary = Find<QLabel>("lblChosen");
    EXPECT_NE(summary->text().indexOf("range"), -1);
    Find<QRadioButton>("optMuhuCheck")->click();
    EXPECT_EQ(summary->text().indexOf("range"), -1);
    EXPECT_NE(summary->text().indexOf("moment"), -1);
}

TEST_F(RequestForm, PageFourLoadsTheCoupleAndBornNowFindsTheMuhurtha)
{
    StorePerson("Arjun", "14", "9", 1);
    StorePerson("Meera", "3", "17", 2);
    Reopen();
    Find<QAbstractButton>("butMarriage")->click();
    Next();
    Find<QComboBox>("cmbBoyName")->setEditText("Arjun");
    Find<QComboBox>("cmbGalName")->setEditText("Meera");
    Next();
    ASSERT_EQ(Page(), 4);
    EXPECT_EQ(Find<QLineEdit>("txtBoyDate")->text(), "14/03/1990");
    EXPECT_EQ(Find<QLineEdit>("txtGalDate")->text(), "03/03/1990");
    EXPECT_EQ(Find<QLineEdit>("txtGalTime")->text(), "17.45");
    EXPECT_EQ(Find<QComboBox>("cmbGalPlace")->currentText(), "Pune");

    // Born now: the person's birth is this moment, and the search runs.
    Back();
    Back();
    Find<QAbstractButton>("butJourney")->click();
    Next();
    Next();
    ASSERT_EQ(Page(), 3);
    for (auto [field, value] : {std::pair{"cmbCountry", "India"}, {"cmbCity", "Pune"}})
        Find<QComboBox>(field)->setEditText(value);
    Find<QLineEdit>("txtLati")->setText("018:31");
    Find<QLineEdit>("txtLongi")->setText("073:51");
    Find<QLineEdit>("txtGMT")->setText("+05.30");
    bool generated = false;
    QObject::connect(form, &frmLogin::Generated, [&] { generated = true; });
    form->cmdNowCast();
    const QDateTime now = QDateTime::currentDateTime();
    EXPECT_EQ(Find<QLineEdit>("txtBDate")->text(), now.toString("dd/MM/yyyy"));
    const int hour = Find<QLineEdit>("txtBTime")->text().left(2).toInt();
    EXPECT_EQ(Find<QRadioButton>("optAMPM(1)")->isChecked(), hour >= 12);
    EXPECT_TRUE(generated);
    EXPECT_EQ(Page(), 1);

    // Exit asks first; No leaves the form as it was.
    messages.SetAnswer(MsgAnswer::No);
    messages.Clear();
    form->cmdExit();
    ASSERT_EQ(messages.Messages().size(), 1u);
    EXPECT_EQ(messages.Messages().back().title, "Exit software?");
    EXPECT_EQ(messages.Messages().back().text, "Do you really want to exit?");
    EXPECT_TRUE(form->isVisible());
}

}  // namespace
}  // namespace ranvel::test
