// The day sheet in the desktop: the page shows the engine's sheet and fits
// its paper whatever the day holds; the window opens from the request form
// and from the calendar's day; printing and PDF carry every word the page
// shows, and a file that can't be written is told.
#include <QAction>
#include <QDateEdit>
#include <QLineEdit>
#include <QRadioButton>
#include <QLabel>
#include <QPrinter>
#include <QPushButton>
#include <algorithm>
#include <filesystem>
#include <map>

#include "app/app_fixture.h"
#include "ranvel/app/frmCalendar.h"
#include "ranvel/app/frmDaySheet.h"
#include "ranvel/app/frmLogin.h"
#include "ranvel/app/mdiMother.h"
#include "ranvel/output/clsPDFExporter.h"
#include "ranvel/output/controls.h"
#include "ranvel/output/printsurface.h"
#include "support/pdftext.h"

namespace ranvel::test {
namespace {

namespace fs = std::filesystem;

const RequestPlace kDelhi = {"India", "New Delhi", "028:36", "077:12", "N", "E", "+05.30"};

class DaySheetWindow : public AppTest {
protected:
    void SetUp() override
    {
        AppTest::SetUp();
        PrepareResultPages();
        main = new mdiMother;
    }
    QString Text(QWidget* root, const QString& name)
    {
        auto* l = root->findChild<QLabel*>(name);
        EXPECT_NE(l, nullptr) << name.toStdString();
        return l ? l->text() : QString();
    }
    // Every word the page's labels show, counted.
    static std::map<std::string, int> PageWords(QWidget* page)
    {
        std::map<std::string, int> words;
        for (QLabel* l : page->findChildren<QLabel*>())
            for (const QString& w : l->text().split(' ', Qt::SkipEmptyParts)) ++words[w.toStdString()];
        return words;
    }
    static std::map<std::string, int> FileWords(const fs::path& pdf)
    {
        std::map<std::string, int> words;
        for (const std::string& w : PdfWordsOf(pdf.string())) ++words[w];
        return words;
    }
    mdiMother* main = nullptr;
};

TEST_F(DaySheetWindow, ThePageShowsTheSheetAndFitsItsPaper)
{
    const DaySheet s = DaySheetOfPlace(kDelhi, DateTime::FromParts(2024, 3, 15), TextDB(), RecosDB());
    frmDayPage page(s);
    EXPECT_EQ(Text(&page, "lblSunriseVal").toStdString(), ClockText(s.Sunrise));
    EXPECT_EQ(Text(&page, "lblSunsetVal").toStdString(), ClockText(s.Sunset));
    EXPECT_EQ(Text(&page, "lblLunarMonthVal").toStdString(), s.LunarMonthName);
    EXPECT_EQ(Text(&page, "lblSunriseRule").toStdString(), SunriseRule());
    EXPECT_EQ(page.findChild<QLabel*>("lblSunrisePlaceRule"), nullptr);  // a place north and east
    // The limbs in their order, each row with its name and limits.
    int n = 0;
    for (const auto* spans : {&s.Tithis, &s.Nakshatras, &s.Yogas, &s.Karanas})
        for (const LimbSpan& l : *spans) {
            const QString k = QString::number(++n);
            EXPECT_EQ(Text(&page, "lblLimbName" + k).toStdString(), l.Name);
            EXPECT_TRUE(Text(&page, "lblLimbFrom" + k).startsWith(QString::fromStdString(l.Start.ToDayFirstText())));
            EXPECT_TRUE(Text(&page, "lblLimbTo" + k).startsWith(QString::fromStdString(l.End.ToDayFirstText())));
        }
    EXPECT_EQ(page.findChild<QLabel*>("lblLimbName" + QString::number(n + 1)), nullptr);
    for (const DayPart& p : s.Chowgadiya) {
        EXPECT_EQ(Text(&page, "lblChowName" + QString::number(p.Number)).toStdString(), p.Name);
        EXPECT_EQ(Text(&page, "lblChowFrom" + QString::number(p.Number)).toStdString(), DivisionText(p.Start));
    }
    for (const DayPart& p : s.Horas)
        EXPECT_EQ(Text(&page, "lblHoraLord" + QString::number(p.Number)).toStdString(), p.Name);

    // A place west of Greenwich carries the line on how its sunrise is
    // searched.
    const RequestPlace newYork = {"USA", "New York", "040:43", "074:00", "N", "W", "-05.00"};
    frmDayPage west(DaySheetOfPlace(newYork, DateTime::FromParts(2024, 3, 15), TextDB(), RecosDB()));
    EXPECT_EQ(Text(&west, "lblSunrisePlaceRule").toStdString(), SunriseRuleOfPlace(west.Sheet()));

    // A day crowded with limbs (five of each) still leaves every control on
    // the paper and above the foot's rule.
    DaySheet crowded = s;
    for (auto* spans : {&crowded.Tithis, &crowded.Nakshatras, &crowded.Yogas, &crowded.Karanas})
        while (spans->size() < 5) spans->push_back(spans->back());
    for (const DaySheet* sheet : {&s, static_cast<const DaySheet*>(&crowded)}) {
        frmDayPage p(*sheet);
        for (QWidget* c : p.findChildren<QWidget*>()) {
            if (c->objectName() == "linFoot" || c->objectName() == "lblDispName") continue;
            const QRect t = TwipsOf(c);
            EXPECT_GE(t.left(), 0) << c->objectName().toStdString();
            EXPECT_LE(t.left() + t.width(), frmDayPage::kPageWidth) << c->objectName().toStdString();
            EXPECT_LE(t.top() + t.height(), 15020) << c->objectName().toStdString();
        }
    }
}

TEST_F(DaySheetWindow, OpensForTheRequestFormsDateAndPlaceAndRefusesABlankPlace)
{
    frmLogin* form = main->EntryForm();
    Child<QDateEdit>(form, "dtMuhuFrom")->setDate(QDate(2024, 3, 15));
    Child<QRadioButton>(form, "optMuhuRange")->setChecked(true);
    // The place fields as a new request has them: blank.
    main->Action("mnuViewDaySheet")->trigger();
    ASSERT_EQ(messages.Messages().size(), 1u);
    form->GatherRequest();
    EXPECT_EQ(messages.Messages()[0].text, DayPlaceRefusal(form->Request().Place));
    EXPECT_NE(messages.Messages()[0].text.find("Latitude"), std::string::npos);
    EXPECT_EQ(main->DaySheetWindow(), nullptr);

    messages.Clear();
    Child<QLineEdit>(form, "txtMuhuLati")->setText("028:36");
    Child<QLineEdit>(form, "txtMuhuLongi")->setText("077:12");
    Child<QLineEdit>(form, "txtMuhuGMT")->setText("+05.30");
    main->Action("mnuViewDaySheet")->trigger();
    EXPECT_TRUE(messages.Messages().empty());
    frmDaySheet* w = main->DaySheetWindow();
    ASSERT_NE(w, nullptr);
    form->GatherRequest();
    const DaySheet expected = DaySheetOfPlace(form->Request().Place, DateTime::FromParts(2024, 3, 15), TextDB(), RecosDB());
    EXPECT_EQ(w->Page()->Sheet().Date, expected.Date);
    EXPECT_EQ(Text(w->Page(), "lblSunriseVal").toStdString(), ClockText(expected.Sunrise));
    EXPECT_EQ(Text(w->Page(), "lblLimbName1").toStdString(), expected.Tithis.front().Name);
    // The window fits a 1024 x 768 screen.
    EXPECT_LE(w->width(), 1024);
    EXPECT_LE(w->height(), 768);
}

TEST_F(DaySheetWindow, TheCalendarsDayOpensItsSheetAtTheSearchedPlace)
{
    MuhurthaRequest& r = main->EntryForm()->Request();
    r = DelhiMarriage();
    ResetEngine(std::make_unique<clsMuhurtha>());
    r.RunEngine(Engine(), TextDB(), RecosDB());
    emit main->EntryForm()->Generated();
    // The form's fields changed after the search do not move the place.
    r.Place.City = "Elsewhere";
    main->Action("mnuViewCalendar")->trigger();
    frmCalendar* cal = main->CalendarWindow();
    ASSERT_NE(cal, nullptr);
    const CalendarDay& day = cal->Calendar().Days[3];
    cal->SelectDay(&day);
    Child<QPushButton>(cal, "cmdDaySheet")->click();
    frmDaySheet* w = main->DaySheetWindow();
    ASSERT_NE(w, nullptr);
    EXPECT_EQ(w->Page()->Sheet().Date, day.Day);
    EXPECT_EQ(w->Page()->Sheet().Place, "New Delhi");
    const DaySheet expected = DaySheetOfPlace(kDelhi, day.Day, TextDB(), RecosDB());
    EXPECT_EQ(Text(w->Page(), "lblNextSunriseVal").toStdString(), ClockText(expected.NextSunrise));
}

TEST_F(DaySheetWindow, PrintAndPdfCarryEveryWordOfThePage)
{
    frmDaySheet w(main);
    w.ShowSheet(DaySheetOfPlace(kDelhi, DateTime::FromParts(2024, 11, 1), TextDB(), RecosDB()));
    const std::map<std::string, int> shown = PageWords(w.Page());

    const fs::path exported = app / "sheet.PDF";
    dialogs.files = {exported.string()};
    Child<QPushButton>(&w, "cmdExportPdf")->click();
    EXPECT_TRUE(messages.Messages().empty());
    EXPECT_EQ(FileWords(exported), shown);

    const fs::path printed = app / "printed.pdf";
    ReportPrinter().setOutputFormat(QPrinter::PdfFormat);
    ReportPrinter().setOutputFileName(QString::fromStdString(printed.string()));
    ASSERT_TRUE(w.PrintPage());
    EXPECT_EQ(FileWords(printed), shown);

    // A folder that is not there: the box says so, and nothing is written.
    const fs::path nowhere = app / "missing" / "sheet.PDF";
    dialogs.files = {nowhere.string()};
    Child<QPushButton>(&w, "cmdExportPdf")->click();
    ASSERT_EQ(messages.Messages().size(), 1u);
    EXPECT_EQ(messages.Messages()[0].title, "Error Writing File");
    EXPECT_FALSE(fs::exists(nowhere));
}

}  // namespace
}  // namespace ranvel::test
