#include "ranvel/app/frmPrint.h"

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPushButton>
#include <QTextEdit>
#include <QTreeWidget>
#include <filesystem>

#include "ranvel/app/appinfo.h"
#include "ranvel/app/formkit.h"
#include "ranvel/app/frmMuhuCover.h"
#include "ranvel/app/frmMuhuTxt.h"
#include "ranvel/app/frmStatus.h"
#include "ranvel/app/mdiMother.h"
#include "ranvel/data/datafiles.h"
#include "ranvel/data/messages.h"
#include "ranvel/output/clsPrintMaker.h"
#include "ranvel/platform/gui/qstr.h"
#include "ranvel/platform/ini.h"
#include "ranvel/platform/sinks.h"
#include "ranvel/platform/variant.h"

namespace ranvel {

namespace {

// The pages of the tree, in the order a job prints them.
struct PageNode {
    const char* key;
    const char* text;
};
const PageNode kPages[] = {{"FrontPage", "Muhurtha Cover Page"}, {"MuhuText", "Muhurtha Analysis"}};

// The progress dialog's words: printing, and the HTML export that has its
// words ready but no writer behind them.
struct JobWords {
    const char* caption;
    const char* detail;
};
JobWords WordsOf(int mode)
{
    if (mode == 2) return {"Exporting HTML", "Exporting HTML please wait. This can take a little while..."};
    return {"Printing...", "Processing. Please wait. This will take a little while..."};
}

std::string ModeText() { return std::to_string(Horomode()); }

// A page set's file: the mode, the set's name, ".ini", in DATA/INIFILES.
std::string SetFile(const std::string& name) { return ModeText() + name + ".ini"; }

std::unique_ptr<Recordset> FindSet(const std::string& name)
{
    return RecosDB()->OpenRecordset("SELECT * FROM PrintMods WHERE Name = '" + name + "'" + " AND Horomode = '" +
                                    ModeText() + "'");
}

bool Truth(const std::string& text, bool deflt)
{
    try {
        return Variant(text).ToBool();
    } catch (const std::exception&) {
        return deflt;
    }
}

// The form of the main window's result page of that kind, if it has one.
template <typename T>
T* ResultForm()
{
    mdiMother* main = MainWindow();
    if (!main) return nullptr;
    for (int i = 0; i < main->TopicCount(); ++i)
        if (auto* form = qobject_cast<T*>(main->TopicForm(i))) return form;
    return nullptr;
}

}  // namespace

frmPrint::frmPrint(int mode, QWidget* parent) : QDialog(parent)
{
    setObjectName("frmPrint");
    setFixedSize(420, 250);

    QGroupBox* framPageSet = ui::Frame(this, "framPageSet", QString(), {12, 12, 396, 68});
    cmbPageSel_ = ui::Combo(framPageSet, "cmbPageSel", true, {12, 26, 184, 28});
    ui::Speak(cmbPageSel_, "Page set");
    QPushButton* cmdPrintSet = ui::Button(framPageSet, "cmdPrintSet", "&Save Set", {204, 24, 88, 30});
    QPushButton* cmdDelSet = ui::Button(framPageSet, "cmdDelSet", "&Delete Set", {298, 24, 88, 30});

    tvwPrint_ = new QTreeWidget(this);
    tvwPrint_->setObjectName("tvwPrint");
    tvwPrint_->setGeometry(12, 92, 396, 96);
    tvwPrint_->setHeaderHidden(true);
    tvwPrint_->setRootIsDecorated(false);
    ui::Speak(tvwPrint_, "Pages");
    for (const PageNode& p : kPages) {
        auto* node = new QTreeWidgetItem(tvwPrint_, QStringList(p.text));
        node->setData(0, Qt::UserRole, QString(p.key));
        node->setIcon(0, QIcon(":/icons/page.svg"));
        node->setFlags(node->flags() | Qt::ItemIsUserCheckable);
        node->setCheckState(0, Qt::Checked);
    }

    QPushButton* cmdPreview = ui::Button(this, "cmdPreview", "Pre&view...", {12, 204, 110, 30});
    QPushButton* cmdPrint = ui::Button(this, "cmdPrint", QString(), {214, 204, 94, 30});
    QPushButton* cmdCancel = ui::Button(this, "cmdCancel", "&Cancel", {314, 204, 94, 30});
    cmdPrint->setDefault(true);
    for (QPushButton* b : {cmdPrintSet, cmdDelSet, cmdPreview, cmdCancel}) b->setAutoDefault(false);

    // A fault in a command ends that command with its box; the dialog stays.
    connect(cmbPageSel_, qOverload<int>(&QComboBox::activated), this,
            [this](int i) { ui::RunCommand([&] { SelectPageSet(i); }); });
    connect(cmdPrintSet, &QPushButton::clicked, this, [this] { ui::RunCommand([this] { SavePageSet(); }); });
    connect(cmdDelSet, &QPushButton::clicked, this, [this] { ui::RunCommand([this] { DeletePageSet(); }); });
    connect(cmdPreview, &QPushButton::clicked, this, [this] { ui::RunCommand([this] { Preview(); }); });
    connect(cmdPrint, &QPushButton::clicked, this, [this] { ui::RunCommand([this] { cmdPrint_Click(); }); });
    connect(cmdCancel, &QPushButton::clicked, this, [this] {
        PrintCancel() = true;
        reject();
    });

    Mode(mode);
    ui::RunCommand([this] { FillPageSets(); });
}

void frmPrint::Mode(int mode)
{
    mode_ = mode;
    const bool print = mode != 2;
    setWindowTitle(print ? "Select Topics To Print" : "Select Topics To Export");
    findChild<QGroupBox*>("framPageSet")->setTitle(print ? "Select Page Set To Print" : "Select Page Set To Export");
    findChild<QPushButton*>("cmdPrint")->setText(print ? "&Print" : "&Export");
    findChild<QPushButton*>("cmdPrintSet")->setEnabled(print);
    findChild<QPushButton*>("cmdPreview")->setVisible(print);
}

// ---- page sets ----

void frmPrint::FillPageSets()
{
    cmbPageSel_->clear();
    if (!RecosDB()) return;
    for (auto rs = RecosDB()->OpenRecordset("SELECT * FROM PrintMods Where Horomode = '" + ModeText() + "'");
         !rs->IsEOF(); rs->MoveNext())
        cmbPageSel_->addItem(Q(rs->Field("Name").ToTextOrEmpty()));
    cmbPageSel_->setCurrentIndex(-1);
}

void frmPrint::SelectPageSet(int index)
{
    if (index < 0 || index >= cmbPageSel_->count()) return;
    const std::string file = SetFile(S(cmbPageSel_->itemText(index)));
    const clsIni ini;
    for (const PageNode& p : kPages)
        Check(p.key, Truth(ini.GetIniString(p.key, "True", AppTitle(), file), true));
}

void frmPrint::SavePageSet()
{
    const QString name = cmbPageSel_->currentText().trimmed();
    if (name.isEmpty()) {
        MsgBox("Type a name for the page set first.", MsgButtons::OK, "Save Page Set", MsgIcon::Exclamation);
        cmbPageSel_->setFocus();
        return;
    }
    const std::string set = S(name);
    // The name goes into the store's query as it stands.
    if (ui::RefusedName(set, "page set")) {
        cmbPageSel_->setFocus();
        return;
    }
    ui::RunCommand([&] {
        auto found = FindSet(set);
        if (!found->HasRows()) {
            found->AddNew();
            found->SetField("Name", Variant(set));
            found->SetField("HoroMode", Variant(ModeText()));
            found->SetField("file", Variant(SetFile(set)));
            found->Update();
        }
        const clsIni ini;
        for (const PageNode& p : kPages)
            ini.WriteIniString(p.key, Checked(p.key) ? "True" : "False", AppTitle(), SetFile(set));
        FillPageSets();
        cmbPageSel_->setCurrentIndex(cmbPageSel_->findText(name, Qt::MatchFixedString));
    });
}

void frmPrint::DeletePageSet()
{
    const std::string set = S(cmbPageSel_->currentText().trimmed());
    if (set.empty()) return;
    ui::RunCommand([&] {
        auto found = FindSet(set);
        if (!found->HasRows()) return;
        found->Delete();
        std::error_code ec;
        std::filesystem::remove(clsIni::IniPath(SetFile(set)), ec);
        FillPageSets();
        cmbPageSel_->setEditText(QString());
    });
}

// ---- the tree ----

QTreeWidgetItem* frmPrint::Node(const QString& key) const
{
    for (int i = 0; i < tvwPrint_->topLevelItemCount(); ++i)
        if (tvwPrint_->topLevelItem(i)->data(0, Qt::UserRole).toString() == key) return tvwPrint_->topLevelItem(i);
    return nullptr;
}

bool frmPrint::Checked(const QString& key) const
{
    const QTreeWidgetItem* n = Node(key);
    return n && n->checkState(0) == Qt::Checked;
}

void frmPrint::Check(const QString& key, bool on)
{
    if (QTreeWidgetItem* n = Node(key)) n->setCheckState(0, on ? Qt::Checked : Qt::Unchecked);
}

// ---- the job ----

void frmPrint::PrintPages(PrintSurface& printer, ProgressSink* progress)
{
    clsPrintMaker maker(printer);
    if (Checked("FrontPage")) {
        if (auto* cover = ResultForm<frmMuhuCover>()) {
            if (cover->Label("lblName")->text().isEmpty()) cover->Load();
            cover->Label("lblPageNo")->setText(QString::number(PageCounter()));
            // HTML export has no writer yet: Mode 2 passes the page by.
            if (mode_ == 1) {
                maker.PrintForm(cover);
                // The next page of the report starts on a sheet of its own.
                printer.NewPage();
            }
        }
        ++PageCounter();
        if (progress) progress->Progress(WordsOf(mode_).caption, WordsOf(mode_).detail, 50);
    }
    if (Checked("MuhuText") && !PrintCancel()) {
        if (auto* analysis = ResultForm<frmMuhuTxt>()) {
            if (analysis->rtfText()->document()->isEmpty()) analysis->Load();
            if (mode_ == 1) PrintRichText(analysis->rtfText(), printer);
        }
    }
}

void frmPrint::cmdPrint_Click()
{
    mdiMother* main = MainWindow();
    PrintCancel() = false;
    PageCounter() = 1;
    bool done = false;
    {
        // The main window is held disabled while the job runs, and given
        // back however the job ends.
        struct Hold {
            mdiMother* main;
            explicit Hold(mdiMother* m) : main(m)
            {
                if (main) main->setEnabled(false);
            }
            ~Hold()
            {
                if (main) main->setEnabled(true);
            }
        } hold(main);
        // Not a child of the main window, which is disabled meanwhile.
        frmStatus status;
        if (main) status.move(main->geometry().center() - status.rect().center());
        status.Progress(WordsOf(mode_).caption, WordsOf(mode_).detail, 0);
        try {
            QPrinter& device = ReportPrinter();
            UseReportSheet(device);
            PrintSurface printer(device);
            PrintPages(printer, &status);
            printer.EndDoc();
            done = true;
        } catch (const std::exception&) {
            done = false;
        }
        status.Done();
    }
    if (done) {
        accept();
        return;
    }
    MsgBox(Msg(12), MsgButtons::OK, AppTitle(), MsgIcon::Exclamation);
}

void frmPrint::Preview()
{
    QPrintPreviewDialog preview(&ReportPrinter(), this);
    preview.setWindowTitle("Print Preview");
    connect(&preview, &QPrintPreviewDialog::paintRequested, this, [this](QPrinter* device) {
        PrintCancel() = false;
        PageCounter() = 1;
        try {
            UseReportSheet(*device);
            PrintSurface printer(*device);
            PrintPages(printer, nullptr);
            printer.EndDoc();
        } catch (const std::exception&) {
            MsgBox(Msg(12), MsgButtons::OK, AppTitle(), MsgIcon::Exclamation);
        }
    });
    preview.exec();
}

}  // namespace ranvel
