#include "ranvel/app/personstore.h"

#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalBlocker>
#include <map>

#include "ranvel/app/appinfo.h"
#include "ranvel/app/formkit.h"
#include "ranvel/app/frmStatus.h"
#include "ranvel/chart/person.h"
#include "ranvel/data/datafiles.h"
#include "ranvel/data/exchange.h"
#include "ranvel/data/messages.h"
#include "ranvel/platform/gui/dialogs.h"
#include "ranvel/platform/gui/qstr.h"
#include "ranvel/platform/sinks.h"
#include "ranvel/platform/variant.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel::persons {

namespace {

std::string Pad(const std::string& digits, int width)
{
    std::string s = vb::Trim(digits);
    while (static_cast<int>(s.size()) < width) s = "0" + s;
    return s;
}

// The birth fields back to their blank masks; the name stays.
void BlankBirth(PersonFields& f)
{
    f.date->setText(kBlankDate);
    f.time->setText(kBlankTime);
    FollowHalf(f.time, f.half);
    f.place.gmt->setText(kBlankZone);
    SetBoxText(f.place.country, QString());
    ClearCity(f.place);
}

}  // namespace

bool Load(PersonFields& f, const std::string& name)
{
    try {
        auto rs = RecosDB()->OpenRecordset("SELECT * FROM Person Where Name = '" + name + "'");
        if (!rs->HasRows()) return false;
        rs->MoveFirst();
        auto field = [&](const char* n) { return rs->Field(n).ToTextOrEmpty(); };
        SetBoxText(f.name, Q(field("Name")));
        if (f.male) (vb::Val(field("Sex")) == 2 ? f.female : f.male)->setChecked(true);
        f.date->setText(Q(Pad(field("Day"), 2) + "/" + Pad(field("Month"), 2) + "/" + Pad(field("Year"), 4)));
        f.time->setText(Q(Pad(field("Hour"), 2) + "." + Pad(field("Minutes"), 2)));
        // The chart is cast from the hour of the text, so the half of the
        // day shown and printed is the text's, whatever the row says.
        FollowHalf(f.time, f.half);
        f.place.lati->setText(Q(Pad(field("LatDeg"), 3) + ":" + Pad(field("LatMT"), 2)));
        f.place.ns->setText(Q(field("TextNS")));
        f.place.longi->setText(Q(Pad(field("LongDeg"), 3) + ":" + Pad(field("LongMT"), 2)));
        f.place.ew->setText(Q(field("TextEW")));
        f.place.gmt->setText(Q(field("GMTDIFF")));
        SetBoxText(f.place.city, Q(field("City")));
        SetBoxText(f.place.country, Q(field("Country")));
        return true;
    } catch (const std::exception& e) {
        BlankBirth(f);
        MsgBox("The stored person '" + name + "' could not be read, so the birth fields are left blank." +
                   (name.find('\'') != std::string::npos
                        ? " A name with an apostrophe (') can't be looked up in the store."
                        : std::string()) +
                   "\n\n" + e.what(),
               MsgButtons::OK, AppTitle(), MsgIcon::Critical);
        return false;
    }
}

bool Save(const PersonFields& f)
{
    const RequestPerson fields = Gather(f);
    if (vb::Trim(fields.Name).empty()) {
        MsgBox(Msg(101), MsgButtons::OK, AppTitle(), MsgIcon::Exclamation);
        f.name->setFocus();
        return false;
    }
    if (ui::RefusedName(fields.Name, "person")) {
        f.name->setFocus();
        return false;
    }
    const bool saved = ui::RunCommand([&] {
        clsPerson p;
        p.SetDB(RecosDB());
        // A person of that name is written over; any other is added.
        const bool found = p.MoveToName(fields.Name);
        FillPersonRecord(p, fields);
        p.seconds(0);
        if (found) p.Save();
        else p.AddNew();
    });
    if (saved) MsgBox(Msg(117), MsgButtons::OK, AppTitle(), MsgIcon::Information);
    return saved;
}

bool Delete(const PersonFields& f)
{
    const std::string name = Text(f.name);
    if (vb::Trim(name).empty()) return false;
    bool deleted = false;
    ui::RunCommand([&] {
        clsPerson p;
        p.SetDB(RecosDB());
        if (!p.MoveToName(name)) {
            MsgBox("'" + name + "' is not in the database.", MsgButtons::OK, AppTitle(), MsgIcon::Information);
            return;
        }
        if (MsgBox("Do you want to delete '" + name + "' from the database?", MsgButtons::YesNo, AppTitle(),
                   MsgIcon::Question) != MsgAnswer::Yes)
            return;
        p.Delete();
        deleted = true;
    });
    if (!deleted) return false;
    SetBoxText(f.name, QString());
    MsgBox(Msg(118), MsgButtons::OK, AppTitle(), MsgIcon::Information);
    return true;
}

void SaveToFile(QWidget* parent, const PersonFields& f, const HintLine& hint)
{
    const std::string name = Text(f.name);
    const std::string path = Dialogs().SaveFile(parent, "Save Person Details To File",
                                                "Person Details (*.JKP)|*.JKP|", ".JKP", name + ".JKP");
    if (path.empty()) return;
    const std::string date = Text(f.date);
    const std::string time = Text(f.time);
    const std::string lati = Text(f.place.lati);
    const std::string longi = Text(f.place.longi);
    std::map<std::string, Variant> row;
    row["Name"] = Variant(name);
    row["Sex"] = Variant(f.male->isChecked() ? 1 : 2);
    row["Day"] = Variant(vb::Left(date, 2));
    row["Month"] = Variant(vb::Mid(date, 4, 2));
    row["Year"] = Variant(vb::Right(date, 4));
    row["Hour"] = Variant(vb::Left(time, 2));
    row["Minutes"] = Variant(vb::Mid(time, 4, 2));
    // The seconds are the last two characters of the time box, as they
    // always were written.
    row["seconds"] = Variant(vb::Right(time, 2));
    row["AMPM"] = Variant(f.half[0]->isChecked() ? 1 : 2);
    row["Country"] = Variant(Text(f.place.country));
    row["LatDeg"] = Variant(vb::Left(lati, 3));
    row["LatMT"] = Variant(vb::Right(lati, 2));
    row["TextNS"] = Variant(Text(f.place.ns));
    row["LongDeg"] = Variant(vb::Left(longi, 3));
    row["LongMT"] = Variant(vb::Right(longi, 2));
    row["TextEW"] = Variant(Text(f.place.ew));
    row["City"] = Variant(Text(f.place.city));
    row["GMTDIFF"] = Variant(Text(f.place.gmt));
    try {
        SavePersonFile(path, row, RecosDB().get());
    } catch (const std::exception& e) {
        MsgBox(e.what(), MsgButtons::OK, "Error Writing File", MsgIcon::Critical);
        return;
    }
    hint("The person's details have been saved in " + Q(path) + ".");
}

void SaveDatabase(QWidget* parent, const HintLine& hint)
{
    const std::string path = Dialogs().SaveFile(parent, "Save Database To File", "JKD Database (*.JKD)|*.JKD|",
                                                ".JKD", std::string("Untitled") + ".JKD");
    if (path.empty()) return;
    try {
        SaveDatabaseFile(path, *RecosDB());
    } catch (const std::exception& e) {
        MsgBox(e.what(), MsgButtons::OK, "Error Writing File", MsgIcon::Critical);
        return;
    }
    hint("The persons have been saved in " + Q(path) + ".");
}

bool Import(QWidget* parent, bool database, const HintLine& hint)
{
    const std::string path =
        database ? Dialogs().OpenFile(parent, "Merge Database", "JKD Database (*.JKD)|*.JKD|")
                 : Dialogs().OpenFile(parent, "Import Person Details", "Person Details (*.JKP)|*.JKP|");
    if (path.empty()) return false;
    int added = 0;
    try {
        // A large file takes a while: the progress dialog shows how far.
        frmStatus status(parent ? parent->window() : nullptr);
        try {
            added = ImportPersons(path, *RecosDB(), &clsPerson::CheckRow);
        } catch (...) {
            status.Done();
            throw;
        }
        status.Done();
    } catch (const std::exception& e) {
        MsgBox(std::string(e.what()), MsgButtons::OK, Msg(4), MsgIcon::Critical);
        return false;
    }
    hint(QString::number(added) + (added == 1 ? " person has" : " persons have") + " been added from " + Q(path) +
         ".");
    return true;
}

}  // namespace ranvel::persons
