#include "ranvel/app/frmWizard.h"

#include <QButtonGroup>
#include <QFrame>
#include <QGroupBox>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <iterator>
#include <tuple>

#include "ranvel/app/appinfo.h"
#include "ranvel/app/formkit.h"
#include "ranvel/data/settings_keys.h"
#include "ranvel/output/Kundali.h"
#include "ranvel/output/chartcolors.h"
#include "ranvel/platform/gui/qstr.h"
#include "ranvel/platform/sinks.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

using ui::Box;

namespace {

struct PageText {
    const char* step;     // its line in the list of steps
    const char* heading;  // over the page
    const char* explain;  // the line under the heading
};

const PageText kPages[] = {
    {"Welcome", "Welcome to Ranvel",
     "A few questions set the program up for you. Each answer can be changed later from the Settings menu."},
    {"Your details", "Your name and address", "They are printed on every report you make."},
    {"Rahu and Ketu", "The motion of Rahu and Ketu",
     "The Moon's nodes can be reckoned by their mean or by their true motion."},
    {"Ayanamsha", "The ayanamsha",
     "The ayanamsha is taken off the planets' positions to give their places among the stars."},
    {"Chart style", "The chart style", "Charts are drawn in the shape that is usual in your region."},
    {"Varna and Manglik", "Varna and Manglik",
     "These are reckoned one way in the North of India and another way in the South."},
};
constexpr int kPageCount = static_cast<int>(std::size(kPages));

// The choice stored for a setting, as the number of its option group;
// fallback when the stored value names none of them (-1: none is chosen).
void Choose(QButtonGroup* group, const SettingKey& key, int fallback)
{
    QAbstractButton* b = group->button(static_cast<int>(vb::Val(ReadSetting(key))));
    if (!b) b = group->button(fallback);
    if (b) b->setChecked(true);
}

}  // namespace

struct frmWizard::Impl {
    frmWizard* form;
    std::function<void()> onEnd;
    bool ended = false;

    QStackedWidget* pages = nullptr;
    QLabel* lblHeading = nullptr;
    QLabel* lblExplain = nullptr;
    QLabel* lblCounter = nullptr;
    std::vector<QLabel*> steps;
    QPushButton* cmdBack = nullptr;
    QPushButton* cmdNext = nullptr;
    QPushButton* cmdFinish = nullptr;
    QPushButton* cmdCancel = nullptr;

    QLineEdit* txtName = nullptr;
    QLineEdit* txtAddress = nullptr;
    QButtonGroup* rahu = nullptr;
    QButtonGroup* ayanamsha = nullptr;
    QButtonGroup* chartStyle = nullptr;
    QButtonGroup* varna = nullptr;
    QButtonGroup* manglik = nullptr;

    Impl(frmWizard* f, std::function<void()> end) : form(f), onEnd(std::move(end)) {}

    void BuildSide();
    void BuildPages();
    void BuildButtons();
    QWidget* NewPage(const char* name);
    QButtonGroup* Group(QWidget* parent, std::initializer_list<std::tuple<const char*, const char*, int>> options,
                        int x, int y, int w);
    void ShowPage(int index);
    void Finish();
    void End();
};

// ---------------------------------------------------------------------------
// Building

void frmWizard::Impl::BuildSide()
{
    QLabel* side = ui::Label(form, "picSide", QString(), {0, 0, 168, 420});
    side->setAutoFillBackground(true);
    QPalette sp = side->palette();
    sp.setColor(QPalette::Window, QColor(0xfb, 0xf8, 0xf1));
    side->setPalette(sp);
    QLabel* band = ui::Label(form, "picBand", QString(), {168, 0, 3, 420});
    band->setAutoFillBackground(true);
    QPalette bp = band->palette();
    bp.setColor(QPalette::Window, QColor(0xe0, 0x8a, 0x1e));
    band->setPalette(bp);

    QLabel* logo = ui::Label(form, "picLogo", QString(), {44, 24, 80, 80});
    logo->setPixmap(QIcon(":/icons/app.svg").pixmap(80, 80));
    logo->setAlignment(Qt::AlignCenter);
    QLabel* title = ui::Label(form, "lblWizTitle", Q(AppTitle()) + "\nSetup Wizard", {12, 110, 144, 44});
    title->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    QFont tf = title->font();
    tf.setBold(true);
    title->setFont(tf);
    QPalette tp = title->palette();
    tp.setColor(QPalette::WindowText, QColor(0x2b, 0x3a, 0x67));
    title->setPalette(tp);

    for (int i = 0; i < kPageCount; ++i) {
        QLabel* s = ui::Label(form, ("lblStep" + std::to_string(i + 1)).c_str(),
                              QString::number(i + 1) + ".  " + kPages[i].step, {20, 174 + i * 26, 140, 22});
        s->setPalette(tp);
        steps.push_back(s);
    }
    lblCounter = ui::Label(form, "lblCounter", QString(), {20, 380, 140, 22});
    QPalette cp = lblCounter->palette();
    cp.setColor(QPalette::WindowText, QColor(0x5a, 0x63, 0x80));
    lblCounter->setPalette(cp);
}

QWidget* frmWizard::Impl::NewPage(const char* name)
{
    auto* page = new QWidget;
    page->setObjectName(name);
    pages->addWidget(page);
    return page;
}

QButtonGroup* frmWizard::Impl::Group(QWidget* parent,
                                     std::initializer_list<std::tuple<const char*, const char*, int>> options, int x,
                                     int y, int w)
{
    auto* group = new QButtonGroup(form);
    for (const auto& [name, caption, id] : options) {
        group->addButton(ui::Option(parent, name, caption, {x, y, w, 26}), id);
        y += 30;
    }
    return group;
}

void frmWizard::Impl::BuildPages()
{
    lblHeading = ui::Label(form, "lblHeading", QString(), {192, 20, 392, 30});
    QFont hf = lblHeading->font();
    hf.setPointSize(hf.pointSize() + 5);
    hf.setBold(true);
    lblHeading->setFont(hf);
    lblExplain = ui::Label(form, "lblExplain", QString(), {192, 54, 392, 44});
    lblExplain->setWordWrap(true);
    lblExplain->setAlignment(Qt::AlignLeft | Qt::AlignTop);

    pages = new QStackedWidget(form);
    pages->setObjectName("stkPages");
    pages->setGeometry(192, 106, 396, 242);

    QWidget* p = NewPage("pagWelcome");
    QLabel* welcome = ui::Label(p, "lblWelcome",
                                "This wizard asks for your name and address, for the reports, and for the "
                                "reckonings the charts are made with: the motion of Rahu and Ketu, the "
                                "ayanamsha, the chart style, and the Varna and Manglik reckonings.\n\n"
                                "Click Next to begin. If you cancel, " + Q(AppTitle()) +
                                    " runs on its default settings.",
                                {0, 0, 392, 160});
    welcome->setWordWrap(true);
    welcome->setAlignment(Qt::AlignLeft | Qt::AlignTop);

    p = NewPage("pagDetails");
    txtName = ui::TextBox(p, "txtName", {68, 4, 324, 26});
    QLabel* l = ui::Label(p, "lblName", "Na&me:", {0, 4, 62, 26});
    l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    ui::Names(l, txtName);
    txtAddress = ui::TextBox(p, "txtAddress", {68, 40, 324, 26});
    l = ui::Label(p, "lblAddress", "&Address:", {0, 40, 62, 26});
    l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    ui::Names(l, txtAddress);
    txtName->setMaxLength(255);  // the settings file keeps no more
    txtAddress->setMaxLength(255);
    txtName->setText(Q(ReadIni(keys::DispName)));
    txtAddress->setText(Q(ReadIni(keys::DispAdd)));
    txtName->setCursorPosition(0);
    txtAddress->setCursorPosition(0);

    p = NewPage("pagRahu");
    rahu = Group(p, {{"optRahuMean", "&Mean motion (the usual choice)", 1}, {"optRahuTrue", "&True motion", 2}}, 4, 4,
                 360);
    Choose(rahu, keys::RahuKetuMode, 1);

    p = NewPage("pagAyanamsh");
    ayanamsha = Group(p,
                      {{"optLahiri", "N C &Lahiri (the usual choice)", 1},
                       {"optRaman", "B V &Raman", 2},
                       {"optKP", "&Krishnamurthy (KP)", 3},
                       {"optSayan", "&Sayan, without ayanamsha", 12},
                       {"optAyanVakya", "Surya Siddhanta (&Vakya)", 15}},
                      4, 4, 360);
    // An ayanamsha that the wizard does not offer (a custom value, say)
    // stays chosen until another is picked.
    Choose(ayanamsha, keys::AyanType, -1);

    p = NewPage("pagKundli");
    chartStyle = Group(p,
                       {{"optNorthKundli", "N&orth Indian", 0},
                        {"optEastKundli", "&East Indian", 1},
                        {"optSouthKundli", "&South Indian", 2}},
                       4, 4, 160);
    auto* sample = new Kundali(p);
    sample->setObjectName("kunStyle");
    sample->setGeometry(164, 0, 232, 232);
    sample->setAccessibleName("Sample chart");
    // The numbers' boxes are narrow in a chart this small.
    QFont numbers = sample->font();
    numbers.setPointSize(7);
    sample->HouseFont(numbers);
    ApplyChartColors(*sample);
    connect(chartStyle, &QButtonGroup::idToggled, form, [sample](int id, bool on) {
        if (!on) return;
        // Through North, which shows the numbers an East chart hid.
        sample->ChartStyle(Kundali::North);
        sample->ChartStyle(id);
    });
    Choose(chartStyle, keys::KundStyle, 2);
    sample->ChartStyle(chartStyle->checkedId());

    p = NewPage("pagRegional");
    QGroupBox* fv = ui::Frame(p, "framVarna", "Varna", {0, 0, 392, 66});
    varna = Group(fv, {{"optVarnNorth", "N&orth Indian", 1}}, 14, 28, 170);
    varna->addButton(ui::Option(fv, "optVarnSouth", "So&uth Indian", {200, 28, 170, 26}), 2);
    Choose(varna, keys::CalcVarMod, 1);
    QGroupBox* fm = ui::Frame(p, "framManglik", "Manglik", {0, 78, 392, 66});
    manglik = Group(fm, {{"optMangNorth", "Nor&th Indian", 1}}, 14, 28, 170);
    manglik->addButton(ui::Option(fm, "optMangSouth", "Sout&h Indian", {200, 28, 170, 26}), 2);
    Choose(manglik, keys::CalcMangMod, 1);
}

void frmWizard::Impl::BuildButtons()
{
    auto* rule = new QFrame(form);
    rule->setObjectName("linButtons");
    rule->setFrameShape(QFrame::HLine);
    rule->setFrameShadow(QFrame::Sunken);
    rule->setGeometry(180, 358, 412, 2);

    cmdBack = ui::Button(form, "cmdBack", "< &Back", {240, 372, 84, 30});
    cmdNext = ui::Button(form, "cmdNext", "&Next >", {328, 372, 84, 30});
    cmdFinish = ui::Button(form, "cmdFinish", "&Finish", {416, 372, 84, 30});
    cmdCancel = ui::Button(form, "cmdCancel", "&Cancel", {508, 372, 84, 30});
    connect(cmdBack, &QPushButton::clicked, form, [this] { ShowPage(pages->currentIndex() - 1); });
    connect(cmdNext, &QPushButton::clicked, form, [this] { ShowPage(pages->currentIndex() + 1); });
    connect(cmdFinish, &QPushButton::clicked, form, [this] { Finish(); });
    connect(cmdCancel, &QPushButton::clicked, form, &QDialog::reject);
}

void frmWizard::Impl::ShowPage(int index)
{
    if (index < 0 || index >= kPageCount) return;
    pages->setCurrentIndex(index);
    lblHeading->setText(kPages[index].heading);
    lblExplain->setText(kPages[index].explain);
    lblCounter->setText(QString("Step %1 of %2").arg(index + 1).arg(kPageCount));
    for (int i = 0; i < kPageCount; ++i) {
        QFont f = steps[i]->font();
        f.setBold(i == index);
        steps[i]->setFont(f);
    }
    const bool last = index == kPageCount - 1;
    cmdBack->setEnabled(index > 0);
    cmdNext->setEnabled(!last);
    cmdFinish->setEnabled(last);
    (last ? cmdFinish : cmdNext)->setDefault(true);
    // The keyboard goes to the page's first control, or on to the next button.
    QWidget* first = nullptr;
    QWidget* firstOption = nullptr;  // when no option of the page is chosen yet
    for (QWidget* w : pages->currentWidget()->findChildren<QWidget*>()) {
        if (auto* o = qobject_cast<QRadioButton*>(w); o && !o->isChecked()) {
            if (!firstOption) firstOption = o;
            continue;
        }
        if (w->focusPolicy() & Qt::TabFocus) {
            first = w;
            break;
        }
    }
    if (!first) first = firstOption;
    (first ? first : (last ? cmdFinish : cmdNext))->setFocus();
}

// ---------------------------------------------------------------------------
// Ending

void frmWizard::Impl::Finish()
{
    WriteIni(keys::DispName, S(txtName->text()));
    WriteIni(keys::DispAdd, S(txtAddress->text()));
    WriteSetting(keys::RahuKetuMode, vb::CStr(rahu->checkedId()));
    if (ayanamsha->checkedId() >= 0) WriteSetting(keys::AyanType, vb::CStr(ayanamsha->checkedId()));
    WriteSetting(keys::KundStyleWritten, vb::CStr(chartStyle->checkedId()));
    WriteSetting(keys::CalcVarMod, vb::CStr(varna->checkedId()));
    WriteSetting(keys::CalcMangMod, vb::CStr(manglik->checkedId()));
    WriteSetting(keys::DoneSetup, "True");
    form->accept();
}

// The wizard is over, finished or not: the program goes on loading.
void frmWizard::Impl::End()
{
    if (ended) return;
    ended = true;
    if (onEnd) onEnd();
}

frmWizard::frmWizard(std::function<void()> onEnd, QWidget* parent)
    : QDialog(parent), d_(new Impl(this, std::move(onEnd)))
{
    setObjectName("frmWizard");
    setWindowTitle(Q(AppTitle()) + " Setup Wizard");
    setFixedSize(600, 420);
    d_->BuildSide();
    d_->BuildPages();
    d_->BuildButtons();
    d_->ShowPage(0);

    connect(this, &QDialog::accepted, this, [this] { d_->End(); });
    // Cancel, Escape and the window's close box all come here.
    connect(this, &QDialog::rejected, this, [this] {
        if (d_->ended) return;
        WriteSetting(keys::DoneSetup, "True");
        MsgBox("You have chosen to cancel Setup Wizard, " + AppTitle() + " will run on default settings." + "\n" +
                   "You can run Setup Wizard later by clicking on 'Settings-->Setup Wizard.'",
               MsgButtons::OK, "Setup not completed", MsgIcon::Information);
        d_->End();
    });
}

frmWizard::~frmWizard() { delete d_; }

}  // namespace ranvel
