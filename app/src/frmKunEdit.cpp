#include "ranvel/app/frmKunEdit.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include "ranvel/app/ChartSketch.h"
#include "ranvel/app/formkit.h"
#include "ranvel/data/settings_keys.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

// The left column holds the choices, the right one the sample chart; the
// room under the style frame is kept for the chart's colours and lines.
frmKunEdit::frmKunEdit(QWidget* parent) : QDialog(parent)
{
    setObjectName("frmKunEdit");
    setWindowTitle("Kundli Designer");
    setFixedSize(520, 322);

    QGroupBox* framStyle = ui::Frame(this, "framStyle", "Chart style", {16, 12, 220, 128});
    auto* styles = new QButtonGroup(this);
    styles->addButton(ui::Option(framStyle, "optNorthKundli", "&North Indian", {14, 28, 196, 26}), 0);
    styles->addButton(ui::Option(framStyle, "optEastKundli", "&East Indian", {14, 60, 196, 26}), 1);
    styles->addButton(ui::Option(framStyle, "optSouthKundli", "So&uth Indian", {14, 92, 196, 26}), 2);

    QLabel* note = ui::Label(this, "lblStyleNote",
                             "The charts of the result pages and of the printed report are drawn in this style.",
                             {18, 150, 216, 54});
    note->setWordWrap(true);
    note->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    QPalette np = note->palette();
    np.setColor(QPalette::WindowText, np.color(QPalette::PlaceholderText));
    note->setPalette(np);

    QGroupBox* framDemo = ui::Frame(this, "framDemo", "Sample", {252, 12, 252, 252});
    auto* picStyle = new ChartSketch(framDemo);
    picStyle->setObjectName("picStyle");
    picStyle->setGeometry(10, 24, 232, 218);

    QPushButton* cmdSave = ui::Button(this, "cmdSave", "&Save", {316, 276, 90, 30});
    cmdSave->setIcon(QIcon(":/icons/save.svg"));
    cmdSave->setDefault(true);
    QPushButton* cmdClose = ui::Button(this, "cmdClose", "C&lose", {414, 276, 90, 30});

    const int stored = static_cast<int>(vb::Val(ReadSetting(keys::KundStyle)));
    if (QAbstractButton* b = styles->button(stored)) b->setChecked(true);
    picStyle->SetStyle(stored);
    connect(styles, &QButtonGroup::idToggled, this, [picStyle](int id, bool on) {
        if (on) picStyle->SetStyle(id);
    });

    connect(cmdSave, &QPushButton::clicked, this, [this, styles] {
        if (styles->checkedId() >= 0) WriteSetting(keys::KundStyleWritten, vb::CStr(styles->checkedId()));
        accept();
    });
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
}

}  // namespace ranvel
