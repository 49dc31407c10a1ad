// Persons travel between installations in two exchange files, both small
// databases copied from the installation's template ExpTemp.JKP: a .JKP file
// holds one person, a .JKD file all of them. The time correction fields
// stay behind: the template has no place for them.
#pragma once

#include <functional>
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

// An exchange file is written whole beside its target and then takes its
// place: a failure leaves the file that was there as it was. The persons
// store and the template are refused as targets (DatabaseError).

// Replaces the file at path by a copy of the template and adds one row of
// the given fields to its table Person (fields not given stay empty).
void SavePersonFile(const std::string& path, const std::map<std::string, Variant>& fields,
                    Database* recos = nullptr);

// Replaces the file at path by a copy of the template holding every person
// of the local table, in table order.
void SaveDatabaseFile(const std::string& path, Database& recos);

// Throws when a person row could not be loaded back from the store.
using PersonRowCheck = std::function<void(const Recordset& row)>;

// Adds every person of an exchange file (.JKP or .JKD) to the local table,
// all of them or, when one row fails its check or the file can't be read
// to its end, none (DatabaseError naming the row). No name is checked
// against those already there: merging a file twice gives every person
// twice. Gives the count added; the progress sink hears of long files.
int ImportPersons(const std::string& path, Database& recos, const PersonRowCheck& check = {});

}  // namespace ranvel
