// ranvel-screens --out DIR [--app-dir DIR] [--only NAME]
//
// Pictures of the desktop's windows, made offscreen: the splash, the main
// window on each page of the request form, the result, and every dialog.
// Settings are read from the user's store but never written to it.
#include <QApplication>
#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QKeyEvent>
#include <QLineEdit>
#include <QRadioButton>
#include <QTabWidget>
#include <QTimer>
#include <QTreeWidget>
#include <cstdio>
#include <functional>

#include "ranvel/app/frmAbout.h"
#include "ranvel/app/frmCalendar.h"
#include "ranvel/app/frmDaySheet.h"
#include "ranvel/app/frmCalcOptions.h"
#include "ranvel/app/frmColorEnv.h"
#include "ranvel/app/frmEditLongLat.h"
#include "ranvel/app/frmEmail.h"
#include "ranvel/app/frmFontsError.h"
#include "ranvel/app/frmKunEdit.h"
#include "ranvel/app/frmLogin.h"
#include "ranvel/app/frmPrint.h"
#include "ranvel/app/frmSplash.h"
#include "ranvel/app/frmStatus.h"
#include "ranvel/app/frmWizard.h"
#include "ranvel/app/mdiMother.h"
#include "ranvel/app/startup.h"
#include "ranvel/data/datafiles.h"
#include "ranvel/platform/apppaths.h"
#include "ranvel/platform/settings.h"
#include "ranvel/platform/sinks.h"

using namespace ranvel;

namespace {

QString g_out;
QString g_only;

void Shot(QWidget* w, const QString& name)
{
    if (!g_only.isEmpty() && !name.contains(g_only)) return;
    w->show();
    for (int i = 0; i < 5; ++i) QApplication::processEvents();
    const QString path = g_out + "/" + name + ".png";
    if (!w->grab().save(path)) std::fprintf(stderr, "ranvel-screens: cannot write %s\n", qPrintable(path));
    else std::printf("%s\n", qPrintable(path));
}

void Set(QWidget* root, const char* name, const QString& value)
{
    QWidget* w = root->findChild<QWidget*>(name);
    if (!w) {
        std::fprintf(stderr, "ranvel-screens: no control %s\n", name);
        return;
    }
    if (auto* c = qobject_cast<QComboBox*>(w)) c->setEditText(value);
    else if (auto* e = qobject_cast<QLineEdit*>(w)) e->setText(value);
    else if (auto* d = qobject_cast<QDateEdit*>(w)) d->setDate(QDate::fromString(value, "dd/MM/yyyy"));
    else if (auto* o = qobject_cast<QRadioButton*>(w)) o->click();
}

// The dialogs a modal exec would block on are shown instead, each page or
// tab in turn.
template <typename D>
void Dialog(const QString& name, std::function<D*()> make, std::function<void(D*, int)> step = {}, int steps = 1)
{
    D* d = make();
    for (int i = 0; i < steps; ++i) {
        if (step) step(d, i);
        Shot(d, steps == 1 ? name : QString("%1-%2").arg(name).arg(i + 1));
    }
    d->hide();
    d->deleteLater();
}

}  // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QStringList args = app.arguments();
    for (int i = 1; i + 1 < args.size(); ++i) {
        if (args[i] == "--out") g_out = args[++i];
        else if (args[i] == "--app-dir") SetAppDir(args[++i].toStdString());
        else if (args[i] == "--only") g_only = args[++i];
    }
    if (g_out.isEmpty()) {
        std::fprintf(stderr, "usage: ranvel-screens --out DIR [--app-dir DIR] [--only NAME]\n");
        return 2;
    }
    QDir().mkpath(g_out);
    PrepareApplication(app);
    OverlaySettingsStore settings(Settings());
    SetSettingsStore(&settings);
    HeadlessMessageSink quiet(true);
    SetMessageSink(&quiet);

    auto* splash = new frmSplash;
    Shot(splash, "splash");
    if (!frmSplash::DoLoad()) return 1;
    splash->close();
    mdiMother* main = MainWindow();
    main->resize(1024, 740);
    frmLogin* form = main->EntryForm();
    Shot(main, "main-1-purpose");
    form->CmdGenerate();
    Shot(main, "main-2-range");
    Set(form, "optMuhuCheck", {});
    Shot(main, "main-2-moment");
    Set(form, "optMuhuRange", {});
    form->CmdGenerate();
    Shot(main, "main-3-person");
    // A birth in London's summer time with the standard offset typed: the
    // note beside the zone field.
    for (auto [n, v] : std::initializer_list<std::pair<const char*, const char*>>{
             {"txtBDate", "14/07/1990"}, {"txtBTime", "12.00"}, {"cmbCountry", "United Kingdom"},
             {"cmbCity", "London"}, {"txtGMT", "+00.00"}})
        Set(form, n, v);
    Shot(main, "main-3-zone-note");

    // The main job's request: a month's marriage Muhurtha at New Delhi.
    form->flpBack();
    form->flpBack();
    Set(form, "butMarriage", {});
    form->findChild<QAbstractButton*>("butMarriage")->click();
    auto* list = form->findChild<QTreeWidget*>("tvMuhuList");
    list->setCurrentItem(list->findItems("Marriage ceremony (Vivaha)", Qt::MatchExactly).value(0));
    form->CmdGenerate();
    for (auto [n, v] : std::initializer_list<std::pair<const char*, const char*>>{
             {"dtMuhuFrom", "01/11/2024"}, {"dtMuhuTo", "30/11/2024"}, {"txtMuhDTFrom", "06.00"},
             {"txtMuhDTTo", "22.00"}, {"cmbMuhuCountry", "India"}, {"cmbMuhuCity", "New Delhi"},
             {"txtMuhuLati", "028:36"}, {"txtMuhuLongi", "077:12"}, {"txtMuhuGMT", "+05.30"}})
        Set(form, n, v);
    Shot(main, "main-2-filled");
    form->CmdGenerate();
    for (auto [n, v] : std::initializer_list<std::pair<const char*, const char*>>{
             {"cmbBoyName", "Arjun"}, {"txtBoyDate", "14/08/1994"}, {"txtBoyTime", "09.20"},
             {"cmbBoyCountry", "India"}, {"cmbBoyPlace", "New Delhi"}, {"txtBoyLatti", "028:36"},
             {"txtBoyLongi", "077:12"}, {"txtBoyGMT", "+05.30"}, {"cmbGalName", "Meera"},
             {"txtGalDate", "03/02/1996"}, {"txtGalTime", "17.45"}, {"optGalAMPM(1)", ""},
             {"cmbGalCountry", "India"}, {"cmbGalPlace", "Pune"}, {"txtGalLatti", "018:31"},
             {"txtGalLongi", "073:51"}, {"txtGalGMT", "+05.30"}})
        Set(form, n, v);
    Shot(main, "main-4-couple");

    // The progress dialog as the search shows it.
    {
        frmStatus status(main);
        status.Progress("Looking for Muhurtha...", "Searching for the first best Muhurtha in the time range. Please wait...",
                        40);
        Shot(&status, "status");
        status.Done();
    }
    form->CmdGenerate();
    Shot(main, "result-1");
    main->Navigate(1);
    main->ToggleSideList();
    Shot(main, "result-2-with-map");
    main->ToggleSideList();

    // The calendar of the month searched: as it opens on the best day, then
    // on another day chosen with the keys.
    main->OpenCalendar();
    if (frmCalendar* calendar = main->CalendarWindow()) {
        // As large as a 1024 x 768 screen lets it open.
        calendar->resize(1000, 700);
        Shot(calendar, "calendar-1");
        calendar->Grid()->setFocus();
        for (Qt::Key key : {Qt::Key_Down, Qt::Key_Right}) {
            QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
            QApplication::sendEvent(calendar->Grid(), &press);
        }
        Shot(calendar, "calendar-2-day");
        // That day's sheet, opened from the detail.
        if (auto* sheet = calendar->findChild<QAbstractButton*>("cmdDaySheet")) sheet->click();
        if (frmDaySheet* day = main->DaySheetWindow()) {
            day->resize(900, 720);
            Shot(day, "daysheet-1");
            day->close();
        }
        calendar->close();
    }

    Dialog<frmAbout>("about", [main] { return new frmAbout(main); });
    Dialog<frmFontsError>("fonts-error", [main] { return new frmFontsError({"Ranvel Bangla", "Astro 571"}, main); });
    Dialog<frmPrint>("print", [main] { return new frmPrint(1, main); });
    Dialog<frmEmail>("email", [main] { return new frmEmail("report.PDF", main); });
    Dialog<frmMailServer>("mail-server", [main] { return new frmMailServer(main); });
    Dialog<frmCalcOptions>("calc-options", [main] { return new frmCalcOptions(main); });
    Dialog<frmKunEdit>("kundli-style", [main] { return new frmKunEdit(main); });
    // As it opens, then with each theme of the list selected.
    Dialog<frmColorEnv>(
        "page-designer", [main] { return new frmColorEnv(main); },
        [](frmColorEnv* d, int i) {
            auto* themes = d->findChild<QComboBox*>("cmbTheme");
            if (i == 0 || !themes || i > themes->count()) return;
            themes->setCurrentIndex(i - 1);
            emit themes->activated(i - 1);
        },
        4);
    Dialog<frmEditLongLat>(
        "edit-places", [main] { return new frmEditLongLat(frmEditLongLat::Tab::City, main); },
        [](frmEditLongLat* d, int i) { d->ShowTab(static_cast<frmEditLongLat::Tab>(i)); }, 5);
    Dialog<frmWizard>(
        "wizard", [main] { return new frmWizard({}, main); },
        [](frmWizard* d, int i) {
            if (i == 0) return;
            if (auto* next = d->findChild<QAbstractButton*>("cmdNext")) next->click();
        },
        6);
    main->close();
    return 0;
}
