#include "ranvel/output/clsPDFExporter.h"

#include <QLabel>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>
#include <cmath>

#include "ranvel/data/datafiles.h"
#include "ranvel/engine/request_state.h"
#include "ranvel/output/Kundali.h"
#include "ranvel/output/controls.h"
#include "ranvel/output/printsurface.h"
#include "ranvel/output/walk.h"
#include "ranvel/platform/gui/pdfbox.h"
#include "ranvel/platform/gui/qstr.h"
#include "ranvel/platform/sinks.h"

namespace ranvel {

namespace {

// Twips in a tenth of a millimetre, as the page has always been scaled.
constexpr double kTwipsPerUnit = 5.67;

// A label's font, colour and caption into a box at its place (page units
// from the form's or the chart's corner at x, y), standing in it as on
// screen: a label centred upright there (the mark in its ring, the chart's
// numbers) is centred on the page too.
void LabelToPdf(PdfBox& pdf, const QLabel& label, const QRect& twips, double x, double y)
{
    const QFont f = label.font();
    pdf.FontName(PdfFontName(f.family()));
    pdf.FontBold(f.bold());
    pdf.FontItalic(f.italic());
    if (f.pointSizeF() > 0) pdf.FontSize(f.pointSizeF());
    pdf.FontStrikethru(f.strikeOut());
    pdf.FontUnderline(f.underline());
    pdf.FontColor(label.palette().color(QPalette::WindowText));
    pdf.TextBox(x + PdfUnits(twips.left()), y + PdfUnits(twips.top()), PdfUnits(twips.width()),
                PdfUnits(twips.height()), label.text(), LabelAlignment(&label),
                (label.alignment() & Qt::AlignVCenter) != 0);
}

}  // namespace

int PdfUnits(double twips) { return static_cast<int>(twips / kTwipsPerUnit); }

QString PdfFontName(const QString& family)
{
    // The old system face of labels has no like on the page; its place
    // is taken by the page's sans serif.
    if (family.compare("MS Sans Serif", Qt::CaseInsensitive) == 0) return "Arial";
    return family;
}

void DrawPDFKundli(PdfBox& pdf, const Kundali& chart, double x, double y)
{
    for (const WalkItem& e : ChartElements(chart, TwipsOf(&chart).size(), true)) {
        if (e.type == "Line") {
            pdf.PenColor(static_cast<const LineControl*>(e.control)->BorderColor());
            pdf.CurrentX(x + PdfUnits(e.x1));
            pdf.CurrentY(y + PdfUnits(e.y1));
            pdf.LineTo(x + PdfUnits(e.x2), y + PdfUnits(e.y2));
        } else if (e.type == "Shape") {
            const auto* s = static_cast<const ShapeControl*>(e.control);
            pdf.PenColor(s->BorderColor());
            pdf.FillColor(s->FillColor());
            pdf.Rectangle(x + PdfUnits(e.twips.left()), y + PdfUnits(e.twips.top()), PdfUnits(e.twips.width()),
                          PdfUnits(e.twips.height()), s->Filled());
        } else if (e.type == "Label") {
            const auto* l = static_cast<const QLabel*>(e.control);
            if (!l->text().isEmpty()) LabelToPdf(pdf, *l, e.twips, x, y);
        }
    }
}

clsPDFExporter& PDFExporter()
{
    // Never destroyed: the box's fonts must not outlive the application.
    static auto* exporter = new clsPDFExporter(*new PdfBox);
    return *exporter;
}

std::string clsPDFExporter::Keywords()
{
    return std::string("Indian astrology;Astrology;Muhurtha;Electional Astrology;Orbelin;Horoscope;Kundli;"
                       "Vedic Astrology;Tessaly;") +
           "https://ranvel.example/" + ";Jyotish";
}

std::string clsPDFExporter::filename() const { return pdf_.FileName(); }

void clsPDFExporter::filename(const std::string& path) { pdf_.FileName(path); }

bool clsPDFExporter::StartExport()
{
    try {
        pdf_.WorkName(PdfBox::WorkNameFor(pdf_.FileName()));
        pdf_.Author(kAuthor);
        pdf_.Title(kTitle);
        pdf_.Keywords(Keywords());
        pdf_.EmbedFonts(true);
        pdf_.Password("");
        pdf_.BeginDoc();
    } catch (const std::exception&) {
        return false;
    }
    PageCounter() = 0;
    return true;
}

void clsPDFExporter::FinishFile() { pdf_.EndDoc(); }

void clsPDFExporter::NewTopic() { pdf_.NewPage(); }

void clsPDFExporter::ExportHoroscope(ReportTopics& topics)
{
    const std::string caption = "Exporting PDF...";
    const std::string detail = "Exporting PDF File. Please wait, this will take a little while...";
    ProgressSink& progress = Progress();
    // The dialog goes away however the walk ends.
    struct Hide {
        ProgressSink& p;
        ~Hide() { p.Done(); }
    } hide{progress};
    int shown = 0;
    progress.Progress(caption, detail, shown);
    const int count = topics.TopicCount();
    for (int i = 0; i < count; ++i) {
        ++PageCounter();
        if (QWidget* form = topics.ShowTopic(i)) PrintForm(form);
        // The bar never goes back.
        const int percent = static_cast<int>(std::nearbyint(100.0 / count * i));
        if (percent > shown) {
            shown = percent;
            progress.Progress(caption, detail, shown);
        }
        if (i < count - 1) NewTopic();
    }
}

void clsPDFExporter::PrintForm(QWidget* form)
{
    pdf_.LineWidth(5);
    pdf_.ScaleUnit(1);
    for (const WalkItem& item : FormControls(form, false)) {
        const QRect& t = item.twips;
        if (item.type == "Label") {
            PrintLabel(*static_cast<const QLabel*>(item.control), t);
        } else if (item.type == "Line") {
            pdf_.PenColor(static_cast<const LineControl*>(item.control)->BorderColor());
            pdf_.CurrentX(PdfUnits(item.x1));
            pdf_.CurrentY(PdfUnits(item.y1));
            pdf_.LineTo(PdfUnits(item.x2), PdfUnits(item.y2));
        } else if (item.type == "Shape") {
            const auto* s = static_cast<const ShapeControl*>(item.control);
            pdf_.PenColor(s->BorderColor());
            pdf_.FillColor(s->FillColor());
            if (s->Shape() == ShapeControl::Rectangle) {
                pdf_.Rectangle(PdfUnits(t.left()), PdfUnits(t.top()), PdfUnits(t.width()), PdfUnits(t.height()),
                               s->Filled());
            } else if (s->Shape() == ShapeControl::Circle) {
                const double w = t.width() / kTwipsPerUnit, h = t.height() / kTwipsPerUnit;
                pdf_.Circle(static_cast<int>(t.left() / kTwipsPerUnit + w / 2),
                            static_cast<int>(t.top() / kTwipsPerUnit + h / 2), static_cast<int>(h / 2), s->Filled());
            }
        } else if (item.type == "Kundali") {
            DrawPDFKundli(pdf_, *static_cast<const Kundali*>(item.control), PdfUnits(t.left()), PdfUnits(t.top()));
        } else if (item.type == "Image") {
            pdf_.Picture(static_cast<const ImageControl*>(item.control)->Picture(), PdfUnits(t.left()),
                         PdfUnits(t.top()), PdfUnits(t.width()), PdfUnits(t.height()));
        } else if (item.type == "TXTextControl") {
            if (const auto* text = qobject_cast<const QTextEdit*>(item.control)) PrintRichText(*text);
        }
    }
}

void clsPDFExporter::PrintLabel(const QLabel& label, const QRect& twips) { LabelToPdf(pdf_, label, twips, 0, 0); }

void clsPDFExporter::PrintPageHeader()
{
    const QColor ink = Qt::black;
    pdf_.PenColor(ink);
    pdf_.FontColor(ink);
    pdf_.CurrentX(PdfUnits(680));
    pdf_.CurrentY(PdfUnits(1500));
    pdf_.LineWidth(kHeaderRule);
    for (const auto& [from, to] : {std::pair{480, 5040}, std::pair{6360, 10920}}) {
        pdf_.CurrentX(PdfUnits(from));
        pdf_.CurrentY(PdfUnits(1600));
        pdf_.LineTo(PdfUnits(to), PdfUnits(1600));
    }

    pdf_.FontName("Arial");
    pdf_.FontSize(11);
    pdf_.FontBold(false);
    pdf_.FontItalic(false);
    pdf_.FontUnderline(false);
    pdf_.FontStrikethru(false);
    pdf_.TextOut(PdfUnits(480), PdfUnits(1280), ReportHeaderName());

    if (PageCounter() == 0) PageCounter() = 1;
    pdf_.Circle(PdfUnits(5708), PdfUnits(1488), PdfUnits(1215 / 2.0));
    pdf_.FontBold(true);
    // The program's mark, from its own face.
    pdf_.FontName("Ranvel Astro");
    pdf_.FontSize(36);
    pdf_.TextOut(PdfUnits(5308), PdfUnits(1000), QString::fromUtf8("\u00B2"));

    pdf_.FontName("Arial");
    pdf_.FontSize(10);
    pdf_.FontBold(true);
    pdf_.TextOut(PdfUnits(10500), PdfUnits(1280), QString::number(PageCounter()));
    const LanguageSettings& lang = LangSettings();
    pdf_.FontName(PdfFontName(Q(lang.NormalFont.empty() ? std::string("Arial") : lang.NormalFont)));
    if (lang.NormalSize > 0) pdf_.FontSize(lang.NormalSize);
    ++PageCounter();
}

// One line of the flow at the current Y, which then moves a line down. An
// empty line is a line break.
void clsPDFExporter::FlowLine(const QString& line)
{
    const double height = pdf_.LineHeight();
    pdf_.TextBox(kFlowLeft, pdf_.CurrentY(), kLineBox, height, line, 0);
    pdf_.CurrentY(pdf_.CurrentY() + height);
}

void clsPDFExporter::PrintRichText(const QTextEdit& edit)
{
    PrintPageHeader();
    // The header moved the pen; the text begins below it.
    pdf_.CurrentY(kFlowTop);

    QTextDocument* document = edit.document();
    const QString text = document->toPlainText();
    int at = 0;
    for (const QString& stretch : text.split('\n')) {
        // The stretch's style is that of its first character: the
        // analysis keeps one style to a run up to each line feed.
        QTextCursor run(document);
        run.setPosition(at);
        if (!stretch.isEmpty()) run.setPosition(at + 1, QTextCursor::KeepAnchor);
        const QTextCharFormat format = run.charFormat();
        const QFont font = format.font();
        const QColor colour =
            format.hasProperty(QTextFormat::ForegroundBrush) ? format.foreground().color() : QColor(Qt::black);
        auto runStyle = [&] {
            pdf_.FontName(PdfFontName(font.family()));
            pdf_.FontBold(font.bold());
            pdf_.FontItalic(font.italic());
            if (font.pointSizeF() > 0) pdf_.FontSize(font.pointSizeF());
            pdf_.FontUnderline(font.underline());
            pdf_.FontColor(colour);
        };
        runStyle();
        at += static_cast<int>(stretch.size()) + 1;
        if (stretch.isEmpty()) {
            FlowLine(QString());
            continue;
        }

        // Whole words only: a line is printed when the next word would make
        // it full, and the word starts the next line. A word too wide for
        // any line goes out alone after one retry on an empty line.
        QString line;
        for (const QString& word : stretch.split(' ')) {
            bool retried = false;
            for (;;) {
                const QString longer = line + word + ' ';
                if (pdf_.TextWidth(longer) < kLineLimit || retried) {
                    line = longer;
                    break;
                }
                FlowLine(line.trimmed());
                line.clear();
                retried = true;
            }
            if (pdf_.CurrentY() >= kPageBottom) {
                pdf_.NewPage();
                ++PageCounter();
                PrintPageHeader();
                pdf_.CurrentY(kFlowTop);
                // The header leaves its own font behind; the run goes on in
                // its style.
                runStyle();
            }
        }
        FlowLine(line.trimmed());
    }
}

}  // namespace ranvel
