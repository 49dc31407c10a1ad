#include "ranvel/data/exchange.h"

#include <filesystem>

#include "ranvel/platform/apppaths.h"

namespace ranvel {

namespace fs = std::filesystem;

namespace {

// A fresh copy of the template at path, opened.
std::shared_ptr<Database> FromTemplate(const std::string& path)
{
    const std::string templ = ExchangeTemplatePath();
    if (!FileExists(templ)) throw DatabaseError("the exchange template is missing: " + templ);
    std::error_code ec;
    if (fs::exists(path, ec)) fs::remove(path);
    fs::copy_file(templ, path);
    return Database::Open(path);
}

void CopyRow(const Recordset& from, Recordset& to)
{
    to.AddNew();
    for (const std::string& f : ExchangeFields()) to.SetField(f, from.Field(f));
    to.Update();
}

}  // namespace

const std::vector<std::string>& ExchangeFields()
{
    static const std::vector<std::string> fields = {"Name",   "Sex",     "Day",    "Month",  "Year",    "Hour",
                                                    "Minutes", "seconds", "AMPM",   "Country", "LatDeg", "LatMT",
                                                    "TextNS", "LongDeg", "LongMT", "TextEW", "City",    "GMTDIFF"};
    return fields;
}

std::string ExchangeTemplatePath() { return AppPath("EPHE\\COMMON\\ExpTemp.JKP"); }

void SavePersonFile(const std::string& path, const std::map<std::string, Variant>& fields)
{
    auto db = FromTemplate(path);
    auto rs = db->OpenTable("Person");
    rs->AddNew();
    for (const std::string& f : ExchangeFields())
        if (auto it = fields.find(f); it != fields.end()) rs->SetField(f, it->second);
    rs->Update();
}

void SaveDatabaseFile(const std::string& path, Database& recos)
{
    auto local = recos.OpenTable("Person");
    auto db = FromTemplate(path);
    auto out = db->OpenTable("Person");
    for (local->HasRows() ? local->MoveFirst() : void(); !local->IsEOF(); local->MoveNext()) CopyRow(*local, *out);
}

int ImportPersons(const std::string& path, Database& recos)
{
    // The whole file is read before the first row is added, so a file that
    // is not an exchange file adds nothing.
    auto db = Database::Open(path);
    auto in = db->OpenTable("Person");
    for (const std::string& f : ExchangeFields())
        if (!in->HasField(f)) throw DatabaseError("'" + path + "' holds no person field '" + f + "'");
    auto local = recos.OpenTable("Person");
    int added = 0;
    for (in->HasRows() ? in->MoveFirst() : void(); !in->IsEOF(); in->MoveNext()) {
        CopyRow(*in, *local);
        ++added;
    }
    return added;
}

}  // namespace ranvel
