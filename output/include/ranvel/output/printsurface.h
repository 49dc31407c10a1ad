// The printer as the report printers see it: a page of paper addressed in
// twips from its top-left corner, a current font, colour and draw width, a
// print position, and the few things drawn on it (lines, boxes, circles,
// pictures, text at the position or in a rectangle, a page of rich text).
// A job starts with the first thing drawn; a new page is asked for but
// only begins when something is drawn on it, so a job never ends on a
// blank sheet. Draw widths are in the device's own dots, as a printer's
// are, so a line of width 10 is finer on a finer printer.
#pragma once

#include <QColor>
#include <QFont>
#include <QPainter>
#include <QRect>
#include <QString>
#include <stdexcept>

class QPixmap;
class QPrinter;
class QTextDocument;

namespace ranvel {

// The printer would not start a job or a page: not connected, out of
// paper, a file that cannot be written.
class PrinterError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The printer reports go to, for the whole session: the printer dialog
// sets it up, every print and preview uses it.
QPrinter& ReportPrinter();

// The sheet a report is printed on: the whole of a letter sheet, upright,
// with no margin. The forms are laid out in twips from that sheet's corner
// and their labels on the letter-paper scale, so shapes, charts and text
// only stand where they belong on it. Every job sets it before it starts.
void UseReportSheet(QPrinter& printer);

// The number printed on each page (0 at the start of a topic, 1 at the
// start of a report), and the request to stop a job between pages.
int& PageCounter();
bool& PrintCancel();
// The name at the head of a report's text pages, printed or exported: the
// person, or the couple of a marriage.
QString ReportHeaderName();

class PrintSurface {
public:
    explicit PrintSurface(QPrinter& printer);
    // Ends a job that is still open.
    virtual ~PrintSurface();
    PrintSurface(const PrintSurface&) = delete;
    PrintSurface& operator=(const PrintSurface&) = delete;

    QPrinter& Printer() const { return printer_; }

    // ---- scale ----
    // The paper's size in twips and in device dots.
    QSizeF PaperTwips() const;
    QSize PaperDevice() const;
    // A place in twips from the paper's corner, in device dots.
    QPointF Device(double xTwips, double yTwips) const;
    QRectF Device(const QRectF& twips) const;

    // ---- state ----
    const QFont& Font() const { return font_; }
    void Font(const QFont& font) { font_ = font; }
    const QColor& ForeColor() const { return foreColor_; }
    void ForeColor(const QColor& colour) { foreColor_ = colour; }
    int DrawWidth() const { return drawWidth_; }
    void DrawWidth(int dots) { drawWidth_ = dots < 1 ? 1 : dots; }
    double CurrentX() const { return currentX_; }
    double CurrentY() const { return currentY_; }
    void Position(double xTwips, double yTwips) { currentX_ = xTwips, currentY_ = yTwips; }

    // ---- drawing, in twips at the current draw width ----
    virtual void Line(double x1, double y1, double x2, double y2, const QColor& colour);
    // An unfilled box from corner to corner.
    virtual void Box(double x1, double y1, double x2, double y2, const QColor& colour);
    virtual void Circle(double x, double y, double radius, const QColor& colour);
    // A picture stretched over a rectangle.
    virtual void Picture(const QPixmap& picture, const QRectF& twips);
    // Text in the current font and colour with its top at the print
    // position; the position then goes to the start of the next line.
    virtual void Print(const QString& text);
    // The platform's text routine: text in a rectangle given in device
    // dots, with Qt alignment and wrap flags. Nothing outside it is drawn.
    virtual void TextInRect(const QString& text, const QRect& device, int flags);
    // One page (from 1) of a document laid out by PrepareDocument, into a
    // rectangle of the page in twips.
    virtual void RichTextPage(QTextDocument& document, int page, const QRectF& twips);

    // The width of a text in the current font, in twips and in dots.
    double TextWidth(const QString& text) const;
    double TextWidthDevice(const QString& text) const;
    // Lays a document out in pages of the given size in twips on this
    // printer; gives the number of pages.
    int PrepareDocument(QTextDocument& document, const QSizeF& pageTwips) const;

    // Asks for a new page; it begins when something is drawn on it.
    virtual void NewPage();
    // Ends the job: what was drawn goes to the printer. A job in which
    // nothing was drawn sends nothing.
    virtual void EndDoc();

    // Pages begun in this job so far.
    int Pages() const { return pages_; }

protected:
    // The painter of the page being drawn, the job and the page begun as
    // needed.
    QPainter& Page();

private:
    QPen Pen(const QColor& colour) const;

    QPrinter& printer_;
    QPainter painter_;
    QFont font_;
    QColor foreColor_ = Qt::black;
    int drawWidth_ = 1;
    double currentX_ = 0, currentY_ = 0;
    bool newPageAsked_ = false;
    int pages_ = 0;
};

}  // namespace ranvel
