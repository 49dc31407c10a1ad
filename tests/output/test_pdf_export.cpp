// The PDF box and the exporter's walk, watched through a box that notes
// what it is asked to draw while it still writes a real file: the work
// file that only replaces a complete target (and a full disk that leaves
// the old one, saying so), the twips-to-page scale, the
// face that stands in for the old system face, the flow in whole words,
// and the progress of a report.
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>

#include <QDir>

#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QTemporaryDir>
#include <QTextCursor>
#include <QTextEdit>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>

#include "ranvel/output/clsPDFExporter.h"
#include "ranvel/output/controls.h"
#include "ranvel/output/printsurface.h"
#include "ranvel/platform/gui/pdfbox.h"
#include "ranvel/platform/sinks.h"

namespace ranvel {
namespace {

struct Drawn {
    std::string what;
    double x, y, w, h;
    QString text, font;
    double lineWidth;
};

class WatchedPdf : public PdfBox {
public:
    std::vector<Drawn> drawn;
    void Note(const std::string& what, double x, double y, double w, double h, const QString& text = {})
    {
        drawn.push_back({what, x, y, w, h, text, FontName(), LineWidth()});
    }
    void NewPage() override { Note("page", 0, 0, 0, 0), PdfBox::NewPage(); }
    void LineTo(double x, double y) override { Note("line", CurrentX(), CurrentY(), x, y), PdfBox::LineTo(x, y); }
    void Rectangle(double l, double t, double w, double h, bool f) override
    {
        Note("rect", l, t, w, h), PdfBox::Rectangle(l, t, w, h, f);
    }
    void Circle(double x, double y, double r, bool f) override { Note("circle", x, y, r, r), PdfBox::Circle(x, y, r, f); }
    void TextBox(double l, double t, double w, double h, const QString& s, int a, bool m) override
    {
        Note("text", l, t, w, h, s), PdfBox::TextBox(l, t, w, h, s, a, m);
    }
    std::vector<Drawn> Of(const std::string& what) const
    {
        std::vector<Drawn> out;
        for (const Drawn& d : drawn)
            if (d.what == what) out.push_back(d);
        return out;
    }
};

std::string Slurp(const QString& path)
{
    std::ifstream in(path.toStdString(), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// A small file system of the test's own, to be filled to its last block.
// Only root may mount one; elsewhere the test says so and is skipped.
class SmallDisk {
public:
    explicit SmallDisk(const QString& at) : path(at.toStdString())
    {
        QDir().mkpath(at);
        mounted = ::mount("tmpfs", path.c_str(), "tmpfs", MS_NOSUID | MS_NODEV, "size=64k") == 0;
        if (!mounted) why = std::strerror(errno);
    }
    ~SmallDisk()
    {
        if (mounted) ::umount2(path.c_str(), MNT_DETACH);
    }
    void Fill()
    {
        std::FILE* f = std::fopen((path + "/filler").c_str(), "wb");
        const std::string block(4096, 'x');
        while (f && std::fwrite(block.data(), 1, block.size(), f) == block.size() && std::fflush(f) == 0) {}
        if (f) std::fclose(f);
    }
    std::string path, why;
    bool mounted = false;
};

class PdfExporterWalk : public ::testing::Test {
protected:
    void SetUp() override
    {
        exporter.filename(dir.filePath("report.PDF").toStdString());
        ASSERT_TRUE(exporter.StartExport());
    }
    void TearDown() override { pdf.AbortDoc(); }
    QTemporaryDir dir;
    WatchedPdf pdf;
    clsPDFExporter exporter{pdf};
};

TEST(PdfBox, TheTargetIsReplacedOnlyByACompleteDocumentWithItsInformation)
{
    QTemporaryDir dir;
    const QString target = dir.filePath("old.PDF");
    std::ofstream(target.toStdString()) << "the earlier report";
    PdfBox pdf;
    pdf.FileName(target.toStdString());
    pdf.Keywords("a;b");
    pdf.BeginDoc();
    pdf.TextOut(100, 100, "drawn");
    EXPECT_EQ(Slurp(target), "the earlier report");
    pdf.EndDoc();
    const std::string done = Slurp(target);
    EXPECT_EQ(done.rfind("%PDF-", 0), 0u);
    EXPECT_NE(done.find("/Keywords"), std::string::npos);
    EXPECT_FALSE(QFile::exists(QString::fromStdString(pdf.WorkName())));

    // A document given up leaves the target as it was, and no work file.
    pdf.BeginDoc();
    pdf.AbortDoc();
    EXPECT_EQ(Slurp(target), done);
    EXPECT_FALSE(QFile::exists(QString::fromStdString(pdf.WorkName())));
}

// A disk that fills while the document is put on it: the target keeps
// its old content, no work file stays, and the failure names the file and
// the system's reason.
TEST(PdfBox, AFullDiskLeavesTheOldFileAndSaysWhy)
{
    QTemporaryDir dir;
    SmallDisk disk(dir.filePath("small"));
    if (!disk.mounted) GTEST_SKIP() << "a small file system can't be mounted here: " << disk.why;
    const std::string target = disk.path + "/old.PDF";
    std::ofstream(target) << "the earlier report";
    ::chmod(target.c_str(), 0640);
    disk.Fill();
    PdfBox pdf;
    pdf.FileName(target);
    pdf.BeginDoc();
    pdf.TextOut(100, 100, "drawn");
    try {
        pdf.EndDoc();
        ADD_FAILURE() << "a document was written onto a full disk";
    } catch (const PdfError& e) {
        EXPECT_EQ(std::string(e.what()), "The PDF file '" + target +
                                             "' could not be written: the disk is full (No space left on device). "
                                             "The file that was there is kept as it was.");
    }
    EXPECT_EQ(Slurp(QString::fromStdString(target)), "the earlier report");
    EXPECT_EQ(QDir(QString::fromStdString(disk.path)).entryList(QDir::Files | QDir::Hidden),
              QStringList({"filler", "old.PDF"}));

    // With room again the new document takes the old one's place, and its
    // permissions.
    std::remove((disk.path + "/filler").c_str());
    pdf.BeginDoc();
    pdf.TextOut(100, 100, "drawn");
    pdf.EndDoc();
    EXPECT_EQ(Slurp(QString::fromStdString(target)).rfind("%PDF-", 0), 0u);
    struct stat st {};
    ASSERT_EQ(::stat(target.c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 0777, 0640u);
}

TEST_F(PdfExporterWalk, EveryControlVisibleOrNotIsPlacedAtItsTwipsOverFiveSixtySevenCut)
{
    QWidget form;
    TwipLabel(&form, "lblShown", "Shown", 600, 1200, 2800, 300);
    TwipLabel(&form, "lblHidden", "Hidden", 600, 2000, 1000, 300)->hide();
    auto* frame = new QGroupBox(&form);
    SetTwips(frame, 6300, 4860, 5220, 4700);
    TwipLabel(frame, "lblInFrame", "Framed", 180, 50, 1000, 300);
    (new LineControl(&form))->SetEnds(720, 700, 11520, 700);
    SetTwips(new ShapeControl(&form), 720, 3620, 10800, 1020);
    auto* ring = new ShapeControl(&form);
    ring->Shape(ShapeControl::Circle);
    SetTwips(ring, 5560, 140, 1120, 1120);
    auto* oval = new ShapeControl(&form);
    oval->Shape(ShapeControl::Oval);  // passed over
    SetTwips(oval, 100, 100, 500, 300);
    exporter.PrintForm(&form);

    const auto texts = pdf.Of("text");
    ASSERT_EQ(texts.size(), 3u);
    EXPECT_EQ(std::vector<double>({texts[0].x, texts[0].y, texts[0].w, texts[0].h}),
              std::vector<double>({105, 211, 493, 52}));
    EXPECT_EQ(texts[1].text, "Hidden");
    EXPECT_EQ(texts[2].x, 1142);  // the frame's offset added: 6480 / 5.67
    EXPECT_EQ(texts[2].y, 865);
    ASSERT_EQ(pdf.Of("line").size(), 1u);
    EXPECT_EQ(pdf.Of("line")[0].w, 2031);
    ASSERT_EQ(pdf.Of("rect").size(), 1u);
    EXPECT_EQ(pdf.Of("rect")[0].h, 179);
    ASSERT_EQ(pdf.Of("circle").size(), 1u);
    EXPECT_EQ(std::vector<double>({pdf.Of("circle")[0].x, pdf.Of("circle")[0].y, pdf.Of("circle")[0].w}),
              std::vector<double>({1079, 123, 98}));
}

TEST_F(PdfExporterWalk, TheOldSystemFaceBecomesArialInLabelsAndText)
{
    QWidget form;
    TwipLabel(&form, "lblOld", "Old face", 0, 0, 3000, 300)->setFont(QFont("MS Sans Serif", 8));
    TwipLabel(&form, "lblMono", "Mono face", 0, 400, 3000, 300)->setFont(QFont("Courier New", 8));
    QTextEdit edit(&form);
    edit.setProperty("TypeName", "TXTextControl");
    QTextCharFormat old;
    old.setFont(QFont("MS Sans Serif", 11));
    QTextCursor(edit.document()).insertText("Runs in the old face", old);
    exporter.PrintForm(&form);
    const auto texts = pdf.Of("text");
    ASSERT_EQ(texts.size(), 3u);
    EXPECT_EQ(texts[0].font, "Arial");
    EXPECT_EQ(texts[1].font, "Courier New");
    EXPECT_EQ(texts[2].text, "Runs in the old face");
    EXPECT_EQ(texts[2].font, "Arial");
}

TEST_F(PdfExporterWalk, TheFlowBreaksOnlyBetweenWordsAndAWideWordGoesOutAlone)
{
    pdf.FontName("Arial");
    pdf.FontSize(11);
    QString wide = "W";
    while (pdf.TextWidth(wide + ' ') < clsPDFExporter::kLineLimit + 40) wide += 'W';
    QString words;
    for (int i = 0; i < 60; ++i) words += QString("word%1 ").arg(i);
    QTextEdit edit;
    QTextCharFormat f;
    f.setFont(QFont("Arial", 11));
    QTextCursor(edit.document()).insertText("\n" + words + wide + " tail\n" + wide + " after", f);
    exporter.PrintRichText(edit);

    QStringList lines;
    for (const Drawn& d : pdf.Of("text")) lines << d.text;
    // The text starts at 400 under the header, with its line break.
    EXPECT_EQ(pdf.Of("text").front().y, clsPDFExporter::kFlowTop);
    const qsizetype at = lines.indexOf(wide);
    ASSERT_GT(at, 1);
    for (const QString& line : lines.mid(1, at - 1))
        EXPECT_LT(pdf.TextWidth(line + ' '), clsPDFExporter::kLineLimit) << line.toStdString();
    EXPECT_EQ(lines.mid(1, at - 1).join(' ') + ' ', words);
    // Within a stretch the wide word stands alone; starting one it goes
    // out after one empty retry.
    EXPECT_EQ(lines.mid(at), QStringList({wide, "tail", "", wide, "after"}));

    // The header's two rules at 1600 twips, as wide as on paper.
    const auto rules = pdf.Of("line");
    ASSERT_EQ(rules.size(), 2u);
    for (const Drawn& r : rules) EXPECT_TRUE(r.y == 282 && r.lineWidth == 8) << r.y << " " << r.lineWidth;
}

TEST_F(PdfExporterWalk, AReportGoesTopicByTopicWithABarThatOnlyMovesOn)
{
    struct Forms : ReportTopics {
        QWidget forms[3];
        int TopicCount() override { return 3; }
        QWidget* ShowTopic(int i) override { return &forms[i]; }
    } topics;
    HeadlessProgressSink progress;
    SetProgressSink(&progress);
    exporter.ExportHoroscope(topics);
    SetProgressSink(nullptr);

    EXPECT_EQ(PageCounter(), 3);
    EXPECT_EQ(pdf.Of("page").size(), 2u);  // a new page between topics only
    std::vector<int> percents;
    for (const ProgressStep& s : progress.Steps()) percents.push_back(s.percent);
    ASSERT_FALSE(progress.Steps().empty());
    EXPECT_EQ(progress.Steps()[0].caption, "Exporting PDF...");
    EXPECT_EQ(progress.Steps()[0].detail, "Exporting PDF File. Please wait, this will take a little while...");
    EXPECT_EQ(percents, (std::vector<int>{0, 33, 67}));
}

}  // namespace
}  // namespace ranvel
