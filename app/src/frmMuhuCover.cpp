#include "ranvel/app/frmMuhuCover.h"

#include <QLabel>
#include <QPainter>

#include "ranvel/app/pagestyle.h"
#include "ranvel/chart/ephemeris.h"
#include "ranvel/data/datafiles.h"
#include "ranvel/data/settings_keys.h"
#include "ranvel/data/themes.h"
#include "ranvel/engine/request.h"
#include "ranvel/engine/request_state.h"
#include "ranvel/output/Kundali.h"
#include "ranvel/output/chartcolors.h"
#include "ranvel/output/controls.h"
#include "ranvel/platform/gui/qstr.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

using page::Style;

namespace {

// The rows of a person's block: the caption's name and head, the value's
// name. The first person's labels are lblPer1..., the second's lblPer2...
// (its place caption written lblper2Place, as it always was).
struct PersonRow {
    const char* caption;  // after "lblPer1" / "lblPer2"
    const char* head;     // of the caption's text
    const char* value;    // after "lblPer1" / "lblPer2"
};
const PersonRow kPersonRows[] = {
    {"Place", "Place", "PlaceVal"},       {"Date", "Date", "DateVal"},
    {"Day", "Day", "DayVal"},             {"Time", "Time", "TimeVal"},
    {"Longitude", "Long", "LongVal"},     {"Latitude", "Lat", "LatVal"},
    {"Lagna", "Lagna", "LagnaVal"},       {"Rashi", "Rashi", "RashiVal"},
    {"Nak", "Nak", "NakVal"},             {"Tithi", "Tithi", "TithiVal"},
    {"Yoga", "Yoga", "YogaVal"},          {"Month", "HinduMonth", "HMonthVal"},
    {"NakLord", "Nakl", "NakLordVal"},    {"RashiLord", "Rashil", "RashiLordVal"},
};

// The best Muhurtha's rows: caption label (its own head), value label.
const std::pair<const char*, const char*> kBestRows[] = {
    {"lblLagna", "lblBMLagna"}, {"lblTithi", "lblBMTithi"}, {"lblDay", "lblBMDay"},
    {"lblRashi", "lblBMRashi"}, {"lblNak", "lblBMNak"},     {"lblYoga", "lblBMYog"},
    {"lblKaran", "lblBMKaran"}, {"lblHinduMonth", "lblBMMonth"},
};

// The captions that take the text of their own name's head.
const char* const kGenCaptions[] = {"Lat", "Long", "Date", "From", "To", "Lagna", "Tithi",
                                    "Day", "Rashi", "Nak", "Yoga", "Karan", "HinduMonth"};

constexpr int kLeft = 720, kWidth = 10800, kRow = 300;

std::string PersonLabel(int who, const char* rest)
{
    // The second person's place caption keeps its old spelling.
    if (who == 2 && std::string(rest) == "Place") return "lblper2Place";
    return "lblPer" + std::to_string(who) + rest;
}

}  // namespace

struct frmMuhuCover::Impl {
    frmMuhuCover* form;
    Kundali* kunMuhu = nullptr;
    QWidget* framGirl = nullptr;
    std::shared_ptr<clsPlanets> BestChart;  // held while the page is open
    std::vector<QLabel*> captions, headings, values;
    std::vector<ShapeControl*> tableBacks, tableHeads;
    LineControl* linTop = nullptr;
    LineControl* linFoot = nullptr;
    ShapeControl* shpLogo = nullptr;
    ShapeControl* shpFrontLogo = nullptr;

    QLabel* Make(QWidget* parent, const std::string& name, int l, int t, int w, int h, int align = 0)
    {
        return TwipLabel(parent, Q(name), QString(), l, t, w, h, align);
    }
    ShapeControl* Box(QWidget* parent, const char* name, int l, int t, int w, int h, bool filled = true)
    {
        auto* s = new ShapeControl(parent);
        s->setObjectName(name);
        s->Filled(filled);
        SetTwips(s, l, t, w, h);
        return s;
    }
    LineControl* Rule(const char* name, int x1, int y1, int x2, int y2)
    {
        return TwipLine(form, name, x1, y1, x2, y2);
    }
    void PersonBlock(QWidget* parent, int who, int x, int y, int width);
    // The header strip and the ground of a person's table, under its labels.
    void PersonTable(QWidget* parent, int who, int x, int y, int width)
    {
        const std::string n = std::to_string(who);
        ShapeControl* head = Box(parent, ("shpPer" + n + "Head").c_str(), x, y, width, 380);
        ShapeControl* back = Box(parent, ("shpPer" + n + "Back").c_str(), x, y + 380, width, 14 * kRow + 80);
        back->lower();
        head->lower();
        tableHeads.push_back(head);
        tableBacks.push_back(back);
    }
    // Makes or drops the second person's table.
    void SecondTable(bool wanted)
    {
        auto* head = framGirl->findChild<ShapeControl*>("shpPer2Head");
        if (wanted == (head != nullptr)) return;
        if (wanted) {
            PersonTable(framGirl, 2, 0, 0, 5220);
            return;
        }
        auto* back = framGirl->findChild<ShapeControl*>("shpPer2Back");
        std::erase(tableHeads, head);
        std::erase(tableBacks, back);
        delete head;
        delete back;
    }
    void FillPerson(int who, clsPlanets& chart);
};

void frmMuhuCover::Impl::PersonBlock(QWidget* parent, int who, int x, int y, int width)
{
    // The second person's table is drawn only for a marriage (Load): the
    // export walks hidden controls too, and would draw it empty.
    if (who == 1) PersonTable(parent, 1, x, y, width);
    Make(parent, "lblPer" + std::to_string(who) + "Name", x + 180, y + 50, width - 360, 300);
    int row = y + 420;
    for (const PersonRow& r : kPersonRows) {
        QLabel* c = Make(parent, PersonLabel(who, r.caption), x + 180, row, 1900, kRow);
        c->setProperty("head", r.head);
        captions.push_back(c);
        values.push_back(Make(parent, PersonLabel(who, r.value), x + 2080, row, width - 2200, kRow));
        row += kRow;
    }
}

frmMuhuCover::frmMuhuCover(QWidget* parent) : QWidget(parent), d_(std::make_unique<Impl>())
{
    d_->form = this;
    setObjectName("frmMuhuCover");
    setFixedSize(kPageWidth / kTwipsPerPixel, kPageHeight / kTwipsPerPixel);
    page::Paper(this);

    // The top: a rule with the mark in a circle on it, the page number, and
    // the name of the person or couple.
    d_->linTop = d_->Rule("linTop", kLeft, 700, kLeft + kWidth, 700);
    d_->shpLogo = d_->Box(this, "shpLogo", 5560, 140, 1120, 1120);
    d_->shpLogo->Shape(ShapeControl::Circle);
    QLabel* symbol = d_->Make(this, "lblSymbol", 5560, 200, 1120, 1000, 2);
    symbol->setText(QString::fromUtf8("\u00B2"));
    symbol->setAlignment(Qt::AlignCenter);
    d_->Make(this, "lblPageNo", 10320, 260, 1200, 300, 1);
    // Left of the mark: which sunrise the times of the day were found by,
    // when the user chose the astronomical one (empty otherwise).
    d_->Make(this, "lblSunriseRule", kLeft, 300, 4700, 300);
    d_->Make(this, "lblName", kLeft, 1340, kWidth, 560, 2);

    d_->shpFrontLogo = d_->Box(this, "shpFrontLogo", kLeft, 2000, kWidth, 560);
    d_->Make(this, "lblFrontLogo", kLeft, 2060, kWidth, 460, 2);

    // The request.
    d_->headings.push_back(d_->Make(this, "lblMuhuDet", kLeft, 2760, 6000, 380));
    d_->headings.push_back(d_->Make(this, "lblMuhuName", kLeft, 3140, kWidth, 420));
    d_->tableBacks.push_back(d_->Box(this, "shpMuhuBack", kLeft, 3620, kWidth, 3 * kRow + 120));
    auto pair = [&](const char* cap, const char* val, int x, int y, int valueWidth) {
        d_->captions.push_back(d_->Make(this, cap, x, y, 1300, kRow));
        d_->values.push_back(d_->Make(this, val, x + 1300, y, valueWidth, kRow));
    };
    pair("lblMuhFrom", "lblMuhFromVal", 900, 3680, 3900);
    pair("lblMuhTo", "lblMuhToVal", 6300, 3680, 3900);
    pair("lblBPlace", "lblMuhPlaceVal", 900, 3680 + kRow, 3900);
    pair("lblLat", "lblMuhLatVal", 6300, 3680 + kRow, 3900);
    pair("lblLong", "lblMuhLongVal", 6300, 3680 + 2 * kRow, 3900);

    // The person, and the second person of a marriage in a frame of its own.
    d_->PersonBlock(this, 1, kLeft, 4860, 5220);
    d_->framGirl = new QWidget(this);
    d_->framGirl->setObjectName("framGirl");
    d_->framGirl->setProperty("TypeName", "Frame");
    SetTwips(d_->framGirl, 6300, 4860, 5220, 14 * kRow + 500);
    d_->PersonBlock(d_->framGirl, 2, 0, 0, 5220);
    d_->framGirl->hide();

    // The best Muhurtha: its day and the lagna's span, its details, its
    // chart, and the score.
    const int best = 9720;
    d_->headings.push_back(d_->Make(this, "lblBestMuhurtha", kLeft, best, 6200, 400));
    pair("lblDate", "lblBMDate", kLeft, best + 480, 4800);
    pair("lblFrom", "lblBMFrom", kLeft, best + 880, 1700);
    pair("lblTo", "lblBMTo", kLeft + 3000, best + 880, 1700);
    d_->tableBacks.push_back(d_->Box(this, "shpBMBack", kLeft, best + 1380, 6200, 8 * kRow + 120));
    int row = best + 1440;
    for (const auto& [cap, val] : kBestRows) {
        d_->captions.push_back(d_->Make(this, cap, 900, row, 1900, kRow));
        d_->values.push_back(d_->Make(this, val, 2800, row, 4000, kRow));
        row += kRow;
    }
    d_->kunMuhu = new Kundali(this);
    d_->kunMuhu->setObjectName("kunMuhu");
    SetTwips(d_->kunMuhu, 7120, best, 4400, 4400);

    // The score: its caption, the percent and the word for it, on one line,
    // and the band's words below.
    d_->captions.push_back(d_->Make(this, "lblMuhScore", kLeft, best + 4080, 1500, 400));
    d_->values.push_back(d_->Make(this, "lblBMScore", kLeft + 1300, best + 4080, 1000, 400, 1));
    d_->values.push_back(d_->Make(this, "lblBMScorePercent", kLeft + 2400, best + 4080, 2600, 400));
    QLabel* band = d_->Make(this, "lblBMBand", kLeft, best + 4620, kWidth, 560);
    band->setProperty("band", true);
    d_->values.push_back(band);

    // The foot: the user's name and address.
    d_->linFoot = d_->Rule("linFoot", kLeft, 15020, kLeft + kWidth, 15020);
    d_->Make(this, "lblDispName", kLeft, 15100, kWidth, 320, 2);
    // Below it, only when the ephemeris's data files were not found: that
    // the positions came from the analytical ephemeris (empty otherwise, so
    // that the usual report is printed and exported as it always was).
    d_->Make(this, "lblEphemeris", kLeft, 15420, kWidth, 300, 2);
}

frmMuhuCover::~frmMuhuCover() = default;

Kundali* frmMuhuCover::kunMuhu() const { return d_->kunMuhu; }

QLabel* frmMuhuCover::Label(const char* name) const { return findChild<QLabel*>(name); }

void frmMuhuCover::Load()
{
    clsMuhurtha& engine = Engine();
    const bool marriage = engine.MuhuCategory() == "MARRIAGE";
    d_->framGirl->setVisible(marriage);
    d_->SecondTable(marriage);
    FillValues();
    SetFonts();
    SetCaptions();
    DrawBestChart();
}

void frmMuhuCover::Impl::FillPerson(int who, clsPlanets& c)
{
    auto set = [&](const char* rest, const std::string& text) {
        if (QLabel* l = form->findChild<QLabel*>(Q(PersonLabel(who, rest)))) l->setText(Q(text));
    };
    clsPerson& p = c.clsPerson();
    const DateTime date = p.GetBirthDate();
    int day = p.WeekDayOfBirth();
    Variant nak(c.Nakshatra());
    Variant tithi(c.Tithi());
    set("PlaceVal", p.GetBirthPlace());
    set("DateVal", c.ConvertDateToText(date));
    set("DayVal", c.GetDayName(day));
    set("TimeVal", p.GetBirthTimeFull());
    set("LongVal", p.GetLongitudeFull());
    set("LatVal", p.GetLatitudeFull());
    set("LagnaVal", c.PlanetRashiName(0));
    set("RashiVal", c.RashiName());
    set("NakVal", c.GetNakshatraName(nak));
    set("TithiVal", c.GetTithiName(tithi));
    set("YogaVal", c.YogaName());
    set("HMonthVal", c.GetVikramiMonth(clsPlanets::VikramiMonth(c.PlanetLongi(1), date)));
    set("NakLordVal", c.GetNakLordName(c.Nakshatra()));
    set("RashiLordVal", c.PlanetNameFull(clsPlanets::GetRashiLordNum(c.RashiNum())));
}

void frmMuhuCover::FillValues()
{
    clsMuhurtha& engine = Engine();
    d_->BestChart = engine.BestChart;
    clsPlanets& best = *d_->BestChart;
    best.setTextDB(engine.MuhuChart->GetTxtDB(), RecosDB());
    auto set = [&](const char* name, const std::string& text) { Label(name)->setText(Q(text)); };
    set("lblMuhFromVal", best.ConvertDateToText(engine.StartDate));
    set("lblMuhToVal", best.ConvertDateToText(engine.EndDate));
    clsPerson& place = best.clsPerson();
    set("lblMuhPlaceVal", place.GetBirthPlace());
    set("lblMuhLongVal", place.LongDeg() + "." + place.LongMT() + " " + place.TextEW());
    set("lblMuhLatVal", place.LatDeg() + "." + place.LatMT() + " " + place.TextNS());

    if (engine.MuhuCategory() == "MARRIAGE") {
        d_->FillPerson(1, *BoyChart());
        d_->FillPerson(2, *GirlChart());
        set("lblName", BoyChart()->clsPerson().Name() + " and " + GirlChart()->clsPerson().Name());
        set("lblPer1Name", BoyChart()->clsPerson().Name());
        set("lblPer2Name", GirlChart()->clsPerson().Name());
    } else {
        // A page built without a generation finds no person: an empty one
        // stands in.
        if (!PersonChart()) PersonChart() = std::make_shared<clsPlanets>();
        d_->FillPerson(1, *PersonChart());
        set("lblName", PersonChart()->clsPerson().Name());
        set("lblPer1Name", PersonChart()->clsPerson().Name());
    }

    clsPerson& moment = best.clsPerson();
    const DateTime date = moment.GetBirthDate();
    int day = moment.WeekDayOfBirth();
    Variant nak(best.Nakshatra());
    Variant tithi(best.Tithi());
    set("lblBMFrom", engine.LagnaStartChart->clsPerson().GetBirthTimeFull());
    set("lblBMTo", engine.LagnaEndChart->clsPerson().GetBirthTimeFull());
    set("lblBMDate", best.ConvertDateToText(date));
    set("lblBMLagna", best.PlanetRashiName(0));
    set("lblBMTithi", best.GetTithiName(tithi));
    set("lblBMDay", best.GetDayName(day));
    set("lblBMRashi", best.RashiName());
    set("lblBMNak", best.GetNakshatraName(nak));
    set("lblBMYog", best.YogaName());
    set("lblBMKaran", best.KaranName());
    set("lblBMMonth", best.GetVikramiMonth(clsPlanets::VikramiMonth(best.PlanetLongi(1), date)));
    set("lblBMScore", vb::CStr(engine.BestMuhuPercent()));
    set("lblBMScorePercent", best.GetHeadValue(1, "Percent", "Gen").ToTextOrEmpty());
    set("lblBMBand", engine.MuhuScoreText(engine.ScoreBand()).ToTextOrEmpty());
    set("lblDispName", ReadIni(keys::DispName) + " - " + ReadIni(keys::DispAdd));
    set("lblFrontLogo", best.GetHeadValue(1, "Muhurtha", "Muhurtha").ToTextOrEmpty());
    set("lblSunriseRule", clsPlanets::AstronomicalSunrise() ? "Astronomical sunrise (true horizon)"
                                                           : "");
    const EphemerisInfo& ephemeris = EphemerisInUse();
    set("lblEphemeris", ephemeris.files ? "" : EphemerisSentence(ephemeris));
}

void frmMuhuCover::SetFonts()
{
    for (QLabel* l : d_->captions) page::Apply(l, Style::Caption);
    for (QLabel* l : d_->headings) page::Apply(l, Style::Heading);
    // The values: every ...Val label and the whole best Muhurtha block,
    // its span and score included.
    for (QLabel* l : d_->values) page::Apply(l, Style::Value);
    Label("lblSymbol")->setFont(QFont("Ranvel Astro", 36));

    // The page's own colours, from the active theme.
    const PageColors& c = ActivePageColors();
    d_->linTop->BorderColor(ColorFromSetting(c.TopLineCol));
    d_->linTop->BorderWidth(2);
    d_->linFoot->BorderColor(ColorFromSetting(c.TopLineCol));
    d_->shpLogo->BorderColor(ColorFromSetting(c.CircleBorderCol));
    d_->shpLogo->BorderWidth(2);
    d_->shpLogo->FillColor(ColorFromSetting(c.TopLogoBackCol));
    page::Paint(Label("lblSymbol"), ColorFromSetting(c.TopLogoCol));
    QFont name = page::Font(Style::Heading);
    name.setPointSize(name.pointSize() + 4);
    Label("lblName")->setFont(name);
    page::Paint(Label("lblName"), ColorFromSetting(c.PerNameCol));
    d_->shpFrontLogo->FillColor(ColorFromSetting(c.FrontLogoBackCol));
    d_->shpFrontLogo->BorderColor(ColorFromSetting(c.FrontLogoBackCol));
    QFont front = page::Font(Style::Heading);
    front.setPointSize(front.pointSize() + 2);
    Label("lblFrontLogo")->setFont(front);
    page::Paint(Label("lblFrontLogo"), ColorFromSetting(c.FrontLogoCol));
    for (ShapeControl* s : d_->tableBacks) {
        s->FillColor(ColorFromSetting(c.TableBackCol));
        s->BorderColor(ColorFromSetting(c.TableHeadCol));
    }
    for (ShapeControl* s : d_->tableHeads) {
        s->FillColor(ColorFromSetting(c.TableHeadCol));
        s->BorderColor(ColorFromSetting(c.TableHeadCol));
    }
    for (const char* n : {"lblPer1Name", "lblPer2Name"}) {
        QFont f = page::Font(Style::Caption);
        f.setBold(true);
        Label(n)->setFont(f);
        page::Paint(Label(n), ColorFromSetting(c.TableHeadText));
    }
    QFont small = page::Font(Style::Value);
    // Your name and address are one label, and printing and export give a
    // label one colour: the whole line takes the name's colour, so that
    // paper and PDF show what the screen shows.
    Label("lblDispName")->setFont(small);
    QFont rule = small;
    rule.setItalic(true);
    Label("lblSunriseRule")->setFont(rule);
    page::Paint(Label("lblSunriseRule"), page::Color(Style::Value));
    Label("lblEphemeris")->setFont(rule);
    page::Paint(Label("lblEphemeris"), page::Color(Style::Value));
    page::Paint(Label("lblDispName"), ColorFromSetting(c.CompanyNameCol));
    Label("lblPageNo")->setFont(small);
    page::Paint(Label("lblPageNo"), ColorFromSetting(c.NormTextCol));
}

void frmMuhuCover::SetCaptions()
{
    clsMuhurtha& engine = Engine();
    clsPlanets& c = *d_->BestChart;
    auto set = [&](const char* name, const Variant& text) { Label(name)->setText(Q(text.ToTextOrEmpty())); };
    set("lblMuhuDet", c.GetTextBetween("cnvt", "MuhuDet", "Muhurtha"));
    set("lblMuhuName", c.GetTextBetween("muhu", engine.MuhuCode, "Muhuname"));
    set("lblMuhFrom", c.GetTextBetween("cnvt", "From", "Gen"));
    set("lblMuhTo", c.GetTextBetween("cnvt", "To", "Gen"));
    set("lblBestMuhurtha", c.GetTextBetween("cnvt", "BestMuhurtha", "Muhurtha"));
    set("lblMuhScore", c.GetHeadValue(1, "Score", "Gen"));
    Label("lblBPlace")->setText(Q(c.GetGenText("OnlyPlace")));
    for (const char* head : kGenCaptions) Label(("lbl" + std::string(head)).c_str())->setText(Q(c.GetGenText(head)));
    const bool marriage = engine.MuhuCategory() == "MARRIAGE";
    for (int who = 1; who <= (marriage ? 2 : 1); ++who)
        for (const PersonRow& r : kPersonRows)
            findChild<QLabel*>(Q(PersonLabel(who, r.caption)))->setText(Q(c.GetGenText(r.head)));
}

void frmMuhuCover::DrawBestChart()
{
    clsPlanets& c = *d_->BestChart;
    Kundali* k = d_->kunMuhu;
    k->Clear();
    k->ChartStyle(vb::CLng(vb::Val(ReadSetting(keys::KundStyle))));
    ApplyChartColors(*k);
    QFont f("Arial");
    f.setPointSize(LangSettings().KundliSize > 0 ? LangSettings().KundliSize : 9);
    k->PlanetFont(f);
    k->HouseFont(f);
    k->HouseNumber(static_cast<std::int16_t>(c.PrediVarga(0, 1)));
    // The Lagna and the twelve bodies, each in its sign. A box that already
    // holds a name gets the next behind a blank, which PlanetPlace does of
    // itself, so the first name of a sign needs nothing of its own.
    for (int i = 0; i <= 12; ++i)
        k->PlanetPlace(static_cast<std::int16_t>(c.PrediVarga(i, 1)), Q(c.PlanetName(i)));
}

}  // namespace ranvel
