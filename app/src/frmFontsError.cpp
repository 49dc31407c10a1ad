#include "ranvel/app/frmFontsError.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>

#include "ranvel/app/appinfo.h"
#include "ranvel/app/formkit.h"
#include "ranvel/platform/gui/qstr.h"

namespace ranvel {

frmFontsError::frmFontsError(const std::vector<std::string>& failed, QWidget* parent) : QDialog(parent)
{
    setObjectName("frmFontsError");
    setWindowTitle("Font Installation Failure");
    setFixedSize(500, 400);
    const QString text =
        "Some Fonts are not installed.\n\n" + Q(AppTitle()) +
        " May not be able to display some regional languages correctly. "
        "The software tried to install these fonts automatically, but failed. You will have to install these fonts "
        "manually.\n\n"
        "There may be too many fonts installed, please delete about 10 fonts, reboot your PC and try again. Or use the "
        "'Control Panel' to install the fontsl.\n\n"
        "To continue running the software, click 'Proceed.'";
    QLabel* lblMessage = ui::Label(this, "lblMessage", text, {16, 12, 468, 220});
    lblMessage->setWordWrap(true);
    lblMessage->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    auto* lstFonts = new QListWidget(this);
    lstFonts->setObjectName("lstFonts");
    lstFonts->setGeometry(16, 240, 468, 104);
    lstFonts->setAccessibleName("Fonts not installed");
    for (const std::string& name : failed) lstFonts->addItem("Error installing font: '" + Q(name) + "'");
    QPushButton* cmdProceed = ui::Button(this, "cmdProceed", "&Proceed", {384, 356, 100, 30});
    cmdProceed->setDefault(true);
    connect(cmdProceed, &QPushButton::clicked, this, &QDialog::accept);
}

}  // namespace ranvel
