// Reading the table rows that the data tree is built from: UTF-8 text, the
// first record naming the fields, records in RFC 4180 form (fields split by
// commas, a field in double quotes may hold commas, line breaks and doubled
// quotes). An empty field without quotes is Null; "" is the empty text.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace ranvel::makedata {

// A fault in a source file; the message begins with "<file>:<line>: ".
class SourceError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

using CsvField = std::optional<std::string>;  // nullopt is Null

struct CsvRecord {
    int line = 0;  // line of the file on which the record begins
    std::vector<CsvField> fields;
};

struct CsvTable {
    std::vector<std::string> fields;
    std::vector<CsvRecord> records;
};

// Parses the whole text. A record whose field count differs from the
// header's, a stray quote, a bare carriage return or text that isn't UTF-8
// is refused with a SourceError naming `source` and the line. Lines with
// nothing on them are skipped.
CsvTable ParseCsv(std::string_view text, const std::string& source);

}  // namespace ranvel::makedata
