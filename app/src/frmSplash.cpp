#include "ranvel/app/frmSplash.h"

#include <QApplication>
#include <QIcon>
#include <QLabel>
#include <QScreen>

#include "ranvel/app/appinfo.h"
#include "ranvel/app/formkit.h"
#include "ranvel/app/frmWizard.h"
#include "ranvel/app/mdiMother.h"
#include "ranvel/app/startup.h"
#include "ranvel/chart/ephemeris.h"
#include "ranvel/data/datafiles.h"
#include "ranvel/data/settings_keys.h"
#include "ranvel/data/storeguard.h"
#include "ranvel/data/themes.h"
#include "ranvel/platform/apppaths.h"
#include "ranvel/platform/gui/qstr.h"
#include "ranvel/platform/sinks.h"
#include "ranvel/platform/variant.h"

namespace ranvel {

namespace {
frmSplash* g_splash = nullptr;
}

frmSplash::frmSplash(QWidget* parent) : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint)
{
    g_splash = this;
    setObjectName("frmSplash");
    setWindowTitle(Q(AppTitle()));
    setFixedSize(480, 280);
    setAutoFillBackground(true);
    QPalette pal = palette();
    pal.setColor(QPalette::Window, QColor(0xfb, 0xf8, 0xf1));
    pal.setColor(QPalette::WindowText, QColor(0x2b, 0x3a, 0x67));
    setPalette(pal);

    QLabel* band = ui::Label(this, "picBand", QString(), {0, 0, 480, 8});
    band->setAutoFillBackground(true);
    QPalette bp = band->palette();
    bp.setColor(QPalette::Window, QColor(0xe0, 0x8a, 0x1e));
    band->setPalette(bp);

    QLabel* logo = ui::Label(this, "picLogo", QString(), {36, 56, 96, 96});
    logo->setPixmap(QIcon(":/icons/app.svg").pixmap(96, 96));
    QLabel* title = ui::Label(this, "lblTitle", Q(AppTitle()), {152, 56, 300, 48});
    QFont tf = title->font();
    tf.setPointSize(28);
    tf.setBold(true);
    title->setFont(tf);
    QLabel* line = ui::Label(this, "lblSubTitle", "Muhurtha: the auspicious moment,\nfound and explained.",
                             {154, 106, 300, 44});
    QFont lf = line->font();
    lf.setPointSize(11);
    line->setFont(lf);

    lblVerNo_ = ui::Label(this, "lblVerNo", QString(), {36, 196, 200, 20});
    lblStatus_ = ui::Label(this, "lblStatus", QString(), {36, 236, 408, 20});
    QFont sf = lblStatus_->font();
    sf.setItalic(true);
    lblStatus_->setFont(sf);

    if (const QScreen* s = QGuiApplication::primaryScreen()) move(s->geometry().center() - rect().center());
}

frmSplash::~frmSplash()
{
    if (g_splash == this) g_splash = nullptr;
}

bool& frmSplash::SplashDone()
{
    static bool done = false;
    return done;
}

void frmSplash::Status(const QString& text)
{
    if (g_splash) g_splash->lblStatus_->setText(text);
    QApplication::processEvents();
}

bool frmSplash::Load()
{
    if (!CheckRegionalSettings()) return false;
    lblVerNo_->setText(Q(ReleaseText()));
    bool done = false;
    try {
        done = Variant(ReadSetting(keys::DoneSetup)).ToBool();
    } catch (const std::exception&) {
    }
    if (!done) {
        hide();
        bool loaded = false;
        frmWizard wizard([&loaded] { loaded = DoLoad(); });
        wizard.exec();
        close();
        return loaded;
    }
    if (!SplashDone()) {
        const bool loaded = DoLoad();
        SplashDone() = true;
        close();
        return loaded;
    }
    return true;
}

bool frmSplash::DoLoad()
{
    Status("Checking Files...");
    // The persons store is checked, and kept or put back, before this run
    // opens it.
    if (!RecosDB() && FileInEphe("COMMON\\RECOS.Dat")) {
        const StoreGuardResult guard = GuardStore(EphePath("COMMON\\RECOS.Dat"));
        if (guard.kind == StoreGuardResult::Kind::Lost) {
            MsgBox(guard.message, MsgButtons::OK, AppTitle(), MsgIcon::Critical);
            return false;
        }
        if (guard.kind == StoreGuardResult::Kind::Restored)
            MsgBox(guard.message, MsgButtons::OK, AppTitle(), MsgIcon::Exclamation);
    }
    try {
        CheckStartupFiles();
    } catch (const FileAccessError& e) {
        MsgBox("File '" + AppDir() + "\\" + e.RelativeName() + "' Was Not Found.\nPlease Re-Install.", MsgButtons::OK,
               AppTitle(), MsgIcon::Critical);
        return false;
    } catch (const std::exception& e) {
        MsgBox(e.what(), MsgButtons::OK, AppTitle(), MsgIcon::Critical);
        return false;
    }
    Status("Checking Display...");
    CheckDisplay();
    Status("Checking Fonts...");
    const std::vector<std::string> failed = CheckFonts();
    if (!failed.empty()) ShowFontsError(failed, g_splash);
    Status("Checking Languages...");
    try {
        RefreshLanguageInclude();
    } catch (const std::exception& e) {
        MsgBox(e.what(), MsgButtons::OK, AppTitle(), MsgIcon::Critical);
        return false;
    }
    // Every word of the pages comes from the language's database: without
    // it there is nothing to show.
    if (!FileInEphe("ENGLISH\\ENGLISH.DAT")) {
        MsgBox("File '" + AppDir() + "\\ENGLISH\\ENGLISH.DAT' Was Not Found.\nPlease Re-Install.", MsgButtons::OK,
               AppTitle(), MsgIcon::Critical);
        return false;
    }
    Status("Loading Application...");
    // Whether the ephemeris's data files are found is asked once, before any
    // chart, without a step of its own on the splash; the main window, the
    // about box and the reports name the answer.
    EphemerisInUse();
    try {
        // The page and chart colours, read once here and again after each save.
        LoadActiveColors();
        mdiMother* main = MainWindow();
        if (!main) {
            main = new mdiMother;
            main->setAttribute(Qt::WA_DeleteOnClose);
            QObject::connect(main, &mdiMother::SetupWizardEnded, main, [] { DoLoad(); });
        }
        main->show();
    } catch (const std::exception& e) {
        MsgBox(e.what(), MsgButtons::OK, AppTitle(), MsgIcon::Critical);
        return false;
    }
    return true;
}

}  // namespace ranvel
