// Printing a real result: the report of a month's marriage search to a PDF
// printer (the cover, then the analysis pages under the couple's header),
// the printed page beside the exported one, a job through the print system
// to its PDF printer, its preview, a job with nothing ticked, a printer
// that fails or has nowhere to print, the one-topic print, and the page
// chooser's words and page sets.
#include <dlfcn.h>
#include <grp.h>
#include <pwd.h>
#include <unistd.h>

#include <QApplication>
#include <QComboBox>
#include <QEventLoop>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QTextEdit>
#include <QTimer>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <thread>

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

QString Shell(const std::string& command)
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
    return QRegularExpression(R"(Pages:\s+(\d+))").match(Shell("pdfinfo '" + pdf + "'")).captured(1).toInt();
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
    for (auto it = word.globalMatch(Shell("pdftotext -bbox -f " + n + " -l " + n + " '" + pdf + "' -")); it.hasNext();) {
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
// A page's words as poppler groups them in lines, each word marked when
// it begins its line, and placed by its left and its foot: a print system
// that embeds the faces anew keeps where the letters stand, but not always
// how high a face says its letters reach.
struct PlacedWord {
    QString text;
    double left, foot;
    bool startsLine;
};
std::vector<PlacedWord> PdfLines(const std::string& pdf, int page)
{
    static const QRegularExpression item(
        R"re(<line |<word xMin="([\d.]+)" yMin="[\d.]+" xMax="[\d.]+" yMax="([\d.]+)">([^<]*)</word>)re");
    const std::string n = std::to_string(page);
    std::vector<PlacedWord> words;
    bool first = false;
    for (auto it = item.globalMatch(Shell("pdftotext -bbox-layout -f " + n + " -l " + n + " '" + pdf + "' -"));
         it.hasNext();) {
        const auto m = it.next();
        if (m.captured(1).isEmpty()) {
            first = true;
            continue;
        }
        QString text = m.captured(3).replace("&amp;", "&").replace("&apos;", "'").replace("&quot;", "\"");
        words.push_back({text, m.captured(1).toDouble(), m.captured(2).toDouble(), first});
        first = false;
    }
    return words;
}

// How a printed page stands beside the exported one: for every printed
// word, the distance in points to the nearest same word of the exported
// page moved down by `drop`. A line starts where it was put; the words
// after it may drift a little, since the printer and the file measure
// text each at its own resolution.
struct Placement {
    int words = 0;
    double farthestStart = 0, farthest = 0;
    QStringList missing;
};
Placement Beside(const std::vector<PlacedWord>& printed, const std::vector<PlacedWord>& exported, double drop)
{
    Placement p;
    for (const PlacedWord& w : printed) {
        double nearest = -1;
        for (const PlacedWord& e : exported) {
            if (e.text != w.text) continue;
            const double d = std::hypot(w.left - e.left, w.foot - (e.foot + drop));
            if (nearest < 0 || d < nearest) nearest = d;
        }
        ++p.words;
        if (nearest < 0) {
            p.missing << w.text;
            continue;
        }
        p.farthest = std::max(p.farthest, nearest);
        if (w.startsLine) p.farthestStart = std::max(p.farthestStart, nearest);
    }
    return p;
}
std::vector<PlacedWord> Header(std::vector<PlacedWord> words)
{
    std::erase_if(words, [](const PlacedWord& w) { return w.foot > 100; });
    return words;
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

// A print system of the test's own: the CUPS daemon on a private
// configuration, listening on a socket in a private folder, with one queue
// to the PDF printer, which writes its PDF files into the PDF folder of the
// user's home. `why` tells why there is none.
class PrintSystem {
public:
    static constexpr const char* kQueue = "RanvelPDF";
    static constexpr const char* kDriver = "/usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd";

    PrintSystem() { Start(); }
    ~PrintSystem()
    {
        UseServer(nullptr);
        if (daemon_.state() != QProcess::NotRunning) {
            daemon_.terminate();
            if (!daemon_.waitForFinished(5000)) daemon_.kill(), daemon_.waitForFinished(2000);
        }
        std::error_code ec;
        if (!folder_.empty()) std::filesystem::remove_all(folder_, ec);
    }

    std::string why;

    // Waits until the queue has no job left to finish.
    bool Idle(std::chrono::seconds limit) const
    {
        const auto until = std::chrono::steady_clock::now() + limit;
        do {
            if (Shell("lpstat -h '" + socket_ + "' -W not-completed -o " + kQueue).trimmed().isEmpty()) return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(200));
        } while (std::chrono::steady_clock::now() < until);
        return false;
    }
    // Where the PDF printer puts the files of this user's jobs.
    static std::filesystem::path Output()
    {
        const passwd* user = getpwuid(geteuid());
        return std::filesystem::path(user ? user->pw_dir : "/root") / "PDF";
    }
    std::string Log() const
    {
        return Shell("tail -n 20 '" + (folder_ / "log/error_log").string() + "' '" +
                     (folder_ / "log/access_log").string() + "'")
            .toStdString();
    }

private:
    void Start()
    {
        namespace fs = std::filesystem;
        if (geteuid() != 0) return void(why = "the print system's daemon needs root on this machine");
        for (const char* needed : {"/usr/sbin/cupsd", "/usr/sbin/lpadmin", "/usr/bin/lpstat",
                                   "/usr/lib/cups/backend/cups-pdf", kDriver})
            if (!fs::exists(needed)) return void(why = std::string(needed) + " is not installed");
        const group* lp = getgrnam("lp");
        if (!lp) return void(why = "there is no group lp for the print filters");
        // A short path: a socket's name holds at most 107 bytes.
        char made[] = "/tmp/rvcups-XXXXXX";
        if (!mkdtemp(made)) return void(why = "no private folder for the print system");
        folder_ = made;
        // The filters run as lp: they pass through, read the spool and
        // write in its temporary folder.
        fs::permissions(folder_, fs::perms(0755));
        for (const char* d : {"etc", "spool", "spool/tmp", "cache", "state", "log"}) fs::create_directories(folder_ / d);
        for (const auto& [d, mode] : {std::pair{"spool", 0710}, std::pair{"spool/tmp", 01770}, std::pair{"cache", 0770}}) {
            if (chown((folder_ / d).c_str(), 0, lp->gr_gid) != 0) return void(why = "cannot give the spool to lp");
            fs::permissions(folder_ / d, fs::perms(mode));
        }
        socket_ = (folder_ / "cups.sock").string();
        const std::string f = folder_.string();
        std::ofstream(folder_ / "cups-files.conf")
            << "ServerRoot " << f << "/etc\nRequestRoot " << f << "/spool\nTempDir " << f << "/spool/tmp\n"
            << "CacheDir " << f << "/cache\nStateDir " << f << "/state\nPrintcap " << f << "/printcap\n"
            << "AccessLog " << f << "/log/access_log\nErrorLog " << f << "/log/error_log\nPageLog " << f
            << "/log/page_log\nUser lp\nGroup lp\nSystemGroup root\n";
        std::ofstream(folder_ / "cupsd.conf")
            << "Listen " << socket_ << "\nLogLevel info\nBrowsing No\nWebInterface No\nDefaultAuthType None\n"
            << "<Location />\n  Order allow,deny\n  Allow all\n</Location>\n"
            << "<Policy default>\n  <Limit All>\n    Order deny,allow\n  </Limit>\n</Policy>\n";
        daemon_.setProcessChannelMode(QProcess::MergedChannels);
        daemon_.start("/usr/sbin/cupsd", {"-f", "-c", QString::fromStdString(f + "/cupsd.conf"), "-s",
                                          QString::fromStdString(f + "/cups-files.conf")});
        if (!daemon_.waitForStarted(5000)) return void(why = "the print system's daemon did not start");
        const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(15);
        while (!Shell("lpstat -h '" + socket_ + "' -r").contains("scheduler is running")) {
            if (std::chrono::steady_clock::now() > until || daemon_.state() == QProcess::NotRunning)
                return void(why = "the print system's daemon did not answer: " + Log() +
                                  daemon_.readAll().toStdString());
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
        // The page goes to the printer as PostScript drawn by poppler's cairo
        // renderer, which keeps the words' letters for reading back.
        if (QProcess::execute("/usr/sbin/lpadmin", {"-h", QString::fromStdString(socket_), "-p", kQueue, "-E", "-v",
                                                    "cups-pdf:/", "-P", kDriver, "-o",
                                                    "pdftops-renderer-default=pdftocairo"}) != 0)
            return void(why = "the PDF printer's queue could not be made: " + Log());
        if (!UseServer(socket_.c_str())) return void(why = "the print system's library is not loaded");
    }

    // Points this program's print system library at a server, or back at
    // the machine's own (nullptr).
    static bool UseServer(const char* server)
    {
        void* cups = dlopen("libcups.so.2", RTLD_NOW | RTLD_NOLOAD);
        if (!cups) cups = dlopen("libcups.so.2", RTLD_NOW);
        if (!cups) return false;
        auto set = reinterpret_cast<void (*)(const char*)>(dlsym(cups, "cupsSetServer"));
        if (set) set(server);
        return set != nullptr;
    }

    std::filesystem::path folder_;
    std::string socket_;
    QProcess daemon_;
};

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
    // The same report exported to a PDF file.
    std::string Exported()
    {
        const std::string file = (app / "exported.PDF").string();
        dialogs.files.push_back(file);
        EXPECT_TRUE(main->ExportPDF());
        return file;
    }
    // The printed report's cover beside the exported one (everything on
    // paper is 200 twips, 10 points, lower), and the analysis's header at
    // the very place of the exported one.
    void ExpectPrintedAsExported(const std::string& printed, const std::string& exported)
    {
        EXPECT_TRUE(Shell("pdfinfo '" + printed + "'").contains("612 x 792 pts")) << "not on letter paper";
        const Placement cover = Beside(PdfLines(printed, 1), PdfLines(exported, 1), 10);
        EXPECT_GT(cover.words, 150);
        EXPECT_TRUE(cover.missing.isEmpty()) << cover.missing.join(' ').toStdString();
        EXPECT_LT(cover.farthestStart, 3);
        EXPECT_LT(cover.farthest, 7);
        const Placement header = Beside(Header(PdfLines(printed, 2)), Header(PdfLines(exported, 2)), 0);
        EXPECT_GE(header.words, 4);  // the couple, the mark and the page's number
        EXPECT_TRUE(header.missing.isEmpty()) << header.missing.join(' ').toStdString();
        EXPECT_LT(header.farthest, 3);
    }

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

TEST_F(Printing, ThePrintedReportStandsWhereTheExportedOneDoesWhateverPaperWasSetUp)
{
    // A printer set up for A4 inside margins: the report still goes onto
    // the whole of a letter sheet, where the shapes' twips and the labels'
    // letter scale agree with each other and with the export.
    ReportPrinter().setFullPage(false);
    ReportPrinter().setPageSize(QPageSize(QPageSize::A4));
    ReportPrinter().setPageMargins(QMarginsF(15, 15, 15, 15), QPageLayout::Millimeter);
    const std::string exported = Exported();
    frmPrint dialog(1, main);
    dialog.cmdPrint_Click();
    ASSERT_EQ(dialog.result(), QDialog::Accepted);
    ExpectPrintedAsExported(pdf, exported);
}

TEST_F(Printing, WithNowhereToPrintItSaysSoAndPrintsOnceAFileIsChosen)
{
    if (!LoopsRun()) GTEST_SKIP() << "an earlier test told the application to quit";
    // A machine without a printer: the report printer writes PDF, to no
    // file yet.
    ReportPrinter().setOutputFileName(QString());
    frmPrint dialog(1, main);
    dialog.show();
    dialog.cmdPrint_Click();
    main->PrintCurrentTopic();
    ASSERT_EQ(messages.Messages().size(), 2u);
    for (const Message& m : messages.Messages()) EXPECT_EQ(m.text, Msg(12));
    EXPECT_TRUE(dialog.isVisible());

    // Printer Setup: "Print to File (PDF)" and a file; then the job runs.
    bool chosen = false;
    QTimer::singleShot(0, [&] {
        auto* setup = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
        if (!setup) return;
        auto* printers = setup->findChild<QComboBox*>("printers");
        auto* file = setup->findChild<QLineEdit*>("filename");
        if (printers && file && printers->findText("Print to File (PDF)") >= 0) {
            printers->setCurrentIndex(printers->findText("Print to File (PDF)"));
            file->setText(QString::fromStdString(pdf));
            chosen = setup->windowTitle() == "Printer Setup";
        }
        setup->accept();
    });
    main->PrinterSetup();
    ASSERT_TRUE(chosen);
    EXPECT_EQ(ReportPrinter().outputFileName().toStdString(), pdf);
    dialog.cmdPrint_Click();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(messages.Messages().size(), 2u);
    EXPECT_GE(PdfPages(pdf), 2);
}

TEST_F(Printing, AJobThroughThePrintSystemComesOutOfItsPdfPrinterAsPrinted)
{
    PrintSystem cups;
    if (!cups.why.empty()) GTEST_SKIP() << "no print system to send a job to: " << cups.why;
    // The queue, and no file: the job goes to the print system.
    ReportPrinter().setPrinterName(PrintSystem::kQueue);
    ReportPrinter().setOutputFileName(QString());
    ASSERT_EQ(ReportPrinter().outputFormat(), QPrinter::NativeFormat);
    const QString title = QString("ranvel-report-%1").arg(getpid());
    ReportPrinter().setDocName(title);
    struct Restore {
        ~Restore()
        {
            ReportPrinter().setDocName(QString());
            ReportPrinter().setPrinterName(QString());
        }
    } restore;
    const std::string exported = Exported();

    // What the PDF printer writes goes again when the test ends, and so
    // does its folder if the job made it.
    struct Remove {
        std::filesystem::path folder = PrintSystem::Output();
        bool made = !std::filesystem::exists(folder);
        std::string file;
        ~Remove()
        {
            std::error_code ec;
            if (!file.empty()) std::filesystem::remove(file, ec);
            if (made) std::filesystem::remove(folder, ec);  // only when empty
        }
    } remove;

    frmPrint dialog(1, main);
    dialog.cmdPrint_Click();
    ASSERT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_TRUE(messages.Messages().empty());
    ASSERT_TRUE(cups.Idle(std::chrono::seconds(90))) << cups.Log();

    std::string out;
    std::error_code ec;
    for (const auto& f : std::filesystem::directory_iterator(remove.folder, ec))
        if (f.path().filename().string().rfind(title.toStdString(), 0) == 0) out = f.path().string();
    ASSERT_FALSE(out.empty()) << "the PDF printer wrote nothing: " << cups.Log();
    remove.file = out;
    EXPECT_GE(PdfPages(out), 2);
    ExpectPrintedAsExported(out, exported);
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

    // A name with an apostrophe would break the store's query: it is
    // refused before anything is written.
    EXPECT_TRUE(messages.Messages().empty());
    sets->setEditText("Meera's Copy");
    Child<QPushButton>(&dialog, "cmdPrintSet")->click();
    ASSERT_EQ(messages.Messages().size(), 1u);
    EXPECT_EQ(messages.Messages()[0].title, "Invalid Name");
    EXPECT_EQ(sets->count(), before);
    EXPECT_FALSE(std::filesystem::exists(clsIni::IniPath("3Meera's Copy.ini")));
    // Deleting by that name breaks the query: the fault is told in a box
    // and the dialog goes on.
    Child<QPushButton>(&dialog, "cmdDelSet")->click();
    ASSERT_EQ(messages.Messages().size(), 2u);
    EXPECT_EQ(sets->count(), before);
    dialog.SelectPageSet(sets->findText("Cover Only"));
    EXPECT_FALSE(dialog.Checked("MuhuText"));
}

}  // namespace
}  // namespace ranvel::test
