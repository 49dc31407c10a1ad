// The main window: three ways from topic to topic kept in step, the view
// kept between runs, the way back to the entry form, and leaving; the
// ephemeris in use named in its status bar and its about box.
#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>
#include <QTabBar>
#include <QToolBar>
#include <QTreeWidget>

#include "app/app_fixture.h"
#include "ranvel/app/frmAbout.h"
#include "ranvel/app/frmHelp.h"
#include "ranvel/app/frmLogin.h"
#include "ranvel/app/mdiMother.h"
#include "ranvel/chart/ephemeris.h"

namespace ranvel::test {
namespace {

class MainWindowTest : public AppTest {
protected:
    // A page with the field that shows its number.
    static QWidget* Page()
    {
        auto* page = new QWidget;
        (new QLabel(page))->setObjectName("lblPageNo");
        return page;
    }
    QLabel* PageNo(int topic)
    {
        return main->findChild<QTreeWidget*>("tvMap") ? pages[topic]->findChild<QLabel*>("lblPageNo") : nullptr;
    }
    void ThreeTopics()
    {
        for (int i = 0; i < 3; ++i) {
            pages.push_back(Page());
            main->AddTopic(QString("Topic %1").arg(i), QString("Key%1").arg(i), pages.back());
        }
        main->SelectTopic(0);
    }
    bool Enabled(const char* action) { return main->Action(action)->isEnabled(); }

    mdiMother* main = nullptr;
    std::vector<QWidget*> pages;
};

TEST_F(MainWindowTest, ListTreeAndBottomBarMoveTogether)
{
    main = new mdiMother;
    // From the start the title names the Muhurtha the form has chosen.
    EXPECT_EQ(main->windowTitle().toStdString(), "Ranvel-" + main->EntryForm()->Request().MuhuName);
    auto* list = main->findChild<QComboBox*>("cmbTopic");
    auto* tree = main->findChild<QTreeWidget*>("tvMap");
    auto* bar = main->findChild<QTabBar*>("bBar");
    // Nothing to print, export or mail before a result.
    EXPECT_FALSE(Enabled("mnuPrint"));
    EXPECT_FALSE(Enabled("PDFExport"));
    EXPECT_TRUE(Enabled("mnuPrintSetup"));
    ThreeTopics();
    EXPECT_TRUE(Enabled("mnuFileMailPDF"));
    EXPECT_TRUE(Enabled("PrintTopic"));
    EXPECT_EQ(list->count(), 3);
    EXPECT_EQ(tree->topLevelItemCount(), 3);
    EXPECT_EQ(bar->count(), 3);
    EXPECT_EQ(tree->topLevelItem(1)->data(0, Qt::UserRole).toString(), "Key1");

    // At the first topic there is no way back, at the last none on.
    EXPECT_FALSE(Enabled("Previous"));
    EXPECT_FALSE(Enabled("mnuNavPrev"));
    EXPECT_TRUE(Enabled("Next"));
    EXPECT_EQ(PageNo(0)->text(), "1");
    main->Action("mnuNavNext")->trigger();
    main->Action("Next")->trigger();
    EXPECT_EQ(main->CurrentTopic(), 2);
    EXPECT_FALSE(Enabled("Next"));
    EXPECT_FALSE(Enabled("mnuNavNext"));
    EXPECT_TRUE(Enabled("Previous"));
    EXPECT_EQ(tree->currentItem(), tree->topLevelItem(2));
    EXPECT_EQ(bar->currentIndex(), 2);
    EXPECT_EQ(main->windowTitle(), "Ranvel-Topic 2");
    EXPECT_EQ(PageNo(2)->text(), "3");

    // The tree's node and the bar's tab ask for their topic.
    emit tree->itemClicked(tree->topLevelItem(1), 0);
    EXPECT_EQ(main->CurrentTopic(), 1);
    EXPECT_EQ(bar->currentIndex(), 1);
    emit bar->tabBarClicked(0);
    EXPECT_EQ(main->CurrentTopic(), 0);
    EXPECT_EQ(tree->currentItem(), tree->topLevelItem(0));
    main->findChild<QAction*>("mnuMuhuNav(2)")->trigger();
    EXPECT_EQ(list->currentIndex(), 2);

    // The entry form forgets the result.
    main->Action("mnuEntry")->trigger();
    EXPECT_EQ(main->TopicCount(), 0);
    EXPECT_EQ(list->count(), 0);
    EXPECT_EQ(tree->topLevelItemCount(), 0);
    EXPECT_EQ(bar->count(), 0);
    EXPECT_EQ(main->findChild<QAction*>("mnuMuhuNav(0)"), nullptr);
    EXPECT_FALSE(Enabled("mnuFileExportPDF"));
    EXPECT_TRUE(main->EntryForm()->isVisibleTo(main));
}

TEST_F(MainWindowTest, TheViewIsKeptBetweenRuns)
{
    main = new mdiMother;
    auto* tree = main->findChild<QTreeWidget*>("tvMap");
    EXPECT_FALSE(tree->isVisibleTo(main));  // the side tree starts hidden
    EXPECT_TRUE(main->statusBar()->isVisibleTo(main));
    EXPECT_EQ(settings.Get("Settings", "InstPath").value_or(""), AppDir());

    main->Action("mnuViewStatus")->trigger();
    main->Action("mnuViewBotBar")->trigger();
    main->Action("TopicMap")->trigger();
    EXPECT_TRUE(tree->isVisibleTo(main));
    EXPECT_TRUE(main->Action("mnuViewTopicList")->isChecked());
    EXPECT_EQ(settings.Get("Settings", "StatusBar").value_or(""), "False");
    EXPECT_EQ(settings.Get("Settings", "BotBar").value_or(""), "False");
    EXPECT_EQ(settings.Get("Settings", "TopicListVis").value_or(""), "True");
    main->close();
    EXPECT_TRUE(settings.Get("Settings`", "StartDir").has_value());
    delete main;

    main = new mdiMother;
    EXPECT_FALSE(main->statusBar()->isVisibleTo(main));
    EXPECT_FALSE(main->findChild<QTabBar*>("bBar")->isVisibleTo(main));
    EXPECT_TRUE(main->findChild<QTreeWidget*>("tvMap")->isVisibleTo(main));
    EXPECT_TRUE(main->Action("TopicMap")->isChecked());
    main->ToggleSideList();
    EXPECT_EQ(settings.Get("Settings", "TopicListVis").value_or(""), "False");
}

TEST_F(MainWindowTest, MenusCarryTheirCaptionsAndCommandsAnswer)
{
    main = new mdiMother;
    const std::pair<const char*, const char*> items[] = {
        {"mnuEntry", "&Entry Screen"},
        {"mnuFileExHTML", "&Export HTML..."},
        {"mnuFileHTMLEmail", "&Send HTML By Email..."},
        {"mnuFileExportPDF", "Export &PDF..."},
        {"mnuFileMailPDF", "Send &PDF by Email..."},
        {"mnuFilePrintTopic", "Print This &Topic"},
        {"mnuPrint", "&Print Muhurtha..."},
        {"mnuPrintSetup", "Printer &Setup..."},
        {"mnuExit", "E&xit"},
        {"mnuSettingsAyanamsh", "&Ayanamsh..."},
        {"mnuSettingsRahMode", "&Rahu && Ketu's Motion..."},
        {"mnuSetRegion", "R&egional Settings..."},
        {"mnuSettingsColor", "&Page Designer..."},
        {"mnuSettingsKundStyle", "&Kundli Style..."},
        {"mnuSettCity", "&City Details..."},
        {"mnuCountryDet", "Country &Details..."},
        {"mnuEstDet", "&Your Details..."},
        {"mnuSettSetupWiz", "&Setup Wizard..."},
        {"mnuNavPrev", "&Previous"},
        {"mnuNavNext", "&Next"},
        {"mnuViewBotBar", "&Navigation Bar"},
        {"mnuViewToolbar", "&Toolbar"},
        {"mnuViewStatus", "&Status Bar"},
        {"mnuViewTopicList", "&Topic List"},
        {"mnuHelpContents", "&Manual..."},
        {"mnuHelpSearch", "&Search Help On..."},
        {"mnuHelpAbout", "&About Ranvel..."},
    };
    for (const auto& [name, caption] : items) {
        QAction* a = main->Action(name);
        ASSERT_NE(a, nullptr) << name;
        EXPECT_EQ(a->text(), caption) << name;
    }
    for (const char* key : {"Exit", "Next", "Previous", "PrintTopic", "Print", "Entry", "TopicMap", "PDFExport",
                            "PDFEmail"})
        EXPECT_NE(main->findChild<QToolBar*>()->findChild<QAction*>(key), nullptr) << key;

    // The HTML commands stand without a handler: they do nothing.
    main->Action("mnuFileExHTML")->trigger();
    main->Action("mnuFileHTMLEmail")->trigger();
    EXPECT_TRUE(messages.Messages().empty());

    // The manual opens in the program's own window.
    main->Action("mnuHelpContents")->trigger();
    ASSERT_NE(HelpWindow(), nullptr);
    EXPECT_EQ(HelpWindow()->CurrentPage(), "index.html");
    EXPECT_TRUE(dialogs.opened.empty());

    // Leaving asks first; No keeps the program.
    messages.SetAnswer(MsgAnswer::No);
    main->Action("Exit")->trigger();
    EXPECT_EQ(messages.Messages().back().title, "Exit program?");
    EXPECT_EQ(messages.Messages().back().text, "Do you really want to exit?");
    EXPECT_EQ(MainWindow(), main);
}

// The status bar names the ephemeris on its right for as long as the window
// lives, the whole sentence on hovering, and goes away with the bar; the
// about box shows the same sentence.
TEST_F(MainWindowTest, TheStatusBarAndTheAboutBoxNameTheEphemeris)
{
    const QString sentence = QString::fromStdString(EphemerisSentence());
    ASSERT_TRUE(sentence.startsWith("Ephemeris: Swiss Ephemeris ")) << sentence.toStdString();
    main = new mdiMother;
    main->show();
    auto* label = main->statusBar()->findChild<QLabel*>("lblEphemeris");
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->text(), "Swiss Ephemeris files");
    EXPECT_EQ(label->toolTip(), sentence);
    EXPECT_EQ(label->accessibleDescription(), sentence);
    main->statusBar()->showMessage("Searching...");
    EXPECT_TRUE(label->isVisible());
    main->Action("mnuViewStatus")->trigger();
    EXPECT_FALSE(label->isVisible());
    main->Action("mnuViewStatus")->trigger();
    EXPECT_TRUE(label->isVisible());

    frmAbout about(main);
    auto* line = about.findChild<QLabel*>("lblEphemeris");
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->text(), sentence);
}

}  // namespace
}  // namespace ranvel::test
