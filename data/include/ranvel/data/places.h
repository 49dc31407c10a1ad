// The place store as the place editor works on it: the tables Country and
// City of RECOS.Dat, each held open in a recordset of its own while the
// editor is open. Picking a city or a country makes its row the one that a
// later save changes; starting a new one makes the save add a row.
//
// Names go into the queries as they stand: a name with an apostrophe breaks
// its query, and the DatabaseError that follows ends the command.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ranvel/platform/database.h"

namespace ranvel::places {

// The blank texts of the editor's masked fields.
inline constexpr const char* kBlankDegrees = "000:00";
inline constexpr const char* kBlankZone = "+00.00";

// A city as the editor's fields hold it: degrees as "DDD:MM", the time
// difference as "+HH.MM".
struct CityFields {
    std::string City;
    std::string Country;
    std::string Lat = kBlankDegrees;
    bool North = true;
    std::string Longy = kBlankDegrees;
    bool East = true;
    std::string GMTDiff = kBlankZone;
};

// A stored "028.36" as the field's "028:36"; a text too short to hold
// degrees and minutes gives the blank field.
std::string DegreesField(const std::string& stored);
// A field's "028:36" as stored: its first three characters, ".", its last two.
std::string StoredDegrees(const std::string& field);

// The check made when a latitude or longitude field is left: the degrees
// and minutes read as a number must not exceed 180. 180 is the bound for
// latitude as well; nothing checks 90. A value over it is reported (title
// "Invalid Latitude" or "Invalid Longitude") and false is given; the field
// keeps it.
enum class Axis { Latitude, Longitude };
bool CheckDegrees(const std::string& field, Axis axis);

class PlaceEditor {
public:
    enum class Mode { Add, Change };

    explicit PlaceEditor(std::shared_ptr<Database> recos);

    // The country names, in table order.
    std::vector<std::string> Countries() const;
    // The cities of one country, in table order.
    std::vector<std::string> Cities(const std::string& country) const;
    // The country's GMTDIF; nothing when the country is not in the table.
    std::optional<std::string> CountryZone(const std::string& name) const;

    // The first city of that name, whatever its country, becomes the row a
    // save changes; nothing (and no change of mode) when there is none.
    std::optional<CityFields> PickCity(const std::string& name);
    // The next save adds a city.
    void NewCity()
    {
        cityMode_ = Mode::Add;
        pickedCity_.clear();
    }
    Mode CityMode() const { return cityMode_; }
    // The name the city had when it was picked (or last saved).
    const std::string& PickedCity() const { return pickedCity_; }
    // Refused, with a message, when the country is not in the table. After
    // an add the new row is the one picked.
    bool SaveCity(const CityFields& city);
    // Deletes the first city of that name; false when there is none. The
    // next save then adds.
    bool DeleteCity(const std::string& name);

    // The country of that name becomes the one a save changes; false (and
    // no change of mode) when there is none.
    bool PickCountry(const std::string& name);
    void NewCountry()
    {
        countryMode_ = Mode::Add;
        pickedCountry_.clear();
    }
    Mode CountryMode() const { return countryMode_; }
    // The name the country had when it was picked (or last saved).
    const std::string& PickedCountry() const { return pickedCountry_; }
    // Adds a row, or changes the picked one (its name included).
    void SaveCountry(const std::string& name, const std::string& zone);
    // Deletes the first country of that name; its cities stay.
    bool DeleteCountry(const std::string& name);

private:
    std::shared_ptr<Database> db_;
    std::unique_ptr<Recordset> countries_;
    std::unique_ptr<Recordset> cities_;
    Mode cityMode_ = Mode::Add;
    Mode countryMode_ = Mode::Add;
    std::string pickedCity_;
    std::string pickedCountry_;
};

}  // namespace ranvel::places
