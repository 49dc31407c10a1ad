// The Muhurtha calendar window after a real range search: when it may be
// opened, that its grid, list and detail follow one day however it was
// chosen, that the result pages then show that day as the calendar does,
// and what its exports write or refuse.
#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>
#include <QTreeWidget>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/app_fixture.h"
#include "ranvel/app/frmCalendar.h"
#include "ranvel/app/frmColorEnv.h"
#include "ranvel/app/frmLogin.h"
#include "ranvel/app/mdiMother.h"
#include "ranvel/engine/calendar.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel::test {
namespace {

class CalendarWindow : public AppTest {
protected:
    void SetUp() override
    {
        AppTest::SetUp();
        PrepareResultPages();
        main = new mdiMother;
    }

    // A marriage searched at New Delhi (mode 1) or checked at a moment
    // (mode 2), handed to the main window as the request form hands it.
    void Generate(int mode, const char* from = "01/11/2024", const char* to = "31/12/2024")
    {
        MuhurthaRequest& r = main->EntryForm()->Request();
        r.Category = "Marriage";
        r.MuhuName = "Marriage ceremony (Vivaha)";
        r.SearchMode = mode;
        r.MomentDate = r.FromDate = from;
        r.MomentTime = "10.30";
        r.ToDate = to;
        r.FromTime = "06.00";
        r.ToTime = "22.00";
        r.Place = {"India", "New Delhi", "028:36", "077:12", "N", "E", "+05.30"};
        r.Boy = Born("Arjun", 1, "14/08/1994", "09.20", 1, "New Delhi", "028:36", "077:12");
        r.Girl = Born("Meera", 2, "03/02/1996", "17.45", 2, "Pune", "018:31", "073:51");
        ResetEngine(std::make_unique<clsMuhurtha>());
        r.RunEngine(Engine(), TextDB(), RecosDB());
        emit main->EntryForm()->Generated();
    }

    frmCalendar* Open()
    {
        main->Action("mnuViewCalendar")->trigger();
        frmCalendar* w = main->CalendarWindow();
        EXPECT_NE(w, nullptr);
        return w;
    }

    bool Enabled(const char* name) { return main->Action(name)->isEnabled(); }
    QTreeWidget* List(frmCalendar* w) { return Child<QTreeWidget>(w, "lvwRanked"); }
    QString Detail(frmCalendar* w) { return Child<QTextBrowser>(w, "txtDayDetail")->toPlainText(); }
    QString Cover(const char* name) { return Child<QLabel>(main->TopicForm(0), name)->text(); }
    // The day the list's current row stands for.
    const CalendarDay* ListDay(frmCalendar* w)
    {
        QTreeWidgetItem* item = List(w)->currentItem();
        return item ? &w->Calendar().Days[item->data(0, Qt::UserRole).toULongLong()] : nullptr;
    }
    void Click(frmCalendar* w, const CalendarDay& day)
    {
        const QPoint at = w->Grid()->CellCentre(day);
        ASSERT_FALSE(at.isNull()) << day.Day.ToDayFirstText();
        ASSERT_EQ(CalendarDayAt(at, w->Grid()->Area(), w->Calendar(), CalendarGrid::kColumns, w->Grid()->Cell()),
                  &day);
        QTest::mouseClick(w->Grid(), Qt::LeftButton, {}, at);
    }

    mdiMother* main = nullptr;
};

TEST_F(CalendarWindow, OpensOnlyOnARangeSearchAndIsMadeAnewForEachGeneration)
{
    for (const char* name : {"mnuViewCalendar", "Calendar"}) EXPECT_FALSE(Enabled(name)) << name;

    Generate(1);
    for (const char* name : {"mnuViewCalendar", "Calendar"}) EXPECT_TRUE(Enabled(name)) << name;
    frmCalendar* first = Open();
    ASSERT_NE(first, nullptr);
    EXPECT_TRUE(first->isVisible());
    EXPECT_EQ(first->windowTitle(), "Muhurtha Calendar");
    EXPECT_LE(first->width(), 1000);
    EXPECT_LE(first->height(), 700);

    // A new range search shows its own days in a new window.
    const QPointer<frmCalendar> old(first);
    Generate(1, "01/01/2025", "15/01/2025");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(old.isNull());
    frmCalendar* second = main->CalendarWindow();
    ASSERT_NE(second, nullptr);
    EXPECT_TRUE(second->isVisible());
    EXPECT_EQ(second->Calendar().Days.size(), 15u);

    // A moment check has no days to lay out: the window goes, the commands
    // say why they stand disabled.
    Generate(2);
    EXPECT_EQ(main->CalendarWindow(), nullptr);
    for (const char* name : {"mnuViewCalendar", "Calendar"}) {
        EXPECT_FALSE(Enabled(name)) << name;
        EXPECT_TRUE(main->Action(name)->toolTip().contains("needs a range")) << name;
    }

    Generate(1);
    ASSERT_NE(Open(), nullptr);
    main->ShowEntry();
    EXPECT_EQ(main->CalendarWindow(), nullptr);
    EXPECT_FALSE(Enabled("mnuViewCalendar"));
}

TEST_F(CalendarWindow, ARangeOverTenYearsIsRefusedWithItsMessage)
{
    Generate(1, "01/11/2024", "10/11/2024");
    clsMuhurtha& e = Engine();
    e.EndDate = e.StartDate.AddYears(kCalendarMostYears).AddDays(1);
    const std::string refusal = CheckCalendarRange(e.StartDate, e.EndDate);
    ASSERT_FALSE(refusal.empty());
    main->Action("mnuViewCalendar")->trigger();
    EXPECT_EQ(main->CalendarWindow(), nullptr);
    ASSERT_FALSE(messages.Messages().empty());
    EXPECT_EQ(messages.Messages().back().text, refusal);
}

TEST_F(CalendarWindow, GridListAndDetailFollowOneDay)
{
    Generate(1);
    frmCalendar* w = Open();
    ASSERT_NE(w, nullptr);
    const MuhurthaCalendar& cal = w->Calendar();
    clsMuhurtha& e = Engine();

    // The list opens on the engine's own best Muhurtha, chosen.
    QTreeWidget* list = List(w);
    ASSERT_GE(list->topLevelItemCount(), 3);
    EXPECT_EQ(list->topLevelItemCount(), 10);
    QTreeWidgetItem* top = list->topLevelItem(0);
    EXPECT_EQ(top->text(1).toStdString(), e.BestMuhuDate().ToDayFirstText());
    EXPECT_EQ(top->text(3).toStdString(), e.BestMuhuScore());
    EXPECT_EQ(top->text(4).toStdString(), vb::CStr(e.BestMuhuPercent()));
    ASSERT_NE(w->SelectedDay(), nullptr);
    EXPECT_EQ(w->SelectedDay()->Best.Time, e.BestMuhuTime());
    EXPECT_EQ(ListDay(w), w->SelectedDay());

    // A click on a listed day's cell: the list and the detail follow.
    const CalendarDay& third = cal.Days[cal.Ranked[2]];
    Click(w, third);
    EXPECT_EQ(w->SelectedDay(), &third);
    EXPECT_EQ(ListDay(w), &third);
    const QString detail = Detail(w);
    for (const std::string& part : {third.Day.ToDayFirstText(), third.Best.Time, third.LagnaStartText,
                                    third.LagnaEndText, vb::CStr(third.Percent), third.BandText})
        EXPECT_TRUE(detail.contains(QString::fromStdString(part))) << part << "\n" << detail.toStdString();
    // Held elements and defects are named by their headings.
    for (const CalendarElement& el : third.Held)
        EXPECT_TRUE(detail.contains(QString::fromStdString(el.Heading.empty() ? el.Code : el.Heading))) << el.Code;

    // A day the list leaves out is still shown in the detail.
    const CalendarDay& last = cal.Days[cal.Ranked.back()];
    Click(w, last);
    EXPECT_EQ(w->SelectedDay(), &last);
    EXPECT_EQ(list->currentItem(), nullptr);
    EXPECT_TRUE(Detail(w).contains(QString::fromStdString(last.Day.ToDayFirstText())));

    // And a row of the list chooses its day in the grid.
    list->setCurrentItem(list->topLevelItem(1));
    EXPECT_EQ(w->SelectedDay(), &cal.Days[cal.Ranked[1]]);

    // The filters: fewer days, or none under a band.
    Child<QSpinBox>(w, "spnTop")->setValue(3);
    EXPECT_EQ(list->topLevelItemCount(), 3);
    auto* band = Child<QComboBox>(w, "cmbMinBand");
    band->setCurrentIndex(band->findText(QString::number(cal.Days[cal.Ranked[1]].Band)));
    for (int r = 0; r < list->topLevelItemCount(); ++r)
        EXPECT_GE(list->topLevelItem(r)->text(5).toInt(), cal.Days[cal.Ranked[1]].Band);
    Child<QSpinBox>(w, "spnTop")->setValue(366);
    EXPECT_EQ(static_cast<std::size_t>(list->topLevelItemCount()), w->Listed().size());
}

TEST_F(CalendarWindow, ArrowKeysMoveByADayAndAWeekWithinTheCalendar)
{
    Generate(1);
    frmCalendar* w = Open();
    ASSERT_NE(w, nullptr);
    const MuhurthaCalendar& cal = w->Calendar();
    CalendarGrid* grid = w->Grid();
    // The keys reach the grid back from the list's choices.
    auto* top = Child<QSpinBox>(w, "spnTop");
    top->setFocus();
    QTest::keyClick(top, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(w->focusWidget(), grid);

    Click(w, cal.Days[10]);
    auto press = [&](Qt::Key key) { QTest::keyClick(grid, key); };
    press(Qt::Key_Right);
    EXPECT_EQ(w->SelectedDay(), &cal.Days[11]);
    press(Qt::Key_Down);
    EXPECT_EQ(w->SelectedDay(), &cal.Days[18]);
    press(Qt::Key_Left);
    EXPECT_EQ(w->SelectedDay(), &cal.Days[17]);
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    EXPECT_EQ(w->SelectedDay(), &cal.Days[3]);
    // No step leaves the calendar's days.
    press(Qt::Key_Up);
    EXPECT_EQ(w->SelectedDay(), &cal.Days[3]);
    Click(w, cal.Days.back());
    press(Qt::Key_Right);
    EXPECT_EQ(w->SelectedDay(), &cal.Days.back());
    // Across a month's end, the next month's grid.
    Click(w, cal.Days[29]);  // 30/11
    press(Qt::Key_Right);
    EXPECT_EQ(w->SelectedDay()->Day.ToDayFirstText(), "01/12/2024");
    // Enter keeps the day and hands the detail the keys.
    press(Qt::Key_Return);
    EXPECT_EQ(w->SelectedDay()->Day.ToDayFirstText(), "01/12/2024");
    EXPECT_EQ(w->focusWidget(), Child<QTextBrowser>(w, "txtDayDetail"));
}

TEST_F(CalendarWindow, ADaysPagesShowItAsTheCalendarDoes)
{
    Generate(1);
    frmCalendar* w = Open();
    ASSERT_NE(w, nullptr);
    const MuhurthaCalendar& cal = w->Calendar();
    // A day that is not the search's best, with another lagna span.
    const CalendarDay* day = nullptr;
    for (std::size_t i : cal.Ranked)
        if (!cal.Days[i].EngineBest && cal.Days[i].Best.Time != Engine().BestMuhuTime()) {
            day = &cal.Days[i];
            break;
        }
    ASSERT_NE(day, nullptr);
    Click(w, *day);
    Child<QPushButton>(w, "cmdShowDayPages")->click();

    clsMuhurtha& e = Engine();
    EXPECT_EQ(main->CurrentTopic(), 0);
    EXPECT_EQ(e.BestMuhuTime(), day->Best.Time);
    EXPECT_EQ(e.BestMuhuScoreValue(), day->Score);
    EXPECT_EQ(Cover("lblBMDate").toStdString(), e.BestChart->ConvertDateToText(day->Day));
    EXPECT_EQ(Cover("lblBMFrom").toStdString(), day->LagnaStartText);
    EXPECT_EQ(Cover("lblBMTo").toStdString(), day->LagnaEndText);
    EXPECT_EQ(Cover("lblBMScore").toStdString(), vb::CStr(day->Percent));
    EXPECT_EQ(Cover("lblBMBand").toStdString(), day->BandText);
    // The calendar itself keeps the search's days and its best.
    EXPECT_TRUE(cal.Days[cal.Ranked.front()].EngineBest);

    // The calendar stepped aside for the pages and comes back as it was.
    EXPECT_FALSE(w->isVisible());
    EXPECT_EQ(Open(), w);
    EXPECT_EQ(w->SelectedDay(), day);

    // From another topic the cover comes to the front.
    main->SelectTopic(1);
    const CalendarDay& best = cal.Days[cal.Ranked.front()];
    Click(w, best);
    Child<QPushButton>(w, "cmdShowDayPages")->click();
    EXPECT_EQ(main->CurrentTopic(), 0);
    EXPECT_EQ(Cover("lblBMFrom").toStdString(), best.LagnaStartText);
}

TEST_F(CalendarWindow, APageDesignerSaveRepaintsTheGridsInItsColours)
{
    Generate(1, "01/11/2024", "10/11/2024");
    frmCalendar* w = Open();
    ASSERT_NE(w, nullptr);
    const QImage before = w->Grid()->grab().toImage();
    // The designer saves a dark paper, then is closed.
    QTimer::singleShot(0, [] {
        auto* designer = qobject_cast<frmColorEnv*>(QApplication::activeModalWidget());
        ASSERT_NE(designer, nullptr);
        ActivePageColors().TableBackCol = 0x202020;
        emit designer->Saved();
        designer->close();
    });
    main->Action("mnuSettingsColor")->trigger();
    EXPECT_NE(w->Grid()->grab().toImage(), before);
}

TEST_F(CalendarWindow, ExportsWriteWholeFilesOrSayWhyNot)
{
    Generate(1, "01/11/2024", "10/11/2024");
    frmCalendar* w = Open();
    ASSERT_NE(w, nullptr);
    namespace fs = std::filesystem;
    const fs::path ics = app / "days.ics";
    dialogs.files = {ics.string()};
    Child<QPushButton>(w, "cmdExportIcs")->click();
    std::ifstream in(ics, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    EXPECT_EQ(text.str().rfind("BEGIN:VCALENDAR\r\n", 0), 0u);
    // One event for each listed day.
    std::size_t events = 0;
    for (std::size_t at = text.str().find("BEGIN:VEVENT"); at != std::string::npos;
         at = text.str().find("BEGIN:VEVENT", at + 1))
        ++events;
    EXPECT_EQ(events, w->Listed().size());

    // A folder that is not there: the writer's message, and no file.
    messages.Clear();
    const fs::path nowhere = app / "missing" / "days.ics";
    dialogs.files = {nowhere.string()};
    Child<QPushButton>(w, "cmdExportIcs")->click();
    ASSERT_EQ(messages.Messages().size(), 1u);
    EXPECT_TRUE(messages.Messages()[0].text.find("days.ics") != std::string::npos) << messages.Messages()[0].text;
    EXPECT_FALSE(fs::exists(nowhere));

    for (const char* name : {"cmdExportPng", "cmdExportPdf"}) {
        const fs::path out = app / (std::string(name) + ".out");
        dialogs.files = {out.string()};
        Child<QPushButton>(w, name)->click();
        EXPECT_GT(fs::exists(out) ? fs::file_size(out) : 0, 0u) << name;
    }
    // A cancelled dialog writes nothing and says nothing.
    messages.Clear();
    Child<QPushButton>(w, "cmdExportPdf")->click();
    EXPECT_TRUE(messages.Messages().empty());
}

}  // namespace
}  // namespace ranvel::test
