#include "ranvel/app/frmDaySheet.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>
#include <cstdio>

#include "ranvel/app/appinfo.h"
#include "ranvel/app/formkit.h"
#include "ranvel/app/pagerender.h"
#include "ranvel/app/pagestyle.h"
#include "ranvel/data/datafiles.h"
#include "ranvel/data/messages.h"
#include "ranvel/data/settings_keys.h"
#include "ranvel/data/themes.h"
#include "ranvel/output/clsPrintMaker.h"
#include "ranvel/output/controls.h"
#include "ranvel/platform/gui/dialogs.h"
#include "ranvel/platform/gui/qstr.h"
#include "ranvel/platform/sinks.h"

namespace ranvel {

using page::Style;

namespace {

constexpr int kLeft = 720, kWidth = 10800, kRight = kLeft + kWidth;
// The lowest a row of the tables may reach, above the foot.
constexpr int kBottom = 14800;

// A moment of a limb: its date and the place's clock.
std::string MomentText(const DateTime& m)
{
    char clock[8];
    std::snprintf(clock, sizeof clock, "%02d:%02d", m.Hour(), m.Minute());
    return m.ToDayFirstText() + "  " + clock;
}

}  // namespace

struct frmDayPage::Impl {
    frmDayPage* form;
    std::vector<QLabel*> captions, headings, values, heads, notes;
    std::vector<ShapeControl*> backs, headBacks;
    std::vector<LineControl*> rules;

    QLabel* Make(const QString& name, const std::string& text, int l, int t, int w, int h, int align = 0)
    {
        return TwipLabel(form, name, Q(text), l, t, w, h, align);
    }
    ShapeControl* Box(const QString& name, int l, int t, int w, int h)
    {
        auto* s = new ShapeControl(form);
        s->setObjectName(name);
        s->Filled(true);
        SetTwips(s, l, t, w, h);
        s->lower();
        return s;
    }
    LineControl* Rule(const char* name, int x1, int y1, int x2, int y2)
    {
        LineControl* line = TwipLine(form, name, x1, y1, x2, y2);
        rules.push_back(line);
        return line;
    }
    // A table's head strip with its column titles, and the ground of its
    // rows below it. Columns are {left, width, title}.
    struct Column {
        int left, width;
        const char* title;
    };
    void Table(const QString& name, int x, int y, int width, int rows, int rowHeight,
               std::initializer_list<Column> columns)
    {
        // The ground first, so that the strip and the labels lie on it.
        backs.push_back(Box("shp" + name + "Back", x, y + 300, width, rows * rowHeight + 80));
        headBacks.push_back(Box("shp" + name + "Head", x, y, width, 300));
        for (const Column& c : columns)
            heads.push_back(Make("lbl" + name + "Head" + QString::fromLatin1(c.title).remove(' ').remove('.'),
                                 c.title, c.left, y + 20, c.width, 260));
    }
};

frmDayPage::frmDayPage(const DaySheet& sheet, QWidget* parent)
    : QWidget(parent), d_(std::make_unique<Impl>()), sheet_(sheet)
{
    d_->form = this;
    setObjectName("frmDayPage");
    setFixedSize(kPageWidth / kTwipsPerPixel, kPageHeight / kTwipsPerPixel);
    page::Paper(this);
    Impl& d = *d_;
    const DaySheet& s = sheet_;

    // The head: what the page is, the day and the place, over a rule.
    d.headings.push_back(d.Make("lblDaySheet", "Day Sheet", kLeft, 220, 4000, 440));
    d.headings.push_back(d.Make("lblDayPlace", s.Place, kLeft + 4000, 220, kWidth - 4000, 440, 1));
    d.Rule("linTop", kLeft, 700, kRight, 700);
    d.values.push_back(d.Make("lblDayDate", s.DayName + ", " + s.Date.ToDayFirstText(), kLeft, 800, kWidth, 340));

    // The Sun.
    int y = 1260;
    auto pair = [&](const char* cap, const char* val, const std::string& caption, const std::string& value, int x,
                    int top, int capWidth, int valWidth) {
        d.captions.push_back(d.Make(cap, caption, x, top, capWidth, 280));
        d.values.push_back(d.Make(val, value, x + capWidth, top, valWidth, 280));
    };
    pair("lblSunrise", "lblSunriseVal", "Sunrise", ClockText(s.Sunrise), kLeft, y, 1100, 1200);
    pair("lblSunset", "lblSunsetVal", "Sunset", ClockText(s.Sunset), kLeft + 2600, y, 1000, 1200);
    pair("lblNextSunrise", "lblNextSunriseVal", "Next sunrise", ClockText(s.NextSunrise), kLeft + 5100, y, 1600, 1200);
    pair("lblLunarMonth", "lblLunarMonthVal", "Month", s.LunarMonthName, kLeft + 8100, y, 900, 1800);
    y += 320;
    d.notes.push_back(d.Make("lblSunriseRule", SunriseRule(), kLeft, y, kWidth, 260));
    y += 260;
    const std::string placeRule = SunriseRuleOfPlace(s);
    if (!placeRule.empty()) {
        d.notes.push_back(d.Make("lblSunrisePlaceRule", placeRule, kLeft, y, kWidth, 260));
        y += 260;
    }

    // The limbs: each in force from sunrise to the next, with its limits.
    y += 160;
    d.headings.push_back(d.Make("lblLimbs", "Panchanga", kLeft, y, 6000, 360));
    y += 400;
    const std::pair<const char*, const std::vector<LimbSpan>*> limbs[] = {
        {"Tithi", &s.Tithis}, {"Nakshatra", &s.Nakshatras}, {"Yoga", &s.Yogas}, {"Karana", &s.Karanas}};
    int rows = 0;
    for (const auto& l : limbs) rows += static_cast<int>(l.second->size());
    constexpr int kLimbRow = 270;
    d.Table("Limb", kLeft, y, kWidth, rows, kLimbRow,
            {{kLeft + 180, 1500, "Limb"}, {kLeft + 1700, 3200, "Name"}, {kLeft + 5000, 2800, "From"},
             {kLeft + 7900, 2800, "To"}});
    int row = y + 340;
    int n = 0;
    for (const auto& [title, spans] : limbs) {
        bool first = true;
        for (const LimbSpan& l : *spans) {
            const QString k = QString::number(++n);
            d.captions.push_back(d.Make("lblLimb" + k, first ? title : "", kLeft + 180, row, 1500, kLimbRow));
            d.values.push_back(d.Make("lblLimbName" + k, l.Name, kLeft + 1700, row, 3200, kLimbRow));
            d.values.push_back(d.Make("lblLimbFrom" + k, MomentText(l.Start), kLeft + 5000, row, 2800, kLimbRow));
            d.values.push_back(d.Make("lblLimbTo" + k, MomentText(l.End), kLeft + 7900, row, 2800, kLimbRow));
            first = false;
            row += kLimbRow;
        }
    }
    y = row + 200;

    // The parts of the day to avoid, as the chart reckons them.
    pair("lblRahuKaal", "lblRahuKaalVal", "Rahu Kaal",
         "from " + DivisionText(s.RahuKaalStart) + " for " + DivisionText(s.RahuKaalSpan), kLeft, y, 2200, 8600);
    y += 300;
    std::string evil = "from";
    for (std::size_t i = 0; i < s.EvilMuhurthaStart.size(); ++i)
        evil += (i ? ", " : " ") + DivisionText(s.EvilMuhurthaStart[i]);
    evil += ", each for " + DivisionText(s.EvilMuhurthaLength);
    pair("lblEvilMuhurtha", "lblEvilMuhurthaVal", "Evil Muhurthas", evil, kLeft, y, 2200, 8600);
    y += 300;
    d.notes.push_back(d.Make("lblDivisionRule",
                             "The divisions are the chart's HH.MM readings from sunrise, reckoned as plain numbers "
                             "(a reading such as 08.78 stands as it is).",
                             kLeft, y, kWidth, 260));
    y += 400;

    // Chowgadiya on the left, Hora on the right, their rows as high as the
    // page lets the longer table be.
    const int half = (kWidth - 360) / 2;
    d.headings.push_back(d.Make("lblChowgadiya", "Chowgadiya", kLeft, y, half, 360));
    d.headings.push_back(d.Make("lblHora", "Hora", kLeft + half + 360, y, half, 360));
    y += 400;
    const int partRow = std::clamp((kBottom - (y + 340)) / 24, 180, 250);
    const int hx = kLeft + half + 360;
    d.Table("Chow", kLeft, y, half, static_cast<int>(s.Chowgadiya.size()), partRow,
            {{kLeft + 120, 1200, "Part"}, {kLeft + 1320, 1800, "Name"}, {kLeft + 3120, 900, "From"},
             {kLeft + 4080, 900, "For"}});
    d.Table("Hora", hx, y, half, static_cast<int>(s.Horas.size()), partRow,
            {{hx + 120, 900, "Hora"}, {hx + 1020, 2600, "Lord"}, {hx + 3720, 1000, "From"}});
    row = y + 340;
    for (const DayPart& p : s.Chowgadiya) {
        const QString k = QString::number(p.Number);
        const int ofHalf = (p.Number - 1) % 8 + 1;
        const std::string part = (p.Number <= 8 ? "Day " : "Night ") + std::to_string(ofHalf);
        d.captions.push_back(d.Make("lblChowPart" + k, part, kLeft + 120, row, 1200, partRow));
        d.values.push_back(d.Make("lblChowName" + k, p.Name, kLeft + 1320, row, 1800, partRow));
        d.values.push_back(d.Make("lblChowFrom" + k, DivisionText(p.Start), kLeft + 3120, row, 900, partRow));
        d.values.push_back(d.Make("lblChowFor" + k, DivisionText(p.Span), kLeft + 4080, row, 900, partRow));
        row += partRow;
    }
    row = y + 340;
    for (const DayPart& p : s.Horas) {
        const QString k = QString::number(p.Number);
        d.captions.push_back(d.Make("lblHoraNo" + k, std::to_string(p.Number), hx + 120, row, 900, partRow));
        d.values.push_back(d.Make("lblHoraLord" + k, p.Name, hx + 1020, row, 2600, partRow));
        d.values.push_back(d.Make("lblHoraFrom" + k, DivisionText(p.Start), hx + 3720, row, 1000, partRow));
        row += partRow;
    }

    // The foot: the user's name and address, as on the result pages.
    d.Rule("linFoot", kLeft, 15020, kRight, 15020);
    QLabel* foot = d.Make("lblDispName", ReadIni(keys::DispName) + " - " + ReadIni(keys::DispAdd), kLeft, 15100,
                          kWidth, 320, 2);

    // The looks: the page styles and the active theme's colours.
    for (QLabel* l : d.captions) page::Apply(l, Style::Caption);
    for (QLabel* l : d.headings) page::Apply(l, Style::Heading);
    for (QLabel* l : d.values) page::Apply(l, Style::Value);
    const PageColors& c = ActivePageColors();
    for (QLabel* l : d.notes) {
        QFont f = page::Font(Style::Value);
        f.setItalic(true);
        f.setPointSize(std::max(7, f.pointSize() - 1));
        l->setFont(f);
        page::Paint(l, page::Color(Style::Value));
    }
    for (LineControl* r : d.rules) r->BorderColor(ColorFromSetting(c.TopLineCol));
    d.rules.front()->BorderWidth(2);
    for (ShapeControl* b : d.backs) {
        b->FillColor(ColorFromSetting(c.TableBackCol));
        b->BorderColor(ColorFromSetting(c.TableHeadCol));
    }
    for (ShapeControl* b : d.headBacks) {
        b->FillColor(ColorFromSetting(c.TableHeadCol));
        b->BorderColor(ColorFromSetting(c.TableHeadCol));
    }
    for (QLabel* l : d.heads) {
        l->setFont(page::Font(Style::Caption));
        page::Paint(l, ColorFromSetting(c.TableHeadText));
    }
    QFont small = page::Font(Style::Value);
    small.setPointSize(std::max(7, small.pointSize() - 1));
    foot->setFont(small);
    page::Paint(foot, ColorFromSetting(c.CompanyNameCol));
}

frmDayPage::~frmDayPage() = default;

QLabel* frmDayPage::Label(const QString& name) const { return findChild<QLabel*>(name); }

// ---- the window ----

frmDaySheet::frmDaySheet(QWidget* parent) : QDialog(parent)
{
    setObjectName("frmDaySheet");
    setWindowTitle("Day Sheet");
    scroll_ = new QScrollArea;
    scroll_->setObjectName("scrDayPage");
    scroll_->setAlignment(Qt::AlignHCenter);
    scroll_->setBackgroundRole(QPalette::Dark);

    cmdPrint_ = new QPushButton("&Print...");
    cmdPrint_->setObjectName("cmdPrint");
    cmdPdf_ = new QPushButton("Export P&DF...");
    cmdPdf_->setObjectName("cmdExportPdf");
    auto* close = new QPushButton("Close");
    close->setObjectName("cmdClose");
    for (QPushButton* b : {cmdPrint_, cmdPdf_, close}) b->setAutoDefault(false);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdPrint_);
    buttons->addWidget(cmdPdf_);
    buttons->addStretch(1);
    buttons->addWidget(close);
    auto* column = new QVBoxLayout(this);
    column->addWidget(scroll_, 1);
    column->addLayout(buttons);

    connect(cmdPrint_, &QPushButton::clicked, this, [this] { PrintSheet(); });
    connect(cmdPdf_, &QPushButton::clicked, this, [this] { ExportPdf(); });
    connect(close, &QPushButton::clicked, this, &QDialog::close);

    // The page's width with its scroll bar, within a 1024 x 768 screen.
    const QRect screen = QGuiApplication::primaryScreen() ? QGuiApplication::primaryScreen()->availableGeometry()
                                                           : QRect(0, 0, 1024, 768);
    resize(std::min(frmDayPage::kPageWidth / kTwipsPerPixel + 60, screen.width() - 16),
           std::min(720, screen.height() - 48));
}

frmDaySheet::~frmDaySheet() = default;

void frmDaySheet::ShowSheet(const DaySheet& sheet)
{
    page_ = new frmDayPage(sheet);
    // The scroll area deletes the page it showed.
    scroll_->setWidget(page_);
    setWindowTitle(Q("Day Sheet - " + sheet.Date.ToDayFirstText() + (sheet.Place.empty() ? "" : ", " + sheet.Place)));
}

void frmDaySheet::PrintSheet()
{
    if (!page_) return;
    ui::RunCommand([this] {
        QPrintDialog dialog(&ReportPrinter(), this);
        dialog.setWindowTitle("Print");
        if (dialog.exec() != QDialog::Accepted) return;
        PrintPage();
    });
}

bool frmDaySheet::PrintPage()
{
    if (!page_) return false;
    PageCounter() = 0;
    PrintCancel() = false;
    try {
        QPrinter& device = ReportPrinter();
        UseReportSheet(device);
        PrintSurface printer(device);
        clsPrintMaker(printer).PrintForm(page_);
        printer.EndDoc();
        return true;
    } catch (const std::exception&) {
        MsgBox(Msg(12), MsgButtons::OK, AppTitle(), MsgIcon::Exclamation);
        return false;
    }
}

std::string frmDaySheet::SuggestedPdfName() const
{
    if (!page_) return "DaySheet.PDF";
    std::string date = page_->Sheet().Date.ToDayFirstText();
    std::replace(date.begin(), date.end(), '/', '-');
    return "DaySheet-" + date + ".PDF";
}

void frmDaySheet::ExportPdf()
{
    if (!page_) return;
    const std::string path =
        Dialogs().SaveFile(this, "Save", "Portable Document Format (.PDF)|*.PDF|", ".PDF", SuggestedPdfName());
    if (path.empty()) return;
    std::string error;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const bool written = ExportPagePdf(page_, path, error);
    QApplication::restoreOverrideCursor();
    if (!written) MsgBox(error, MsgButtons::OK, "Error Writing File", MsgIcon::Critical);
}

}  // namespace ranvel
