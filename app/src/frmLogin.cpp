#include "ranvel/app/frmLogin.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QButtonGroup>
#include <QComboBox>
#include <QCompleter>
#include <QDateEdit>
#include <QDateTime>
#include <QFocusEvent>
#include <QGroupBox>
#include <QHash>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QTreeWidget>

#include "ranvel/app/ImageButton.h"
#include "ranvel/app/appinfo.h"
#include "ranvel/app/formkit.h"
#include "ranvel/app/frmEditLongLat.h"
#include "ranvel/app/frmStatus.h"
#include "ranvel/app/personstore.h"
#include "ranvel/app/typeahead.h"
#include "ranvel/app/zonehint.h"
#include "ranvel/data/datafiles.h"
#include "ranvel/data/messages.h"
#include "ranvel/platform/apppaths.h"
#include "ranvel/platform/gui/dialogs.h"
#include "ranvel/platform/gui/qstr.h"
#include "ranvel/platform/sinks.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

using ui::Box;

namespace {

// Picture of a category button.
QIcon CategoryIcon(const char* button)
{
    static const QHash<QString, QString> names = {
        {"butBusiness", "business"},         {"butBuySell", "buysell"},   {"butConstruction", "construction"},
        {"butCourt", "court"},               {"butEducation", "education"}, {"butElection", "election"},
        {"butFarming", "farming"},           {"butFinancial", "financial"}, {"butHome", "home"},
        {"butJanma", "janma"},               {"butJob", "job"},           {"butJourney", "journey"},
        {"butMarriage", "marriage"},         {"butMiscllaneous", "miscellaneous"},
    };
    return QIcon(":/icons/" + names.value(button) + ".svg");
}

QIcon Icon(const char* name) { return QIcon(QString(":/icons/%1.svg").arg(name)); }

// The holder of one page of the form: all four lie at the same place.
QWidget* Page(QWidget* form, const char* name)
{
    auto* page = new QWidget(form);
    page->setObjectName(name);
    page->setGeometry(10, 60, 780, 430);
    return page;
}

}  // namespace

struct frmLogin::Impl {
    frmLogin* form;

    // header and foot
    QLabel* lblTitle = nullptr;
    QLabel* lblStep = nullptr;
    QComboBox* cmbLangu = nullptr;
    QPushButton* cmdSettings = nullptr;
    QLabel* lblHint = nullptr;
    QPushButton* cmdExit = nullptr;
    QPushButton* flpBack = nullptr;
    QPushButton* CmdGenerate = nullptr;

    // page 1
    QWidget* framMuhus = nullptr;
    QGroupBox* framMuhuList = nullptr;
    QTreeWidget* tvMuhuList = nullptr;
    QButtonGroup* categories = nullptr;
    std::vector<std::pair<ImageButton*, const CategoryButton*>> categoryButtons;

    // page 2
    QWidget* frmMuhurtha = nullptr;
    QRadioButton* optMuhuRange = nullptr;
    QRadioButton* optMuhuCheck = nullptr;
    QGroupBox* framMuhuMoment = nullptr;
    QDateEdit* dtMuhuDate = nullptr;
    QLineEdit* txtMuhuBTime = nullptr;
    QRadioButton* optMuhuAMPM[2] = {};
    QGroupBox* framMuhuRange = nullptr;
    QDateEdit* dtMuhuFrom = nullptr;
    QDateEdit* dtMuhuTo = nullptr;
    QGroupBox* framMuhuTimeRange = nullptr;
    QLineEdit* txtMuhDTFrom = nullptr;
    QLineEdit* txtMuhDTTo = nullptr;
    QRadioButton* optMuhuR1AMPM[2] = {};
    QRadioButton* optMuhR2AMPM[2] = {};
    PlaceFields muhuPlace;
    QLabel* lblChosen = nullptr;

    // page 3 and 4
    QWidget* frmSingleGuy = nullptr;
    QWidget* frmMatch = nullptr;
    PersonFields person, boy, girl;
    // The notes beside the zone fields.
    std::vector<ZoneHint*> zoneHints;

    QHash<QObject*, QString> hints;
    std::shared_ptr<Database> muhu;
    LanguageList languages;
    bool filling = false;  // the Muhurtha list being filled: its changes are not the user's
    TypeAhead* typeAhead = nullptr;

    explicit Impl(frmLogin* f) : form(f) {}

    // building
    void BuildHeader();
    void BuildPage1();
    void BuildPage2();
    void BuildPage3();
    void BuildPage4();
    void BuildFoot();
    QWidget* HalfPair(QWidget* parent, const char* name, QRadioButton* (&pair)[2], Box at);
    void PlaceRows(QWidget* parent, PlaceFields& f, const char* const names[7], int x, int y, int labelW, int step);
    void PersonBlock(QWidget* parent, PersonFields& f, const char* const names[5], const char* const place[7],
                     bool withSex, int x, int y);
    void Hint(QWidget* w, const QString& text);
    void WatchTimeField(QLineEdit* field, QRadioButton* (&pair)[2]);
    // The note beside a place block's zone field, for the request's notes on
    // that block ("Place", "Person", "Boy", "Girl"), asked anew whenever the
    // place, the zone or one of the moment's fields changes.
    void WatchZone(PlaceFields& f, const char* zoneNote, const char* field, std::initializer_list<QWidget*> moment);

    // lists
    void FillAllPersonLists();
    // The hemisphere letters of a place block.
    void WireLetters(PlaceFields& f);
    void SetHintLine(const QString& text) { lblHint->setText(text); }
    // The words of the step line and of the page 2 summary, after what is
    // chosen now.
    void SayWhatIsChosen();

    bool TimeRefused(QLineEdit* field) const;
    QLineEdit* RefusedTimeField() const;
};

// ---------------------------------------------------------------------------
// Building the form

void frmLogin::Impl::Hint(QWidget* w, const QString& text)
{
    hints.insert(w, text);
    w->installEventFilter(form);
    if (auto* combo = qobject_cast<QComboBox*>(w); combo && combo->lineEdit()) {
        hints.insert(combo->lineEdit(), text);
        combo->lineEdit()->installEventFilter(form);
    }
}

void frmLogin::Impl::BuildHeader()
{
    lblTitle = ui::Label(form, "lblTitle", QString(), {14, 8, 420, 28});
    QFont tf = lblTitle->font();
    tf.setPointSize(15);
    tf.setBold(true);
    lblTitle->setFont(tf);
    lblStep = ui::Label(form, "lblStep", QString(), {16, 36, 420, 18});
    QPalette sp = lblStep->palette();
    sp.setColor(QPalette::WindowText, sp.color(QPalette::PlaceholderText));
    lblStep->setPalette(sp);

    QLabel* lang = ui::Label(form, "lblLangu", "&Language:", {470, 14, 70, 24});
    lang->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    cmbLangu = ui::Combo(form, "cmbLangu", false, {546, 14, 150, 24});
    ui::Names(lang, cmbLangu);
    Hint(cmbLangu, Q(Msg(115)));
    cmdSettings = ui::Button(form, "cmdSettings", "&Settings...", {702, 13, 88, 26});
    cmdSettings->setIcon(Icon("settings"));
    Hint(cmdSettings, Q(Msg(116)));
}

void frmLogin::Impl::BuildPage1()
{
    framMuhus = Page(form, "framMuhus");
    QGroupBox* framCategory = ui::Frame(framMuhus, "framCategory", "Category", {0, 0, 488, 430});
    categories = new QButtonGroup(form);
    categories->setExclusive(true);
    int i = 0;
    for (const CategoryButton& c : CategoryButtons()) {
        const int col = i % 2, row = i / 2;
        auto* b = new ImageButton(CategoryIcon(c.button), c.caption, c.description, framCategory);
        b->setObjectName(c.button);
        b->setGeometry(10 + col * 236, 22 + row * 57, 230, 54);
        b->setCheckable(true);
        categories->addButton(b);
        categoryButtons.emplace_back(b, &c);
        Hint(b, c.description);
        connect(b, &QAbstractButton::clicked, form, [this, b, &c] {
            framMuhuList->setTitle(c.caption);
            form->FillMuhurthaList(c.key);
            tvMuhuList->setFocus();
            (void)b;
        });
        ++i;
    }
    framMuhuList = ui::Frame(framMuhus, "framMuhuList", "Muhurtha", {496, 0, 284, 430});
    tvMuhuList = new QTreeWidget(framMuhuList);
    tvMuhuList->setObjectName("tvMuhuList");
    tvMuhuList->setGeometry(10, 22, 264, 398);
    tvMuhuList->setHeaderHidden(true);
    tvMuhuList->setRootIsDecorated(false);
    tvMuhuList->setAccessibleName("Muhurtha");
    tvMuhuList->setWordWrap(true);
    connect(tvMuhuList, &QTreeWidget::currentItemChanged, form, [this](QTreeWidgetItem* item) {
        if (!filling && item) form->SetMuhuName(S(item->text(0)));
    });
    connect(tvMuhuList, &QTreeWidget::itemDoubleClicked, form, [this](QTreeWidgetItem* item) {
        form->SetMuhuName(S(item->text(0)));
        form->ShowRequestPage(2);
    });
}

QWidget* frmLogin::Impl::HalfPair(QWidget* parent, const char* name, QRadioButton* (&pair)[2], Box at)
{
    // The two options of a pair sit in a holder of their own, so that each
    // pair is chosen apart from the others.
    auto* holder = new QWidget(parent);
    holder->setObjectName(QString("fra") + name);
    holder->setGeometry(at.x, at.y, at.w, at.h);
    const std::string n = name;
    pair[0] = ui::Option(holder, (n + "(0)").c_str(), "AM", {0, 0, at.w / 2, at.h});
    pair[1] = ui::Option(holder, (n + "(1)").c_str(), "PM", {at.w / 2, 0, at.w / 2, at.h});
    return holder;
}

void frmLogin::Impl::PlaceRows(QWidget* parent, PlaceFields& f, const char* const names[7], int x, int y, int labelW,
                               int step)
{
    const int fx = x + labelW + 6;
    // One row: its label, tied to the control that the row makes.
    auto row = [&](int i, const char* caption, auto&& make) {
        QLabel* l = ui::Label(parent, (std::string("lbl") + names[i]).c_str(), caption, {x, y, labelW, 24});
        auto* control = make(names[i]);
        ui::Names(l, control);
        l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        return control;
    };
    auto combo = [&](const char* name) { return ui::Combo(parent, name, true, {fx, y, 220, 24}); };
    auto degrees = [&](const char* name) { return ui::MaskEdit(parent, name, "999:99", kBlankDegrees, {fx, y, 64, 24}); };
    // The hemisphere letter beside a latitude or longitude.
    auto letter = [&](const char* name, const char* value, const char* spoken) {
        QLineEdit* e = ui::TextBox(parent, name, {fx + 70, y, 28, 24});
        e->setMaxLength(1);
        e->setText(value);
        e->setAlignment(Qt::AlignCenter);
        ui::Speak(e, spoken);
        return e;
    };
    f.country = row(0, "C&ountry:", combo);
    y += step;
    f.city = row(1, "Cit&y:", combo);
    y += step;
    f.lati = row(2, "L&atitude:", degrees);
    f.ns = letter(names[4], "N", "North or South (N or S)");
    y += step;
    f.longi = row(3, "Lon&gitude:", degrees);
    f.ew = letter(names[5], "E", "East or West (E or W)");
    y += step;
    f.gmt = row(6, "Time &zone:", [&](const char* name) {
        return ui::MaskEdit(parent, name, "#99.99", kBlankZone, {fx, y, 64, 24});
    });
    QLabel* note = ui::Label(parent, (std::string("lbl") + names[6] + "Note").c_str(), "hours.minutes from GMT",
                             {fx + 70, y, 150, 24});
    QPalette np = note->palette();
    np.setColor(QPalette::WindowText, np.color(QPalette::PlaceholderText));
    note->setPalette(np);
}

void frmLogin::Impl::WatchZone(PlaceFields& f, const char* zoneNote, const char* field,
                               std::initializer_list<QWidget*> moment)
{
    auto* hint = f.gmt->parentWidget()->findChild<QLabel*>(QString("lbl") + f.gmt->objectName() + "Note");
    if (!hint) return;
    const std::string which = field;
    auto* zone = new ZoneHint(hint, f.gmt, [this, which] {
        std::vector<ZoneNote> mine;
        for (ZoneNote& n : RequestZoneNotes(*RecosDB(), form->FieldsRequest()))
            if (n.Field == which) mine.push_back(std::move(n));
        return mine;
    }, zoneNote);
    // Reached by the keyboard right after the zone field.
    QWidget::setTabOrder(f.gmt, zone);
    zoneHints.push_back(zone);
    // With the keyboard on the note, the hint line gives its whole sentence.
    auto refresh = [this, zone] {
        zone->Refresh();
        Hint(zone, zone->accessibleDescription());
    };
    // The boxes' own edits: a city picked from the store is put in with the
    // box itself kept quiet.
    for (QComboBox* box : {f.country, f.city}) {
        if (box->lineEdit()) connect(box->lineEdit(), &QLineEdit::textChanged, zone, refresh);
        else connect(box, &QComboBox::currentTextChanged, zone, refresh);
    }
    for (QLineEdit* e : {f.gmt, f.lati, f.longi}) connect(e, &QLineEdit::textChanged, zone, refresh);
    for (QWidget* w : moment) {
        if (auto* d = qobject_cast<QDateEdit*>(w)) connect(d, &QDateEdit::dateChanged, zone, refresh);
        else if (auto* e = qobject_cast<QLineEdit*>(w)) connect(e, &QLineEdit::textChanged, zone, refresh);
        else if (auto* o = qobject_cast<QRadioButton*>(w)) connect(o, &QRadioButton::toggled, zone, refresh);
    }
}

void frmLogin::Impl::WatchTimeField(QLineEdit* field, QRadioButton* (&pair)[2])
{
    field->installEventFilter(form);
    // The option follows the text: under 12 is AM.
    connect(field, &QLineEdit::textChanged, form, [field, &pair] { FollowHalf(field, pair); });
    for (int half = 0; half < 2; ++half) {
        connect(pair[half], &QRadioButton::clicked, form, [field, half] {
            const QString now = field->displayText();
            const QString rewritten = frmLogin::RewriteForHalf(now, half);
            if (rewritten != now) field->setText(rewritten);
        });
    }
}

void frmLogin::Impl::BuildPage2()
{
    frmMuhurtha = Page(form, "frmMuhurtha");

    QGroupBox* kind = ui::Frame(frmMuhurtha, "framSearchKind", "What to look for", {0, 0, 380, 84});
    optMuhuRange = ui::Option(kind, "optMuhuRange", "Find the best Muhurtha in a &range of days", {12, 24, 356, 24});
    optMuhuCheck = ui::Option(kind, "optMuhuCheck", "&Check one moment", {12, 52, 356, 24});
    Hint(optMuhuRange, "Find the best Muhurtha from a given time range.");
    Hint(optMuhuCheck, "Check a particular moment for auspiciousness.");

    framMuhuMoment = ui::Frame(frmMuhurtha, "framMuhuMoment", "The moment", {0, 92, 380, 100});
    QLabel* l = ui::Label(framMuhuMoment, "lblMuhuDate", "&Date:", {10, 26, 60, 24});
    dtMuhuDate = ui::DatePicker(framMuhuMoment, "dtMuhuDate", {76, 26, 130, 24});
    ui::Names(l, dtMuhuDate);
    l = ui::Label(framMuhuMoment, "lblMuhuBTime", "T&ime:", {10, 60, 60, 24});
    txtMuhuBTime = ui::MaskEdit(framMuhuMoment, "txtMuhuBTime", "99.99", kBlankTime, {76, 60, 60, 24});
    ui::Names(l, txtMuhuBTime);
    HalfPair(framMuhuMoment, "optMuhuAMPM", optMuhuAMPM, {146, 60, 120, 24});
    ui::Label(framMuhuMoment, "lblMuhuBTimeNote", "HH.MM, 24-hour clock", {270, 60, 104, 24})->setWordWrap(true);

    framMuhuRange = ui::Frame(frmMuhurtha, "framMuhuRange", "Days", {0, 92, 380, 96});
    l = ui::Label(framMuhuRange, "lblMuhuFrom", "&From:", {10, 26, 60, 24});
    dtMuhuFrom = ui::DatePicker(framMuhuRange, "dtMuhuFrom", {76, 26, 130, 24});
    ui::Names(l, dtMuhuFrom);
    Hint(dtMuhuFrom, "Muhurta will be searched from this date.");
    l = ui::Label(framMuhuRange, "lblMuhuTo", "&To:", {10, 60, 60, 24});
    dtMuhuTo = ui::DatePicker(framMuhuRange, "dtMuhuTo", {76, 60, 130, 24});
    ui::Names(l, dtMuhuTo);
    Hint(dtMuhuTo, "Muhurta will be searched to this date.");

    framMuhuTimeRange = ui::Frame(frmMuhurtha, "framMuhuTimeRange", "Hours of each day", {0, 196, 380, 96});
    l = ui::Label(framMuhuTimeRange, "lblMuhDTFrom", "Fro&m:", {10, 26, 60, 24});
    txtMuhDTFrom = ui::MaskEdit(framMuhuTimeRange, "txtMuhDTFrom", "99.99", kBlankTime, {76, 26, 60, 24});
    ui::Names(l, txtMuhDTFrom);
    Hint(txtMuhDTFrom, "Start time for Muhurta search.");
    HalfPair(framMuhuTimeRange, "optMuhuR1AMPM", optMuhuR1AMPM, {146, 26, 120, 24});
    l = ui::Label(framMuhuTimeRange, "lblMuhDTTo", "Unt&il:", {10, 60, 60, 24});
    txtMuhDTTo = ui::MaskEdit(framMuhuTimeRange, "txtMuhDTTo", "99.99", kBlankTime, {76, 60, 60, 24});
    ui::Names(l, txtMuhDTTo);
    Hint(txtMuhDTTo, "End time for Muhurta search.");
    HalfPair(framMuhuTimeRange, "optMuhR2AMPM", optMuhR2AMPM, {146, 60, 120, 24});
    ui::Label(framMuhuTimeRange, "lblMuhDTNote", "HH.MM, 24-hour clock", {270, 26, 104, 58})->setWordWrap(true);

    QGroupBox* place = ui::Frame(frmMuhurtha, "framMuhuPlace", "Place of the Muhurtha", {392, 0, 388, 210});
    static const char* const names[7] = {"cmbMuhuCountry", "cmbMuhuCity", "txtMuhuLati", "txtMuhuLongi",
                                         "TxtMuhuNS",      "txtMuhuEW",   "txtMuhuGMT"};
    PlaceRows(place, muhuPlace, names, 10, 26, 78, 34);
    Hint(muhuPlace.country, "Select the country for the Muhurta.");
    Hint(muhuPlace.city, "Select city for the Muhurta.");

    QGroupBox* chosen = ui::Frame(frmMuhurtha, "framChosen", "The search", {392, 218, 388, 110});
    lblChosen = ui::Label(chosen, "lblChosen", QString(), {12, 22, 364, 80});
    lblChosen->setWordWrap(true);
    lblChosen->setAlignment(Qt::AlignLeft | Qt::AlignTop);

    WatchTimeField(txtMuhuBTime, optMuhuAMPM);
    WatchTimeField(txtMuhDTFrom, optMuhuR1AMPM);
    WatchTimeField(txtMuhDTTo, optMuhR2AMPM);

    connect(optMuhuCheck, &QRadioButton::toggled, form, [this](bool on) {
        if (!on) return;
        framMuhuMoment->show();
        framMuhuRange->hide();
        framMuhuTimeRange->hide();
        form->request_.SearchMode = 2;
        SayWhatIsChosen();
    });
    connect(optMuhuRange, &QRadioButton::toggled, form, [this](bool on) {
        if (!on) return;
        framMuhuMoment->hide();
        framMuhuRange->show();
        framMuhuTimeRange->show();
        form->request_.SearchMode = 1;
        SayWhatIsChosen();
    });
}

void frmLogin::Impl::PersonBlock(QWidget* parent, PersonFields& f, const char* const names[5],
                                 const char* const place[7], bool withSex, int x, int y)
{
    const int labelW = 84, fx = x + labelW + 6, step = 34;
    QLabel* l = ui::Label(parent, (std::string("lbl") + names[0]).c_str(), "&Name:", {x, y, labelW, 24});
    f.name = ui::Combo(parent, names[0], true, {fx, y, 240, 24});
    ui::Names(l, f.name);
    y += step;
    if (withSex) {
        ui::Label(parent, "lblSex", "Sex:", {x, y, labelW, 24})->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        auto* holder = new QWidget(parent);
        holder->setObjectName("fraoptMF");
        holder->setGeometry(fx, y, 200, 24);
        f.male = ui::Option(holder, "optMF(0)", "&Male", {0, 0, 90, 24});
        f.female = ui::Option(holder, "optMF(1)", "F&emale", {96, 0, 100, 24});
        f.male->setChecked(true);
        y += step;
    }
    l = ui::Label(parent, (std::string("lbl") + names[1]).c_str(), "Birth &date:", {x, y, labelW, 24});
    f.date = ui::MaskEdit(parent, names[1], "99/99/9999", kBlankDate, {fx, y, 90, 24});
    ui::Names(l, f.date);
    ui::Label(parent, (std::string("lbl") + names[1] + "Note").c_str(), "dd/mm/yyyy", {fx + 98, y, 100, 24});
    y += step;
    l = ui::Label(parent, (std::string("lbl") + names[2]).c_str(), "Birth t&ime:", {x, y, labelW, 24});
    f.time = ui::MaskEdit(parent, names[2], "99.99", kBlankTime, {fx, y, 60, 24});
    ui::Names(l, f.time);
    HalfPair(parent, names[3], f.half, {fx + 70, y, 120, 24});
    f.half[0]->setChecked(true);
    WatchTimeField(f.time, f.half);
    y += step;
    PlaceRows(parent, f.place, place, x, y, labelW, step);
    for (QLabel* lbl : parent->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly))
        if (lbl->buddy() || lbl->objectName() == "lblSex") lbl->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

void frmLogin::Impl::BuildPage3()
{
    frmSingleGuy = Page(form, "frmSingleGuy");
    QGroupBox* who = ui::Frame(frmSingleGuy, "framPerson", "The person", {0, 0, 520, 390});
    static const char* const names[5] = {"cmbPerson", "txtBDate", "txtBTime", "optAMPM", ""};
    static const char* const place[7] = {"cmbCountry", "cmbCity", "txtLati", "txtLongi", "TextNS", "TextEW", "txtGMT"};
    PersonBlock(who, person, names, place, true, 10, 26);
    Hint(person.name, "Enter the name of the person the Muhurtha is for: type the first letters of a saved "
                      "person and press Enter to fill in the birth details.");
    Hint(person.male, Q(Msg(102)));
    Hint(person.female, Q(Msg(103)));
    Hint(person.date, Q(Msg(104)));
    Hint(person.time, Q(Msg(107)));
    Hint(person.half[0], Q(Msg(108)));
    Hint(person.half[1], Q(Msg(109)));
    Hint(person.place.country, Q(Msg(110)));
    Hint(person.place.gmt, Q(Msg(111)));
    Hint(person.place.city, Q(Msg(112)));
    Hint(person.place.lati, Q(Msg(113)));
    Hint(person.place.longi, Q(Msg(114)));

    QPushButton* save = ui::Button(who, "cmdSavePerson", "Sa&ve Person", {100, 346, 126, 30});
    save->setIcon(Icon("save"));
    Hint(save, Q(Msg(105)));
    connect(save, &QPushButton::clicked, form, &frmLogin::SavePerson);
    QPushButton* del = ui::Button(who, "cmdDelPerson", "Dele&te Person", {234, 346, 126, 30});
    del->setIcon(Icon("delete"));
    Hint(del, Q(Msg(106)));
    connect(del, &QPushButton::clicked, form, &frmLogin::DeletePerson);
    QPushButton* now = ui::Button(who, "cmdNowCast", "Born no&w", {368, 346, 126, 30});
    now->setIcon(Icon("now"));
    Hint(now, "The person is born at this moment: date and time of birth become now, and the Muhurtha is found.");
    connect(now, &QPushButton::clicked, form, &frmLogin::cmdNowCast);

    QGroupBox* files = ui::Frame(frmSingleGuy, "framPersonFiles", "Exchange files", {532, 0, 248, 190});
    struct FileButton {
        const char* name;
        const char* caption;
        const char* icon;
        int msg;
        void (frmLogin::*run)();
    };
    static const FileButton buttons[] = {
        {"cmdSaveFile", "Save Person to File...", "save", 122, &frmLogin::SavePersonToFile},
        {"cmdOpenFile", "Import Person File...", "open", 123, nullptr},
        {"cmdExportDB", "Export All Persons...", "exportdb", 124, &frmLogin::SaveDatabaseToFile},
        {"cmdMergeDB", "Merge Person Database...", "mergedb", 125, nullptr},
    };
    int y = 26;
    for (const FileButton& b : buttons) {
        QPushButton* button = ui::Button(files, b.name, b.caption, {12, y, 224, 30});
        button->setIcon(Icon(b.icon));
        Hint(button, Q(Msg(b.msg)));
        if (b.run) connect(button, &QPushButton::clicked, form, b.run);
        y += 38;
    }
    QLabel* note = ui::Label(frmSingleGuy, "lblPersonNote",
                             "Persons you save are kept on this computer. Type the first letters of a name to "
                             "find one; Enter fills in the birth details.\n\nPerson files carry persons to "
                             "another computer: one person (.JKP) or all of them (.JKD).",
                             {538, 202, 236, 150});
    note->setWordWrap(true);
    note->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    connect(files->findChild<QPushButton*>("cmdOpenFile"), &QPushButton::clicked, form,
            [this] { form->ImportPersons(false); });
    connect(files->findChild<QPushButton*>("cmdMergeDB"), &QPushButton::clicked, form,
            [this] { form->ImportPersons(true); });
}

void frmLogin::Impl::BuildPage4()
{
    frmMatch = Page(form, "frmMatch");
    QGroupBox* groom = ui::Frame(frmMatch, "framBoy", "The groom", {0, 0, 386, 330});
    static const char* const boyNames[5] = {"cmbBoyName", "txtBoyDate", "txtBoyTime", "optBoyAMPM", ""};
    static const char* const boyPlace[7] = {"cmbBoyCountry", "cmbBoyPlace", "txtBoyLatti", "txtBoyLongi",
                                            "txtBoyNS",      "txtBoyEW",    "txtBoyGMT"};
    PersonBlock(groom, boy, boyNames, boyPlace, false, 4, 26);
    boy.sex = 1;
    QGroupBox* bride = ui::Frame(frmMatch, "framGal", "The bride", {394, 0, 386, 330});
    static const char* const galNames[5] = {"cmbGalName", "txtGalDate", "txtGalTime", "optGalAMPM", ""};
    static const char* const galPlace[7] = {"cmbGalCountry", "cmbGalPlace", "txtGalLatti", "txtGalLongi",
                                            "txtGalNS",      "txtGalEW",    "txtGalGMT"};
    PersonBlock(bride, girl, galNames, galPlace, false, 4, 26);
    girl.sex = 2;
    Hint(boy.name, "Select the prospective groom.");
    Hint(boy.place.country, "Boy's country of birth.");
    Hint(boy.place.city, "Boy's place of birth.");
    Hint(boy.date, "Boy's birth date.");
    Hint(boy.time, "Boy's birth time.");
    Hint(girl.name, "Select the prospective bride.");
    Hint(girl.place.country, "Girl's country of birth.");
    Hint(girl.date, "Girl's birth date.");
    // The girl's time and place fields show her date's hint.
    Hint(girl.time, "Girl's birth date.");
    Hint(girl.place.city, "Girl's birth date.");
}

void frmLogin::Impl::BuildFoot()
{
    cmdExit = ui::Button(form, "cmdExit", "E&xit", {10, 512, 90, 30});
    cmdExit->setIcon(Icon("exit"));
    lblHint = ui::Label(form, "lblHint", QString(), {112, 498, 458, 56});
    lblHint->setWordWrap(true);
    lblHint->setFrameShape(QFrame::StyledPanel);
    lblHint->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    lblHint->setMargin(4);
    lblHint->setAccessibleName("Hint");
    flpBack = ui::Button(form, "flpBack", "< &Back", {580, 512, 96, 30});
    CmdGenerate = ui::Button(form, "CmdGenerate", "&Next >", {684, 512, 106, 30});
    CmdGenerate->setDefault(true);
    connect(cmdExit, &QPushButton::clicked, form, &frmLogin::cmdExit);
    connect(flpBack, &QPushButton::clicked, form, &frmLogin::flpBack);
    connect(CmdGenerate, &QPushButton::clicked, form, &frmLogin::CmdGenerate);
}

// ---------------------------------------------------------------------------
// Lists and keys

void frmLogin::Impl::FillAllPersonLists()
{
    for (QComboBox* c : {person.name, boy.name, girl.name}) TypeAhead::FillPersons(c);
}

void frmLogin::Impl::WireLetters(PlaceFields& f)
{
    // Hemisphere letters are kept in capitals.
    for (QLineEdit* e : {f.ns, f.ew}) {
        e->installEventFilter(form);
        connect(e, &QLineEdit::textEdited, form, [e](const QString& t) {
            if (t != t.toUpper()) e->setText(t.toUpper());
        });
        connect(e, &QLineEdit::textChanged, form, [e] { e->selectAll(); });
    }
}

bool frmLogin::Impl::TimeRefused(QLineEdit* field) const { return MuhurthaRequest::ValiDateTime(Text(field)); }

QLineEdit* frmLogin::Impl::RefusedTimeField() const
{
    for (QLineEdit* f : {txtMuhuBTime, txtMuhDTFrom, txtMuhDTTo})
        if (f->isVisibleTo(form) && TimeRefused(f)) return f;
    return nullptr;
}

// ---------------------------------------------------------------------------
// The form

frmLogin::frmLogin(QWidget* parent) : QWidget(parent), d_(std::make_unique<Impl>(this))
{
    setObjectName("frmLogin");
    setFixedSize(800, 560);
    // Made in the order the keyboard takes: the page, the commands at the
    // foot, then the language and the settings at the top.
    d_->BuildPage1();
    d_->BuildPage2();
    d_->BuildPage3();
    d_->BuildPage4();
    d_->BuildFoot();
    d_->BuildHeader();
    d_->WatchZone(d_->muhuPlace, "cmdMuhuZoneNote", "Place",
                  {d_->optMuhuCheck, d_->dtMuhuDate, d_->txtMuhuBTime, d_->optMuhuAMPM[0], d_->dtMuhuFrom,
                   d_->dtMuhuTo, d_->txtMuhDTFrom, d_->txtMuhDTTo});
    d_->WatchZone(d_->person.place, "cmdZoneNote", "Person",
                  {d_->person.date, d_->person.time, d_->person.half[0]});
    d_->WatchZone(d_->boy.place, "cmdBoyZoneNote", "Boy", {d_->boy.date, d_->boy.time, d_->boy.half[0]});
    d_->WatchZone(d_->girl.place, "cmdGalZoneNote", "Girl", {d_->girl.date, d_->girl.time, d_->girl.half[0]});
    d_->typeAhead = new TypeAhead(this, [this](const QString& text) { d_->SetHintLine(text); });
    d_->typeAhead->WirePlace(d_->muhuPlace);
    d_->typeAhead->WirePerson(d_->person, [this](const std::string& name) { LoadPerson(name, ""); });
    d_->typeAhead->WirePerson(d_->boy, [this](const std::string& name) { LoadPerson(name, "Boy"); });
    d_->typeAhead->WirePerson(d_->girl, [this](const std::string& name) { LoadPerson(name, "Gal"); });
    for (PlaceFields* f : {&d_->muhuPlace, &d_->person.place, &d_->boy.place, &d_->girl.place}) d_->WireLetters(*f);
    connect(d_->cmdSettings, &QPushButton::clicked, this, [this] {
        ui::RunCommand([this] {
            frmEditLongLat dialog(frmEditLongLat::Tab::Ayanamsh, this);
            dialog.exec();
            RefillPlaceLists();
        });
    });

    // Loading: the present in the date and time fields.
    const QDateTime now = QDateTime::currentDateTime();
    for (QDateEdit* d : {d_->dtMuhuDate, d_->dtMuhuFrom, d_->dtMuhuTo}) d->setDate(now.date());
    const QString clock = now.toString("HH.mm");
    for (QLineEdit* t : {d_->txtMuhuBTime, d_->txtMuhDTFrom, d_->txtMuhDTTo}) {
        t->setText(clock);
        emit t->textChanged(t->text());  // the AM/PM option follows even when the text was already there
    }

    // The lists of countries, cities, persons and languages.
    d_->filling = true;
    d_->typeAhead->SetFilling(true);
    for (QComboBox* c : {d_->muhuPlace.country, d_->person.place.country, d_->boy.place.country,
                         d_->girl.place.country})
        TypeAhead::FillCountries(c);
    for (QComboBox* c : {d_->muhuPlace.city, d_->person.place.city, d_->boy.place.city, d_->girl.place.city})
        TypeAhead::FillCities(c, "India");
    d_->FillAllPersonLists();
    d_->languages.Fill();
    for (const std::string& name : d_->languages.Items()) d_->cmbLangu->addItem(Q(name));
    d_->cmbLangu->setCurrentIndex(d_->languages.Index());
    connect(d_->cmbLangu, qOverload<int>(&QComboBox::currentIndexChanged), this, [this](int i) {
        if (i >= 0) ui::RunCommand([&] { d_->languages.Select(i); });
    });
    d_->muhu = Database::Open(EphePath("COMMON\\MUHU.DAT"));
    Horomode() = 3;

    auto first = RecosDB()->OpenRecordset("SELECT Name FROM Person");
    if (first->HasRows()) {
        first->MoveFirst();
        SetBoxText(d_->person.name, Q(first->Field("Name").ToTextOrEmpty()));
    }
    d_->typeAhead->SetFilling(false);
    d_->filling = false;

    for (auto& [button, category] : d_->categoryButtons) {
        if (std::string(category->button) == "butJanma") {
            button->setChecked(true);
            d_->framMuhuList->setTitle(category->caption);
            FillMuhurthaList(category->key);
        }
    }
    ShowRequestPage(1);
}

void frmLogin::RefillPlaceLists()
{
    const bool was = d_->typeAhead->Filling();
    d_->typeAhead->SetFilling(true);
    for (PlaceFields* f : {&d_->muhuPlace, &d_->person.place, &d_->boy.place, &d_->girl.place}) {
        TypeAhead::FillCountries(f->country);
        TypeAhead::FillCities(f->city, Text(f->country).empty() ? "India" : Text(f->country));
    }
    d_->typeAhead->SetFilling(was);
}

frmLogin::~frmLogin()
{
    // The controls outlive the form's own state by a moment: what they say
    // while they go (a last focus change) must not reach it.
    for (QObject* child : findChildren<QObject*>()) {
        child->blockSignals(true);
        child->removeEventFilter(this);
    }
}

QString frmLogin::Hint() const { return d_->lblHint->text(); }

QString frmLogin::Title() const { return Q(AppTitle()) + "-" + Q(request_.MuhuName); }

void frmLogin::Impl::SayWhatIsChosen()
{
    const MuhurthaRequest& r = form->request_;
    const int page = r.RequestPage;
    lblStep->setText(QString("Step %1 of 3").arg(page == 4 ? 3 : page) +
                     (r.MuhuName.empty() ? QString() : "  \u2014  " + Q(r.MuhuName)));
    const bool marriage = vb::UCase(r.Category) == "MARRIAGE";
    const QString what = "Muhurtha: " + Q(r.MuhuName.empty() ? "(none chosen)" : r.MuhuName) + "\n";
    const QString next = marriage ? "\nThe couple is asked for next." : "\nThe person is asked for next.";
    if (optMuhuCheck->isChecked())
        lblChosen->setText(what + "The moment given is checked: its score is found, and its lagna's span is the "
                                  "Muhurtha." + next);
    else
        lblChosen->setText(what +
                           "Each day of the range is searched within its hours, and the moment with the highest "
                           "score is kept; its lagna's span is the Muhurtha." + next);
}

void frmLogin::SetMuhuName(const std::string& name)
{
    request_.MuhuName = name;
    d_->SayWhatIsChosen();
    emit TitleChanged(Title());
}

void frmLogin::FillMuhurthaList(const std::string& Category)
{
    auto rs = d_->muhu->OpenRecordset("SELECT * FROM MUHU WHERE CATEGORY = '" + Category + "'");
    d_->filling = true;
    d_->tvMuhuList->clear();
    for (rs->HasRows() ? rs->MoveFirst() : void(); !rs->IsEOF(); rs->MoveNext())
        new QTreeWidgetItem(d_->tvMuhuList, QStringList(Q(rs->Field("mname").ToTextOrEmpty())));
    if (d_->tvMuhuList->topLevelItemCount() > 0) d_->tvMuhuList->setCurrentItem(d_->tvMuhuList->topLevelItem(0));
    d_->filling = false;
    d_->framMuhuList->show();
    request_.Category = Category;
    QTreeWidgetItem* selected = d_->tvMuhuList->currentItem();
    SetMuhuName(selected ? S(selected->text(0)) : std::string());
}

void frmLogin::ShowRequestPage(int Page)
{
    request_.RequestPage = Page;
    QWidget* frames[] = {d_->framMuhus, d_->frmMuhurtha, d_->frmSingleGuy, d_->frmMatch};
    for (int i = 0; i < 4; ++i) frames[i]->setVisible(i + 1 == Page);
    static const char* const titles[] = {"Choose the purpose", "When and where", "The person", "The couple"};
    d_->lblTitle->setText(titles[Page - 1]);
    d_->flpBack->setEnabled(Page > 1);
    d_->CmdGenerate->setText(Page >= 3 ? "&Find Muhurtha" : "&Next >");
    d_->CmdGenerate->setIcon(Page >= 3 ? Icon("generate") : QIcon());
    d_->lblHint->clear();
    const bool was = d_->typeAhead->Filling();
    d_->typeAhead->SetFilling(true);
    switch (Page) {
    case 1:
        TypeAhead::FillCities(d_->muhuPlace.city, "India");
        break;
    case 2:
        d_->optMuhuRange->setChecked(true);
        d_->optMuhuRange->setFocus();
        break;
    case 3:
        TypeAhead::FillCities(d_->person.place.city, "India");
        if (!Text(d_->person.name).empty()) LoadPerson(Text(d_->person.name), "");
        d_->person.name->setFocus();
        break;
    case 4:
        TypeAhead::FillCities(d_->boy.place.city, "India");
        TypeAhead::FillCities(d_->girl.place.city, "India");
        if (!Text(d_->boy.name).empty()) LoadPerson(Text(d_->boy.name), "Boy");
        if (!Text(d_->girl.name).empty()) LoadPerson(Text(d_->girl.name), "Gal");
        d_->boy.name->setFocus();
        break;
    default: break;
    }
    d_->typeAhead->SetFilling(was);
    d_->SayWhatIsChosen();
}

void frmLogin::CmdGenerate()
{
    switch (request_.RequestPage) {
    case 1:
        ShowRequestPage(2);
        break;
    case 2:
        if (QLineEdit* refused = d_->RefusedTimeField()) {
            refused->setFocus();
            refused->selectAll();
            return;
        }
        GatherRequest();
        if (!request_.CheckRangeDates()) {
            d_->dtMuhuTo->setFocus();
            return;
        }
        ShowRequestPage(vb::UCase(request_.Category) == "MARRIAGE" ? 4 : 3);
        break;
    case 3:
    case 4:
        setEnabled(false);
        RunEngine();
        ShowRequestPage(1);
        setEnabled(true);
        break;
    default: break;
    }
}

void frmLogin::flpBack()
{
    if (request_.RequestPage == 3 || request_.RequestPage == 4) ShowRequestPage(2);
    else if (request_.RequestPage == 2) ShowRequestPage(1);
}

void frmLogin::cmdNowCast()
{
    const QDateTime now = QDateTime::currentDateTime();
    d_->person.date->setText(now.toString("dd/MM/yyyy"));
    d_->person.time->setText(now.toString("HH.mm"));
    // After the hour: PM from 13 on, AM before noon. At noon the option
    // the text gave (PM) stays, so that the printed time is the chart's.
    const int hour = now.time().hour();
    if (hour > 12) d_->person.half[1]->setChecked(true);
    else if (hour < 12) d_->person.half[0]->setChecked(true);
    CmdGenerate();
}

void frmLogin::cmdExit()
{
    if (MsgBox("Do you really want to exit?", MsgButtons::YesNo, "Exit software?", MsgIcon::Question) ==
        MsgAnswer::Yes)
        QApplication::exit(0);
}

MuhurthaRequest frmLogin::FieldsRequest() const
{
    MuhurthaRequest r = request_;
    r.MomentDate = S(d_->dtMuhuDate->date().toString("dd/MM/yyyy"));
    r.MomentTime = Text(d_->txtMuhuBTime);
    r.MomentAMPM = d_->optMuhuAMPM[0]->isChecked() ? 1 : 2;
    r.FromDate = S(d_->dtMuhuFrom->date().toString("dd/MM/yyyy"));
    r.ToDate = S(d_->dtMuhuTo->date().toString("dd/MM/yyyy"));
    r.FromTime = Text(d_->txtMuhDTFrom);
    r.ToTime = Text(d_->txtMuhDTTo);
    r.SearchMode = d_->optMuhuCheck->isChecked() ? 2 : d_->optMuhuRange->isChecked() ? 1 : 0;
    r.Place = Gather(d_->muhuPlace);
    r.Person = Gather(d_->person);
    r.Boy = Gather(d_->boy);
    r.Girl = Gather(d_->girl);
    return r;
}

void frmLogin::GatherRequest() { request_ = FieldsRequest(); }

bool frmLogin::RunEngine()
{
    GatherRequest();
    {
        frmStatus status(window());
        try {
            request_.RunEngine(Engine(), TextDB(), RecosDB());
        } catch (const std::exception& e) {
            status.Done();
            MsgBox(e.what(), MsgButtons::OK, AppTitle(), MsgIcon::Critical);
            return false;
        }
        status.Done();
    }
    emit Generated();
    return true;
}

// ---------------------------------------------------------------------------
// Persons: the commands of the person store

void frmLogin::LoadPerson(const std::string& name, const std::string& block)
{
    PersonFields& f = block == "Boy" ? d_->boy : block == "Gal" ? d_->girl : d_->person;
    const bool was = d_->typeAhead->Filling();
    d_->typeAhead->SetFilling(true);
    persons::Load(f, name);
    d_->typeAhead->SetFilling(was);
}

void frmLogin::SavePerson()
{
    if (persons::Save(d_->person)) d_->FillAllPersonLists();
}

void frmLogin::DeletePerson()
{
    if (persons::Delete(d_->person)) d_->FillAllPersonLists();
}

void frmLogin::SavePersonToFile()
{
    persons::SaveToFile(this, d_->person, [this](const QString& t) { d_->SetHintLine(t); });
}

void frmLogin::SaveDatabaseToFile()
{
    persons::SaveDatabase(this, [this](const QString& t) { d_->SetHintLine(t); });
}

void frmLogin::ImportPersons(bool database)
{
    persons::Import(this, database, [this](const QString& t) { d_->SetHintLine(t); });
    // A merge that stopped on the way may have added some: the lists show
    // what the store holds now.
    ui::RunCommand([this] { d_->FillAllPersonLists(); });
}

// ---------------------------------------------------------------------------
// Time fields, hints and keys

QString frmLogin::RewriteForHalf(const QString& time, int half)
{
    const std::string t = S(time);
    const std::string hh = vb::Left(t, 2);
    const std::string mm = vb::Right(t, 2);
    if (!vb::IsNumeric(hh)) return time;
    const double hour = vb::ParseNumber(hh);
    if (half == 1 && hour < 12) return Q(vb::CStr(hour + 12) + "." + mm);
    if (half == 0 && hour >= 12) return Q(vb::Format(hour - 12, "00") + "." + mm);
    return time;
}

bool frmLogin::eventFilter(QObject* watched, QEvent* event)
{
    auto* widget = qobject_cast<QWidget*>(watched);
    if (event->type() == QEvent::FocusIn) {
        if (auto it = d_->hints.find(watched); it != d_->hints.end()) d_->SetHintLine(*it);
        if (auto* edit = qobject_cast<QLineEdit*>(watched); edit && !edit->inputMask().isEmpty())
            QTimer::singleShot(0, edit, [edit] { edit->selectAll(); });
    } else if (event->type() == QEvent::FocusOut) {
        // A refused time keeps the focus, without a word.
        auto* edit = qobject_cast<QLineEdit*>(watched);
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        const bool toAnother = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                               reason == Qt::MouseFocusReason || reason == Qt::ShortcutFocusReason;
        if (edit && toAnother && (edit == d_->txtMuhuBTime || edit == d_->txtMuhDTFrom || edit == d_->txtMuhDTTo) &&
            d_->TimeRefused(edit) && isEnabled()) {
            QTimer::singleShot(0, edit, [edit] {
                edit->setFocus();
                edit->selectAll();
            });
        }
    } else if (event->type() == QEvent::KeyPress && widget) {
        auto* key = static_cast<QKeyEvent*>(event);
        const QString typed = key->text().toUpper();
        const bool printable = !typed.isEmpty() && typed[0].isPrint();
        const QString name = widget->objectName();
        if (printable && (name == "TextNS" || name == "TxtMuhuNS") && typed != "N" && typed != "S") {
            MsgBox("You can only type 'N' - North, or 'S' - South in this box.", MsgButtons::OK, AppTitle(),
                   MsgIcon::Exclamation);
            return true;
        }
        if (printable && name == "txtMuhuEW" && typed != "E" && typed != "W") {
            MsgBox("You can only type 'E' - East, or 'W' - West in this box.", MsgButtons::OK, AppTitle(),
                   MsgIcon::Exclamation);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace ranvel
