// The main window's PDF export after a real search, read back with
// poppler's tools: the document's information, its pages, its text (names,
// dates, the lagna span, the analysis under its header, in the middle of
// the sheet) and its embedded faces; the topic the user is given back; the
// name the save dialog offers; the ways an export does not start; a disk
// that fills, which keeps the old file and says so; and the command line
// writing the same report.
#include <sys/mount.h>

#include <QDir>
#include <QLabel>
#include <QRegularExpression>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>

#include "app/app_fixture.h"
#include "commands.h"
#include "ranvel/app/frmMuhuCover.h"
#include "ranvel/app/mdiMother.h"
#include "ranvel/app/startup.h"
#include "ranvel/data/themes.h"
#include "ranvel/engine/analysis.h"
#include "ranvel/output/clsPDFExporter.h"
#include "ranvel/output/printsurface.h"

namespace ranvel::test {
namespace {

namespace fs = std::filesystem;

QString Tool(const std::string& command, const fs::path& pdf, const char* after = "")
{
    std::string out;
    if (FILE* pipe = popen((command + " '" + pdf.string() + "' " + after + " 2>/dev/null").c_str(), "r")) {
        char buffer[4096];
        for (std::size_t n; (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;) out.append(buffer, n);
        pclose(pipe);
    }
    return QString::fromStdString(out);
}

// A page's text with its white space made single blanks (the flow's lines
// break where the page says); a crop, in points, reads only that part.
QString PageText(const fs::path& pdf, int page, QRect crop = {0, 0, 612, 792})
{
    return Tool(QString("pdftotext -f %1 -l %1 -x %2 -y %3 -W %4 -H %5")
                    .arg(page).arg(crop.x()).arg(crop.y()).arg(crop.width()).arg(crop.height()).toStdString(),
                pdf, "-")
        .simplified();
}

QString Info(const fs::path& pdf, const char* key)
{
    const QRegularExpression line(QString("^%1:\\s+(.*)$").arg(key), QRegularExpression::MultilineOption);
    return line.match(Tool("pdfinfo", pdf)).captured(1).trimmed();
}

// The margins, in points, that the words below a page's header leave on
// its left and its right.
std::pair<double, double> BodyMargins(const fs::path& pdf, int page)
{
    static const QRegularExpression word(R"re(<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)")re");
    double left = 612, right = 0;
    const QString n = QString::number(page);
    for (auto it = word.globalMatch(Tool(QString("pdftotext -bbox -f %1 -l %1").arg(n).toStdString(), pdf, "-"));
         it.hasNext();) {
        const auto m = it.next();
        if (m.captured(2).toDouble() < 110) continue;  // the header
        left = std::min(left, m.captured(1).toDouble());
        right = std::max(right, m.captured(3).toDouble());
    }
    return {left, 612 - right};
}

const char* const kPlace = R"("Country": "India", "City": "New Delhi", "Lati": "028:36", "Longi": "077:12", "GMT": "+05.30")";

class PdfExport : public AppTest {
protected:
    void SetUp() override
    {
        AppTest::SetUp();
        PrepareResultPages();
    }
    // A search through the command line, with its own arguments after it.
    void Search(const std::string& fields, std::vector<std::string> more = {})
    {
        const std::string request = (app / "request.json").string();
        std::ofstream(request) << "{" << fields << R"(, "Place": {)" << kPlace << "}}";
        more.insert(more.begin(), {"--request", request});
        ::testing::internal::CaptureStdout();
        struct Release {
            HeadlessMessageSink& m;
            ~Release()
            {
                ::testing::internal::GetCapturedStdout();
                SetMessageSink(&m);
            }
        } release{messages};
        cli::CmdMuhurtha(cli::Args(more, {"json"}));
    }
    mdiMother* ResultWindow()
    {
        auto* main = new mdiMother;
        main->OpenResultPages();
        return main;
    }
    QStringList Left()
    {
        QStringList files =
            QDir(QString::fromStdString(app.string())).entryList({"*.PDF", ".*.part"}, QDir::Files | QDir::Hidden);
        files.sort();
        return files;
    }
};

TEST_F(PdfExport, AMarriageReportHasTheCoupleTheSpanTheAnalysisItsInformationAndItsFaces)
{
    const fs::path cli = app / "cli.PDF", pdf = app / "MarriageMuhurat.PDF";
    Search(std::string(R"j("Category": "Marriage", "MuhuName": "Marriage ceremony (Vivaha)", "SearchMode": 1,
      "MomentDate": "01/11/2024", "FromDate": "01/11/2024", "ToDate": "10/11/2024", "FromTime": "06.00", "ToTime": "22.00",
      "Boy": {"Name": "Arjun", "BDate": "14/08/1994", "BTime": "09.20", )j") + kPlace + R"j(},
      "Girl": {"Name": "Meera", "Sex": 2, "BDate": "03/02/1996", "BTime": "05.45", "AMPM": 2, )j" + kPlace + "}",
           {"--pdf", cli.string()});
    mdiMother* main = ResultWindow();
    dialogs.files.push_back(pdf.string());
    ASSERT_TRUE(main->ExportPDF());
    EXPECT_TRUE(messages.Messages().empty());
    ASSERT_EQ(dialogs.asked.size(), 1u);
    EXPECT_EQ(dialogs.asked[0].title, "Save");
    EXPECT_EQ(dialogs.asked[0].filter, "Portable Document Format (.PDF)|*.PDF|");
    EXPECT_EQ(dialogs.asked[0].defaultExt, ".PDF");
    EXPECT_EQ(dialogs.asked[0].suggested, "MarriageMuhurat.PDF");
    EXPECT_EQ(PDFExporter().filename(), pdf.string());
    EXPECT_EQ(Left(), QStringList({"MarriageMuhurat.PDF", "cli.PDF"}));  // no work file stays

    EXPECT_EQ(Info(pdf, "Author"), "Tessaly");
    EXPECT_EQ(Info(pdf, "Title"), "Orbelin Astrology Chart");
    EXPECT_EQ(Info(pdf, "Keywords"), "Indian astrology;Astrology;Muhurtha;Electional Astrology;Orbelin;Horoscope;"
                                     "Kundli;Vedic Astrology;Tessaly;https://ranvel.example/;Jyotish");
    EXPECT_EQ(Info(pdf, "Page size"), "612 x 792 pts (letter)");
    const int pages = Info(pdf, "Pages").toInt();
    ASSERT_GE(pages, 3);  // the cover, and the analysis over more than a page

    auto* cover = main->findChild<frmMuhuCover*>();
    for (const char* name : {"lblName", "lblPer1Name", "lblPer2Name", "lblBMDate", "lblBMFrom", "lblBMTo",
                             "lblBMLagna", "lblMuhuName", "lblMuhFromVal", "lblBMBand", "lblPer2NakVal"}) {
        const QString shown = cover->Label(name)->text().simplified();
        EXPECT_TRUE(!shown.isEmpty() && PageText(pdf, 1).contains(shown)) << name << ": " << shown.toStdString();
    }
    // Each text page under the couple's header, numbered top right: the
    // second topic's, then a break raises the counter before its header
    // raises it again.
    QString analysis;
    for (int page = 2; page <= pages; ++page) {
        EXPECT_TRUE(PageText(pdf, page).startsWith("Arjun & Meera")) << page;
        EXPECT_EQ(PageText(pdf, page, {500, 50, 112, 30}), QString::number(2 * page - 2)) << page;
        analysis += PageText(pdf, page, {0, 100, 612, 692}) + ' ';
    }
    EXPECT_TRUE(analysis.startsWith("Muhurtha - Marriage ceremony (Vivaha) Result of the Muhurtha Score -"));
    for (const ElementStatement& s : AnalyseElements(Engine())) {
        const std::string said = s.heading + " " + (s.hasSentence ? s.sentence : "");
        EXPECT_TRUE(analysis.contains(QString::fromStdString(said).simplified())) << s.element;
    }

    // Arial is Liberation Sans, embedded; the mark is the program's face.
    const QStringList fonts = Tool("pdffonts", pdf).split('\n', Qt::SkipEmptyParts).mid(2);
    const QRegularExpression row(R"(^(?:[A-Z]{6}\+)?(\S+)\s.*\s(yes|no)\s+(?:yes|no)\s+(?:yes|no)\s+\d+\s+\d+$)");
    QStringList faces;
    for (const QString& line : fonts) {
        const QRegularExpressionMatch m = row.match(line.trimmed());
        EXPECT_EQ(m.captured(2), "yes") << "not embedded: " << line.toStdString();
        faces << m.captured(1);
    }
    faces.sort();
    EXPECT_EQ(faces, QStringList({"LiberationSans", "LiberationSans-Bold", "RanvelAstro"}));

    // The command line wrote the same pages.
    EXPECT_EQ(Info(cli, "Pages"), Info(pdf, "Pages"));
    for (int page = 1; page <= pages; ++page) EXPECT_EQ(PageText(cli, page), PageText(pdf, page)) << page;
}

TEST_F(PdfExport, TheAnalysisStandsInTheMiddleOfTheSheetAndTheUserIsGivenBackTheirTopic)
{
    Search(std::string(R"j("Category": "Journey", "MuhuName": "Setting out on a journey (Yatra)", "SearchMode": 1,
      "MomentDate": "01/11/2024", "FromDate": "01/11/2024", "ToDate": "20/11/2024", "FromTime": "06.00", "ToTime": "20.00",
      "Person": {"Name": "Ravi", "BDate": "02/09/1990", "BTime": "07.05", )j") + kPlace + "}");
    mdiMother* main = ResultWindow();
    ASSERT_EQ(main->CurrentTopic(), 0);
    const fs::path pdf = app / "Ravi-Muhurtha.PDF";
    dialogs.files.push_back(pdf.string());
    ASSERT_TRUE(main->ExportPDF());
    // The export went through every topic, the analysis last; the cover
    // the user was reading is in front again.
    EXPECT_EQ(main->CurrentTopic(), 0);
    EXPECT_TRUE(main->windowTitle().endsWith("-Muhurtha Score"));

    // The flowed text's column stands in the middle of the sheet: its full
    // lines leave as much on the right as on the left, give or take the
    // ragged end of a line.
    const auto [left, right] = BodyMargins(pdf, 2);
    EXPECT_GT(left, 60);
    EXPECT_NEAR(left, right, 20) << left << " on the left, " << right << " on the right";
}

TEST_F(PdfExport, ThePersonsNameIsOfferedAndACancelOrAnUnwritableFileStartsNothing)
{
    const std::string journey = std::string(R"j("Category": "Journey", "MuhuName": "Setting out on a journey (Yatra)",
      "SearchMode": 2, "MomentDate": "05/11/2024", "MomentTime": "10.30",
      "Person": {"Name": "Ravi", "BDate": "02/09/1990", "BTime": "07.05", )j") + kPlace + "}";
    Search(journey);
    mdiMother* main = ResultWindow();
    PDFExporter().filename("earlier.PDF");
    PageCounter() = 77;

    EXPECT_FALSE(main->ExportPDF());  // cancelled
    ASSERT_EQ(dialogs.asked.size(), 1u);
    EXPECT_EQ(dialogs.asked[0].suggested, "Ravi-Muhurtha.PDF");
    EXPECT_EQ(PDFExporter().filename(), "earlier.PDF");
    EXPECT_TRUE(messages.Messages().empty());

    dialogs.files.push_back((app / "no" / "such" / "Ravi-Muhurtha.PDF").string());
    EXPECT_FALSE(main->ExportPDF());
    ASSERT_EQ(messages.Messages().size(), 1u);
    EXPECT_EQ(messages.Messages()[0].title, "Error Writing File");
    EXPECT_EQ(messages.Messages()[0].text, "Could not write to file. File could be open or set to 'Read Only' attribute.");
    // Neither time did an export begin or walk a topic.
    EXPECT_EQ(PageCounter(), 77);
    EXPECT_EQ(main->CurrentTopic(), 0);
    EXPECT_FALSE(fs::exists(app / "no"));
    EXPECT_TRUE(Left().isEmpty());
    EXPECT_THROW(Search(journey, {"--pdf", (app / "no/such/r.PDF").string()}), std::runtime_error);
}

// An export onto a disk that fills on the way: the box says the disk is
// full, the earlier file is as it was and no work file is left.
TEST_F(PdfExport, AFullDiskKeepsTheEarlierFileAndSaysTheDiskIsFull)
{
    const fs::path small = app / "small";
    fs::create_directories(small);
    if (::mount("tmpfs", small.c_str(), "tmpfs", MS_NOSUID | MS_NODEV, "size=64k") != 0)
        GTEST_SKIP() << "a small file system can't be mounted here: " << std::strerror(errno);
    struct Unmount {
        const fs::path& at;
        ~Unmount() { ::umount2(at.c_str(), MNT_DETACH); }
    } unmount{small};
    const fs::path pdf = small / "Ravi-Muhurtha.PDF";
    std::ofstream(pdf) << "the earlier report";
    {
        std::ofstream filler(small / "filler", std::ios::binary);
        const std::string block(4096, 'x');
        while (filler.write(block.data(), block.size()) && filler.flush()) {}
    }

    Search(std::string(R"j("Category": "Journey", "MuhuName": "Setting out on a journey (Yatra)",
      "SearchMode": 2, "MomentDate": "05/11/2024", "MomentTime": "10.30",
      "Person": {"Name": "Ravi", "BDate": "02/09/1990", "BTime": "07.05", )j") + kPlace + "}");
    mdiMother* main = ResultWindow();
    dialogs.files.push_back(pdf.string());
    EXPECT_FALSE(main->ExportPDF());
    ASSERT_EQ(messages.Messages().size(), 1u);
    EXPECT_EQ(messages.Messages()[0].title, "Error Writing File") << messages.Messages()[0].text;
    EXPECT_EQ(messages.Messages()[0].text, "The PDF file '" + pdf.string() +
                                               "' could not be written: the disk is full (No space left on device). "
                                               "The file that was there is kept as it was.");
    std::ifstream in(pdf);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), "the earlier report");
    QStringList left = QDir(QString::fromStdString(small.string())).entryList(QDir::Files | QDir::Hidden);
    left.sort();
    EXPECT_EQ(left, QStringList({"Ravi-Muhurtha.PDF", "filler"}));
    EXPECT_EQ(main->CurrentTopic(), 0);
}

}  // namespace
}  // namespace ranvel::test
