#include "ranvel/app/frmAbout.h"

#include <QIcon>
#include <QLabel>
#include <QPushButton>

#include "ranvel/app/appinfo.h"
#include "ranvel/app/formkit.h"
#include "ranvel/chart/ephemeris.h"
#include "ranvel/platform/apppaths.h"
#include "ranvel/platform/gui/qstr.h"

namespace ranvel {

frmAbout::frmAbout(QWidget* parent) : QDialog(parent)
{
    setObjectName("frmAbout");
    setWindowTitle("About " + Q(AppTitle()));
    setFixedSize(460, 340);
    QLabel* logo = ui::Label(this, "picLogo", QString(), {20, 20, 64, 64});
    logo->setPixmap(QIcon(":/icons/app.svg").pixmap(64, 64));
    QLabel* title = ui::Label(this, "lblTitle", Q(AppTitle()), {100, 20, 340, 32});
    QFont tf = title->font();
    tf.setPointSize(16);
    tf.setBold(true);
    title->setFont(tf);
    ui::Label(this, "lblVerNo", Q(ReleaseText()), {100, 54, 340, 20});
    QLabel* text = ui::Label(
        this, "lblAbout",
        "Electional astrology (Muhurtha) in the Indian tradition: the best moment for a purpose, found in a range "
        "of days and explained element by element.\n\n"
        "Planetary positions: Swiss Ephemeris.\n"
        "Places: a list of the world's cities and their time zones, under the MIT licence.\n"
        "Display fonts: renamed copies of the DejaVu and Lohit fonts, under their own free licences "
        "(see EPHE/Fonti/FONTS-LICENCES.txt).\n\n"
        "Your persons, places, themes and settings stay on this computer.",
        {20, 96, 420, 134});
    text->setWordWrap(true);
    text->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    // Which ephemeris this run's positions come from: the library's data
    // files, or the analytical one it falls back to without them. Selectable,
    // to be copied into a question about a chart.
    QLabel* ephemeris = ui::Label(this, "lblEphemeris", Q(EphemerisSentence()), {20, 234, 420, 40});
    ephemeris->setWordWrap(true);
    ephemeris->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    ephemeris->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QLabel* where = ui::Label(this, "lblDataDir", "Your data: " + Q(UserDataDir()), {20, 286, 320, 40});
    where->setWordWrap(true);
    where->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QPushButton* ok = ui::Button(this, "cmdOK", "OK", {360, 294, 80, 28});
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
}

}  // namespace ranvel
