#include "ranvel/output/clsPrintMaker.h"

#include <QLabel>
#include <QWidget>

#include "ranvel/data/datafiles.h"
#include "ranvel/output/Kundali.h"
#include "ranvel/output/controls.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

namespace {

// The label routine takes any paper for letter paper.
constexpr double kLetterWidth = 12240, kLetterHeight = 15840;

QColor TextColour(const QLabel* label) { return label->palette().color(QPalette::WindowText); }

// The plain label print: the printer's font is first the one asked for
// ("NormFont" the language's normal face, 666 its normal size), then takes
// the label's own style and size, so the label's size wins.
void PrintLabelPlain(PrintSurface& printer, const QLabel* label, const QRect& twips, const QString& fontName,
                     int size)
{
    const LanguageSettings& lang = LangSettings();
    QFont f(fontName == "NormFont" ? QString::fromStdString(lang.NormalFont) : fontName);
    f.setPointSize(size == 666 ? std::max(1, lang.NormalSize) : size);
    const QFont own = label->font();
    f.setBold(own.bold());
    f.setItalic(own.italic());
    f.setStrikeOut(own.strikeOut());
    f.setUnderline(own.underline());
    f.setWeight(own.weight());
    if (own.pointSizeF() > 0) f.setPointSizeF(own.pointSizeF());
    printer.Font(f);
    printer.ForeColor(TextColour(label));
    printer.Position(twips.left(), twips.top());
    printer.Print(label->text());
}

void PrintChart(const Kundali& chart, PrintSurface& printer, int X, int Y, bool textRoutine)
{
    for (const WalkItem& e : ChartElements(chart, TwipsOf(&chart).size(), true)) {
        if (e.type == "Line") {
            // Chart lines print black, whatever colour they have on screen.
            printer.DrawWidth(textRoutine ? 10 : 5);
            printer.Line(X + e.x1, Y + e.y1, X + e.x2, Y + e.y2, Qt::black);
        } else if (e.type == "Shape") {
            printer.DrawWidth(5);
            const QRect& r = e.twips;
            printer.Box(X + r.left(), Y + r.top(), X + r.left() + r.width(), Y + r.top() + r.height(),
                        static_cast<const ShapeControl*>(e.control)->BorderColor());
        } else if (e.type == "Label") {
            const auto* label = static_cast<const QLabel*>(e.control);
            if (label->text().isEmpty()) continue;
            const QRect at = e.twips.translated(X, Y);
            if (textRoutine) PrintLabelToPrinter(printer, label, at);
            else PrintLabelPlain(printer, label, at, "NormFont", 666);
        }
    }
}

}  // namespace

void PrintLabelToPrinter(PrintSurface& printer, const QLabel* label, const QRect& twips)
{
    printer.Font(label->font());
    printer.ForeColor(TextColour(label));
    const QSize paper = printer.PaperDevice();
    const double fx = kLetterWidth / paper.width(), fy = kLetterHeight / paper.height();
    auto cut = [](double v) { return static_cast<int>(vb::Fix(v)); };
    const int left = cut(twips.left() / fx), top = cut(twips.top() / fy);
    const int right = cut((twips.left() + twips.width()) / fx), bottom = cut((twips.top() + twips.height()) / fy);
    const QRect device(QPoint(left, top), QPoint(right - 1, bottom - 1));
    const int alignment = LabelAlignment(label);
    // A label that stands in the middle of its box on screen (the mark in
    // its ring, the chart's numbers) does so on paper too; the others hang
    // from the box's top.
    const int upright = (label->alignment() & Qt::AlignVCenter) ? Qt::AlignVCenter : Qt::AlignTop;
    int flags = upright | (alignment == 2 ? Qt::AlignHCenter : alignment == 1 ? Qt::AlignRight : Qt::AlignLeft);
    if (printer.TextWidthDevice(label->text()) > right - left) flags |= Qt::TextWordWrap;
    printer.TextInRect(label->text(), device, flags);
}

void PrintKundli(const Kundali& chart, PrintSurface& printer, int X, int Y) { PrintChart(chart, printer, X, Y, true); }

void PrintKundaliNonApi(const Kundali& chart, PrintSurface& printer, int X, int Y)
{
    PrintChart(chart, printer, X, Y, false);
}

// ---- clsPrintMaker ----

void clsPrintMaker::PrintForm(QWidget* form)
{
    if (PrintCancel()) return;
    // A blank opens the page, so even a form with nothing visible has one.
    printer_.Print(" ");
    for (const WalkItem& item : FormControls(form, true)) {
        if (item.type == "Shape") PrintShape(item);
        else if (item.type == "Label") PrintLabelText(item);
        else if (item.type == "Line") PrintLine(item);
        else if (item.type == "Kundali")
            PrintKundli(*static_cast<const Kundali*>(item.control), printer_, item.twips.left(),
                        item.twips.top() + kPrintDrop);
        else if (item.type == "Image") PrintPicture(item);
    }
}

void clsPrintMaker::PrintLine(const WalkItem& line)
{
    printer_.DrawWidth(10);
    printer_.Line(line.x1, line.y1 + kPrintDrop, line.x2, line.y2 + kPrintDrop, Qt::black);
}

void clsPrintMaker::PrintShape(const WalkItem& shape)
{
    switch (static_cast<const ShapeControl*>(shape.control)->Shape()) {
    case ShapeControl::Rectangle: PrintRectangle(shape); break;
    case ShapeControl::Circle: PrintCircle(shape); break;
    default: break;
    }
}

void clsPrintMaker::PrintRectangle(const WalkItem& shape)
{
    printer_.DrawWidth(10);
    const double l = shape.twips.left(), t = shape.twips.top() + kPrintDrop;
    const double r = l + shape.twips.width(), b = t + shape.twips.height();
    printer_.Line(l, t, r, t, Qt::black);
    printer_.Line(r, t, r, b, Qt::black);
    printer_.Line(r, b, l, b, Qt::black);
    printer_.Line(l, b, l, t, Qt::black);
}

void clsPrintMaker::PrintCircle(const WalkItem& shape)
{
    printer_.DrawWidth(10);
    const QRect& r = shape.twips;
    printer_.Circle(r.left() + r.width() / 2.0, r.top() + r.height() / 2.0 + kPrintDrop, r.height() / 2.0,
                    static_cast<const ShapeControl*>(shape.control)->BorderColor());
}

void clsPrintMaker::PrintPicture(const WalkItem& image)
{
    printer_.Picture(static_cast<const ImageControl*>(image.control)->Picture(),
                     QRectF(image.twips.translated(0, kPrintDrop)));
}

void clsPrintMaker::PrintLabelText(const WalkItem& label)
{
    PrintLabelToPrinter(printer_, static_cast<const QLabel*>(label.control), label.twips.translated(0, kPrintDrop));
}

}  // namespace ranvel
