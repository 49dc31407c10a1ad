#include "csv.h"

namespace ranvel::makedata {

namespace {

[[noreturn]] void Fail(const std::string& source, int line, const std::string& what)
{
    throw SourceError(source + ":" + std::to_string(line) + ": " + what);
}

// The line of the first byte that isn't well-formed UTF-8, or 0.
int FirstBadUtf8Line(std::string_view s)
{
    int line = 1;
    for (std::size_t i = 0; i < s.size();) {
        auto c = static_cast<unsigned char>(s[i]);
        if (c == '\n') ++line;
        std::size_t len = c < 0x80 ? 1 : (c >> 5) == 0x6 ? 2 : (c >> 4) == 0xE ? 3 : (c >> 3) == 0x1E ? 4 : 0;
        if (len == 0 || (len == 2 && c < 0xC2) || i + len > s.size()) return line;
        for (std::size_t k = 1; k < len; ++k)
            if ((static_cast<unsigned char>(s[i + k]) & 0xC0) != 0x80) return line;
        i += len;
    }
    return 0;
}

}  // namespace

CsvTable ParseCsv(std::string_view text, const std::string& source)
{
    if (text.substr(0, 3) == "\xEF\xBB\xBF") text.remove_prefix(3);
    if (int bad = FirstBadUtf8Line(text)) Fail(source, bad, "the text is not UTF-8");

    std::vector<CsvRecord> records;
    int line = 1;
    std::size_t i = 0;
    const std::size_t n = text.size();
    auto atLineEnd = [&](std::size_t at) { return at >= n || text[at] == '\n' || text[at] == '\r'; };

    while (i < n) {
        // A line with nothing on it is no record.
        if (text[i] == '\n') {
            ++line;
            ++i;
            continue;
        }
        if (text.substr(i, 2) == "\r\n") {
            ++line;
            i += 2;
            continue;
        }
        CsvRecord rec;
        rec.line = line;
        for (;;) {
            CsvField field;
            if (i < n && text[i] == '"') {
                const int opened = line;
                std::string value;
                ++i;
                for (;;) {
                    if (i >= n) Fail(source, opened, "a quoted field is never closed");
                    if (text[i] == '"') {
                        if (i + 1 < n && text[i + 1] == '"') {
                            value += '"';
                            i += 2;
                            continue;
                        }
                        ++i;
                        break;
                    }
                    if (text[i] == '\n') ++line;
                    value += text[i++];
                }
                if (!atLineEnd(i) && text[i] != ',') Fail(source, line, "text after the closing quote of a field");
                field = std::move(value);
            } else {
                std::size_t start = i;
                while (i < n && text[i] != ',' && text[i] != '\n' && text[i] != '\r') {
                    if (text[i] == '"') Fail(source, line, "a quote inside a field that isn't quoted");
                    ++i;
                }
                if (i > start) field = std::string(text.substr(start, i - start));
            }
            rec.fields.push_back(std::move(field));
            if (i < n && text[i] == ',') {
                ++i;
                continue;
            }
            break;
        }
        // End of the record: a line break, or the end of the text.
        if (i < n) {
            if (text[i] == '\r') {
                if (i + 1 >= n || text[i + 1] != '\n') Fail(source, line, "a carriage return without a line feed");
                ++i;
            }
            ++i;
            ++line;
        }
        records.push_back(std::move(rec));
    }

    if (records.empty()) Fail(source, 1, "no header line naming the fields");
    CsvTable table;
    for (std::size_t k = 0; k < records[0].fields.size(); ++k) {
        const CsvField& f = records[0].fields[k];
        if (!f || f->empty()) Fail(source, 1, "field " + std::to_string(k + 1) + " of the header has no name");
        table.fields.push_back(*f);
    }
    for (std::size_t r = 1; r < records.size(); ++r) {
        if (records[r].fields.size() != table.fields.size())
            Fail(source, records[r].line,
                 std::to_string(records[r].fields.size()) + " fields where the header names " +
                     std::to_string(table.fields.size()));
        table.records.push_back(std::move(records[r]));
    }
    return table;
}

}  // namespace ranvel::makedata
