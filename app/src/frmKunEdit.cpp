#include "ranvel/app/frmKunEdit.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <utility>
#include <vector>

#include "ranvel/app/Swatch.h"
#include "ranvel/app/formkit.h"
#include "ranvel/data/settings_keys.h"
#include "ranvel/output/Kundali.h"
#include "ranvel/output/chartcolors.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

struct frmKunEdit::Impl {
    QButtonGroup* styles = nullptr;
    std::vector<std::pair<std::string, Swatch*>> swatches;  // by chart key
    QSpinBox* lineWidth = nullptr;
    QSpinBox* borderWidth = nullptr;
    Kundali* demo = nullptr;
};

// The left column holds the choices, the right one the sample chart.
frmKunEdit::frmKunEdit(QWidget* parent) : QDialog(parent), d_(std::make_unique<Impl>())
{
    setObjectName("frmKunEdit");
    setWindowTitle("Kundli Designer");
    setFixedSize(560, 424);

    QGroupBox* framStyle = ui::Frame(this, "framStyle", "Chart style", {16, 12, 220, 128});
    d_->styles = new QButtonGroup(this);
    d_->styles->addButton(ui::Option(framStyle, "optNorthKundli", "&North Indian", {14, 28, 196, 26}), 0);
    d_->styles->addButton(ui::Option(framStyle, "optEastKundli", "&East Indian", {14, 60, 196, 26}), 1);
    d_->styles->addButton(ui::Option(framStyle, "optSouthKundli", "So&uth Indian", {14, 92, 196, 26}), 2);

    QGroupBox* framColours = ui::Frame(this, "framColours", "Colours and lines", {16, 150, 220, 222});
    struct Row {
        const char* swatch;
        const char* label;
        const char* key;
        const char* words;
    };
    const Row rows[] = {
        {"picBackColor", "lblBackColor", "KunBackColor", "Background"},
        {"picLineColor", "lblLineColor", "KunLineColor", "Lines"},
        {"picBorderColor", "lblBorderColor", "KunBorderColor", "Border"},
        {"picNumberColor", "lblNumberColor", "KunNumColor", "House numbers"},
        {"picTxtColor", "lblTxtColor", "KunTxtColor", "Planets"},
    };
    int y = 28;
    for (const Row& r : rows) {
        QLabel* l = ui::Label(framColours, r.label, r.words, {14, y, 120, 20});
        Swatch* s = ui::ColorSwatch(framColours, r.swatch, {142, y, 60, 20});
        ui::Names(l, s);
        d_->swatches.emplace_back(r.key, s);
        connect(s, &Swatch::Chosen, this, [this] { ui::RunCommand([this] { ApplyChartColors(*d_->demo, Chart()); }); });
        y += 26;
    }
    auto width = [&](const char* label, const char* name, const QString& words) {
        QLabel* l = ui::Label(framColours, label, words, {14, y + 2, 120, 24});
        auto* spin = new QSpinBox(framColours);
        spin->setObjectName(name);
        spin->setGeometry(142, y + 2, 60, 24);
        spin->setRange(1, 20);
        ui::Names(l, spin);
        connect(spin, &QSpinBox::valueChanged, this,
                [this] { ui::RunCommand([this] { ApplyChartColors(*d_->demo, Chart()); }); });
        y += 30;
        return spin;
    };
    d_->lineWidth = width("lblLineWidth", "txtLineWidth", "Line &width");
    d_->borderWidth = width("lblBorderWidth", "txtBorderWidth", "Bo&rder width");

    QGroupBox* framDemo = ui::Frame(this, "framDemo", "Sample", {252, 12, 292, 310});
    d_->demo = new Kundali(framDemo);
    d_->demo->setObjectName("kunDemo");
    d_->demo->setGeometry(12, 26, 268, 268);
    d_->demo->setAccessibleName("Sample chart");

    QLabel* note = ui::Label(this, "lblStyleNote",
                             "The result pages and the printed report draw their charts so.",
                             {254, 330, 290, 40});
    note->setWordWrap(true);
    note->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    QPalette np = note->palette();
    np.setColor(QPalette::WindowText, np.color(QPalette::PlaceholderText));
    note->setPalette(np);

    QPushButton* cmdSave = ui::Button(this, "cmdSave", "&Save", {358, 382, 90, 30});
    cmdSave->setIcon(QIcon(":/icons/save.svg"));
    cmdSave->setDefault(true);
    QPushButton* cmdClose = ui::Button(this, "cmdClose", "C&lose", {454, 382, 90, 30});

    // What is stored now, shown on the sample.
    const int stored = static_cast<int>(vb::Val(ReadSetting(keys::KundStyle)));
    if (QAbstractButton* b = d_->styles->button(stored)) b->setChecked(true);
    ChartColors c = ActiveChartColors();
    for (auto& [key, swatch] : d_->swatches) swatch->SetSetting(ChartColor(c, key));
    d_->lineWidth->setValue(static_cast<int>(c.KunLineWidth));
    d_->borderWidth->setValue(static_cast<int>(c.KunBorderWidth));
    d_->demo->ChartStyle(stored);
    ApplyChartColors(*d_->demo, Chart());
    for (std::int16_t i = 1; i <= 12; ++i) d_->demo->PlanetPlace(i, "Planet");

    connect(d_->styles, &QButtonGroup::idToggled, this, [this](int id, bool on) {
        if (!on) return;
        // A new chart on a page shows its numbers; passing through North
        // brings back the ones an East chart hid, so the sample agrees.
        ui::RunCommand([&] {
            d_->demo->ChartStyle(Kundali::North);
            d_->demo->ChartStyle(id);
        });
    });

    // A fault in storing ends the command with its text; the dialog stays.
    connect(cmdSave, &QPushButton::clicked, this, [this] {
        const bool saved = ui::RunCommand([this] {
            if (d_->styles->checkedId() >= 0)
                WriteSetting(keys::KundStyleWritten, vb::CStr(d_->styles->checkedId()));
            SaveChartColors(Chart());
        });
        if (!saved) return;
        emit Saved();
        accept();
    });
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
}

frmKunEdit::~frmKunEdit() = default;

ChartColors frmKunEdit::Chart() const
{
    ChartColors c;
    for (const auto& [key, swatch] : d_->swatches) ChartColor(c, key) = swatch->Setting();
    c.KunLineWidth = d_->lineWidth->value();
    c.KunBorderWidth = d_->borderWidth->value();
    return c;
}

}  // namespace ranvel
