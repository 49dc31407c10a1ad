#include "ranvel/data/places.h"

#include "ranvel/platform/sinks.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel::places {

namespace {

std::string Text(const Recordset& rs, const char* field) { return rs.Field(field).ToTextOrEmpty(); }

CityFields ReadCity(const Recordset& rs)
{
    CityFields c;
    c.City = Text(rs, "City");
    c.Country = Text(rs, "Country");
    c.Lat = DegreesField(Text(rs, "Lat"));
    c.North = Text(rs, "NOSO") == "N";
    c.Longy = DegreesField(Text(rs, "Longy"));
    c.East = Text(rs, "EaWe") == "E";
    c.GMTDiff = Text(rs, "GMTDIFF");
    if (c.GMTDiff.empty()) c.GMTDiff = kBlankZone;
    return c;
}

std::string NameIs(const std::string& name) { return "Name = '" + name + "'"; }
std::string CityIs(const std::string& name) { return "City = '" + name + "'"; }

}  // namespace

std::string DegreesField(const std::string& stored)
{
    if (stored.size() < 5) return kBlankDegrees;
    return vb::Left(stored, 3) + ":" + vb::Right(stored, 2);
}

std::string StoredDegrees(const std::string& field) { return vb::Left(field, 3) + "." + vb::Right(field, 2); }

bool CheckDegrees(const std::string& field, Axis axis)
{
    if (vb::Val(StoredDegrees(field)) <= 180) return true;
    MsgBox("Please enter a value under 180.", MsgButtons::OK,
           axis == Axis::Latitude ? "Invalid Latitude" : "Invalid Longitude", MsgIcon::Exclamation);
    return false;
}

PlaceEditor::PlaceEditor(std::shared_ptr<Database> recos)
    : db_(std::move(recos)),
      countries_(db_->OpenRecordset("SELECT * FROM Country")),
      cities_(db_->OpenRecordset("SELECT * FROM City"))
{
}

std::vector<std::string> PlaceEditor::Countries() const
{
    std::vector<std::string> names;
    auto rs = db_->OpenRecordset("Select * From Country");
    for (; !rs->IsEOF(); rs->MoveNext()) names.push_back(Text(*rs, "Name"));
    return names;
}

std::vector<std::string> PlaceEditor::Cities(const std::string& country) const
{
    std::vector<std::string> names;
    auto rs = db_->OpenRecordset("Select * From City where country = '" + country + "'");
    for (; !rs->IsEOF(); rs->MoveNext()) names.push_back(Text(*rs, "City"));
    return names;
}

std::optional<std::string> PlaceEditor::CountryZone(const std::string& name) const
{
    auto rs = db_->OpenRecordset("SELECT * FROM Country WHERE Name = '" + name + "'");
    if (rs->IsEOF()) return std::nullopt;
    return Text(*rs, "GMTDIF");
}

std::optional<CityFields> PlaceEditor::PickCity(const std::string& name)
{
    cities_->FindFirst(CityIs(name));
    if (cities_->NoMatch()) return std::nullopt;
    cityMode_ = Mode::Change;
    CityFields c = ReadCity(*cities_);
    pickedCity_ = c.City;
    return c;
}

bool PlaceEditor::SaveCity(const CityFields& city)
{
    countries_->FindFirst(NameIs(city.Country));
    if (countries_->NoMatch()) {
        MsgBox("Invalid Country, Please Select a Country From The List.", MsgButtons::OK, "Country Not Found",
               MsgIcon::Exclamation);
        return false;
    }
    const bool adding = cityMode_ == Mode::Add;
    if (adding) cities_->AddNew();
    else cities_->Edit();
    cities_->SetField("City", city.City);
    cities_->SetField("Lat", StoredDegrees(city.Lat));
    cities_->SetField("NOSO", city.North ? "N" : "S");
    cities_->SetField("Longy", StoredDegrees(city.Longy));
    cities_->SetField("EaWe", city.East ? "E" : "W");
    cities_->SetField("Country", city.Country);
    cities_->SetField("GMTDIFF", city.GMTDiff);
    cities_->Update();
    if (adding) {
        // The added row goes to the end; from now on a save changes it
        // rather than adding the same city again.
        cities_->MoveLast();
        cityMode_ = Mode::Change;
    }
    pickedCity_ = city.City;
    return true;
}

bool PlaceEditor::DeleteCity(const std::string& name)
{
    cities_->FindFirst(CityIs(name));
    if (cities_->NoMatch()) return false;
    cities_->Delete();
    NewCity();
    return true;
}

bool PlaceEditor::PickCountry(const std::string& name)
{
    countries_->FindFirst(NameIs(name));
    if (countries_->NoMatch()) return false;
    pickedCountry_ = Text(*countries_, "Name");
    countryMode_ = Mode::Change;
    return true;
}

void PlaceEditor::SaveCountry(const std::string& name, const std::string& zone)
{
    bool adding = countryMode_ == Mode::Add;
    if (!adding) {
        countries_->FindFirst(NameIs(pickedCountry_));
        adding = countries_->NoMatch();  // the picked row has gone meanwhile
    }
    if (adding) countries_->AddNew();
    else countries_->Edit();
    countries_->SetField("Name", name);
    countries_->SetField("GMTDIF", zone);
    countries_->Update();
    pickedCountry_ = name;
    countryMode_ = Mode::Change;
}

bool PlaceEditor::DeleteCountry(const std::string& name)
{
    countries_->FindFirst(NameIs(name));
    if (countries_->NoMatch()) return false;
    countries_->Delete();
    NewCountry();
    return true;
}

}  // namespace ranvel::places
