// The result pages after a real search: the cover shows what the engine
// found (day, lagna span, percent, band) for one person or a couple, and
// the analysis page writes the elements in their order.
#include <QImage>
#include <QLabel>
#include <fstream>
#include <QTextEdit>

#include "app/app_fixture.h"
#include "commands.h"
#include "ranvel/app/frmMuhuCover.h"
#include "ranvel/app/frmMuhuTxt.h"
#include "ranvel/app/mdiMother.h"
#include "ranvel/app/pagestyle.h"
#include "ranvel/data/themes.h"
#include "ranvel/engine/analysis.h"
#include "ranvel/engine/request_state.h"
#include "ranvel/data/settings_keys.h"
#include "ranvel/output/Kundali.h"
#include "ranvel/output/controls.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel::test {
namespace {

RequestPlace Delhi()
{
    RequestPlace p;
    p.Country = "India";
    p.City = "New Delhi";
    p.Lati = "028:36";
    p.Longi = "077:12";
    p.GMT = "+05.30";
    return p;
}

// A journey's moment, checked for one person.
MuhurthaRequest JourneyMoment()
{
    MuhurthaRequest r;
    r.Category = "Journey";
    r.MuhuName = "Setting out on a journey (Yatra)";
    r.SearchMode = 2;
    r.MomentDate = "05/11/2024";
    r.MomentTime = "10.30";
    r.Person = Born("Ravi", 1, "02/09/1990", "07.05", 1);
    return r;
}

class ResultPages : public AppTest {
protected:
    void SetUp() override
    {
        AppTest::SetUp();
        PrepareResultPages();
    }
    void Generate(MuhurthaRequest& r)
    {
        r.Place = Delhi();
        ResetEngine(std::make_unique<clsMuhurtha>());
        r.RunEngine(Engine(), TextDB(), RecosDB());
    }
    QString Text(frmMuhuCover& c, const char* name) { return Child<QLabel>(&c, name)->text(); }
};

TEST_F(ResultPages, AMarriageCoverShowsTheCoupleAndWhatTheEngineFound)
{
    // Both born at New Delhi.
    MuhurthaRequest r = DelhiMarriage("New Delhi", "028:36", "077:12");
    Generate(r);
    clsMuhurtha& e = Engine();

    frmMuhuCover cover;
    cover.Load();
    EXPECT_EQ(Text(cover, "lblName"), "Arjun and Meera");
    EXPECT_EQ(Text(cover, "lblPer1Name"), "Arjun");
    EXPECT_EQ(Text(cover, "lblPer2Name"), "Meera");
    EXPECT_TRUE(Child<QWidget>(&cover, "framGirl")->isVisibleTo(&cover));
    EXPECT_EQ(Text(cover, "lblper2Place"), "Place");
    EXPECT_EQ(Text(cover, "lblPer2NakLord"), "Nakshatra Lord");
    EXPECT_FALSE(Text(cover, "lblPer2NakVal").isEmpty());

    // The page holds what the engine holds.
    clsPlanets& best = *e.BestChart;
    EXPECT_EQ(Text(cover, "lblBMDate").toStdString(), best.ConvertDateToText(e.BestMuhuDate()));
    EXPECT_EQ(Text(cover, "lblBMFrom").toStdString(), e.LagnaStartChart->clsPerson().GetBirthTimeFull());
    EXPECT_EQ(Text(cover, "lblBMTo").toStdString(), e.LagnaEndChart->clsPerson().GetBirthTimeFull());
    EXPECT_EQ(Text(cover, "lblBMScore").toStdString(), vb::CStr(e.BestMuhuPercent()));
    EXPECT_EQ(Text(cover, "lblBMScorePercent"), "Percent");
    EXPECT_EQ(Text(cover, "lblMuhFromVal").toStdString(), best.ConvertDateToText(DateTime::FromParts(2024, 11, 1)));
    EXPECT_EQ(Text(cover, "lblMuhuName"), "Marriage ceremony (Vivaha)");
    // The best chart was copied without the hemisphere letters.
    EXPECT_EQ(Text(cover, "lblMuhLatVal"), "28.36 ");
    EXPECT_EQ(Text(cover, "lblDispName").toStdString().rfind("Tessaly - ", 0), 0u);

    // The chart: the Lagna's sign first (North), each body in its sign.
    Kundali* k = cover.kunMuhu();
    EXPECT_EQ(k->ChartStyle(), Kundali::South);  // the setting's default
    EXPECT_EQ(k->HouseNumber(), best.PrediVarga(0, 1));
    EXPECT_TRUE(k->HouseText(best.PrediVarga(7, 1)).contains("Moon"));
    EXPECT_TRUE(k->HouseText(best.PrediVarga(0, 1)).contains("Asc"));

    // The analysis page speaks of every element the engine reports.
    frmMuhuTxt analysis;
    analysis.Load();
    const QString text = analysis.rtfText()->toPlainText();
    EXPECT_TRUE(text.startsWith("\nMuhurtha - Marriage ceremony (Vivaha)\nResult of the Muhurtha\n"));
    EXPECT_TRUE(text.contains(QString("Score -  %1Percent").arg(QString::fromStdString(vb::CStr(e.BestMuhuPercent())))));
    int at = 0;
    for (const ElementStatement& s : AnalyseElements(e)) {
        const int found = text.indexOf(QString::fromStdString(s.heading), at);
        EXPECT_GE(found, at) << s.element;
        at = found;
    }
}

TEST_F(ResultPages, AMomentShowsOneDayAndAPercentOverAHundredKeepsTheTopBand)
{
    MuhurthaRequest r = JourneyMoment();
    Generate(r);
    clsMuhurtha& e = Engine();

    frmMuhuCover cover;
    cover.Load();
    EXPECT_EQ(Text(cover, "lblName"), "Ravi");
    EXPECT_EQ(Text(cover, "lblPer1Name"), "Ravi");
    EXPECT_FALSE(Child<QWidget>(&cover, "framGirl")->isVisibleTo(&cover));
    EXPECT_EQ(Text(cover, "lblMuhFromVal"), Text(cover, "lblMuhToVal"));
    EXPECT_EQ(Text(cover, "lblBMFrom").toStdString(), e.LagnaStartChart->clsPerson().GetBirthTimeFull());

    // Fewer elements to reach than the moment scored: the percent goes
    // over a hundred and is shown so, with the words of the top band.
    e.MuhuElements = "D";
    ASSERT_GT(e.BestMuhuPercent(), 100);
    cover.Load();
    EXPECT_EQ(Text(cover, "lblBMScore").toStdString(), vb::CStr(e.BestMuhuPercent()));
    EXPECT_EQ(Text(cover, "lblBMBand").toStdString(), e.MuhuScoreText(100).ToTextOrEmpty());
}

TEST_F(ResultPages, TheBestMuhurthaIsWrittenAsValuesAndTheFootInOneColourAsPrinted)
{
    // Each style in a colour of its own, so that a label in another shows.
    PageColors c;
    c.HeadingCol = 0x0000AA;
    c.SubHeadCol = 0x00AA00;
    c.NormTextCol = 0xAA0000;
    c.CompanyNameCol = 0x123456;
    c.CompanyAddressCol = 0x654321;
    ActivePageColors() = c;
    MuhurthaRequest r = JourneyMoment();
    Generate(r);
    frmMuhuCover cover;
    cover.Load();

    int values = 0;
    for (QLabel* l : cover.findChildren<QLabel*>()) {
        const QString name = l->objectName();
        if (!name.startsWith("lblBM") && !name.endsWith("Val")) continue;
        ++values;
        EXPECT_EQ(l->font(), page::Font(page::Style::Value)) << name.toStdString();
        EXPECT_EQ(l->palette().color(QPalette::WindowText), ColorFromSetting(c.NormTextCol)) << name.toStdString();
    }
    EXPECT_EQ(values, 14 + 5 + 2 * 14);  // the best Muhurtha, the request, both persons' tables

    // Your name and address are one label in the name's colour, the one
    // colour that printing and export copy for it.
    QLabel* foot = Child<QLabel>(&cover, "lblDispName");
    EXPECT_EQ(foot->text().toStdString(), ReadIni(keys::DispName) + " - " + ReadIni(keys::DispAdd));
    EXPECT_EQ(foot->palette().color(QPalette::WindowText), ColorFromSetting(c.CompanyNameCol));
}

TEST_F(ResultPages, TheMainWindowShowsBothPagesAfterAGeneration)
{
    MuhurthaRequest r = JourneyMoment();
    Generate(r);
    auto* main = new mdiMother;
    main->OpenResultPages();
    ASSERT_EQ(main->TopicCount(), 2);
    auto* cover = main->findChild<frmMuhuCover*>();
    ASSERT_NE(cover, nullptr);
    EXPECT_EQ(Child<QLabel>(cover, "lblName")->text(), "Ravi");
    EXPECT_EQ(Child<QLabel>(cover, "lblPageNo")->text(), "1");
    main->SelectTopic(1);
    auto* analysis = main->findChild<frmMuhuTxt*>();
    ASSERT_NE(analysis, nullptr);
    EXPECT_FALSE(analysis->rtfText()->toPlainText().isEmpty());
    EXPECT_EQ(main->windowTitle(), "Ranvel-Muhurtha Analysis");
}

TEST_F(ResultPages, TheCommandLineDrawsTheCoverIntoAPicture)
{
    const std::string request = (app / "request.json").string();
    std::ofstream(request) << R"json({"Category": "Journey", "MuhuName": "Setting out on a journey (Yatra)",
      "SearchMode": 2, "MomentDate": "05/11/2024", "MomentTime": "10.30",
      "Place": {"Country": "India", "City": "New Delhi", "Lati": "028:36", "Longi": "077:12", "GMT": "+05.30"},
      "Person": {"Name": "Ravi", "BDate": "02/09/1990", "BTime": "07.05", "Lati": "028:36", "Longi": "077:12", "GMT": "+05.30"}})json";
    const std::string png = (app / "cover.png").string();
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(cli::CmdMuhurtha(cli::Args({"--request", request, "--png", png}, {"json"})), 0);
    ::testing::internal::GetCapturedStdout();
    QImage picture(QString::fromStdString(png));
    ASSERT_FALSE(picture.isNull());
    // Letter paper at twice the screen's size.
    EXPECT_EQ(picture.size(), QSize(2 * 816, 2 * 1056));
    // Something is drawn on it: the page is not blank paper.
    long inked = 0;
    for (int y = 0; y < picture.height(); y += 4)
        for (int x = 0; x < picture.width(); x += 4) inked += qGray(picture.pixel(x, y)) < 128;
    EXPECT_GT(inked, 2000);

    ::testing::internal::CaptureStdout();
    EXPECT_THROW(cli::CmdMuhurtha(cli::Args({"--request", request, "--png", (app / "no/such/folder/c.png").string()},
                                            {"json"})),
                 std::runtime_error);
    ::testing::internal::GetCapturedStdout();
}

// The cover says which sunrise the day's times were found by only when the
// astronomical one was chosen.
TEST_F(ResultPages, TheCoverNamesTheAstronomicalSunriseOnlyWhenChosen)
{
    MuhurthaRequest r = JourneyMoment();
    Generate(r);
    {
        frmMuhuCover cover;
        cover.Load();
        EXPECT_EQ(Child<QLabel>(&cover, "lblSunriseRule")->text(), "");
    }
    settings.Set("Settings", "AstroSunrise", "1");
    Generate(r);
    frmMuhuCover cover;
    cover.Load();
    EXPECT_EQ(Child<QLabel>(&cover, "lblSunriseRule")->text(), "Astronomical sunrise (true horizon)");
}

}  // namespace
}  // namespace ranvel::test
