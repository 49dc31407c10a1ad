// The Muhurtha calendar as a picture: one month grid per month of the range
// (weekday columns, Sunday first), each tested day filled by its band in the
// active page colours with its percent in the cell, days outside the range
// greyed, and a legend of the bands. The window draws the same grids as the
// PNG and the PDF, so what is exported is what is on screen.
#pragma once

#include <QColor>
#include <QRect>
#include <QSize>
#include <cstddef>
#include <string>
#include <vector>

#include "ranvel/engine/calendar.h"

class QPainter;

namespace ranvel {

// The colours of the grids, taken from the active page colours
// ("PAGECOLORS" of GENDAT.INI).
struct CalendarColours {
    QColor Paper;    // page and empty cells
    QColor Text;     // day numbers, captions
    QColor Heading;  // month names
    QColor Strong;   // the colour of the top band; lower bands are lighter
    QColor Outside;  // the fill of the days of a month outside the range
    QColor Accent;   // the frame of the selected day, apart from every band
    // The page's paper, text and headings; the strongest band takes the
    // headings' colour when it is a colour that stands off the paper, else
    // the table header's or the subheadings', else a deep blue (a light
    // amber on a dark paper).
    static CalendarColours FromActive();
    // The same on white paper, as the PNG and the PDF are drawn.
    static CalendarColours ForPrint();
    QColor Band(int Band) const;    // the fill of a band 10 ... 100
    QColor TextOn(int Band) const;  // black or white, whichever reads better on that fill
};

// The months of the range: the first day of each month from the range's
// first month to its last.
std::vector<DateTime> CalendarMonths(const MuhurthaCalendar& Calendar);

// The size the grids take when laid out in Columns columns of months,
// legend included, at the given cell size in pixels. A month is 7 cells
// wide and its caption (1.1 cells), weekday heads (0.7) and six weeks
// tall, months 0.6 of a cell apart; the legend below is at least 10.6
// cells wide, its keys on as many lines of a cell as the width needs.
QSize CalendarGridsSize(const MuhurthaCalendar& Calendar, int Columns, int Cell);

// Draws the grids into Area (top left), a Selected day (or nullptr) framed.
void PaintCalendarGrids(QPainter& Painter, const QRect& Area, const MuhurthaCalendar& Calendar,
                        const CalendarColours& Colours, int Columns, int Cell, const CalendarDay* Selected);

// The day whose cell lies under a point of the area drawn by
// PaintCalendarGrids with the same layout, or nullptr.
const CalendarDay* CalendarDayAt(const QPoint& Point, const QRect& Area, const MuhurthaCalendar& Calendar,
                                 int Columns, int Cell);

// The grids as a PNG file; the calendar's ranked list as well as the grids
// on letter pages as a PDF through PdfBox (text searchable). Both write a
// work file and move it over the target; a failure throws
// std::runtime_error naming the file and the reason, the target left as it
// was and no work file behind (the PDF's failures are PdfBox's own
// PdfError, a std::runtime_error, passed on as they come).
void SaveCalendarPng(const MuhurthaCalendar& Calendar, const std::string& Path);
void SaveCalendarPdf(const MuhurthaCalendar& Calendar, const std::vector<std::size_t>& Listed,
                     const std::string& Path);

}  // namespace ranvel
