// The one top-level window. It holds the entry screen and the result pages
// as its child pages, shows one at a time, and keeps three equal ways from
// page to page in step: the topic list cmbTopic, the side tree tvMap and
// the bottom bar bBar. It owns the commands of the menu and the toolbar.
#pragma once

#include <QMainWindow>
#include <QPointer>
#include <memory>
#include <string>
#include <vector>

#include "ranvel/engine/request.h"

class QAction;
class QComboBox;
class QMenu;
class QSplitter;
class QStackedWidget;
class QToolBar;
class QTreeWidget;

namespace ranvel {

class BottomBar;
class frmCalendar;
class frmDaySheet;
class frmLogin;
struct MuhurthaCalendar;

class mdiMother : public QMainWindow {
    Q_OBJECT
public:
    explicit mdiMother(QWidget* parent = nullptr);
    ~mdiMother() override;

    frmLogin* EntryForm() const { return entry_; }

    // ---- topics ----
    // Forgets every topic and its page.
    void ClearTopics();
    // Adds a topic at the end of the three lists; the window owns the page.
    void AddTopic(const QString& text, const QString& key, QWidget* page);
    int TopicCount() const { return static_cast<int>(topics_.size()); }
    int CurrentTopic() const;
    // Lets pending events through, then makes the topic the current one.
    void SelectTopic(int index);
    // Brings the page of a topic to the front.
    void ShowTopic(int index);
    // The page form a topic shows: the form itself, or the one on its paper.
    QWidget* TopicForm(int index) const;
    // After a generation: the topics of the result and the first of them.
    void OpenResultPages();

    // ---- commands ----
    void ShowEntry();  // mnuEntry: the results forgotten, the entry form
    void ToggleSideList();
    void Navigate(int step);  // Previous (-1) and Next (+1)
    void ExitProgram();  // asks, then ends
    void OpenManual(const std::string& page = "index.html");

    // ---- output (printcommands.cpp, pdfcommands.cpp, mailcommands.cpp) ----
    // The page-set dialog in its print mode.
    void PrintIt();
    // The page in front to the printer; message 12 on failure.
    void PrintCurrentTopic();
    // The printer dialog.
    void PrinterSetup();
    // Asks for the PDF file's name and hands it to the exporter; false when
    // the user cancelled.
    bool GetPDFFile();
    // The whole report to a PDF file; true on success.
    bool ExportPDF();
    // The report to a PDF file, then the mail dialog (kind 2).
    void MailPDF();
    // The mail dialog in kind 1 (HTML) or 2 (PDF).
    void SendMailHTML();
    void SendMailPDF();

    // The page in front built anew (the others are built when shown).
    void RebuildResultPages();

    // Restores the bottom bar and the side tree from their settings, as a
    // generation does when it ends.
    void RestoreResultView();

    // ---- the Muhurtha calendar ----
    // The calendar window of the last range search, made on first use; a
    // range too long for a calendar is told in a box instead.
    void OpenCalendar();
    // The calendar window when one is open, else nullptr.
    frmCalendar* CalendarWindow() const;

    // ---- the day sheet ----
    // The sheet of the date and place of the request form's second page
    // (the moment's date, or the range's first day).
    void OpenDaySheet();
    // The sheet of a day at the place of the last generation.
    void OpenDaySheetOf(const DateTime& day);
    // The day sheet window when one was opened, else nullptr.
    frmDaySheet* DaySheetWindow() const;

    QAction* Action(const QString& name) const;

signals:
    // The setup wizard, run from the Settings menu, has ended: the start's
    // checks run again.
    void SetupWizardEnded();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Topic {
        QString text, key;
        QWidget* page;
    };
    void BuildMenus();
    void BuildToolbar();
    void TopicChanged(int index);
    void SetSideListVisible(bool visible);
    void UpdateOutputCommands();
    void SaveViewState();
    // The calendar of the last generation forgotten, its window closed.
    void DropCalendar();
    // The cover brought to the front, built for the best Muhurtha as the
    // engine now holds it.
    void ShowCover();

    frmLogin* entry_ = nullptr;
    QWidget* entryHost_ = nullptr;
    QStackedWidget* pages_ = nullptr;
    QSplitter* splitter_ = nullptr;
    QTreeWidget* tvMap_ = nullptr;
    QComboBox* cmbTopic_ = nullptr;
    BottomBar* bBar_ = nullptr;
    QToolBar* toolbar_ = nullptr;
    QMenu* navMenu_ = nullptr;
    QAction* navSeparator_ = nullptr;
    std::vector<QAction*> navEntries_;
    std::vector<Topic> topics_;
    bool busy_ = false;
    // The result shown is a range search's; its calendar once made, and the
    // window that shows it.
    bool rangeResult_ = false;
    std::shared_ptr<const MuhurthaCalendar> calendar_;
    QPointer<frmCalendar> calendarWindow_;
    // The place of the last generation, for the sheets of its days.
    RequestPlace generatedPlace_;
    QPointer<frmDaySheet> daySheetWindow_;
    // Shows a place's sheet of a day in the one day sheet window; a place
    // that can have none is told in a box.
    void ShowDaySheet(const RequestPlace& place, const DateTime& day);
};

// The main window once it is loaded, else nullptr.
mdiMother* MainWindow();

}  // namespace ranvel
