// The page chooser of a report: the result pages as a tree to tick, named
// page sets to pick, keep and drop, and the run of the job itself. The
// same dialog serves printing (Mode 1) and HTML export (Mode 2); its words
// follow the mode.
#pragma once

#include <QDialog>
#include <QString>

class QComboBox;
class QPrinter;
class QTreeWidget;
class QTreeWidgetItem;

namespace ranvel {

class PrintSurface;
class ProgressSink;

class frmPrint : public QDialog {
    Q_OBJECT
public:
    explicit frmPrint(int mode = 1, QWidget* parent = nullptr);

    int Mode() const { return mode_; }
    void Mode(int mode);

    // The page sets of the current Horomode, into cmbPageSel.
    void FillPageSets();
    // Ticks the pages as the set's file says.
    void SelectPageSet(int index);
    // Keeps the ticks under the name in cmbPageSel; deletes that set.
    void SavePageSet();
    void DeletePageSet();

    // A page of the tree by its key ("FrontPage", "MuhuText").
    bool Checked(const QString& key) const;
    void Check(const QString& key, bool on);

    // cmdPrint: runs the job over the ticked pages; the dialog closes when
    // it went through and stays open with the printer message when not.
    void cmdPrint_Click();
    // The same job into Qt's preview window.
    void Preview();

private:
    QTreeWidgetItem* Node(const QString& key) const;
    // The ticked pages onto a printer; progress goes to the sink when given.
    void PrintPages(PrintSurface& printer, ProgressSink* progress);

    int mode_ = 1;
    QComboBox* cmbPageSel_ = nullptr;
    QTreeWidget* tvwPrint_ = nullptr;
};

}  // namespace ranvel
