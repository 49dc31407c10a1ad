#include "ranvel/app/frmEditLongLat.h"

#include <QComboBox>
#include <QDateTime>
#include <QCompleter>
#include <QFocusEvent>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <functional>
#include <memory>
#include <type_traits>

#include "ranvel/app/appinfo.h"
#include "ranvel/app/formkit.h"
#include "ranvel/data/cityzones.h"
#include "ranvel/data/datafiles.h"
#include "ranvel/data/messages.h"
#include "ranvel/data/places.h"
#include "ranvel/data/settings_keys.h"
#include "ranvel/platform/gui/qstr.h"
#include "ranvel/platform/sinks.h"
#include "ranvel/platform/vbmath.h"
#include "ranvel/platform/zones.h"

namespace ranvel {

using ui::Box;

namespace {

// Runs the check of a field when the user leaves it for another control of
// the dialog (not when the window merely loses the focus, as it does to the
// message box that the check itself may show).
class LeaveWatch : public QObject {
public:
    LeaveWatch(QObject* parent, std::function<void(QObject*)> onLeave)
        : QObject(parent), onLeave_(std::move(onLeave))
    {
    }

protected:
    bool eventFilter(QObject* watched, QEvent* e) override
    {
        if (e->type() == QEvent::FocusOut) {
            const Qt::FocusReason why = static_cast<QFocusEvent*>(e)->reason();
            if (why != Qt::ActiveWindowFocusReason && why != Qt::PopupFocusReason) onLeave_(watched);
        }
        return false;
    }

private:
    std::function<void(QObject*)> onLeave_;
};

// What a masked field holds as the user sees it, blanks included.
std::string Text(const QLineEdit* e) { return S(e->displayText()); }
std::string Text(const QComboBox* c) { return S(c->currentText().trimmed()); }

// A grey line of explanation.
QLabel* Note(QWidget* parent, const char* name, const QString& text, Box at)
{
    QLabel* l = ui::Label(parent, name, text, at);
    l->setWordWrap(true);
    l->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    QPalette p = l->palette();
    p.setColor(QPalette::WindowText, p.color(QPalette::PlaceholderText));
    l->setPalette(p);
    return l;
}

QLabel* FieldLabel(QWidget* parent, const char* name, const QString& text, Box at, QWidget* control)
{
    QLabel* l = ui::Label(parent, name, text, at);
    l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    ui::Names(l, control);
    return l;
}

void Complete(QComboBox* c)
{
    c->completer()->setCompletionMode(QCompleter::PopupCompletion);
    c->completer()->setFilterMode(Qt::MatchStartsWith);
    c->completer()->setCaseSensitivity(Qt::CaseInsensitive);
}

// Replaces a list's entries, keeping what its box shows.
void Refill(QComboBox* c, const std::vector<std::string>& names)
{
    const QString keep = c->currentText();
    const QSignalBlocker quiet(c);
    c->clear();
    for (const std::string& n : names) c->addItem(Q(n));
    c->setCurrentIndex(-1);
    c->setEditText(keep);
}

void SetEditText(QComboBox* c, const QString& text)
{
    const QSignalBlocker quiet(c);
    c->setEditText(text);
}

// A pair of options that is chosen apart from the other options of the page.
QWidget* Pair(QWidget* parent, const char* holder, QRadioButton*& a, const char* aName, const QString& aCaption,
              QRadioButton*& b, const char* bName, const QString& bCaption, Box at)
{
    auto* w = new QWidget(parent);
    w->setObjectName(holder);
    w->setGeometry(at.x, at.y, at.w, at.h);
    a = ui::Option(w, aName, aCaption, {0, 0, at.w / 2, at.h});
    b = ui::Option(w, bName, bCaption, {at.w / 2, 0, at.w / 2, at.h});
    a->setChecked(true);
    return w;
}

// A handler of the dialog: a run-time fault (a query broken by a name, a
// file that can't be written) ends it with a box giving the fault, and the
// dialog goes on.
template <typename F>
auto Guarded(F handler)
{
    return [handler](auto&&... args) {
        ui::RunCommand([&] {
            // What the signal carries, when the handler takes it.
            if constexpr (std::is_invocable_v<const F&, decltype(args)...>) handler(args...);
            else handler();
        });
    };
}

constexpr Box kSaveButton{308, 272, 104, 30};
constexpr Box kDeleteButton{420, 272, 104, 30};

}  // namespace

struct frmEditLongLat::Impl {
    frmEditLongLat* form;
    std::unique_ptr<places::PlaceEditor> places;

    QTabWidget* tabEdit = nullptr;
    QLabel* lblStatus = nullptr;

    // City
    QLabel* lblCityMode = nullptr;
    QComboBox* cbocCountry = nullptr;
    QComboBox* cmbCityList = nullptr;
    QPushButton* cmdNewCity = nullptr;
    QLineEdit* txtLat = nullptr;
    QRadioButton* optNorth = nullptr;
    QRadioButton* optSouth = nullptr;
    QLineEdit* txtLong = nullptr;
    QRadioButton* optEast = nullptr;
    QRadioButton* optWest = nullptr;
    QLineEdit* txtCitGMT = nullptr;
    // The city's time zone and the offset its clock keeps today: the field
    // keeps the standard offset, this tells of summer time.
    QLabel* lblCitZone = nullptr;
    QPushButton* cmdSave = nullptr;
    QPushButton* cmdDelete = nullptr;

    // Country
    QLabel* lblCountryMode = nullptr;
    QComboBox* cboCNTRY = nullptr;
    QPushButton* cmdNewCountry = nullptr;
    QLineEdit* txtGMTDiff = nullptr;
    QPushButton* cmdCSave = nullptr;
    QPushButton* cmdCDelete = nullptr;

    // Ayanamsh: the options with the numbers they store
    std::vector<std::pair<QRadioButton*, int>> ayanamshas;
    QRadioButton* optCustom = nullptr;
    QLineEdit* txtCustAyan = nullptr;

    // Rahu and Ketu
    QRadioButton* optRahuMean = nullptr;
    QRadioButton* optRahuTrue = nullptr;

    // Your details
    QLineEdit* txtDispName = nullptr;
    QLineEdit* txtDispAdd = nullptr;

    explicit Impl(frmEditLongLat* f) : form(f) {}

    void BuildCityTab();
    void ShowCityZone(const places::CityFields& c);
    void BuildCountryTab();
    void BuildAyanamshTab();
    void BuildRahuTab();
    void BuildDetailsTab();
    QWidget* Page(const char* name, const QString& caption);
    void WirePlaces();
    void LoadSettings();

    // A command on the store; a fault in it ends the command with its text.
    template <typename F>
    void Run(F&& command)
    {
        ui::RunCommand(command);
    }

    void FillCountries();
    void CityCountryChosen(const QString& name);
    void CityChosen(const QString& name);
    void ShowCity(const places::CityFields& c);
    void NewCity();
    void SaveCity();
    void DeleteCity();
    void ShowCityMode();

    void CountryChosen(const QString& name);
    void NewCountry();
    void SaveCountry();
    void DeleteCountry();
    void ShowCountryMode();

    void Status(const QString& text) { lblStatus->setText(text); }
};

// ---------------------------------------------------------------------------
// Building

QWidget* frmEditLongLat::Impl::Page(const char* name, const QString& caption)
{
    auto* page = new QWidget;
    page->setObjectName(name);
    tabEdit->addTab(page, caption);
    return page;
}

void frmEditLongLat::Impl::BuildCityTab()
{
    QWidget* p = Page("tabCity", "&City");
    lblCityMode = ui::Label(p, "lblCityMode", QString(), {16, 12, 508, 20});
    QFont bold = lblCityMode->font();
    bold.setBold(true);
    lblCityMode->setFont(bold);

    cbocCountry = ui::Combo(p, "cbocCountry", true, {124, 44, 240, 26});
    FieldLabel(p, "lblcCountry", "Cou&ntry:", {16, 44, 100, 26}, cbocCountry);
    cmbCityList = ui::Combo(p, "cmbCityList", true, {124, 78, 240, 26});
    FieldLabel(p, "lblCityList", "C&ity:", {16, 78, 100, 26}, cmbCityList);
    cmdNewCity = ui::Button(p, "cmdNewCity", "New cit&y", {374, 77, 120, 28});
    ui::Speak(cmdNewCity, "Clear the fields for a new city");

    txtLat = ui::MaskEdit(p, "txtLat", "999:99", places::kBlankDegrees, {124, 120, 72, 26});
    FieldLabel(p, "lblLat", "Latit&ude:", {16, 120, 100, 26}, txtLat);
    Pair(p, "fraNoSo", optNorth, "optNorth", "Nort&h", optSouth, "optSouth", "&South", {212, 120, 180, 26});
    txtLong = ui::MaskEdit(p, "txtLong", "999:99", places::kBlankDegrees, {124, 154, 72, 26});
    FieldLabel(p, "lblLong", "Lon&gitude:", {16, 154, 100, 26}, txtLong);
    Pair(p, "fraEaWe", optEast, "optEast", "&East", optWest, "optWest", "&West", {212, 154, 180, 26});
    Note(p, "lblDegreesNote", "Degrees and minutes, as 028:36.", {124, 184, 300, 20});

    txtCitGMT = ui::MaskEdit(p, "txtCitGMT", "#99.99", places::kBlankZone, {124, 212, 72, 26});
    FieldLabel(p, "lblCitGMT", "Time &zone:", {16, 212, 100, 26}, txtCitGMT);
    Note(p, "lblCitGMTNote", "Hours and minutes from GMT, as +05.30.", {212, 216, 300, 20});
    lblCitZone = ui::Label(p, "lblCitZone", QString(), {124, 244, 400, 20});

    cmdSave = ui::Button(p, "cmdSave", "Sa&ve", kSaveButton);
    cmdSave->setIcon(QIcon(":/icons/save.svg"));
    ui::Speak(cmdSave, Q(Msg(121)));
    cmdSave->setAccessibleName("Save");
    cmdDelete = ui::Button(p, "cmdDelete", "Dele&te", kDeleteButton);
    cmdDelete->setIcon(QIcon(":/icons/delete.svg"));
    cmdDelete->setToolTip("Delete the city of this name from the database.");
}

void frmEditLongLat::Impl::BuildCountryTab()
{
    QWidget* p = Page("tabCountry", "C&ountry");
    lblCountryMode = ui::Label(p, "lblCountryMode", QString(), {16, 12, 508, 20});
    QFont bold = lblCountryMode->font();
    bold.setBold(true);
    lblCountryMode->setFont(bold);

    cboCNTRY = ui::Combo(p, "cboCNTRY", true, {124, 44, 240, 26});
    FieldLabel(p, "lblCNTRY", "Cou&ntry:", {16, 44, 100, 26}, cboCNTRY);
    cmdNewCountry = ui::Button(p, "cmdNewCountry", "New countr&y", {374, 43, 120, 28});
    ui::Speak(cmdNewCountry, "Clear the fields for a new country");
    txtGMTDiff = ui::MaskEdit(p, "txtGMTDiff", "#99.99", places::kBlankZone, {124, 78, 72, 26});
    FieldLabel(p, "lblGMTDiff", "Time &zone:", {16, 78, 100, 26}, txtGMTDiff);
    Note(p, "lblGMTDiffNote", "Hours and minutes from GMT, as +05.30.", {212, 82, 300, 20});
    Note(p, "lblCountryNote",
         "A country's time zone is offered for its new cities. Deleting a country leaves its cities in the "
         "database, each with the time zone it was saved with.",
         {124, 124, 390, 54});

    cmdCSave = ui::Button(p, "cmdCSave", "Sa&ve", kSaveButton);
    cmdCSave->setIcon(QIcon(":/icons/save.svg"));
    cmdCSave->setToolTip("Save country details to database.");
    cmdCDelete = ui::Button(p, "cmdCDelete", "Dele&te", kDeleteButton);
    cmdCDelete->setIcon(QIcon(":/icons/delete.svg"));
    cmdCDelete->setToolTip("Delete the country of this name from the database.");
}

void frmEditLongLat::Impl::BuildAyanamshTab()
{
    QWidget* p = Page("tabAyanamsh", "&Ayanamsh");
    Note(p, "lblAyanNote", "The ayanamsha taken off the planets' positions in every chart:", {16, 12, 508, 20});
    struct Choice {
        const char* name;
        const char* caption;
        int type;
    };
    static const Choice choices[] = {
        {"optLahiri", "N C Lahir&i (the usual choice)", 1},
        {"optRaman", "B V Ra&man", 2},
        {"optKP", "&Krishnamurthy (KP)", 3},
        {"optSayan", "Sa&yan, without ayanamsha", 12},
        {"optVakya", "Surya Siddhanta (&Vakya)", 15},
        {"optCustom", "Cus&tom value:", 13},
    };
    int y = 40;
    for (const Choice& c : choices) {
        QRadioButton* o = ui::Option(p, c.name, c.caption, {24, y, 260, 26});
        ayanamshas.emplace_back(o, c.type);
        y += 32;
    }
    optCustom = ayanamshas.back().first;
    optCustom->setGeometry(24, y - 32, 124, 26);
    txtCustAyan = ui::MaskEdit(p, "txtCustAyan", "99.99", "00.00", {150, y - 32, 60, 26});
    ui::Speak(txtCustAyan, "Custom ayanamsha in degrees and minutes");
    Note(p, "lblCustAyanNote", "degrees.minutes, as 23.51", {220, y - 28, 200, 20});
    connect(optCustom, &QRadioButton::toggled, txtCustAyan, &QWidget::setEnabled);

    QPushButton* save = ui::Button(p, "cmdAyanSave", "&Save", {420, 272, 104, 30});
    save->setIcon(QIcon(":/icons/save.svg"));
    connect(save, &QPushButton::clicked, form, Guarded([this] {
        for (const auto& [option, type] : ayanamshas)
            if (option->isChecked()) WriteSetting(keys::AyanType, vb::CStr(type));
        if (optCustom->isChecked()) WriteSetting(keys::CustAyan, Text(txtCustAyan));
        Status("The ayanamsha has been saved; new charts use it.");
    }));
}

void frmEditLongLat::Impl::BuildRahuTab()
{
    QWidget* p = Page("tabRahu", "&Rahu && Ketu");
    Note(p, "lblRahuNote", "How the places of Rahu and Ketu, the Moon's nodes, are reckoned:", {16, 12, 508, 20});
    optRahuMean = ui::Option(p, "optRahuMean", "&Mean motion (the usual choice)", {24, 40, 300, 26});
    optRahuTrue = ui::Option(p, "optRahuTrue", "&True motion", {24, 72, 300, 26});
    Note(p, "lblRahuMotion",
         "The mean node moves steadily backwards through the signs; the true node follows the Moon's orbit as "
         "it wavers, and at times stands still or moves forwards. Ketu always stands opposite Rahu.",
         {24, 112, 480, 54});

    QPushButton* save = ui::Button(p, "cmdRahuSave", "&Save", {420, 272, 104, 30});
    save->setIcon(QIcon(":/icons/save.svg"));
    connect(save, &QPushButton::clicked, form, Guarded([this] {
        WriteSetting(keys::RahuKetuMode, optRahuTrue->isChecked() ? "2" : "1");
        Status("The motion of Rahu and Ketu has been saved; new charts use it.");
    }));
}

void frmEditLongLat::Impl::BuildDetailsTab()
{
    QWidget* p = Page("tabDetails", "Your &Details");
    Note(p, "lblDetailsNote", "Your name and address are printed on the reports.", {16, 12, 508, 20});
    txtDispName = ui::TextBox(p, "txtDispName", {124, 44, 400, 26});
    FieldLabel(p, "lblDispName", "&Name:", {16, 44, 100, 26}, txtDispName);
    txtDispAdd = ui::TextBox(p, "txtDispAdd", {124, 78, 400, 26});
    FieldLabel(p, "lblDispAdd", "Addr&ess:", {16, 78, 100, 26}, txtDispAdd);
    // The file keeps no more of a value than this.
    txtDispName->setMaxLength(255);
    txtDispAdd->setMaxLength(255);

    QPushButton* save = ui::Button(p, "cmdDetSave", "&Save", {420, 272, 104, 30});
    save->setIcon(QIcon(":/icons/save.svg"));
    connect(save, &QPushButton::clicked, form, Guarded([this] {
        WriteIni(keys::DispName, S(txtDispName->text()));
        WriteIni(keys::DispAdd, S(txtDispAdd->text()));
        Status("Your details have been saved.");
    }));
}

void frmEditLongLat::Impl::LoadSettings()
{
    const int type = static_cast<int>(vb::Val(ReadSetting(keys::AyanType)));
    for (const auto& [option, t] : ayanamshas)
        if (t == type) option->setChecked(true);
    txtCustAyan->setText(Q(ReadSetting(keys::CustAyan)));
    txtCustAyan->setEnabled(optCustom->isChecked());
    (vb::Val(ReadSetting(keys::RahuKetuMode)) == 2 ? optRahuTrue : optRahuMean)->setChecked(true);
    txtDispName->setText(Q(ReadIni(keys::DispName)));
    txtDispAdd->setText(Q(ReadIni(keys::DispAdd)));
    txtDispName->setCursorPosition(0);
    txtDispAdd->setCursorPosition(0);
}

// ---------------------------------------------------------------------------
// Places

void frmEditLongLat::Impl::FillCountries()
{
    const std::vector<std::string> names = places->Countries();
    Refill(cbocCountry, names);
    Refill(cboCNTRY, names);
}

namespace {

// "Adding a new city", "Changing the city Agra", or, while the name in the
// box differs from the one picked, "Changing the city Agra, to be saved as
// Agra Cantt".
QString ModeLine(bool change, const QString& what, const std::string& picked, const QString& typed)
{
    if (!change) return "Adding a new " + what;
    QString line = "Changing the " + what + " " + Q(picked);
    if (!typed.isEmpty() && typed.compare(Q(picked), Qt::CaseInsensitive) != 0) line += ", to be saved as " + typed;
    return line;
}

}  // namespace

void frmEditLongLat::Impl::ShowCityMode()
{
    using Mode = places::PlaceEditor::Mode;
    const QString typed = cmbCityList->currentText().trimmed();
    lblCityMode->setText(places ? ModeLine(places->CityMode() == Mode::Change, "city", places->PickedCity(), typed)
                                : QString());
    cmdSave->setEnabled(places && !typed.isEmpty());
    cmdDelete->setEnabled(places && !typed.isEmpty());
}

void frmEditLongLat::Impl::ShowCountryMode()
{
    using Mode = places::PlaceEditor::Mode;
    const QString typed = cboCNTRY->currentText().trimmed();
    lblCountryMode->setText(
        places ? ModeLine(places->CountryMode() == Mode::Change, "country", places->PickedCountry(), typed)
               : QString());
    cmdCSave->setEnabled(places && !typed.isEmpty());
    cmdCDelete->setEnabled(places && !typed.isEmpty());
}

void frmEditLongLat::Impl::CityCountryChosen(const QString& name)
{
    Run([&] {
        const std::optional<std::string> zone = places->CountryZone(S(name));
        if (!zone) return;
        const QString z = zone->empty() ? QString(places::kBlankZone) : Q(*zone);
        txtCitGMT->setText(z);
        Refill(cmbCityList, places->Cities(S(name)));
        // The Country tab follows, ready to change this country.
        if (places->PickCountry(S(name))) {
            SetEditText(cboCNTRY, Q(places->PickedCountry()));
            txtGMTDiff->setText(z);
            ShowCountryMode();
        }
    });
}

void frmEditLongLat::Impl::ShowCity(const places::CityFields& c)
{
    SetEditText(cmbCityList, Q(c.City));
    if (cbocCountry->currentText().trimmed().compare(Q(c.Country), Qt::CaseInsensitive) != 0) {
        SetEditText(cbocCountry, Q(c.Country));
        Refill(cmbCityList, places->Cities(c.Country));
    }
    txtLat->setText(Q(c.Lat));
    (c.North ? optNorth : optSouth)->setChecked(true);
    txtLong->setText(Q(c.Longy));
    (c.East ? optEast : optWest)->setChecked(true);
    txtCitGMT->setText(Q(c.GMTDiff));
    ShowCityZone(c);
}

void frmEditLongLat::Impl::ShowCityZone(const places::CityFields& c)
{
    QString text;
    try {
        const std::vector<CityZone> found = CitiesNamed(*RecosDB(), c.City, c.Country);
        if (!found.empty() && !found.front().Zone.empty()) {
            const QDateTime now = QDateTime::currentDateTime();
            const ZoneReading r = Zones().At(
                found.front().Zone, DateTime::FromParts(now.date().year(), now.date().month(), now.date().day(),
                                                        now.time().hour(), now.time().minute()));
            text = Q(found.front().Zone) + ": ";
            text += r.kind == ZoneReading::Kind::Unknown
                        ? "offset not known (" + Q(r.why) + ")"
                        : Q(ZoneOffsetText(r.minutes)) + " today" + (r.daylight ? ", summer time" : "");
        }
    } catch (const std::exception&) {
        text.clear();  // the zone is only told; the fields stand without it
    }
    lblCitZone->setText(text);
}

void frmEditLongLat::Impl::CityChosen(const QString& name)
{
    Run([&] {
        if (const std::optional<places::CityFields> c = places->PickCity(S(name.trimmed()))) {
            ShowCity(*c);
            Status(QString());
        }
    });
    ShowCityMode();
}

void frmEditLongLat::Impl::NewCity()
{
    places->NewCity();
    lblCitZone->clear();
    SetEditText(cmbCityList, QString());
    txtLat->setText(places::kBlankDegrees);
    txtLong->setText(places::kBlankDegrees);
    optNorth->setChecked(true);
    optEast->setChecked(true);
    // A new city most often lies in the country shown, in its time zone.
    Run([&] {
        const std::optional<std::string> zone = places->CountryZone(Text(cbocCountry));
        txtCitGMT->setText(zone && !zone->empty() ? Q(*zone) : QString(places::kBlankZone));
    });
    ShowCityMode();
    Status(QString());
    cmbCityList->setFocus();
}

void frmEditLongLat::Impl::SaveCity()
{
    if (ui::RefusedName(Text(cmbCityList), "city") || ui::RefusedName(Text(cbocCountry), "country")) return;
    places::CityFields c;
    c.City = Text(cmbCityList);
    c.Country = Text(cbocCountry);
    c.Lat = Text(txtLat);
    c.North = optNorth->isChecked();
    c.Longy = Text(txtLong);
    c.East = optEast->isChecked();
    c.GMTDiff = Text(txtCitGMT);
    Run([&] {
        if (!places->SaveCity(c)) return;
        Refill(cmbCityList, places->Cities(c.Country));
        Status("The city " + Q(c.City) + " has been saved.");
    });
    ShowCityMode();
}

void frmEditLongLat::Impl::DeleteCity()
{
    const std::string name = Text(cmbCityList);
    Run([&] {
        if (!places->DeleteCity(name)) {
            Status("There is no city " + Q(name) + " in the database.");
            return;
        }
        Refill(cmbCityList, places->Cities(Text(cbocCountry)));
        NewCity();
        Status("The city " + Q(name) + " has been deleted.");
    });
}

void frmEditLongLat::Impl::CountryChosen(const QString& name)
{
    Run([&] {
        if (!places->PickCountry(S(name.trimmed()))) return;
        SetEditText(cboCNTRY, Q(places->PickedCountry()));
        const std::optional<std::string> zone = places->CountryZone(places->PickedCountry());
        const QString z = zone && !zone->empty() ? Q(*zone) : QString(places::kBlankZone);
        txtGMTDiff->setText(z);
        // The country's zone is offered to the city being edited as well.
        txtCitGMT->setText(z);
        Status(QString());
    });
    ShowCountryMode();
}

void frmEditLongLat::Impl::NewCountry()
{
    places->NewCountry();
    SetEditText(cboCNTRY, QString());
    txtGMTDiff->setText(places::kBlankZone);
    ShowCountryMode();
    Status(QString());
    cboCNTRY->setFocus();
}

void frmEditLongLat::Impl::SaveCountry()
{
    const std::string name = Text(cboCNTRY);
    if (ui::RefusedName(name, "country")) return;
    Run([&] {
        places->SaveCountry(name, Text(txtGMTDiff));
        FillCountries();
        Status("The country " + Q(name) + " has been saved.");
    });
    ShowCountryMode();
}

void frmEditLongLat::Impl::DeleteCountry()
{
    const std::string name = Text(cboCNTRY);
    Run([&] {
        if (!places->DeleteCountry(name)) {
            Status("There is no country " + Q(name) + " in the database.");
            return;
        }
        FillCountries();
        NewCountry();
        Status("The country " + Q(name) + " has been deleted; its cities stay.");
    });
}

void frmEditLongLat::Impl::WirePlaces()
{
    Complete(cbocCountry);
    Complete(cmbCityList);
    Complete(cboCNTRY);

    // A name is picked from the list or its completions (the list says so
    // once), or typed and taken with Enter. Enter on a name of the list
    // already counts as picking it from the list.
    auto picked = [this](QComboBox* box, std::function<void(const QString&)> take) {
        connect(box, qOverload<int>(&QComboBox::activated), form,
                Guarded([box, take](int i) { take(box->itemText(i)); }));
        connect(box->lineEdit(), &QLineEdit::returnPressed, form, Guarded([box, take] {
            if (box->findText(box->currentText(), Qt::MatchFixedString) < 0) take(box->currentText());
        }));
    };
    picked(cbocCountry, [this](const QString& n) { CityCountryChosen(n); });
    picked(cmbCityList, [this](const QString& n) { CityChosen(n); });
    picked(cboCNTRY, [this](const QString& n) { CountryChosen(n); });
    connect(cmbCityList, &QComboBox::editTextChanged, form, Guarded([this] { ShowCityMode(); }));
    connect(cboCNTRY, &QComboBox::editTextChanged, form, Guarded([this] { ShowCountryMode(); }));

    connect(cmdNewCity, &QPushButton::clicked, form, Guarded([this] { NewCity(); }));
    connect(cmdSave, &QPushButton::clicked, form, Guarded([this] { SaveCity(); }));
    connect(cmdDelete, &QPushButton::clicked, form, Guarded([this] { DeleteCity(); }));
    connect(cmdNewCountry, &QPushButton::clicked, form, Guarded([this] { NewCountry(); }));
    connect(cmdCSave, &QPushButton::clicked, form, Guarded([this] { SaveCountry(); }));
    connect(cmdCDelete, &QPushButton::clicked, form, Guarded([this] { DeleteCountry(); }));

    auto* leave = new LeaveWatch(form, Guarded([this](QObject* field) {
        if (field == txtLat) places::CheckDegrees(Text(txtLat), places::Axis::Latitude);
        else if (field == txtLong) places::CheckDegrees(Text(txtLong), places::Axis::Longitude);
    }));
    txtLat->installEventFilter(leave);
    txtLong->installEventFilter(leave);
}

// ---------------------------------------------------------------------------

frmEditLongLat::frmEditLongLat(Tab tab, QWidget* parent) : QDialog(parent), d_(new Impl(this))
{
    setObjectName("frmEditLongLat");
    setWindowTitle("Places and Settings");
    setFixedSize(560, 420);

    d_->tabEdit = new QTabWidget(this);
    d_->tabEdit->setObjectName("tabEdit");
    d_->tabEdit->setGeometry(10, 10, 540, 352);
    d_->BuildCityTab();
    d_->BuildCountryTab();
    d_->BuildAyanamshTab();
    d_->BuildRahuTab();
    d_->BuildDetailsTab();

    d_->lblStatus = ui::Label(this, "lblStatus", QString(), {14, 374, 420, 32});
    d_->lblStatus->setWordWrap(true);
    QPushButton* cmdClose = ui::Button(this, "cmdClose", "C&lose", {450, 374, 100, 30});
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
    connect(d_->tabEdit, &QTabWidget::currentChanged, this, Guarded([this] { d_->Status(QString()); }));

    d_->LoadSettings();
    try {
        if (!RecosDB()) throw std::runtime_error("The place database is not open.");
        d_->places = std::make_unique<places::PlaceEditor>(RecosDB());
        d_->FillCountries();
    } catch (const std::exception& e) {
        d_->places.reset();
        MsgBox(e.what(), MsgButtons::OK, AppTitle(), MsgIcon::Critical);
        d_->tabEdit->widget(0)->setEnabled(false);
        d_->tabEdit->widget(1)->setEnabled(false);
    }
    if (d_->places) d_->WirePlaces();
    // Enter picks a name in the lists; it must not also press a button.
    for (QPushButton* b : findChildren<QPushButton*>()) b->setAutoDefault(false);
    d_->ShowCityMode();
    d_->ShowCountryMode();
    ShowTab(tab);
}

frmEditLongLat::~frmEditLongLat() { delete d_; }

void frmEditLongLat::ShowTab(Tab tab)
{
    d_->tabEdit->setCurrentIndex(static_cast<int>(tab));
    // The keyboard starts on the tab's first control, or its chosen option.
    QWidget* first = nullptr;
    switch (tab) {
    case Tab::City: first = d_->cbocCountry; break;
    case Tab::Country: first = d_->cboCNTRY; break;
    case Tab::Ayanamsh:
        first = d_->ayanamshas.front().first;
        for (const auto& [option, type] : d_->ayanamshas)
            if (option->isChecked()) first = option;
        break;
    case Tab::RahuKetu: first = d_->optRahuTrue->isChecked() ? d_->optRahuTrue : d_->optRahuMean; break;
    case Tab::Details: first = d_->txtDispName; break;
    }
    first->setFocus();
}

}  // namespace ranvel
