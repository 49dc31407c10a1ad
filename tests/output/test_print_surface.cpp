// Printing a page form and the chart: what each kind of control becomes on
// paper (a recording printer notes every call), the 200 twips' drop and the
// frame's offset, and the letter-paper scale of label text on any paper.
#include <gtest/gtest.h>

#include <QLabel>
#include <QPrinter>
#include <QTemporaryDir>

#include "ranvel/output/Kundali.h"
#include "ranvel/output/clsPrintMaker.h"
#include "ranvel/output/controls.h"

namespace ranvel::test {
namespace {

struct Call {
    QString op;
    QRectF at;  // twips; a text rectangle in device dots
    QColor colour;
    int width = 0;
    QString text;
    int flags = 0;
};

// Notes every drawing call instead of drawing.
class RecordingPrinter : public PrintSurface {
public:
    using PrintSurface::PrintSurface;
    std::vector<Call> calls;

    void Line(double x1, double y1, double x2, double y2, const QColor& c) override { Add("line", x1, y1, x2, y2, c); }
    void Box(double x1, double y1, double x2, double y2, const QColor& c) override { Add("box", x1, y1, x2, y2, c); }
    void Circle(double x, double y, double r, const QColor& c) override
    {
        Add("circle", x - r, y - r, x + r, y + r, c);
    }
    void Picture(const QPixmap&, const QRectF& t) override { Add("picture", t.left(), t.top(), t.right(), t.bottom()); }
    void Print(const QString& text) override
    {
        calls.push_back({"print", QRectF(CurrentX(), CurrentY(), 0, 0), ForeColor(), 0, text});
    }
    void TextInRect(const QString& text, const QRect& device, int flags) override
    {
        calls.push_back({"text", QRectF(device), ForeColor(), 0, text, flags});
    }

    std::vector<Call> Of(const QString& op) const
    {
        std::vector<Call> out;
        std::copy_if(calls.begin(), calls.end(), std::back_inserter(out), [&](const Call& c) { return c.op == op; });
        return out;
    }
    Call Text(const QString& text) const
    {
        for (const Call& c : calls)
            if (c.text == text) return c;
        return {};
    }

private:
    void Add(const char* op, double x1, double y1, double x2, double y2, const QColor& c = {})
    {
        calls.push_back({op, QRectF(QPointF(x1, y1), QPointF(x2, y2)), c, DrawWidth(), {}});
    }
};

class PrintPages : public ::testing::Test {
protected:
    void SetUp() override
    {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(dir.filePath("out.pdf"));
        printer.setPageSize(QPageSize(QPageSize::Letter));
        PrintCancel() = false;
    }

    QTemporaryDir dir;
    QPrinter printer{QPrinter::HighResolution};
};

TEST_F(PrintPages, AFormPrintsEachVisibleControlByItsKind200TwipsLower)
{
    QWidget form;
    TwipLabel(&form, "lblAlpha", "Alpha", 1000, 500, 2000, 300);
    TwipLabel(&form, "lblHidden", "Hidden", 1000, 900, 2000, 300)->hide();
    auto* frame = new QWidget(&form);
    frame->setProperty("TypeName", "Frame");
    SetTwips(frame, 3000, 4000, 5000, 3000);
    TwipLabel(frame, "lblBeta", "Beta", 100, 50, 1500, 300, 1);
    auto* line = new LineControl(&form);
    line->SetEnds(720, 700, 11520, 700);
    line->BorderColor(Qt::red);
    line->BorderWidth(3);
    SetTwips(new ShapeControl(&form), 720, 2000, 1000, 500);
    for (int kind : {ShapeControl::Circle, ShapeControl::Oval}) {
        auto* shape = new ShapeControl(&form);
        shape->Shape(kind);
        shape->BorderColor(Qt::blue);
        SetTwips(shape, kind == ShapeControl::Circle ? 5000 : 9000, 100, 1200, 1000);
    }
    auto* image = new ImageControl(&form);
    SetTwips(image, 8000, 9000, 1500, 1500);
    auto* chart = new Kundali(&form);
    chart->PlanetPlace(1, "Sun");
    chart->hide();

    RecordingPrinter rec(printer);
    clsPrintMaker(rec).PrintForm(&form);
    // A blank opens the page before anything else.
    ASSERT_FALSE(rec.calls.empty());
    EXPECT_EQ(rec.calls.front().text, " ");
    // On letter paper a label's rectangle is its twips in the printer's
    // dots (1200 to the inch), 200 twips lower, cut to whole dots; the
    // label in the frame lands at the frame's offset plus its own.
    EXPECT_EQ(rec.Text("Alpha").at, QRectF(833, 583, 1667, 250));
    EXPECT_TRUE(rec.Text("Alpha").flags & Qt::AlignLeft);
    EXPECT_EQ(rec.Text("Beta").at.topLeft(), QPointF(2583, 3541));  // 3100, 4250 twips
    EXPECT_TRUE(rec.Text("Beta").flags & Qt::AlignRight);
    EXPECT_TRUE(rec.Text("Hidden").op.isEmpty());

    // The line and the rectangle's four sides black at width 10, whatever
    // the screen's colour; the circle in its border colour; no oval.
    const std::vector<Call> lines = rec.Of("line");
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(lines[0].at, QRectF(QPointF(720, 900), QPointF(11520, 900)));
    EXPECT_EQ(lines[3].at, QRectF(QPointF(1720, 2700), QPointF(720, 2700)));
    for (const Call& c : lines) EXPECT_TRUE(c.colour == Qt::black && c.width == 10);
    ASSERT_EQ(rec.Of("circle").size(), 1u);
    const Call circle = rec.Of("circle")[0];
    EXPECT_EQ(circle.at, QRectF(5100, 300, 1000, 1000));  // radius half the height
    EXPECT_EQ(circle.colour, QColor(Qt::blue));
    ASSERT_EQ(rec.Of("picture").size(), 1u);
    EXPECT_EQ(rec.Of("picture")[0].at, QRectF(8000, 9200, 1500, 1500));
    // The hidden chart prints nothing at all.
    EXPECT_TRUE(rec.Of("box").empty());
    EXPECT_TRUE(rec.Text("Sun ").op.isEmpty());

    // Once the job is cancelled a form prints nothing, not even the blank.
    RecordingPrinter cancelled(printer);
    PrintCancel() = true;
    clsPrintMaker(cancelled).PrintForm(&form);
    EXPECT_TRUE(cancelled.calls.empty());

    // Any paper is taken for letter: a tenth of the page in twips is a
    // tenth of the A4 sheet; the text wraps only when it is too wide.
    PrintCancel() = false;
    printer.setPageSize(QPageSize(QPageSize::A4));
    QWidget a4;
    TwipLabel(&a4, "lblWide", "A caption far too long to stand on one line", 1224, 1384, 1224, 400, 2);
    TwipLabel(&a4, "lblFits", "Fits", 6120, 7720, 3000, 400);
    RecordingPrinter onA4(printer);
    clsPrintMaker(onA4).PrintForm(&a4);
    const QSize paper = onA4.PaperDevice();
    const Call wide = onA4.Text("A caption far too long to stand on one line");
    EXPECT_EQ(wide.at.topLeft(), QPointF(paper.width() / 10, paper.height() / 10));
    EXPECT_EQ(wide.flags, int(Qt::AlignTop | Qt::AlignHCenter) | Qt::TextWordWrap);
    EXPECT_EQ(onA4.Text("Fits").at.topLeft(), QPointF(paper.width() / 2, paper.height() / 2));
    EXPECT_EQ(onA4.Text("Fits").flags, int(Qt::AlignTop | Qt::AlignLeft));
}

TEST_F(PrintPages, TheChartPrintsBlackLinesItsSquareAndOnlyFilledBoxes)
{
    QWidget form;
    Kundali chart(&form);
    SetTwips(&chart, 0, 0, 4000, 4000);
    chart.ChartStyle(Kundali::South);
    chart.LineColor(Qt::red);
    chart.BorderColor(Qt::darkGreen);
    chart.PlanetPlace(1, "Sun");
    chart.PlanetPlace(7, "Moon");

    RecordingPrinter api(printer);
    PrintKundli(chart, api, 1000, 2000);
    const std::vector<Call> lines = api.Of("line");
    ASSERT_EQ(lines.size(), 8u);
    for (const Call& c : lines) EXPECT_TRUE(c.colour == Qt::black && c.width == 10);
    // South's first line runs down at a quarter of the width, at the offset.
    EXPECT_EQ(lines.back().at, QRectF(QPointF(2000, 2000), QPointF(2000, 6000)));
    ASSERT_EQ(api.Of("box").size(), 1u);
    EXPECT_EQ(api.Of("box")[0].colour, QColor(Qt::darkGreen));
    EXPECT_EQ(api.Of("box")[0].width, 5);
    // The two filled boxes and the shown numbers; empty boxes are skipped.
    std::size_t numbers = 0;
    for (int i = 0; i < 12; ++i) numbers += !chart.lblHouseNo(i)->isHidden();
    EXPECT_EQ(api.Of("text").size(), 2u + numbers);
    EXPECT_TRUE(api.Text("Sun ").flags & Qt::AlignHCenter);

    // The plain copy: thinner lines, the text printed at the box's corner.
    RecordingPrinter plain(printer);
    PrintKundaliNonApi(chart, plain, 1000, 2000);
    for (const Call& c : plain.Of("line")) EXPECT_EQ(c.width, 5);
    EXPECT_TRUE(plain.Of("text").empty());
    EXPECT_EQ(plain.Text("Moon ").at.topLeft(), QPointF(1000 + 510 * 4, 2000 + 820 * 4));
}

}  // namespace
}  // namespace ranvel::test
