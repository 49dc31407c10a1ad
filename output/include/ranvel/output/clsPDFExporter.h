// The report as a PDF file. The exporter walks the same page forms as the
// screen and the printer, every control of them visible or not, and hands
// each to the PDF box on its scale: a twip on the form is 1 / 5.67 of the
// box's tenth of a millimetre, cut to a whole number. The analysis text
// flows line by line under a page header of its own, and breaks onto new
// pages with the header again.
#pragma once

#include <QRect>
#include <string>

#include "ranvel/platform/gui/pdfbox.h"

class QLabel;
class QTextEdit;
class QWidget;

namespace ranvel {

class Kundali;

// The topics of the report, as the exporter goes through them: how many,
// and the form of one once it has been brought to the front (and filled,
// as showing it fills it).
class ReportTopics {
public:
    virtual ~ReportTopics() = default;
    virtual int TopicCount() = 0;
    virtual QWidget* ShowTopic(int index) = 0;
};

// Twips on a form to the PDF page's units, cut to a whole number.
int PdfUnits(double twips);

// The chart's elements onto the page with the chart's top left at x, y
// (page units): lines in their colour, the border square, the boxes' and
// numbers' texts in their fonts. Hidden elements and empty boxes are left
// out, as they are on paper.
void DrawPDFKundli(PdfBox& pdf, const Kundali& chart, double x, double y);

class clsPDFExporter {
public:
    // The metadata of every exported file.
    static constexpr const char* kAuthor = "Tessaly";
    static constexpr const char* kTitle = "Orbelin Astrology Chart";
    static std::string Keywords();

    explicit clsPDFExporter(PdfBox& pdf) : pdf_(pdf) {}

    // The output path, kept in the box.
    std::string filename() const;
    void filename(const std::string& path);

    // Sets up the file: work name, metadata, embedding and password, and
    // the document begun. False on any failure; then nothing is written.
    bool StartExport();
    // Closes the file and puts it in its place; nothing when none is open.
    void FinishFile();
    // Every topic in turn, each from a new page, with the progress dialog.
    void ExportHoroscope(ReportTopics& topics);
    void NewTopic();
    // One form onto the current page.
    void PrintForm(QWidget* form);
    // A label at its place in twips on the form (a frame's offset added).
    void PrintLabel(const QLabel& label, const QRect& twips);
    // The analysis text: header, then the text line by line, page after page.
    void PrintRichText(const QTextEdit& text);
    // The header of a text page: two rules with the mark between them, the
    // name of the person or couple, and the page counter, which goes up.
    void PrintPageHeader();

    PdfBox& Pdf() { return pdf_; }

    // The flow's measures, in page units.
    static constexpr double kLineLimit = 1570;   // a line is full at this width
    static constexpr double kLineBox = 1800;     // the box a line is printed in
    static constexpr double kPageBottom = 2601;  // a new page from this Y on
    static constexpr double kFlowTop = 400;      // the text's first line
    // The column of full lines stands in the middle of the sheet, as the
    // printed analysis does between its equal margins.
    static constexpr int kFlowLeft = static_cast<int>((PdfBox::kPageWidth - kLineLimit) / 2);
    // The header's two rules are drawn this wide, as on paper.
    static constexpr double kHeaderRule = 8;

private:
    void FlowLine(const QString& line);

    PdfBox& pdf_;
};

// The exporter of the desktop's commands and its box, for the whole
// session: the mail command sends the file it wrote last.
clsPDFExporter& PDFExporter();

// A face the page can't show by that name, put as the face that stands in
// for it.
QString PdfFontName(const QString& family);

}  // namespace ranvel
