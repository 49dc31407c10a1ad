// Printing the result pages: a page form is copied to the printer control
// by control, at its place in twips on the form and 200 twips lower; the
// chart control prints its own elements; the analysis text goes out page
// by page under a running header with the page number.
#pragma once

#include "ranvel/output/printsurface.h"
#include "ranvel/output/walk.h"

class QLabel;
class QTextEdit;
class QWidget;

namespace ranvel {

class Kundali;

// Every control goes out this much lower than it stands on its form.
inline constexpr int kPrintDrop = 200;

class clsPrintMaker {
public:
    explicit clsPrintMaker(PrintSurface& printer) : printer_(printer) {}

    // Prints the form's visible controls onto the printer's current page;
    // nothing once PrintCancel is set.
    void PrintForm(QWidget* form);

    // The control printers, each for a control as the walk gives it (its
    // place in twips with its frame's offset).
    void PrintLine(const WalkItem& line);
    // A rectangle or a circle; any other shape prints nothing.
    void PrintShape(const WalkItem& shape);
    void PrintRectangle(const WalkItem& shape);
    void PrintCircle(const WalkItem& shape);
    void PrintPicture(const WalkItem& image);

private:
    void PrintLabelText(const WalkItem& label);

    PrintSurface& printer_;
};

// A label to the printer by the text routine: its rectangle in twips is put
// on the page as if the paper were letter size, whatever it is, and the
// text wraps only when it is wider than the rectangle. It stands at the
// rectangle's top, or in its middle when it does so on screen.
void PrintLabelToPrinter(PrintSurface& printer, const QLabel* label, const QRect& twips);

// The chart's visible elements at X, Y (twips) on the page: lines black at
// draw width 10, the square as a box in its border colour at width 5, the
// boxes' text by the text routine. Empty boxes print nothing.
void PrintKundli(const Kundali& chart, PrintSurface& printer, int X, int Y);
// The same with lines at width 5 and the text printed plainly at the
// label's corner.
void PrintKundaliNonApi(const Kundali& chart, PrintSurface& printer, int X, int Y);

// The analysis text, page by page: for each page the header, the page of
// the text inside margins of 2400 twips (left, top, right) and 2000
// (bottom), then a new page. Stops between pages once PrintCancel is set.
void PrintRichText(QTextEdit* control, PrintSurface& printer);

// The running header: two rules, the person's or the couple's name, the
// mark in its circle, and the page number, which then goes up by one (a
// counter of 0 prints as 1).
void PrintPageHeader(PrintSurface& printer);

}  // namespace ranvel
