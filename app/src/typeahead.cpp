#include "ranvel/app/typeahead.h"

#include <QAbstractItemView>
#include <QAbstractProxyModel>
#include <QComboBox>
#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QStringListModel>
#include <QVariantMap>

#include "ranvel/data/datafiles.h"
#include "ranvel/data/places.h"
#include "ranvel/platform/gui/qstr.h"

namespace ranvel {

namespace {

// One row of the store as a box offers it: the name shown and the fields
// that taking it fills in.
struct Row {
    QString name;
    QVariantMap field;
};

// The rows of a query: the name from one field, the others kept by name.
std::vector<Row> Rows(const std::string& sql, const char* nameField, std::initializer_list<const char*> fields)
{
    std::vector<Row> rows;
    auto rs = RecosDB()->OpenRecordset(sql);
    for (rs->HasRows() ? rs->MoveFirst() : void(); !rs->IsEOF(); rs->MoveNext()) {
        Row r;
        r.name = Q(rs->Field(nameField).ToTextOrEmpty());
        for (const char* f : fields) r.field.insert(f, Q(rs->Field(f).ToTextOrEmpty()));
        rows.push_back(std::move(r));
    }
    return rows;
}

const std::initializer_list<const char*> kCountryFields = {"Name", "GMTDIF"};
const std::initializer_list<const char*> kCityFields = {"City", "Country", "Lat", "Longy", "NOSO", "EaWe", "GMTDIFF"};

// A box's own list anew from rows, each item carrying its row; what the
// box holds stays.
void FillBox(QComboBox* c, const std::vector<Row>& rows)
{
    const QString keep = c->currentText();
    const QSignalBlocker quiet(c);
    c->clear();
    for (const Row& r : rows) c->addItem(r.name, r.field);
    SetBoxText(c, keep);
}

const char* const kApostrophe = "A name with an apostrophe (') can't be looked up.";

}  // namespace

struct TypeAhead::Finder {
    QComboBox* box = nullptr;
    QCompleter* completer = nullptr;
    QStringListModel* model = nullptr;
    QString looked;          // the text the rows were found for
    std::vector<Row> rows;   // what the popup lists
    int current = -1;        // the row the hint line names
    // The rows that begin with a typed text.
    std::function<std::vector<Row>(const QString&)> find;
    // The hint line for the row named (none: nullptr), and what typing
    // changes beside it.
    std::function<void(const QString& typed, const Row*)> said;
    // The fields filled from a row.
    std::function<void(const Row&)> take;
};

TypeAhead::TypeAhead(QObject* parent, HintLine hint) : QObject(parent), hint_(std::move(hint)) {}

TypeAhead::~TypeAhead() = default;

void TypeAhead::FillCountries(QComboBox* c) { FillBox(c, Rows("Select * From Country", "Name", kCountryFields)); }

void TypeAhead::FillCities(QComboBox* c, const std::string& country)
{
    FillBox(c, Rows("Select * From City where country = '" + country + "'", "City", kCityFields));
}

void TypeAhead::FillPersons(QComboBox* c) { FillBox(c, Rows("qryPersonName", "Name", {"Name"})); }

QString TypeAhead::Named(const QComboBox* box) const
{
    for (const auto& f : finders_)
        if (f->box == box && f->current >= 0 && f->current < static_cast<int>(f->rows.size()))
            return f->rows[static_cast<std::size_t>(f->current)].name;
    return {};
}

TypeAhead::Finder& TypeAhead::Add(QComboBox* box)
{
    auto finder = std::make_unique<Finder>();
    Finder& f = *finder;
    finders_.push_back(std::move(finder));
    f.box = box;
    f.model = new QStringListModel(this);
    f.completer = new QCompleter(f.model, this);
    // The popup shows the rows as the store gave them, in its order; they
    // all begin with the text already.
    f.completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    f.completer->setCaseSensitivity(Qt::CaseInsensitive);
    f.completer->popup()->installEventFilter(this);
    f.completer->popup()->setObjectName(box->objectName() + "Popup");
    auto rowOf = [&f](const QModelIndex& index) {
        auto* proxy = qobject_cast<QAbstractProxyModel*>(f.completer->completionModel());
        return proxy ? proxy->mapToSource(index).row() : index.row();
    };
    // Moving in the popup names that row; the hint line follows.
    connect(f.completer, qOverload<const QModelIndex&>(&QCompleter::highlighted), this, [&f, rowOf](const QModelIndex& i) {
        const int row = rowOf(i);
        if (row < 0 || row >= static_cast<int>(f.rows.size())) return;
        f.current = row;
        f.said(f.looked, &f.rows[static_cast<std::size_t>(row)]);
    });
    connect(f.completer, qOverload<const QModelIndex&>(&QCompleter::activated), this,
            [this, &f, rowOf](const QModelIndex& i) { Take(f, rowOf(i)); });
    // Set on the line edit itself: the box does not then pick an item of
    // its own list beside the row taken.
    box->lineEdit()->setCompleter(f.completer);
    connect(box->lineEdit(), &QLineEdit::textEdited, this, [this, &f](const QString& text) {
        if (!filling_) Typed(f, text);
    });
    connect(box->lineEdit(), &QLineEdit::returnPressed, this, [this, &f] {
        if (f.looked != f.box->currentText()) Typed(f, f.box->currentText());
        Take(f, f.current);
    });
    // A pick from the box's own list: the item carries its row.
    connect(box, qOverload<int>(&QComboBox::activated), this, [this, &f](int index) {
        if (index < 0) return;
        Row r{f.box->itemText(index), f.box->itemData(index).toMap()};
        try {
            f.take(r);
        } catch (const std::exception&) {
            hint_(kApostrophe);
        }
    });
    return f;
}

void TypeAhead::Typed(Finder& f, const QString& text)
{
    f.looked = text;
    try {
        f.rows = text.isEmpty() ? std::vector<Row>() : f.find(text);
    } catch (const std::exception&) {
        // A typed apostrophe breaks the query text: nothing is found.
        f.rows.clear();
        f.current = -1;
        f.model->setStringList({});
        f.completer->popup()->hide();
        hint_(kApostrophe);
        return;
    }
    f.current = f.rows.empty() ? -1 : 0;
    QStringList names;
    for (const Row& r : f.rows) names << r.name;
    f.model->setStringList(names);
    f.said(text, f.rows.empty() ? nullptr : &f.rows.front());
    if (f.rows.empty() || !f.box->hasFocus()) {
        f.completer->popup()->hide();
    } else {
        f.completer->setCompletionPrefix(QString());
        f.completer->complete();
        // No row is picked until the user moves to one.
        f.completer->popup()->setCurrentIndex(QModelIndex());
    }
}

void TypeAhead::Take(Finder& f, int row)
{
    if (row < 0 || row >= static_cast<int>(f.rows.size())) return;
    const Row r = f.rows[static_cast<std::size_t>(row)];
    f.completer->popup()->hide();
    try {
        f.take(r);
    } catch (const std::exception&) {
        hint_(kApostrophe);
    }
}

bool TypeAhead::eventFilter(QObject* watched, QEvent* event)
{
    // Enter in the popup takes the row the hint line names: the one moved
    // to, else the first.
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            for (const auto& f : finders_) {
                if (f->completer->popup() != watched) continue;
                Take(*f, f->current);
                return true;
            }
        }
    }
    return QObject::eventFilter(watched, event);
}

void TypeAhead::WirePlace(PlaceFields& p)
{
    Finder& country = Add(p.country);
    // The zone that typing put in, so that a text that finds nothing
    // takes it out again.
    auto typedZone = std::make_shared<QString>();
    country.find = [](const QString& text) {
        return Rows("SELECT * FROM Country WHERE Name LIKE '" + S(text) + "%'", "Name", kCountryFields);
    };
    country.said = [this, &p, typedZone](const QString& text, const Row* r) {
        if (!r) {
            hint_("If the country is " + text + " is not in database, you'll have to provide GMT Difference manually.");
            if (!typedZone->isEmpty() && p.gmt->displayText() == *typedZone) p.gmt->setText(kBlankZone);
            typedZone->clear();
            return;
        }
        hint_("If the country is " + r->name + ", Press 'Enter' to update automatically.");
        const QString zone = r->field.value("GMTDIF").toString();
        p.gmt->setText(zone.isEmpty() ? kBlankZone : zone);
        *typedZone = p.gmt->displayText();
    };
    country.take = [this, &p, typedZone](const Row& r) {
        typedZone->clear();
        SetBoxText(p.country, r.name);
        const QString zone = r.field.value("GMTDIF").toString();
        p.gmt->setText(zone.isEmpty() ? "-00.00" : zone);
        const bool was = filling_;
        filling_ = true;
        FillCities(p.city, S(r.name));
        filling_ = was;
        // A city of another country must not stay in the fields.
        if (!p.city->currentText().isEmpty() && p.city->findText(p.city->currentText(), Qt::MatchFixedString) < 0)
            ClearCity(p);
    };

    Finder& city = Add(p.city);
    city.find = [&p](const QString& text) {
        return Rows("SELECT * FROM CITY WHERE CITY LIKE '" + S(text) + "%' AND Country Like '" +
                        Text(p.country) + "'",
                    "City", kCityFields);
    };
    city.said = [this, &p](const QString& text, const Row* r) {
        if (!r) {
            hint_("If the City is " + text +
                  " is not in database, you'll have to provide Longitude & Latitude manually.");
            p.lati->setText(kBlankDegrees);
            p.longi->setText(kBlankDegrees);
            p.ns->setText("N");
            p.ew->setText("E");
            return;
        }
        hint_("If the City is " + r->name + ", Press 'Enter' to update automatically.");
    };
    city.take = [this, &p](const Row& r) {
        auto field = [&r](const char* n) { return r.field.value(n).toString(); };
        SetBoxText(p.city, r.name);
        p.lati->setText(Q(places::DegreesField(S(field("Lat")))));
        p.longi->setText(Q(places::DegreesField(S(field("Longy")))));
        p.ns->setText(field("NOSO"));
        p.ew->setText(field("EaWe"));
        p.gmt->setText(field("GMTDIFF"));
        if (p.country->currentText().compare(field("Country"), Qt::CaseInsensitive) != 0) {
            SetBoxText(p.country, field("Country"));
            const bool was = filling_;
            filling_ = true;
            FillCities(p.city, S(field("Country")));
            filling_ = was;
        }
        hint_("If the City is " + r.name + ", Press 'Enter' to update automatically.");
    };
}

void TypeAhead::WirePerson(PersonFields& person, std::function<void(const std::string&)> load)
{
    Finder& f = Add(person.name);
    f.find = [](const QString& text) {
        return Rows("SELECT * FROM PERSON WHERE NAME LIKE '" + S(text) + "%'", "Name", {"Name"});
    };
    f.said = [this](const QString& text, const Row* r) {
        if (!r)
            hint_("If the Person is '" + text +
                  " is not in database, please don't forget to fill in Date, Time & Place of birth.");
        else
            hint_("If the Person is '" + r->name + "', Press 'Enter' to update automatically.");
    };
    f.take = [&person, load](const Row& r) {
        SetBoxText(person.name, r.name);
        load(S(r.name));
    };
    WirePlace(person.place);
}

}  // namespace ranvel
