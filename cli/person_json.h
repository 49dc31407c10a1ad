// The moment record as JSON: the record's fields under their own names,
// numbers as numbers and texts as texts.
#pragma once

#include <nlohmann/json.hpp>

#include "ranvel/chart/person.h"
#include "ranvel/engine/zonenotes.h"
#include "ranvel/platform/sinks.h"

namespace ranvel::cli {

// Sets every field present in the object; a field not named keeps the
// record's default. Every value is checked first, as the request form would
// have it: Sex and AMPM 1 or 2, a real date from 1900 to 2099, a 24-hour
// clock, latitude to 90 and longitude to 180 degrees with their letters,
// the zone within 14 hours. An unknown name or a refused value throws
// std::invalid_argument, one line a field, each naming it.
void PersonFromJson(const nlohmann::ordered_json& object, clsPerson& person);
nlohmann::ordered_json PersonToJson(const clsPerson& person);

// Reads a whole JSON file; a missing file or bad JSON throws
// std::invalid_argument with a message that names the file.
nlohmann::ordered_json ReadJsonFile(const std::string& path);

// Writes JSON with every double in the shortest text that reads back to the
// same value (std::to_chars), indented by two blanks.
std::string DumpJson(const nlohmann::ordered_json& value);

// The texts of the messages a run raised, in order.
nlohmann::ordered_json MessagesJson(const HeadlessMessageSink& sink);

// The notes on a request's offsets: {Field, Text, Offset} each.
nlohmann::ordered_json ZoneNotesJson(const std::vector<ZoneNote>& notes);
// The same as lines of a readable report ("" when there are none).
std::string ZoneNotesText(const std::vector<ZoneNote>& notes);

}  // namespace ranvel::cli
