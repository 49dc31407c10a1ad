// The day sheet in the desktop: the day's panchanga and divisions as a page
// of letter paper laid out in twips, like the result pages, so that printing
// and export copy its controls from where they stand; and the window that
// shows the page with its Print and PDF commands.
#pragma once

#include <QDialog>
#include <QWidget>
#include <memory>
#include <string>

#include "ranvel/engine/daysheet.h"

class QLabel;
class QPushButton;
class QScrollArea;

namespace ranvel {

class frmDayPage : public QWidget {
    Q_OBJECT
public:
    // The page's size in twips: letter paper.
    static constexpr int kPageWidth = 12240;
    static constexpr int kPageHeight = 15840;

    explicit frmDayPage(const DaySheet& sheet, QWidget* parent = nullptr);
    ~frmDayPage() override;

    const DaySheet& Sheet() const { return sheet_; }
    QLabel* Label(const QString& name) const;

private:
    struct Impl;
    std::unique_ptr<Impl> d_;
    DaySheet sheet_;
};

class frmDaySheet : public QDialog {
    Q_OBJECT
public:
    explicit frmDaySheet(QWidget* parent = nullptr);
    ~frmDaySheet() override;

    // Shows the sheet in place of the one shown.
    void ShowSheet(const DaySheet& sheet);
    frmDayPage* Page() const { return page_; }

    // ---- commands ----
    // The printer's dialog, then the page to the report printer.
    void PrintSheet();
    // The page to the report printer as it is set up; false (the box shown)
    // when it could not be printed.
    bool PrintPage();
    void ExportPdf();
    // The name the save dialog offers for the sheet's PDF.
    std::string SuggestedPdfName() const;

private:
    QScrollArea* scroll_ = nullptr;
    frmDayPage* page_ = nullptr;
    QPushButton* cmdPrint_ = nullptr;
    QPushButton* cmdPdf_ = nullptr;
};

}  // namespace ranvel
