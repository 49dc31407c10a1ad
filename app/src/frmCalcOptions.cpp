#include "ranvel/app/frmCalcOptions.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include "ranvel/app/formkit.h"
#include "ranvel/data/settings_keys.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

frmCalcOptions::frmCalcOptions(QWidget* parent) : QDialog(parent)
{
    setObjectName("frmCalcOptions");
    setWindowTitle("Regional Settings");
    setFixedSize(380, 334);

    QLabel* intro = ui::Label(this, "lblIntro",
                              "Varna and Manglik are reckoned one way in the North of India and another way in "
                              "the South. Choose the reckoning for each.",
                              {16, 10, 348, 40});
    intro->setWordWrap(true);

    QGroupBox* varna = ui::Frame(this, "framVarna", "Varna", {16, 56, 348, 66});
    QRadioButton* optNorthMar = ui::Option(varna, "optNorthMar", "&North Indian", {14, 28, 150, 26});
    QRadioButton* optSouthMar = ui::Option(varna, "optSouthMar", "&South Indian", {180, 28, 150, 26});
    QGroupBox* manglik = ui::Frame(this, "framManglik", "Manglik", {16, 132, 348, 66});
    QRadioButton* optNorthMang = ui::Option(manglik, "optNorthMang", "N&orth Indian", {14, 28, 150, 26});
    QRadioButton* optSouthMang = ui::Option(manglik, "optSouthMang", "So&uth Indian", {180, 28, 150, 26});

    // Off, sunrise is the rising of the Sun's point of the ecliptic, as the
    // program has always reckoned it; on, the Sun's disc on the true horizon.
    QGroupBox* sunrise = ui::Frame(this, "framSunrise", "Sunrise", {16, 208, 348, 74});
    QCheckBox* chkAstroSunrise = ui::Check(sunrise, "chkAstroSunrise",
                                           "&Astronomical: the Sun's disc centre on the true\nhorizon at the place, "
                                           "without refraction",
                                           {14, 24, 326, 42});

    QPushButton* ok = ui::Button(this, "cmdOK", "OK", {176, 290, 90, 30});
    ok->setDefault(true);
    QPushButton* cancel = ui::Button(this, "cmdCancel", "Cancel", {274, 290, 90, 30});

    // 1 is the North's reckoning; any other number is the South's.
    (vb::Val(ReadSetting(keys::CalcVarMod)) == 1 ? optNorthMar : optSouthMar)->setChecked(true);
    (vb::Val(ReadSetting(keys::CalcMangMod)) == 1 ? optNorthMang : optSouthMang)->setChecked(true);
    chkAstroSunrise->setChecked(ReadSetting(keys::AstroSunrise) == "1");

    connect(ok, &QPushButton::clicked, this, [=, this] {
        WriteSetting(keys::CalcVarMod, optNorthMar->isChecked() ? "1" : "2");
        WriteSetting(keys::CalcMangMod, optNorthMang->isChecked() ? "1" : "2");
        // Written only once it differs from what is stored.
        const std::string astro = chkAstroSunrise->isChecked() ? "1" : "0";
        if (astro != ReadSetting(keys::AstroSunrise)) WriteSetting(keys::AstroSunrise, astro);
        accept();
    });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

}  // namespace ranvel
