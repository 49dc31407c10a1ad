// The Muhurtha calendar window: the month grids of a range search on the
// left, the ranked days on the right with the detail of the day chosen, and
// the commands that show that day's pages or export the calendar. The grid,
// the list and the detail follow one chosen day, whichever of them chose it.
#pragma once

#include <QDialog>
#include <cstddef>
#include <memory>
#include <vector>

#include "ranvel/engine/calendar.h"
#include "ranvel/output/calendarsheet.h"

class QComboBox;
class QPushButton;
class QScrollArea;
class QSpinBox;
class QTextBrowser;
class QTreeWidget;

namespace ranvel {

// The month grids as a control: drawn by the shared sheet drawing, a day
// chosen by a click or by the arrow keys.
class CalendarGrid : public QWidget {
    Q_OBJECT
public:
    static constexpr int kColumns = 3;
    // The largest cell, within readable limits, at which the grids fit a
    // width.
    static int CellToFit(const MuhurthaCalendar& calendar, int width);

    CalendarGrid(const MuhurthaCalendar& calendar, int cell, QWidget* parent = nullptr);

    int Cell() const { return cell_; }
    void SetCell(int cell);
    void SetSelected(const CalendarDay* day);
    const CalendarDay* Selected() const { return selected_; }
    void SetColours(const CalendarColours& colours);
    // The area the grids are drawn into, and a day's cell in it and its
    // centre (null for a day the grids do not show).
    QRect Area() const;
    QRect CellRect(const CalendarDay& day) const;
    QPoint CellCentre(const CalendarDay& day) const;
    QSize sizeHint() const override;

signals:
    // A day was chosen in the grid.
    void DayChosen(const CalendarDay* day);
    // Enter was pressed on the chosen day.
    void DayOpened(const CalendarDay* day);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    const MuhurthaCalendar& calendar_;
    int cell_;
    CalendarColours colours_;
    const CalendarDay* selected_ = nullptr;
    // A point in each day's cell, found once from the drawing's layout.
    mutable std::vector<QPoint> cells_;
};

class frmCalendar : public QDialog {
    Q_OBJECT
public:
    // The window keeps the calendar it is given for as long as it lives.
    explicit frmCalendar(std::shared_ptr<const MuhurthaCalendar> calendar, QWidget* parent = nullptr);
    ~frmCalendar() override;

    const MuhurthaCalendar& Calendar() const { return *calendar_; }
    CalendarGrid* Grid() const { return grid_; }
    // The day chosen, or nullptr.
    const CalendarDay* SelectedDay() const { return grid_->Selected(); }
    // Chooses a day: the grid, the list and the detail follow.
    void SelectDay(const CalendarDay* day);
    // The days the list shows: "Days to list" of the ranked days, none under
    // the band chosen.
    std::vector<std::size_t> Listed() const;
    // The grids drawn anew in the active page colours.
    void RefreshColours();

    // ---- commands ----
    // Makes the chosen day the engine's best Muhurtha, then tells the main
    // window to show its pages.
    void ShowDayPages();
    // Asks for the chosen day's sheet.
    void ShowDaySheet();
    void ExportIcs();
    void ExportPng();
    void ExportPdf();

signals:
    // The engine's best Muhurtha is now the chosen day.
    void DayPicked();
    // The sheet of a day is wanted.
    void DaySheetWanted(const DateTime& day);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // The cells as large as the grids' place lets them be.
    void FitGrid();
    void FillList();
    void ShowDetail();
    void FollowList();

    std::shared_ptr<const MuhurthaCalendar> calendar_;
    CalendarGrid* grid_ = nullptr;
    QScrollArea* scroll_ = nullptr;
    QSpinBox* spnTop_ = nullptr;
    QComboBox* cmbMinBand_ = nullptr;
    QTreeWidget* lvwRanked_ = nullptr;
    QTextBrowser* txtDayDetail_ = nullptr;
    QPushButton* cmdShowDayPages_ = nullptr;
    QPushButton* cmdDaySheet_ = nullptr;
    bool filling_ = false;
};

}  // namespace ranvel
