// Persons travel between installations in two exchange files, both small
// databases copied from the installation's template ExpTemp.JKP: a .JKP file
// holds one person, a .JKD file all of them. The time correction fields
// stay behind: the template has no place for them.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "ranvel/platform/database.h"
#include "ranvel/platform/variant.h"

namespace ranvel {

// The fields that travel, in the order they are copied.
const std::vector<std::string>& ExchangeFields();

// <app>\EPHE\COMMON\ExpTemp.JKP
std::string ExchangeTemplatePath();

// Replaces the file at path by a copy of the template and adds one row of
// the given fields to its table Person (fields not given stay empty).
void SavePersonFile(const std::string& path, const std::map<std::string, Variant>& fields);

// Replaces the file at path by a copy of the template holding every person
// of the local table, in table order.
void SaveDatabaseFile(const std::string& path, Database& recos);

// Adds every person of an exchange file (.JKP or .JKD) to the local table.
// No name is checked against those already there: merging a file twice
// gives every person twice. Gives the count added.
int ImportPersons(const std::string& path, Database& recos);

}  // namespace ranvel
