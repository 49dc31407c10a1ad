// The person table behind the moment record: browsing, adding, saving and
// deleting the persons kept in RECOS.Dat.
#include "ranvel/chart/person.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

void clsPerson::SetDB(std::shared_ptr<Database> db)
{
    db_ = std::move(db);
    if (!db_) throw vb::RuntimeError("Object variable or With block variable not set");
    rs_ = db_->OpenRecordset("qryPersonName");
    if (rs_->HasRows()) rs_->MoveFirst();
}

Recordset& clsPerson::Rows() const
{
    if (!rs_) throw vb::RuntimeError("Object variable or With block variable not set");
    return *rs_;
}

long clsPerson::RecordCount() const { return Rows().RecordCount(); }

void clsPerson::MoveTo(long n)
{
    Recordset& rs = Rows();
    if (!rs.HasRows()) return;
    rs.MoveFirst();
    rs.Move(n);
    LoadPerson(rs);
}

void clsPerson::MoveFirst()
{
    Recordset& rs = Rows();
    if (!rs.HasRows()) return;
    rs.MoveFirst();
    LoadPerson(rs);
}

void clsPerson::MoveLast()
{
    Recordset& rs = Rows();
    rs.MoveLast();
    LoadPerson(rs);
}

void clsPerson::MoveNext()
{
    Recordset& rs = Rows();
    rs.MoveNext();
    LoadPerson(rs);
}

bool clsPerson::MoveToName(const std::string& name)
{
    Recordset& rs = Rows();
    if (!rs.HasRows()) return false;
    for (rs.MoveFirst(); !rs.IsEOF(); rs.MoveNext())
        if (vb::EqualsNoCase(rs.Field("Name").ToTextOrEmpty(), name)) return true;
    return false;
}

void clsPerson::AddNew()
{
    Recordset& rs = Rows();
    rs.AddNew();
    StorePerson(rs);
    rs.Update();
}

void clsPerson::Save()
{
    Recordset& rs = Rows();
    rs.Edit();
    StorePerson(rs);
    rs.Update();
}

void clsPerson::Delete() { Rows().Delete(); }

bool clsPerson::FindPerson(const std::string& name)
{
    if (!db_) throw vb::RuntimeError("Object variable or With block variable not set");
    auto found = db_->OpenRecordset("SELECT * FROM Person WHERE Name = '" + name + "'");
    if (!found->HasRows()) return false;
    found->MoveFirst();
    LoadPerson(*found);
    return true;
}

void clsPerson::LoadPerson(const Recordset& rs)
{
    Name(rs.Field("Name").ToTextOrEmpty());
    Sex(rs.Field("Sex"));
    Day(rs.Field("Day"));
    Month(rs.Field("Month"));
    Year(rs.Field("Year"));
    Hour(rs.Field("Hour"));
    Minutes(rs.Field("Minutes"));
    seconds(rs.Field("seconds"));
    AMPM(rs.Field("AMPM"));
    Country(rs.Field("Country").ToTextOrEmpty());
    PLOB(rs.Field("City").ToTextOrEmpty());
    LatDeg(rs.Field("LatDeg"));
    LatMT(rs.Field("LatMT"));
    TextNS(rs.Field("TextNS").ToTextOrEmpty());
    LongDeg(rs.Field("LongDeg"));
    LongMT(rs.Field("LongMT"));
    TextEW(rs.Field("TextEW").ToTextOrEmpty());
    GMTDIFF(rs.Field("GMTDIFF").ToTextOrEmpty());
    // A person saved without a correction reads as none.
    Variant corr = rs.Field("TCorrVal");
    TimeCorr(corr.IsNull() ? Variant("+00.00") : corr);
    Variant inde = rs.Field("Tcorrinde");
    TimeCorrInde(inde.IsNull() ? Variant(0) : inde);
}

void clsPerson::CheckRow(const Recordset& rs)
{
    if (rs.Field("Name").IsNull() || vb::Trim(rs.Field("Name").ToTextOrEmpty()).empty())
        throw vb::RuntimeError("it has no name");
    clsPerson p;
    p.LoadPerson(rs);
    if (p.name_.find('\'') != std::string::npos)
        throw vb::RuntimeError("the name '" + p.name_ + "' holds an apostrophe (')");
    if (!DateTime::IsValidDate(p.year_, p.month_, p.day_))
        throw vb::RuntimeError("its birth date " + std::to_string(p.day_) + "/" + std::to_string(p.month_) + "/" +
                               std::to_string(p.year_) + " is not a date");
    if (p.hour_ < 0 || p.hour_ > 23 || p.minutes_ < 0 || p.minutes_ > 59)
        throw vb::RuntimeError("its birth time " + std::to_string(p.hour_) + "." + std::to_string(p.minutes_) +
                               " is not a time of day");
}

void clsPerson::StorePerson(Recordset& rs) const
{
    rs.SetField("Name", name_);
    rs.SetField("Sex", static_cast<int>(sex_));
    rs.SetField("Day", day_);
    rs.SetField("Month", month_);
    rs.SetField("Year", year_);
    rs.SetField("Hour", hour_);
    rs.SetField("Minutes", minutes_);
    rs.SetField("seconds", seconds_);
    rs.SetField("AMPM", static_cast<int>(ampm_));
    rs.SetField("Country", country_);
    rs.SetField("City", plob_);
    rs.SetField("LatDeg", latDeg_);
    rs.SetField("LatMT", latMT_);
    rs.SetField("TextNS", textNS_);
    rs.SetField("LongDeg", longDeg_);
    rs.SetField("LongMT", longMT_);
    rs.SetField("TextEW", textEW_);
    rs.SetField("GMTDIFF", gmtDiff_);
    rs.SetField("TCorrVal", timeCorr_);
    rs.SetField("Tcorrinde", timeCorrInde_);
}

}  // namespace ranvel
