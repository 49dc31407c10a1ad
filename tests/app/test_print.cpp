// Printing a real result: the report of a month's marriage search to a PDF
// printer (the cover, then the analysis pages under the couple's header),
// its preview, a job with nothing ticked, a printer that fails, the
// one-topic print, and the page chooser's words and page sets.
#include <QApplication>
#include <QComboBox>
#include <QEventLoop>
#include <QGroupBox>
#include <QLabel>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPushButton>
#include <QRegularExpression>
#include <QTextEdit>
#include <QTimer>
#include <cstdio>
#include <filesystem>

#include "app/app_fixture.h"
#include "ranvel/app/frmMuhuCover.h"
#include "ranvel/app/frmMuhuTxt.h"
#include "ranvel/app/frmPrint.h"
#include "ranvel/app/mdiMother.h"
#include "ranvel/app/startup.h"
#include "ranvel/data/messages.h"
#include "ranvel/data/themes.h"
#include "ranvel/engine/analysis.h"
#include "ranvel/output/printsurface.h"
#include "ranvel/platform/ini.h"

namespace ranvel::test {
namespace {

QString Run(const std::string& command)
{
    std::string out;
    if (FILE* pipe = popen((command + " 2>/dev/null").c_str(), "r")) {
        char buffer[4096];
        for (std::size_t n; (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;) out.append(buffer, n);
        pclose(pipe);
    }
    return QString::fromUtf8(out.c_str());
}

int PdfPages(const std::string& pdf)
{
    return QRegularExpression(R"(Pages:\s+(\d+))").match(Run("pdfinfo '" + pdf + "'")).captured(1).toInt();
}

// A page's words in order, each with its left and top in points.
struct PdfWord {
    QString text;
    double left, top;
};
std::vector<PdfWord> PdfWords(const std::string& pdf, int page)
{
    static const QRegularExpression word(R"re(<word xMin="([\d.]+)" yMin="([\d.]+)"[^>]*>([^<]*)</word>)re");
    const std::string n = std::to_string(page);
    std::vector<PdfWord> words;
    for (auto it = word.globalMatch(Run("pdftotext -bbox -f " + n + " -l " + n + " '" + pdf + "' -")); it.hasNext();) {
        const auto m = it.next();
        QString text = m.captured(3).replace("&amp;", "&").replace("&apos;", "'").replace("&quot;", "\"");
        words.push_back({text, m.captured(1).toDouble(), m.captured(2).toDouble()});
    }
    return words;
}
QString PdfText(const std::string& pdf, int page)
{
    QString text;
    for (const PdfWord& w : PdfWords(pdf, page)) text += w.text + " ";
    return text;
}
// The number in a header's corner: 10500, 1280 twips is 525, 64 points.
QString HeaderNumber(const std::string& pdf, int page)
{
    for (const PdfWord& w : PdfWords(pdf, page))
        if (std::abs(w.left - 525) < 4 && w.top > 60 && w.top < 72) return w.text;
    return {};
}

// A modal dialog's loop runs only while nothing has told the application
// to quit; a main window closed earlier in the same test program has.
bool LoopsRun()
{
    bool ran = false;
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] {
        ran = true;
        loop.quit();
    });
    loop.exec();
    return ran;
}

class Printing : public AppTest {
protected:
    void SetUp() override
    {
        AppTest::SetUp();
        PrepareResultPages();
        MuhurthaRequest r;
        r.Category = "Marriage", r.MuhuName = "Marriage ceremony (Vivaha)", r.SearchMode = 1;
        r.MomentDate = r.FromDate = "01/11/2024";
        r.ToDate = "30/11/2024", r.FromTime = "06.00", r.ToTime = "22.00";
        r.Place = {"India", "New Delhi", "028:36", "077:12", "N", "E", "+05.30"};
        r.Boy = {"Arjun", 1, "14/08/1994", "09.20", 1, "India", "New Delhi", "028:36", "077:12", "N", "E", "+05.30"};
        r.Girl = {"Meera", 2, "03/02/1996", "17.45", 2, "India", "Pune", "018:31", "073:51", "N", "E", "+05.30"};
        ResetEngine(std::make_unique<clsMuhurtha>());
        r.RunEngine(Engine(), TextDB(), RecosDB());
        main = new mdiMother;
        main->OpenResultPages();
        pdf = (app / "report.pdf").string();
        ReportPrinter().setOutputFormat(QPrinter::PdfFormat);
        ReportPrinter().setPageSize(QPageSize(QPageSize::Letter));
        ReportPrinter().setOutputFileName(QString::fromStdString(pdf));
    }
    QString CoverText(const char* name) { return main->findChild<frmMuhuCover*>()->Label(name)->text(); }

    mdiMother* main = nullptr;
    std::string pdf;
};

TEST_F(Printing, TheReportPrintsTheCoverThenTheAnalysisUnderTheCouplesHeader)
{
    frmPrint dialog(1, main);
    dialog.cmdPrint_Click();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_TRUE(messages.Messages().empty());
    // The cover's page, then every page of the analysis, nothing more.
    std::unique_ptr<QTextDocument> text(main->findChild<frmMuhuTxt*>()->rtfText()->document()->clone());
    const int pages = PdfPages(pdf);
    EXPECT_EQ(pages, 1 + PrintSurface(ReportPrinter()).PrepareDocument(*text, QSizeF(7440, 11440)));

    // The cover: the couple, the best day and the lagna's span.
    const QString cover = PdfText(pdf, 1);
    for (const char* name : {"lblName", "lblPer1Name", "lblPer2Name", "lblBMDate", "lblBMLagna", "lblMuhuName"})
        EXPECT_TRUE(cover.contains(CoverText(name))) << name;
    EXPECT_TRUE(cover.contains(CoverText("lblFrom") + " " + CoverText("lblBMFrom")));
    EXPECT_TRUE(cover.contains(CoverText("lblBMTo")));
    // The girl's name in her frame: 6300 + 180 twips across, 4860 + 50 +
    // 200 down, that is 324 and 255.5 points.
    bool placed = false;
    for (const PdfWord& w : PdfWords(pdf, 1))
        placed |= w.text == "Meera" && std::abs(w.left - 324) < 2 && w.top > 254 && w.top < 262;
    EXPECT_TRUE(placed);
    EXPECT_EQ(CoverText("lblPageNo"), "1");

    // The analysis: the couple's header numbered on from the cover, and
    // below it every element's heading and sentence.
    QString body;
    for (int p = 2; p <= pages; ++p) {
        EXPECT_EQ(HeaderNumber(pdf, p), QString::number(p));
        QString header;
        for (const PdfWord& w : PdfWords(pdf, p)) (w.top > 115 ? body : header) += w.text + " ";
        EXPECT_TRUE(header.contains("Arjun & Meera")) << p;
    }
    for (const ElementStatement& s : AnalyseElements(Engine())) {
        EXPECT_TRUE(body.contains(QString::fromStdString(s.heading).simplified())) << s.heading;
        if (s.hasSentence) {
            EXPECT_TRUE(body.contains(QString::fromStdString(s.sentence).simplified())) << s.sentence;
        }
    }
}

TEST_F(Printing, NothingTickedPrintsNothingWhileTheProgressShowsAndCloses)
{
    frmPrint dialog(1, main);
    dialog.Check("FrontPage", false);
    dialog.Check("MuhuText", false);
    struct Watch : QObject {
        bool shown = false, hidden = false, mainHeld = false;
        bool eventFilter(QObject* o, QEvent* e) override
        {
            if (o->objectName() != "frmStatus") return false;
            if (e->type() == QEvent::Show) shown = true, mainHeld = !MainWindow()->isEnabled();
            if (e->type() == QEvent::Hide) hidden = shown;
            return false;
        }
    } watch;
    qApp->installEventFilter(&watch);
    dialog.cmdPrint_Click();
    qApp->removeEventFilter(&watch);
    EXPECT_TRUE(watch.shown && watch.hidden && watch.mainHeld);
    EXPECT_TRUE(main->isEnabled());
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_FALSE(std::filesystem::exists(pdf));

    frmPrint coverOnly(1, main);
    coverOnly.Check("MuhuText", false);
    coverOnly.cmdPrint_Click();
    EXPECT_EQ(PdfPages(pdf), 1);
}

TEST_F(Printing, PrintThisTopicNumbersFromOneAndAFailingPrinterSaysSo)
{
    main->SelectTopic(1);
    main->PrintCurrentTopic();
    const int pages = PdfPages(pdf);
    ASSERT_GE(pages, 1);
    // A topic starts the counter at 0, which the header prints as 1.
    for (int p = 1; p <= pages; ++p) EXPECT_EQ(HeaderNumber(pdf, p), QString::number(p));
    main->SelectTopic(0);
    main->PrintCurrentTopic();
    EXPECT_EQ(PdfPages(pdf), 1);
    EXPECT_TRUE(PdfText(pdf, 1).contains("Arjun and Meera"));
    EXPECT_TRUE(messages.Messages().empty());

    ReportPrinter().setOutputFileName(QString::fromStdString((app / "no/such/folder/report.pdf").string()));
    main->PrintCurrentTopic();
    frmPrint dialog(1, main);
    dialog.show();
    dialog.cmdPrint_Click();
    ASSERT_EQ(messages.Messages().size(), 2u);
    for (const Message& m : messages.Messages()) EXPECT_EQ(m.text, Msg(12));
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_NE(dialog.result(), QDialog::Accepted);
    EXPECT_TRUE(main->isEnabled());
}

TEST_F(Printing, TheDialogsWordsFollowItsModeAndItsPreviewShowsTheReport)
{
    frmPrint exporter(2, main);
    EXPECT_EQ(exporter.windowTitle(), "Select Topics To Export");
    EXPECT_EQ(Child<QGroupBox>(&exporter, "framPageSet")->title(), "Select Page Set To Export");
    EXPECT_EQ(Child<QPushButton>(&exporter, "cmdPrint")->text(), "&Export");
    EXPECT_EQ(frmPrint(1, main).windowTitle(), "Select Topics To Print");
    EXPECT_FALSE(Child<QPushButton>(&exporter, "cmdPrintSet")->isEnabled());
    // Export has no writer yet: its run prints nothing and closes.
    exporter.cmdPrint_Click();
    EXPECT_EQ(exporter.result(), QDialog::Accepted);
    EXPECT_FALSE(std::filesystem::exists(pdf));

    if (!LoopsRun()) GTEST_SKIP() << "an earlier test told the application to quit";
    frmPrint dialog(1, main);
    int shown = -1;
    QTimer::singleShot(0, [&] {
        auto* preview = qobject_cast<QPrintPreviewDialog*>(QApplication::activeModalWidget());
        shown = preview ? preview->findChild<QPrintPreviewWidget*>()->pageCount() : -2;
        if (preview) preview->reject();
    });
    dialog.Preview();
    EXPECT_FALSE(std::filesystem::exists(pdf));
    dialog.cmdPrint_Click();
    EXPECT_EQ(PdfPages(pdf), shown);
}

TEST_F(Printing, PageSetsAreListedPickedKeptAndDeleted)
{
    frmPrint dialog(1, main);
    auto* sets = Child<QComboBox>(&dialog, "cmbPageSel");
    ASSERT_GE(sets->findText("Cover Only"), 0);
    EXPECT_EQ(sets->itemText(0), "Full Report");
    dialog.SelectPageSet(sets->findText("Cover Only"));
    EXPECT_TRUE(dialog.Checked("FrontPage"));
    EXPECT_FALSE(dialog.Checked("MuhuText"));

    // A new name: a row of the mode and a file of the ticks; saving it
    // again adds no row; picking it brings its ticks back.
    const int before = sets->count();
    dialog.Check("FrontPage", false);
    dialog.Check("MuhuText", true);
    sets->setEditText("Text For Client");
    dialog.SavePageSet();
    auto row = RecosDB()->OpenRecordset("SELECT * FROM PrintMods WHERE Name = 'Text For Client'");
    ASSERT_TRUE(row->HasRows());
    EXPECT_EQ(row->Field("HoroMode").ToTextOrEmpty(), "3");
    EXPECT_EQ(row->Field("file").ToTextOrEmpty(), "3Text For Client.ini");
    const std::string file = clsIni::IniPath("3Text For Client.ini");
    EXPECT_EQ(ini::ReadValue(file, "Ranvel", "FrontPage"), "False");
    EXPECT_EQ(ini::ReadValue(file, "Ranvel", "MuhuText"), "True");
    dialog.SavePageSet();
    EXPECT_EQ(sets->count(), before + 1);
    dialog.Check("FrontPage", true);
    dialog.SelectPageSet(sets->findText("Text For Client"));
    EXPECT_FALSE(dialog.Checked("FrontPage"));

    dialog.DeletePageSet();
    EXPECT_EQ(sets->count(), before);
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_FALSE(RecosDB()->OpenRecordset("SELECT * FROM PrintMods WHERE Name = 'Text For Client'")->HasRows());
}

}  // namespace
}  // namespace ranvel::test
