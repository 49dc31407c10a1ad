#include "ranvel/app/startup.h"

#include <QApplication>
#include <QFont>
#include <QIcon>
#include <QLocale>
#include <QScreen>
#include <clocale>
#include <cstdio>
#include <stdexcept>

#include "ranvel/app/appinfo.h"
#include "ranvel/app/formkit.h"
#include "ranvel/app/frmFontsError.h"
#include "ranvel/app/frmSplash.h"
#include "ranvel/data/messages.h"
#include "ranvel/data/settings_keys.h"
#include "ranvel/platform/apppaths.h"
#include "ranvel/platform/gui/fonts.h"
#include "ranvel/platform/gui/qtsinks.h"
#include "ranvel/platform/gui/systemzones.h"
#include "ranvel/platform/sinks.h"
#include "ranvel/platform/variant.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

const std::vector<DisplayFont>& DisplayFonts()
{
    static const std::vector<DisplayFont> fonts = {
        {"Ranvel Astro", "RNVASTRO"},         {"Ranvel Bangla", "RNVBANG"},   {"Ranvel Hindi Astro", "HINASTRO"},
        {"Ranvel Dev Head", "RVDVHEAD"},      {"Ranvel Gujarati", "RVGUJ"},   {"Ranvel Tamil Astro", "TMLASTRO"},
        {"Ranvel Kannada Astro", "KANASTRO"}, {"Ranvel Marathi Astro", "RVMTAST"}, {"Astro 570", "ASTRO570"},
        {"Astro 571", "ASTRO571"},
    };
    return fonts;
}

bool CheckRegionalSettings()
{
    const std::string text = vb::CStr(vb::Val(vb::CStr(5.3)));
    if (text.find('.') != std::string::npos) return true;
    MsgBox(AppTitle() + " Faced an Error:\nPlease change the Control Panel ---> Regional Settings to English as this "
                        "software \nsupports only the '.' symbol for calculating decimal numbers.",
           MsgButtons::OK, "Error in Regional Settings.", MsgIcon::Critical);
    return false;
}

void CheckDisplay()
{
    if (const QScreen* screen = QGuiApplication::primaryScreen()) CheckDisplay(screen->geometry().width());
}

void CheckDisplay(int screenWidth)
{
    bool show = true;
    try {
        show = Variant(ReadIni(keys::ShowError)).ToBool();
    } catch (const std::exception&) {
    }
    if (show && screenWidth < 800) MsgBox(Msg(13), MsgButtons::OK, Msg(14), MsgIcon::Exclamation);
}

std::vector<std::string> CheckFonts()
{
    std::vector<std::string> failed;
    for (const DisplayFont& f : DisplayFonts()) {
        if (FontFamilyAvailable(f.name)) continue;
        const std::string file = AppPath(std::string("EPHE\\Fonti\\") + f.file + ".IFT");
        if (!RegisterFontFile(file) || !FontFamilyAvailable(f.name)) failed.emplace_back(f.name);
    }
    return failed;
}

void ShowFontsError(const std::vector<std::string>& failed, QWidget* parent)
{
    frmFontsError dialog(failed, parent);
    dialog.exec();
}

void PrepareApplication(QApplication& app)
{
    PrepareLook(app);
    static QtMessageSink messages;
    SetMessageSink(&messages);
    // The offsets in force at a date come from the system's zone database.
    UseSystemZones();
}

void PrepareLook(QApplication& app)
{
    // Numbers are read and written with "." whatever the machine says; the
    // libraries below the program read text with the C library too.
    std::setlocale(LC_NUMERIC, "C");
    QLocale::setDefault(QLocale::c());
    QApplication::setApplicationName(QString::fromStdString(AppTitle()));
    QApplication::setApplicationDisplayName(QString::fromStdString(AppTitle()));
    QApplication::setWindowIcon(QIcon(":/icons/app.svg"));
    // The desktop entry an installation puts in the menu: a Wayland desktop
    // joins the window to its name and icon by this id.
    QGuiApplication::setDesktopFileName("example.ranvel.Ranvel");
    // The forms are laid out for this face and size.
    QFont font("Liberation Sans");
    font.setStyleHint(QFont::SansSerif);
    font.setPointSize(9);
    app.setFont(font);
}

bool RanvelApplication::notify(QObject* receiver, QEvent* event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception& e) {
        ui::ShowFault(e);
    } catch (...) {
        ui::ShowFault(std::runtime_error("An unknown fault ended the command."));
    }
    return false;
}

int RunDesktop(QApplication& app)
{
    const QStringList args = app.arguments();
    for (int i = 1; i < args.size(); ++i) {
        if (args[i] == "--app-dir" && i + 1 < args.size()) {
            SetAppDir(args[++i].toStdString());
        } else if (args[i] == "--help" || args[i] == "-h") {
            std::printf("usage: ranvel [--app-dir DIR]\n\n--app-dir DIR replaces the program's folder as the root of "
                        "the data tree\n(the environment variable RANVEL_APP_DIR does the same).\n");
            return 0;
        } else {
            std::fprintf(stderr, "ranvel: unknown argument '%s'\nusage: ranvel [--app-dir DIR]\n",
                         args[i].toLocal8Bit().constData());
            return 2;
        }
    }
    PrepareApplication(app);
    auto* splash = new frmSplash;
    splash->setAttribute(Qt::WA_DeleteOnClose);
    splash->show();
    QApplication::processEvents();
    if (!splash->Load()) return 1;
    return app.exec();
}

}  // namespace ranvel
