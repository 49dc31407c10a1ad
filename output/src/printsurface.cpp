#include "ranvel/output/printsurface.h"

#include <QAbstractTextDocumentLayout>
#include <QCoreApplication>
#include <QFontMetricsF>
#include <QPaintEngine>
#include <QPixmap>
#include <QPrinter>
#include <QTextDocument>
#include <QTextFrame>

#include "ranvel/data/datafiles.h"
#include "ranvel/engine/request_state.h"

namespace ranvel {

namespace {

constexpr double kTwipsPerInch = 1440.0;

QPrinter* g_printer = nullptr;

}  // namespace

QPrinter& ReportPrinter()
{
    if (!g_printer) {
        g_printer = new QPrinter(QPrinter::HighResolution);
        // Let go of the printer while the application, which its system
        // printer relies on, is still there.
        qAddPostRoutine([] {
            delete g_printer;
            g_printer = nullptr;
        });
    }
    return *g_printer;
}

void UseReportSheet(QPrinter& printer)
{
    printer.setFullPage(true);
    printer.setPageOrientation(QPageLayout::Portrait);
    printer.setPageSize(QPageSize(QPageSize::Letter));
    printer.setPageMargins(QMarginsF(0, 0, 0, 0), QPageLayout::Point);
}

QString ReportHeaderName()
{
    auto name = [](const std::shared_ptr<clsPlanets>& chart) { return chart ? chart->clsPerson().Name() : std::string(); };
    if (Horomode() == 2) return QString::fromStdString(name(BoyChart()) + " and " + name(GirlChart()));
    if (MarriageRequest()) return QString::fromStdString(name(BoyChart()) + " & " + name(GirlChart()));
    return QString::fromStdString(name(PersonChart()));
}

int& PageCounter()
{
    static int counter = 0;
    return counter;
}

bool& PrintCancel()
{
    static bool cancel = false;
    return cancel;
}

PrintSurface::PrintSurface(QPrinter& printer) : printer_(printer) {}

PrintSurface::~PrintSurface()
{
    if (painter_.isActive()) painter_.end();
}

// ---- scale ----

QSizeF PrintSurface::PaperTwips() const
{
    const QRectF inches = printer_.paperRect(QPrinter::Inch);
    return {inches.width() * kTwipsPerInch, inches.height() * kTwipsPerInch};
}

QSize PrintSurface::PaperDevice() const { return printer_.paperRect(QPrinter::DevicePixel).size().toSize(); }

QPointF PrintSurface::Device(double xTwips, double yTwips) const
{
    // The painter's origin is the printable area's corner unless the
    // printer is told to use the whole sheet; the report is laid out on
    // the whole sheet, so places are taken from the paper's corner.
    const double dots = printer_.resolution() / kTwipsPerInch;
    const QPointF origin =
        printer_.pageRect(QPrinter::DevicePixel).topLeft() - printer_.paperRect(QPrinter::DevicePixel).topLeft();
    return QPointF(xTwips * dots, yTwips * dots) - origin;
}

QRectF PrintSurface::Device(const QRectF& twips) const
{
    return {Device(twips.left(), twips.top()), Device(twips.right(), twips.bottom())};
}

// ---- the job and its pages ----

QPainter& PrintSurface::Page()
{
    if (!painter_.isActive()) {
        // A printer that writes a PDF file but has none named (what a
        // machine without a printer starts with) fails to start, and stays
        // busy after it: every later choice of printer or file would be
        // refused for the rest of the session. Such a job is refused before
        // it is begun. A preview draws on its own pages and needs no file.
        if (printer_.outputFormat() == QPrinter::PdfFormat && printer_.outputFileName().isEmpty() &&
            printer_.paintEngine()->type() == QPaintEngine::Pdf)
            throw PrinterError("No printer is set up, and no file is named to print to.");
        if (!painter_.begin(&printer_)) throw PrinterError("The printer did not start the job.");
        newPageAsked_ = false;
        pages_ = 1;
    } else if (newPageAsked_) {
        if (!printer_.newPage()) throw PrinterError("The printer did not start a new page.");
        newPageAsked_ = false;
        ++pages_;
    }
    return painter_;
}

void PrintSurface::NewPage()
{
    // Before the job has begun there is no page to leave.
    if (painter_.isActive()) newPageAsked_ = true;
    currentX_ = currentY_ = 0;
}

void PrintSurface::EndDoc()
{
    newPageAsked_ = false;
    currentX_ = currentY_ = 0;
    if (painter_.isActive() && !painter_.end()) throw PrinterError("The printer did not finish the job.");
}

// ---- drawing ----

QPen PrintSurface::Pen(const QColor& colour) const
{
    QPen pen(colour, drawWidth_, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    return pen;
}

void PrintSurface::Line(double x1, double y1, double x2, double y2, const QColor& colour)
{
    QPainter& p = Page();
    p.setPen(Pen(colour));
    p.drawLine(Device(x1, y1), Device(x2, y2));
}

void PrintSurface::Box(double x1, double y1, double x2, double y2, const QColor& colour)
{
    QPainter& p = Page();
    p.setPen(Pen(colour));
    p.setBrush(Qt::NoBrush);
    p.drawRect(QRectF(Device(x1, y1), Device(x2, y2)).normalized());
}

void PrintSurface::Circle(double x, double y, double radius, const QColor& colour)
{
    QPainter& p = Page();
    p.setPen(Pen(colour));
    p.setBrush(Qt::NoBrush);
    const double r = radius * printer_.resolution() / kTwipsPerInch;
    p.drawEllipse(Device(x, y), r, r);
}

void PrintSurface::Picture(const QPixmap& picture, const QRectF& twips)
{
    QPainter& p = Page();
    if (picture.isNull()) return;
    p.setRenderHint(QPainter::SmoothPixmapTransform);
    p.drawPixmap(Device(twips), picture, QRectF(picture.rect()));
}

void PrintSurface::Print(const QString& text)
{
    QPainter& p = Page();
    p.setFont(font_);
    p.setPen(foreColor_);
    const QFontMetricsF m(font_, &printer_);
    const QPointF at = Device(currentX_, currentY_);
    p.drawText(QPointF(at.x(), at.y() + m.ascent()), text);
    currentX_ = 0;
    currentY_ += m.height() * kTwipsPerInch / printer_.resolution();
}

void PrintSurface::TextInRect(const QString& text, const QRect& device, int flags)
{
    QPainter& p = Page();
    p.setFont(font_);
    p.setPen(foreColor_);
    // The rectangle is in the paper's dots; the painter's origin may be the
    // printable area's.
    const QPointF origin = Device(0, 0);
    p.drawText(QRectF(device).translated(origin), flags, text);
}

int PrintSurface::PrepareDocument(QTextDocument& document, const QSizeF& pageTwips) const
{
    document.documentLayout()->setPaintDevice(&printer_);
    document.setDocumentMargin(0);
    const double dots = printer_.resolution() / kTwipsPerInch;
    document.setPageSize(QSizeF(pageTwips.width() * dots, pageTwips.height() * dots));
    return document.pageCount();
}

void PrintSurface::RichTextPage(QTextDocument& document, int page, const QRectF& twips)
{
    QPainter& p = Page();
    const QRectF body = Device(twips);
    const double height = document.pageSize().height();
    // The page of the document, shifted so that its top lands on the
    // body's, and nothing of the pages around it.
    const QRectF view(0, (page - 1) * height, body.width(), height);
    p.save();
    p.translate(body.left(), body.top() - view.top());
    p.setClipRect(view);
    // The layout draws every line that touches the clip, also the one that
    // only meets its edge; a dot less on each side keeps the lines of the
    // pages above and below out of this page's text.
    QAbstractTextDocumentLayout::PaintContext context;
    context.clip = view.adjusted(0, 1, 0, -1);
    context.palette.setColor(QPalette::Text, Qt::black);
    document.documentLayout()->draw(&p, context);
    p.restore();
}

// ---- measuring ----

double PrintSurface::TextWidthDevice(const QString& text) const
{
    return QFontMetricsF(font_, &printer_).horizontalAdvance(text);
}

double PrintSurface::TextWidth(const QString& text) const
{
    return TextWidthDevice(text) * kTwipsPerInch / printer_.resolution();
}

}  // namespace ranvel
