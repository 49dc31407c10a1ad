// The analysis text to the printer, and the header of its pages.
#include <QTextDocument>
#include <QTextEdit>
#include <memory>

#include "ranvel/data/datafiles.h"
#include "ranvel/engine/request_state.h"
#include "ranvel/output/clsPrintMaker.h"

namespace ranvel {

namespace {

// The text's margins on the page, in twips.
constexpr double kMarginLeft = 2400, kMarginTop = 2400, kMarginRight = 2400, kMarginBottom = 2000;

}  // namespace

void PrintPageHeader(PrintSurface& printer)
{
    printer.Position(680, 1500);
    printer.DrawWidth(8);
    printer.Line(480, 1600, 5040, 1600, Qt::black);
    printer.Line(6360, 1600, 10920, 1600, Qt::black);

    printer.Position(480, 1280);
    QFont f("Arial");
    f.setPointSize(11);
    printer.Font(f);
    printer.ForeColor(Qt::black);
    printer.Print(ReportHeaderName());

    if (PageCounter() == 0) PageCounter() = 1;
    printer.Circle(5708, 1488, 1215 / 2.0, printer.ForeColor());
    f.setBold(true);
    printer.Font(f);

    // The mark, in the program's own face that holds nothing else.
    printer.Font(QFont("Ranvel Astro", 36));
    printer.Position(5308, 1000);
    printer.Print(QString::fromUtf8("\u00B2"));

    printer.Position(10500, 1280);
    QFont number("Arial");
    number.setPointSize(10);
    number.setBold(true);
    printer.Font(number);
    printer.Print(QString::number(PageCounter()));
    const LanguageSettings& lang = LangSettings();
    QFont normal(lang.NormalFont.empty() ? QString("Arial") : QString::fromStdString(lang.NormalFont));
    normal.setPointSize(lang.NormalSize > 0 ? lang.NormalSize : 10);
    printer.Font(normal);

    ++PageCounter();
}

void PrintRichText(QTextEdit* control, PrintSurface& printer)
{
    // A copy of the text laid out on the printer's page, so the page on
    // screen keeps its own layout.
    std::unique_ptr<QTextDocument> document(control->document()->clone());
    const QSizeF paper = printer.PaperTwips();
    const QRectF body(kMarginLeft, kMarginTop, paper.width() - kMarginLeft - kMarginRight,
                      paper.height() - kMarginTop - kMarginBottom);
    const int pages = printer.PrepareDocument(*document, body.size());
    for (int n = 1; n <= pages; ++n) {
        if (PrintCancel()) break;
        PrintPageHeader(printer);
        printer.RichTextPage(*document, n, body);
        printer.NewPage();
    }
}

}  // namespace ranvel
