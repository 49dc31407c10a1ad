#include "ranvel/app/frmColorEnv.h"

#include <QComboBox>
#include <QGroupBox>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QSpinBox>
#include <cmath>
#include <iterator>
#include <utility>
#include <vector>

#include "ranvel/app/Swatch.h"
#include "ranvel/app/appinfo.h"
#include "ranvel/app/formkit.h"
#include "ranvel/data/datafiles.h"
#include "ranvel/data/settings_keys.h"
#include "ranvel/output/Kundali.h"
#include "ranvel/output/chartcolors.h"
#include "ranvel/output/controls.h"
#include "ranvel/platform/gui/qstr.h"
#include "ranvel/platform/sinks.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

using ui::Box;

namespace {

struct ColourRow {
    const char* key;
    const char* words;
};

// The page's colours from its top to its foot; a small gap parts the
// groups (the top, the names, the text, the tables, the foot). The foot's
// one line, your name and address, is a single label, and printing and
// export give a label one colour: the page shows it all in the name's
// colour, so the address's colour has no swatch of its own. The themes and
// GENDAT.INI keep its value, carried through unchanged.
const ColourRow kPageRows[] = {
    {"TopLineCol", "Line at the page top"},
    {"CircleBorderCol", "Logo circle border"},
    {"TopLogoBackCol", "Top logo background"},
    {"TopLogoCol", "Top logo"},
    {"PerNameCol", "Person's name"},
    {"FrontLogoBackCol", "Front logo background"},
    {"FrontLogoCol", "Front logo text"},
    {"HeadingCol", "Headings"},
    {"SubHeadCol", "Sub-headings"},
    {"NormTextCol", "Normal text"},
    {"TableHeadCol", "Table header background"},
    {"TableHeadText", "Table header text"},
    {"TableBackCol", "Table background"},
    {"CompanyNameCol", "Your name and address"},
};
constexpr int kGroupEnds[] = {3, 6, 9, 12};

const ColourRow kChartRows[] = {
    {"KunBackColor", "Background"},   {"KunLineColor", "Lines"},     {"KunBorderColor", "Border"},
    {"KunNumColor", "House numbers"}, {"KunTxtColor", "Planets"},
};

// A result page in small: where each page colour shows, named by its role.
class PagePreview : public QWidget {
public:
    explicit PagePreview(QWidget* parent) : QWidget(parent)
    {
        setAttribute(Qt::WA_OpaquePaintEvent);
        setAccessibleName("Page sample");
        foot_ = Q(ReadIni(keys::DispName) + " - " + ReadIni(keys::DispAdd));
    }
    void SetColors(const PageColors& c)
    {
        c_ = c;
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        auto col = [](long v) { return ColorFromSetting(v); };
        const double w = width(), h = height();
        p.fillRect(rect(), Qt::white);  // the paper
        p.setPen(palette().color(QPalette::Dark));
        p.drawRect(QRectF(0.5, 0.5, w - 1, h - 1));

        const QFont base = font();
        auto face = [&](double grow, bool bold) {
            QFont f = base;
            f.setPointSizeF(base.pointSizeF() + grow);
            f.setBold(bold);
            return f;
        };

        // The top: the line, the logo in its circle, the name, the front logo.
        p.setPen(QPen(col(c_.TopLineCol), 2));
        p.drawLine(QPointF(10, 8), QPointF(w - 10, 8));
        const QRectF circle(12, 16, 34, 34);
        p.setPen(QPen(col(c_.CircleBorderCol), 2));
        p.setBrush(col(c_.TopLogoBackCol));
        p.drawEllipse(circle);
        QPolygonF star;
        for (int i = 0; i < 16; ++i) {
            const double r = i % 2 ? 4.5 : 11.0, a = i * 3.14159265358979 / 8;
            star << circle.center() + QPointF(r * std::sin(a), -r * std::cos(a));
        }
        p.setPen(Qt::NoPen);
        p.setBrush(col(c_.TopLogoCol));
        p.drawPolygon(star);
        p.setBrush(Qt::NoBrush);

        p.setFont(face(3, true));
        p.setPen(col(c_.PerNameCol));
        p.drawText(QRectF(54, 16, w - 200, 34), Qt::AlignLeft | Qt::AlignVCenter, "Person's Name");
        const QRectF front(w - 132, 19, 120, 28);
        p.fillRect(front, col(c_.FrontLogoBackCol));
        p.setFont(face(1, true));
        p.setPen(col(c_.FrontLogoCol));
        p.drawText(front, Qt::AlignCenter, "Muhurtha");

        // The text, and a table beside it.
        const double split = w * 0.5;
        p.setFont(face(2, true));
        p.setPen(col(c_.HeadingCol));
        p.drawText(QRectF(12, 54, split - 20, 22), Qt::AlignLeft | Qt::AlignVCenter, "Heading");
        p.setFont(face(0.5, true));
        p.setPen(col(c_.SubHeadCol));
        p.drawText(QRectF(12, 76, split - 20, 18), Qt::AlignLeft | Qt::AlignVCenter, "Sub-heading");
        p.setFont(base);
        p.setPen(col(c_.NormTextCol));
        p.drawText(QRectF(12, 95, split - 20, 18), Qt::AlignLeft | Qt::AlignVCenter, "Normal text of the page");

        const QRectF head(split, 56, w - split - 12, 20), body(split, 76, w - split - 12, 38);
        p.fillRect(head, col(c_.TableHeadCol));
        p.fillRect(body, col(c_.TableBackCol));
        p.setPen(col(c_.TableHeadCol));
        p.drawRect(head.united(body));
        p.setFont(face(0, true));
        p.setPen(col(c_.TableHeadText));
        p.drawText(head.adjusted(6, 0, -6, 0), Qt::AlignLeft | Qt::AlignVCenter, "Table header");
        p.setFont(base);
        p.setPen(col(c_.NormTextCol));
        p.drawText(body.adjusted(6, 2, -6, 0), Qt::AlignLeft | Qt::AlignTop, "Table text\nTable text");

        // The foot: the line again, the user's name and address in one
        // line and one colour, as the Score page has them.
        p.setPen(QPen(col(c_.TopLineCol), 1));
        p.drawLine(QPointF(10, h - 26), QPointF(w - 10, h - 26));
        const QFont small = face(-1, false);
        p.setFont(small);
        p.setPen(col(c_.CompanyNameCol));
        const QRectF foot(12, h - 22, w - 24, 18);
        p.drawText(foot, Qt::AlignHCenter | Qt::AlignVCenter,
                   QFontMetricsF(small).elidedText(foot_, Qt::ElideRight, foot.width()));
    }

private:
    PageColors c_;
    QString foot_;
};

}  // namespace

struct frmColorEnv::Impl {
    frmColorEnv* form = nullptr;
    std::vector<std::pair<std::string, Swatch*>> page, chart;
    QSpinBox* lineWidth = nullptr;
    QSpinBox* borderWidth = nullptr;
    Kundali* demo = nullptr;
    PagePreview* preview = nullptr;
    QComboBox* themes = nullptr;
    QGroupBox* framTheme = nullptr;
    QLabel* lblStatus = nullptr;
    // The address's colour, which has no swatch: kept as the active colours
    // or the theme last selected hold it.
    long address = 0;

    // A command on the store; a fault in it ends the command with its text.
    template <typename F>
    void Run(F&& command)
    {
        ui::RunCommand(command);
    }

    void Show(PageColors p, ChartColors c)
    {
        address = p.CompanyAddressCol;
        for (auto& [key, swatch] : page) swatch->SetSetting(PageColor(p, key));
        for (auto& [key, swatch] : chart) swatch->SetSetting(ChartColor(c, key));
        const QSignalBlocker b1(lineWidth), b2(borderWidth);
        lineWidth->setValue(static_cast<int>(c.KunLineWidth));
        borderWidth->setValue(static_cast<int>(c.KunBorderWidth));
        ChartChanged();
        PageChanged();
    }
    void ChartChanged() { ApplyChartColors(*demo, form->Chart()); }
    void PageChanged() { preview->SetColors(form->Page()); }

    std::string Name() const { return S(themes->currentText()); }

    void FillThemes()
    {
        themes->clear();
        for (const ThemeRow& r : ListThemes(*RecosDB())) themes->addItem(Q(r.ThemeName));
    }
    // Puts a name in the box, selecting its entry when the list has it.
    void ShowName(const QString& name)
    {
        const int at = themes->findText(name, Qt::MatchFixedString);
        themes->setCurrentIndex(at);
        themes->setEditText(at >= 0 ? themes->itemText(at) : name);
    }

    void SelectTheme(int index)
    {
        Run([&] {
            if (!HasTheme(*RecosDB(), S(themes->itemText(index)))) return;
            PageColors p;
            ChartColors c;
            ReadThemeFile(ThemeSectionAt(index), p, c);
            Show(p, c);
        });
    }

    void SaveScheme()
    {
        const QString name = themes->currentText();
        if (name.trimmed().isEmpty()) {
            MsgBox("Type a name for the scheme in the Name box first.", MsgButtons::OK, "Save Scheme",
                   MsgIcon::Exclamation);
            themes->setFocus();
            return;
        }
        if (ui::RefusedName(S(name), "theme")) return;
        Run([&] {
            SaveTheme(*RecosDB(), S(name), form->Page(), form->Chart());
            FillThemes();
            ShowName(name);
            lblStatus->setText("The scheme " + name + " has been saved.");
        });
    }

    void DeleteScheme()
    {
        if (ui::RefusedName(Name(), "theme")) return;
        Run([&] {
            const QString name = themes->currentText();
            if (!DeleteTheme(*RecosDB(), Name())) return;
            FillThemes();
            ShowName({});
            lblStatus->setText("The scheme " + name + " has been deleted.");
        });
    }

    // The colours in the dialog become the active ones; the dialog stays
    // open for more changes.
    void SaveColours()
    {
        if (ui::RefusedName(Name(), "theme")) return;
        if (!ui::RunCommand([&] { SaveActiveColors(form->Page(), form->Chart(), Name()); })) return;
        lblStatus->setText("The colours have been saved; the result pages show them.");
        emit form->Saved();
    }
};

frmColorEnv::frmColorEnv(QWidget* parent) : QDialog(parent), d_(std::make_unique<Impl>())
{
    d_->form = this;
    setObjectName("frmColorEnv");
    setWindowTitle("Page Designer");
    setFixedSize(804, 616);

    // The page's colours down the left.
    QGroupBox* framPage = ui::Frame(this, "framPage", "Page colours", {12, 12, 320, 488});
    int y = 32;
    for (std::size_t i = 0; i < std::size(kPageRows); ++i) {
        const ColourRow& r = kPageRows[i];
        QLabel* l = ui::Label(framPage, ("lbl" + std::string(r.key)).c_str(), r.words, {14, y, 220, 20});
        Swatch* s = ui::ColorSwatch(framPage, ("pic" + std::string(r.key)).c_str(), {246, y, 60, 20});
        ui::Names(l, s);
        d_->page.emplace_back(r.key, s);
        connect(s, &Swatch::Chosen, this, [this] { d_->Run([this] { d_->PageChanged(); }); });
        y += 26;
        for (int end : kGroupEnds)
            if (static_cast<int>(i) == end) y += 10;
    }

    QLabel* foot = ui::Label(framPage, "lblFootNote",
                             "Your name and address share one line at the foot of the Score page, and its colour, "
                             "on the screen, on paper and in a PDF file.",
                             {14, y + 4, 292, 54});
    foot->setWordWrap(true);
    foot->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    QPalette grey = foot->palette();
    grey.setColor(QPalette::WindowText, grey.color(QPalette::PlaceholderText));
    foot->setPalette(grey);

    // The chart's colours and lines, with the chart beside them.
    QGroupBox* framChart = ui::Frame(this, "framChart", "Chart colours", {344, 12, 448, 300});
    y = 32;
    for (const ColourRow& r : kChartRows) {
        QLabel* l = ui::Label(framChart, ("lbl" + std::string(r.key)).c_str(), r.words, {14, y, 96, 20});
        Swatch* s = ui::ColorSwatch(framChart, ("pic" + std::string(r.key)).c_str(), {110, y, 52, 20});
        ui::Names(l, s);
        d_->chart.emplace_back(r.key, s);
        connect(s, &Swatch::Chosen, this, [this] { d_->Run([this] { d_->ChartChanged(); }); });
        y += 30;
    }
    y += 6;
    auto width = [&](const char* label, const char* name, const QString& words) {
        QLabel* l = ui::Label(framChart, label, words, {14, y, 96, 24});
        auto* spin = new QSpinBox(framChart);
        spin->setObjectName(name);
        spin->setGeometry(110, y, 52, 24);
        spin->setRange(1, 20);
        ui::Names(l, spin);
        connect(spin, &QSpinBox::valueChanged, this, [this] { d_->Run([this] { d_->ChartChanged(); }); });
        y += 32;
        return spin;
    };
    d_->lineWidth = width("lblKunLineWidth", "txtKunLineWidth", "Line &width");
    d_->borderWidth = width("lblKunBorderWidth", "txtKunBorderWidth", "Bo&rder width");
    d_->demo = new Kundali(framChart);
    d_->demo->setObjectName("kunDemo");
    d_->demo->setGeometry(174, 26, 262, 262);
    d_->demo->setAccessibleName("Sample chart");
    d_->demo->ChartStyle(static_cast<int>(vb::Val(ReadSetting(keys::KundStyle))));
    // Something in every box, so that the planets' colour can be seen.
    for (std::int16_t i = 1; i <= 12; ++i) d_->demo->PlanetPlace(i, "Pl");

    QGroupBox* framPreview = ui::Frame(this, "framPreview", "Page sample", {344, 320, 448, 180});
    d_->preview = new PagePreview(framPreview);
    d_->preview->setObjectName("picPagePreview");
    d_->preview->setGeometry(12, 22, 424, 148);

    // Named sets of all the colours.
    d_->framTheme = ui::Frame(this, "framTheme", "Themes", {12, 508, 780, 56});
    QLabel* lblTheme = ui::Label(d_->framTheme, "lblTheme", "&Name:", {14, 24, 50, 24});
    d_->themes = ui::Combo(d_->framTheme, "cmbTheme", true, {66, 22, 280, 28});
    ui::Names(lblTheme, d_->themes);
    QPushButton* cmdSaveTheme = ui::Button(d_->framTheme, "cmdSaveTheme", "Save Sc&heme", {360, 20, 130, 30});
    QPushButton* cmdDelTheme = ui::Button(d_->framTheme, "cmdDelTheme", "&Delete Scheme", {498, 20, 130, 30});

    d_->lblStatus = ui::Label(this, "lblStatus", QString(), {14, 572, 576, 38});
    d_->lblStatus->setWordWrap(true);
    QPushButton* cmdSave = ui::Button(this, "cmdSaveAyanKundStyle", "&Save", {600, 576, 90, 30});
    cmdSave->setIcon(QIcon(":/icons/save.svg"));
    QPushButton* cmdClose = ui::Button(this, "cmdClose", "C&lose", {698, 576, 94, 30});
    // Enter in the name box belongs to the list, never to a button.
    for (QPushButton* b : {cmdSaveTheme, cmdDelTheme, cmdSave, cmdClose}) b->setAutoDefault(false);

    d_->Show(ActivePageColors(), ActiveChartColors());
    d_->Run([this] {
        if (!RecosDB()) throw DatabaseError("The theme list could not be read: RECOS.Dat is not open.");
        d_->FillThemes();
        d_->ShowName(Q(ActiveThemeName()));
    });
    if (!RecosDB()) d_->framTheme->setEnabled(false);

    // Every command ends in itself if it meets a fault; the dialog stays.
    connect(d_->themes, &QComboBox::activated, this, [this](int index) { d_->SelectTheme(index); });
    connect(d_->themes, &QComboBox::editTextChanged, d_->lblStatus, &QLabel::clear);
    connect(cmdSaveTheme, &QPushButton::clicked, this, [this] { d_->Run([this] { d_->SaveScheme(); }); });
    connect(cmdDelTheme, &QPushButton::clicked, this, [this] { d_->Run([this] { d_->DeleteScheme(); }); });
    connect(cmdSave, &QPushButton::clicked, this, [this] { d_->Run([this] { d_->SaveColours(); }); });
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
}

frmColorEnv::~frmColorEnv() = default;

PageColors frmColorEnv::Page() const
{
    PageColors p;
    p.CompanyAddressCol = d_->address;
    for (const auto& [key, swatch] : d_->page) PageColor(p, key) = swatch->Setting();
    return p;
}

ChartColors frmColorEnv::Chart() const
{
    ChartColors c;
    for (const auto& [key, swatch] : d_->chart) ChartColor(c, key) = swatch->Setting();
    c.KunLineWidth = d_->lineWidth->value();
    c.KunBorderWidth = d_->borderWidth->value();
    return c;
}

}  // namespace ranvel
