#include "ranvel/app/mdiMother.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDir>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QScreen>
#include <QScrollArea>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolBar>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <type_traits>

#include "ranvel/app/BottomBar.h"
#include "ranvel/app/appinfo.h"
#include "ranvel/app/formkit.h"
#include "ranvel/app/frmAbout.h"
#include "ranvel/app/frmCalendar.h"
#include "ranvel/app/frmDaySheet.h"
#include "ranvel/app/frmCalcOptions.h"
#include "ranvel/app/frmColorEnv.h"
#include "ranvel/app/frmEditLongLat.h"
#include "ranvel/app/frmHelp.h"
#include "ranvel/app/frmKunEdit.h"
#include "ranvel/app/frmLogin.h"
#include "ranvel/app/frmMuhuCover.h"
#include "ranvel/app/frmMuhuTxt.h"
#include "ranvel/app/frmWizard.h"
#include "ranvel/chart/ephemeris.h"
#include "ranvel/engine/calendar.h"
#include "ranvel/engine/daysheet.h"
#include "ranvel/engine/request.h"
#include "ranvel/engine/request_state.h"
#include "ranvel/data/datafiles.h"
#include "ranvel/platform/apppaths.h"
#include "ranvel/platform/gui/dialogs.h"
#include "ranvel/platform/gui/qstr.h"
#include "ranvel/platform/settings.h"
#include "ranvel/platform/sinks.h"
#include "ranvel/platform/variant.h"

namespace ranvel {

namespace {

mdiMother* g_main = nullptr;

// The side tree's width when it is shown: 2600 twips.
constexpr int kSideListWidth = 2600 / 15;

bool SettingOn(const char* key, bool deflt)
{
    std::string v = GetSetting("Settings", key, deflt ? "True" : "False");
    try {
        return Variant(v).ToBool();
    } catch (const std::exception&) {
        return deflt;
    }
}

void SaveOn(const char* key, bool on) { SaveSetting("Settings", key, on ? "True" : "False"); }

QIcon Icon(const char* name) { return QIcon(QString(":/icons/%1.svg").arg(name)); }

// A page of paper on the grey of the window, scrolled when the window is
// smaller than the page.
QWidget* PaperPage(QWidget* form)
{
    auto* scroll = new QScrollArea;
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    scroll->setBackgroundRole(QPalette::Dark);
    scroll->setWidget(form);
    scroll->setObjectName(form->objectName() + "Host");
    return scroll;
}

}  // namespace

mdiMother* MainWindow() { return g_main; }

mdiMother::mdiMother(QWidget* parent) : QMainWindow(parent)
{
    g_main = this;
    setObjectName("mdiMother");
    setWindowTitle(Q(AppTitle()));
    setWindowIcon(Icon("app"));

    BuildMenus();
    BuildToolbar();

    auto* central = new QWidget(this);
    auto* column = new QVBoxLayout(central);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    splitter_ = new QSplitter(Qt::Horizontal, central);
    splitter_->setObjectName("Picture1");
    splitter_->setChildrenCollapsible(true);
    tvMap_ = new QTreeWidget(splitter_);
    tvMap_->setObjectName("tvMap");
    tvMap_->setHeaderHidden(true);
    tvMap_->setRootIsDecorated(false);
    tvMap_->setAccessibleName("Topic map");
    pages_ = new QStackedWidget(splitter_);
    pages_->setObjectName("pages");
    splitter_->setStretchFactor(1, 1);
    column->addWidget(splitter_, 1);
    bBar_ = new BottomBar(central);
    column->addWidget(bBar_);
    setCentralWidget(central);
    statusBar()->setObjectName("sbStatusBar");
    statusBar()->showMessage("Ready");
    // On the right, for as long as the window lives: the ephemeris the
    // positions come from, in a few words, the whole sentence on hovering
    // and to a screen reader.
    auto* ephemeris = new QLabel(Q(EphemerisShortName(EphemerisInUse())), statusBar());
    ephemeris->setObjectName("lblEphemeris");
    ephemeris->setToolTip(Q(EphemerisSentence()));
    ephemeris->setAccessibleDescription(Q(EphemerisSentence()));
    statusBar()->addPermanentWidget(ephemeris);

    // The entry form sits in the middle of its page, and scrolls on a
    // screen too small for it.
    auto* scroll = new QScrollArea;
    scroll->setObjectName("entryHost");
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setAlignment(Qt::AlignCenter);
    entry_ = new frmLogin;
    scroll->setWidget(entry_);
    // The form tells what happened; the window does what follows.
    connect(entry_, &frmLogin::Generated, this, [this] {
        // A calendar open on the last search is made anew for this one.
        const bool calendarShown = calendarWindow_ && calendarWindow_->isVisible();
        DropCalendar();
        rangeResult_ = entry_->Request().SearchMode == 1;
        generatedPlace_ = entry_->Request().Place;
        show();
        OpenResultPages();
        RestoreResultView();
        if (calendarShown && rangeResult_) OpenCalendar();
    });
    connect(entry_, &frmLogin::TitleChanged, this, [this](const QString& title) {
        if (pages_->currentWidget() == entryHost_) setWindowTitle(title);
    });
    entryHost_ = scroll;
    pages_->addWidget(entryHost_);

    connect(cmbTopic_, qOverload<int>(&QComboBox::currentIndexChanged), this, &mdiMother::TopicChanged);
    connect(bBar_, &BottomBar::TopicClicked, this, [this](int i) { SelectTopic(i); });
    connect(tvMap_, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) {
        const int i = tvMap_->indexOfTopLevelItem(item);
        if (i >= 0 && i != cmbTopic_->currentIndex()) cmbTopic_->setCurrentIndex(i);
    });
    connect(splitter_, &QSplitter::splitterMoved, this, [this] {
        if (tvMap_->isVisible() && splitter_->sizes().value(0) == 0) SetSideListVisible(false);
    });

    // The view as the user left it.
    bBar_->setVisible(SettingOn("BotBar", true));
    statusBar()->setVisible(SettingOn("StatusBar", true));
    toolbar_->setVisible(SettingOn("Toolbar", true));
    Action("mnuViewBotBar")->setChecked(bBar_->isVisibleTo(this));
    Action("mnuViewStatus")->setChecked(statusBar()->isVisibleTo(this));
    Action("mnuViewToolbar")->setChecked(toolbar_->isVisibleTo(this));
    SetSideListVisible(SettingOn("TopicListVis", false));
    SaveSetting("Settings", "InstPath", AppDir());

    ClearTopics();
    setWindowTitle(entry_->Title());
    const QRect screen = QGuiApplication::primaryScreen() ? QGuiApplication::primaryScreen()->availableGeometry()
                                                           : QRect(0, 0, 1024, 768);
    resize(std::min(1000, screen.width()), std::min(720, screen.height()));
}

mdiMother::~mdiMother()
{
    if (g_main == this) g_main = nullptr;
}

QAction* mdiMother::Action(const QString& name) const { return findChild<QAction*>(name); }

void mdiMother::BuildMenus()
{
    auto item = [this](QMenu* menu, const char* name, const QString& caption, auto&& run) {
        QAction* a = menu->addAction(caption);
        a->setObjectName(name);
        // A run-time fault ends the command, never the program.
        connect(a, &QAction::triggered, this, [run](bool checked) {
            ui::RunCommand([&] {
                if constexpr (std::is_invocable_v<decltype(run), bool>) run(checked);
                else run();
            });
        });
        return a;
    };
    auto none = [] {};

    QMenu* file = menuBar()->addMenu("&File");
    file->setObjectName("mnuFile");
    item(file, "mnuEntry", "&Entry Screen", [this] { ShowEntry(); })->setIcon(Icon("entry"));
    file->addSeparator();
    // The HTML commands stand without a writer behind them.
    item(file, "mnuFileExHTML", "&Export HTML...", none);
    item(file, "mnuFileHTMLEmail", "&Send HTML By Email...", none);
    item(file, "mnuFileExportPDF", "Export &PDF...", [this] { ExportPDF(); })->setIcon(Icon("pdfexport"));
    item(file, "mnuFileMailPDF", "Send &PDF by Email...", [this] { MailPDF(); })->setIcon(Icon("pdfemail"));
    file->addSeparator();
    item(file, "mnuFilePrintTopic", "Print This &Topic", [this] { PrintCurrentTopic(); })->setIcon(Icon("printtopic"));
    QAction* print = item(file, "mnuPrint", "&Print Muhurtha...", [this] { PrintIt(); });
    print->setIcon(Icon("print"));
    print->setShortcut(QKeySequence::Print);
    item(file, "mnuPrintSetup", "Printer &Setup...", [this] { PrinterSetup(); });
    file->addSeparator();
    item(file, "mnuExit", "E&xit", [this] { ExitProgram(); })->setIcon(Icon("exit"));

    QMenu* settings = menuBar()->addMenu("&Settings");
    settings->setObjectName("mnuSettings");
    auto editor = [this](frmEditLongLat::Tab tab) {
        return [this, tab] {
            frmEditLongLat dialog(tab, this);
            dialog.exec();
            entry_->RefillPlaceLists();
        };
    };
    item(settings, "mnuSettingsAyanamsh", "&Ayanamsh...", editor(frmEditLongLat::Tab::Ayanamsh));
    item(settings, "mnuSettingsRahMode", "&Rahu && Ketu's Motion...", editor(frmEditLongLat::Tab::RahuKetu));
    item(settings, "mnuSetRegion", "R&egional Settings...", [this] {
        frmCalcOptions dialog(this);
        dialog.exec();
    });
    settings->addSeparator();
    // The result pages are built in the colours and the chart style of the
    // moment: after a save they are built again.
    item(settings, "mnuSettingsColor", "&Page Designer...", [this] {
        frmColorEnv dialog(this);
        connect(&dialog, &frmColorEnv::Saved, this, &mdiMother::RebuildResultPages);
        connect(&dialog, &frmColorEnv::Saved, this, [this] {
            if (calendarWindow_) calendarWindow_->RefreshColours();
        });
        dialog.exec();
    });
    item(settings, "mnuSettingsKundStyle", "&Kundli Style...", [this] {
        frmKunEdit dialog(this);
        connect(&dialog, &frmKunEdit::Saved, this, &mdiMother::RebuildResultPages);
        dialog.exec();
    });
    settings->addSeparator();
    item(settings, "mnuSettCity", "&City Details...", editor(frmEditLongLat::Tab::City));
    item(settings, "mnuCountryDet", "Country &Details...", editor(frmEditLongLat::Tab::Country));
    settings->addSeparator();
    item(settings, "mnuEstDet", "&Your Details...", editor(frmEditLongLat::Tab::Details));
    item(settings, "mnuSettSetupWiz", "&Setup Wizard...", [this] {
        frmWizard wizard([this] { emit SetupWizardEnded(); }, this);
        wizard.exec();
    });

    navMenu_ = menuBar()->addMenu("&Navigate");
    navMenu_->setObjectName("mnuNavigate");
    item(navMenu_, "mnuNavPrev", "&Previous", [this] { Navigate(-1); })->setIcon(Icon("previous"));
    item(navMenu_, "mnuNavNext", "&Next", [this] { Navigate(1); })->setIcon(Icon("next"));
    navSeparator_ = navMenu_->addSeparator();

    QMenu* view = menuBar()->addMenu("&View");
    view->setObjectName("mnuView");
    auto toggle = [&](const char* name, const QString& caption, auto&& run) {
        QAction* a = item(view, name, caption, run);
        a->setCheckable(true);
        return a;
    };
    toggle("mnuViewBotBar", "&Navigation Bar", [this](bool on) {
        bBar_->setVisible(on);
        SaveOn("BotBar", on);
    });
    toggle("mnuViewToolbar", "&Toolbar", [this](bool on) {
        toolbar_->setVisible(on);
        SaveOn("Toolbar", on);
    });
    toggle("mnuViewStatus", "&Status Bar", [this](bool on) {
        statusBar()->setVisible(on);
        SaveOn("StatusBar", on);
    });
    toggle("mnuViewTopicList", "&Topic List", [this] { ToggleSideList(); });
    view->addSeparator();
    item(view, "mnuViewCalendar", "Muhurtha &Calendar...", [this] { OpenCalendar(); })->setIcon(Icon("calendar"));
    item(view, "mnuViewDaySheet", "&Day Sheet...", [this] { OpenDaySheet(); })
        ->setToolTip("The panchanga and the divisions of the day of the request's date and place");
    // The calendar's item tells why it stands disabled.
    view->setToolTipsVisible(true);

    QMenu* help = menuBar()->addMenu("&Help");
    help->setObjectName("mnuHelp");
    item(help, "mnuHelpContents", "&Manual...", [this] { OpenManual(); });
    // The search of the help is reached as F1 reaches it.
    item(help, "mnuHelpSearch", "&Search Help On...", [this] {
        QApplication::postEvent(this, new QKeyEvent(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier));
    });
    help->addSeparator();
    item(help, "mnuHelpAbout", "&About Ranvel...", [this] {
        frmAbout about(this);
        about.exec();
    });
}

void mdiMother::BuildToolbar()
{
    toolbar_ = addToolBar("Toolbar");
    toolbar_->setObjectName("tbToolBar");
    toolbar_->setMovable(false);
    toolbar_->setIconSize(QSize(24, 24));
    toolbar_->setToolButtonStyle(Qt::ToolButtonIconOnly);
    // Each button does what its menu item does.
    auto button = [this](const char* key, const char* icon, const QString& tip, const char* menuItem) {
        QAction* a = toolbar_->addAction(Icon(icon), tip);
        a->setObjectName(key);
        a->setToolTip(tip);
        if (menuItem) connect(a, &QAction::triggered, this, [this, menuItem] { Action(menuItem)->trigger(); });
        return a;
    };
    button("Entry", "entry", "Entry Screen", "mnuEntry");
    button("Previous", "previous", "Previous", "mnuNavPrev");
    button("Next", "next", "Next", "mnuNavNext");
    QAction* map = button("TopicMap", "topicmap", "Topic Map", nullptr);
    map->setCheckable(true);
    connect(map, &QAction::triggered, this, [this] { ToggleSideList(); });
    button("Calendar", "calendar", "Muhurtha Calendar", "mnuViewCalendar");
    toolbar_->addSeparator();
    button("PrintTopic", "printtopic", "Print This Topic", "mnuFilePrintTopic");
    button("Print", "print", "Print Muhurtha", "mnuPrint");
    button("PDFExport", "pdfexport", "Export PDF", "mnuFileExportPDF");
    button("PDFEmail", "pdfemail", "Send PDF by Email", "mnuFileMailPDF");
    toolbar_->addSeparator();
    auto* label = new QLabel("  Topic: ", toolbar_);
    toolbar_->addWidget(label);
    cmbTopic_ = new QComboBox(toolbar_);
    cmbTopic_->setObjectName("cmbTopic");
    cmbTopic_->setMinimumWidth(220);
    cmbTopic_->setAccessibleName("Topic");
    label->setBuddy(cmbTopic_);
    toolbar_->addWidget(cmbTopic_);
    auto* spacer = new QWidget(toolbar_);
    spacer->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    toolbar_->addWidget(spacer);
    button("Exit", "exit", "Exit", "mnuExit");
}

// ---- topics ----

void mdiMother::ClearTopics()
{
    busy_ = true;
    cmbTopic_->clear();
    tvMap_->clear();
    bBar_->Clear();
    for (QAction* a : navEntries_) delete a;
    navEntries_.clear();
    for (Topic& t : topics_) {
        pages_->removeWidget(t.page);
        t.page->deleteLater();
    }
    topics_.clear();
    busy_ = false;
    UpdateOutputCommands();
    Action("mnuNavPrev")->setEnabled(false);
    Action("mnuNavNext")->setEnabled(false);
    Action("Previous")->setEnabled(false);
    Action("Next")->setEnabled(false);
}

void mdiMother::AddTopic(const QString& text, const QString& key, QWidget* page)
{
    busy_ = true;
    const int index = static_cast<int>(topics_.size());
    topics_.push_back({text, key, page});
    pages_->addWidget(page);
    cmbTopic_->addItem(text, key);
    // No topic is current until one is asked for.
    if (index == 0) cmbTopic_->setCurrentIndex(-1);
    bBar_->AddTab(text);
    auto* node = new QTreeWidgetItem(tvMap_, QStringList(text));
    node->setData(0, Qt::UserRole, key);
    node->setIcon(0, Icon("page"));
    QAction* jump = navMenu_->addAction(text);
    jump->setObjectName(QString("mnuMuhuNav(%1)").arg(index));
    connect(jump, &QAction::triggered, this, [this, index] { SelectTopic(index); });
    navEntries_.push_back(jump);
    busy_ = false;
    UpdateOutputCommands();
}

void mdiMother::UpdateOutputCommands()
{
    // Print, export and mail have a report only after a generation.
    const bool report = TopicCount() > 0;
    for (const char* name : {"mnuFilePrintTopic", "mnuPrint", "mnuFileExportPDF", "mnuFileMailPDF", "PrintTopic",
                             "Print", "PDFExport", "PDFEmail"})
        if (QAction* a = Action(name)) a->setEnabled(report);
    // The calendar reads the days of a range search.
    const bool calendar = report && rangeResult_;
    const QString tip = calendar ? "Muhurtha Calendar: every day of the range searched, graded and ranked"
                        : report ? "The Muhurtha calendar needs a range: generate a search over a range of dates"
                                 : "The Muhurtha calendar shows the days of a range search once one is generated";
    for (const char* name : {"mnuViewCalendar", "Calendar"})
        if (QAction* a = Action(name)) {
            a->setEnabled(calendar);
            a->setToolTip(tip);
        }
}

int mdiMother::CurrentTopic() const { return cmbTopic_->currentIndex(); }

void mdiMother::SelectTopic(int index)
{
    QApplication::processEvents();
    cmbTopic_->setCurrentIndex(index);
}

void mdiMother::TopicChanged(int index)
{
    if (busy_ || index < 0 || index >= TopicCount()) return;
    const bool last = index == TopicCount() - 1;
    const bool first = index == 0;
    Action("Next")->setEnabled(!last);
    Action("mnuNavNext")->setEnabled(!last);
    Action("Previous")->setEnabled(!first);
    Action("mnuNavPrev")->setEnabled(!first);
    tvMap_->setCurrentItem(tvMap_->topLevelItem(index));
    if (bBar_->currentIndex() != index) {
        const QSignalBlocker quiet(bBar_);
        bBar_->setCurrentIndex(index);
    }
    ShowTopic(index);
    if (auto* pageNo = topics_[static_cast<std::size_t>(index)].page->findChild<QLabel*>("lblPageNo"))
        pageNo->setText(QString::number(index + 1));
}

void mdiMother::ShowTopic(int index)
{
    if (index < 0 || index >= TopicCount()) return;
    const Topic& t = topics_[static_cast<std::size_t>(index)];
    // The result pages are built anew each time they are shown.
    QWidget* form = TopicForm(index);
    if (form->metaObject()->indexOfMethod("Load()") >= 0) QMetaObject::invokeMethod(form, "Load");
    pages_->setCurrentWidget(t.page);
    setWindowTitle(Q(AppTitle()) + "-" + t.text);
}

QWidget* mdiMother::TopicForm(int index) const
{
    if (index < 0 || index >= TopicCount()) return nullptr;
    QWidget* page = topics_[static_cast<std::size_t>(index)].page;
    if (auto* paper = qobject_cast<QScrollArea*>(page)) return paper->widget();
    return page;
}

void mdiMother::OpenResultPages()
{
    ClearTopics();
    AddTopic("Muhurtha Score", "MuhuScore", PaperPage(new frmMuhuCover));
    AddTopic("Muhurtha Analysis", "Analysis", new frmMuhuTxt);
    SelectTopic(0);
}

void mdiMother::RebuildResultPages()
{
    if (CurrentTopic() >= 0) ShowTopic(CurrentTopic());
}

void mdiMother::OpenCalendar()
{
    if (!rangeResult_ || TopicCount() == 0) return;
    clsMuhurtha& engine = Engine();
    const std::string refusal = CheckCalendarRange(engine.StartDate, engine.EndDate);
    if (!refusal.empty()) {
        MsgBox(refusal, MsgButtons::OK, "Muhurtha Calendar", MsgIcon::Exclamation);
        return;
    }
    // Made once for a generation: picking a day for the pages changes the
    // engine's best Muhurtha, never the moments the calendar is read from.
    if (!calendar_) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        struct Restore {
            ~Restore() { QApplication::restoreOverrideCursor(); }
        } restore;
        calendar_ = std::make_shared<const MuhurthaCalendar>(BuildCalendar(engine));
    }
    if (!calendarWindow_) {
        calendarWindow_ = new frmCalendar(calendar_, this);
        connect(calendarWindow_, &frmCalendar::DayPicked, this, &mdiMother::ShowCover);
        connect(calendarWindow_, &frmCalendar::DaySheetWanted, this, &mdiMother::OpenDaySheetOf);
    }
    calendarWindow_->show();
    calendarWindow_->raise();
    calendarWindow_->activateWindow();
}

frmCalendar* mdiMother::CalendarWindow() const { return calendarWindow_; }

void mdiMother::OpenDaySheet()
{
    ui::RunCommand([this] {
        entry_->GatherRequest();
        const MuhurthaRequest& r = entry_->Request();
        const std::string date = r.SearchMode == 2 ? r.MomentDate : r.FromDate;
        ShowDaySheet(r.Place, DateTime::ParseDayFirst(date));
    });
}

void mdiMother::OpenDaySheetOf(const DateTime& day)
{
    ui::RunCommand([&] { ShowDaySheet(generatedPlace_, day); });
}

void mdiMother::ShowDaySheet(const RequestPlace& place, const DateTime& day)
{
    const std::string refusal = DayPlaceRefusal(place);
    if (!refusal.empty()) {
        MsgBox(refusal, MsgButtons::OK, "Day Sheet", MsgIcon::Exclamation);
        return;
    }
    DaySheet sheet;
    {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        struct Restore {
            ~Restore() { QApplication::restoreOverrideCursor(); }
        } restore;
        sheet = DaySheetOfPlace(place, day, TextDB(), RecosDB());
    }
    if (!daySheetWindow_) daySheetWindow_ = new frmDaySheet(this);
    daySheetWindow_->ShowSheet(sheet);
    daySheetWindow_->show();
    daySheetWindow_->raise();
    daySheetWindow_->activateWindow();
}

frmDaySheet* mdiMother::DaySheetWindow() const { return daySheetWindow_; }

void mdiMother::DropCalendar()
{
    if (calendarWindow_) {
        calendarWindow_->hide();
        calendarWindow_->deleteLater();
    }
    calendarWindow_ = nullptr;
    calendar_.reset();
}

void mdiMother::ShowCover()
{
    if (TopicCount() == 0) return;
    // The calendar steps aside for the pages; the View menu brings it back
    // as it was left.
    if (calendarWindow_) calendarWindow_->hide();
    raise();
    activateWindow();
    if (CurrentTopic() == 0) RebuildResultPages();
    else SelectTopic(0);
}

void mdiMother::RestoreResultView()
{
    const bool bar = SettingOn("BotBar", true);
    bBar_->setVisible(bar);
    Action("mnuViewBotBar")->setChecked(bar);
    SetSideListVisible(SettingOn("TopicListVis", false));
}

// ---- commands ----

void mdiMother::ShowEntry()
{
    rangeResult_ = false;
    DropCalendar();
    ClearTopics();
    ResetEngine(nullptr);
    pages_->setCurrentWidget(entryHost_);
    setWindowTitle(Q(AppTitle()) + "-" + Q(entry_->Request().MuhuName));
}

void mdiMother::Navigate(int step)
{
    const int to = CurrentTopic() + step;
    if (to >= 0 && to < TopicCount()) SelectTopic(to);
}

void mdiMother::ToggleSideList() { SetSideListVisible(!tvMap_->isVisibleTo(this)); }

void mdiMother::SetSideListVisible(bool visible)
{
    tvMap_->setVisible(visible);
    if (visible) splitter_->setSizes({kSideListWidth, std::max(1, splitter_->width() - kSideListWidth)});
    splitter_->handle(1)->setVisible(visible);
    Action("TopicMap")->setChecked(visible);
    Action("mnuViewTopicList")->setChecked(visible);
    SaveOn("TopicListVis", visible);
}

void mdiMother::ExitProgram()
{
    if (MsgBox("Do you really want to exit?", MsgButtons::YesNo, "Exit program?", MsgIcon::Question) != MsgAnswer::Yes)
        return;
    PersonChart().reset();
    ResetEngine(nullptr);
    SaveViewState();
    QApplication::exit(0);
}

void mdiMother::OpenManual(const std::string& page)
{
    // The manual's own window, which says so when the page is missing.
    ShowManual(page);
}

void mdiMother::SaveViewState() { SaveSetting("Settings`", "StartDir", S(QDir::currentPath())); }

void mdiMother::closeEvent(QCloseEvent* event)
{
    // The program ends with its last window; the view is kept first.
    SaveViewState();
    PersonChart().reset();
    event->accept();
}

void mdiMother::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_F1) {
        OpenManual("keywords.html");
        return;
    }
    QMainWindow::keyPressEvent(event);
}

}  // namespace ranvel
