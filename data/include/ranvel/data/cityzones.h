// The time zones of the place store's cities: each city row carries the
// name of its zone in the time zone database (Zone), beside the standard
// offset the place fields are filled with. A store made before the zones
// were kept has no such field; its cities then have no zone.
#pragma once

#include <string>
#include <vector>

#include "ranvel/platform/database.h"

namespace ranvel {

struct CityZone {
    std::string City, Country;
    std::string GMTDiff;  // the row's standard offset, "+05.30"
    std::string Zone;     // "Asia/Kolkata"; empty when the row has none
};

// The cities of that name (any case) in the store's order, of one country
// when a country is named (any case).
std::vector<CityZone> CitiesNamed(Database& recos, const std::string& city, const std::string& country = "");

// A store made before the cities carried their zones gains the field,
// each of its cities taking the zone of the city of the same name and
// country in the installation's store (its own cities stay without). All
// in one transaction, or nothing; true when the store changed.
bool AddCityZones(Database& store, const std::string& installedStore);

}  // namespace ranvel
