#include "ranvel/data/exchange.h"

#include <unistd.h>

#include <atomic>
#include <filesystem>

#include "ranvel/platform/apppaths.h"
#include "ranvel/platform/sinks.h"

namespace ranvel {

namespace fs = std::filesystem;

namespace {

// What a failed step says to the user: the store's words without the query
// text they came with.
std::string Why(const std::exception& e)
{
    std::string why = e.what();
    if (auto q = why.find(" (query: "); q != std::string::npos) why.erase(q);
    if (auto s = why.find(" (script in "); s != std::string::npos) why.erase(s);
    return why;
}

bool SameFile(const std::string& a, const std::string& b)
{
    std::error_code ec;
    return fs::exists(a, ec) && fs::exists(b, ec) && fs::equivalent(a, b, ec);
}

// An exchange file is written beside its target under a name of its own and
// takes the target's place only when it is whole, so a failure on the way
// (a full disk, a kill) leaves the file that was there as it was. The
// persons store itself and the template are never a target.
void WriteExchangeFile(const std::string& path, Database* recos, const std::function<void(Database&)>& fill)
{
    const std::string templ = ExchangeTemplatePath();
    if (!FileExists(templ)) throw DatabaseError("the exchange template is missing: " + templ);
    if ((recos && SameFile(path, recos->Path())) || SameFile(path, templ))
        throw DatabaseError("'" + path + "' is one of the program's own databases; please choose another file.");
    static std::atomic<int> serial{0};
    const fs::path target(path);
    const fs::path work = target.parent_path() / ("." + target.filename().string() + ".part-" +
                                                  std::to_string(::getpid()) + "-" + std::to_string(serial++));
    try {
        fs::copy_file(templ, work, fs::copy_options::overwrite_existing);
        {
            auto db = Database::Open(work.string());
            fill(*db);
        }
        fs::rename(work, target);
    } catch (const std::exception& e) {
        std::error_code ec;
        fs::remove(work, ec);
        throw DatabaseError("Could not write '" + path + "': " + Why(e) + ". A file that was there is left as it was.");
    }
}

// The fields in brackets: a double-quoted name that a table lacks would be
// read as a text and not as a missing field.
std::string FieldList()
{
    std::string list;
    for (const std::string& f : ExchangeFields()) list += (list.empty() ? "[" : ", [") + f + "]";
    return list;
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

void SavePersonFile(const std::string& path, const std::map<std::string, Variant>& fields, Database* recos)
{
    WriteExchangeFile(path, recos, [&](Database& db) {
        auto rs = db.OpenTable("Person");
        rs->AddNew();
        for (const std::string& f : ExchangeFields())
            if (auto it = fields.find(f); it != fields.end()) rs->SetField(f, it->second);
        rs->Update();
    });
}

void SaveDatabaseFile(const std::string& path, Database& recos)
{
    WriteExchangeFile(path, &recos, [&](Database& db) {
        // Row by row from the store, never the whole table in memory; one
        // transaction, so the work file is written once.
        Database::Transaction t(db);
        recos.ForEachRow("SELECT " + FieldList() + " FROM Person", [&](const std::vector<Variant>& row) {
            db.InsertRow("Person", ExchangeFields(), row);
            return true;
        });
        t.Commit();
    });
}

int ImportPersons(const std::string& path, Database& recos, const PersonRowCheck& check)
{
    if (SameFile(path, recos.Path()))
        throw DatabaseError("'" + path + "' is the program's own persons store; it can't be merged into itself.");
    std::shared_ptr<Database> db;
    try {
        db = Database::OpenUntrusted(path);
    } catch (const std::exception& e) {
        throw DatabaseError("'" + path + "' is not a person file that can be read: " + Why(e) + ".");
    }
    // A view could stand for endless rows: only a table of persons is read.
    if (!db->IsPlainTable("Person")) throw DatabaseError("'" + path + "' holds no persons (no table Person).");
    {
        auto head = db->OpenRecordset("SELECT * FROM Person WHERE 0");
        for (const std::string& f : ExchangeFields())
            if (!head->HasField(f)) throw DatabaseError("'" + path + "' holds no person field '" + f + "'");
    }
    const std::string select = "SELECT " + FieldList() + " FROM Person";
    const std::string where = "'" + path + "'";

    // First every row is read and checked, so that a file with one row the
    // store could not load back adds nothing; then all are added in one
    // transaction. Neither pass keeps more than one row in memory.
    long total = 0;
    // The row as the store would hold it: the fields that stay behind are
    // empty there.
    std::vector<std::string> stored = ExchangeFields();
    stored.insert(stored.end(), {"TCorrVal", "Tcorrinde"});
    try {
        db->ForEachRow(select, [&](const std::vector<Variant>& row) {
            ++total;
            if (check) {
                std::vector<Variant> values = row;
                values.insert(values.end(), {Variant::Null(), Variant::Null()});
                try {
                    check(Recordset(nullptr, "Person", stored, {std::move(values)}, {}, false));
                } catch (const std::exception& e) {
                    throw DatabaseError("Person " + std::to_string(total) + " of " + where +
                                        " can't be taken: " + Why(e) + ". No person was added.");
                }
            }
            if (total % 5000 == 0) Progress().Progress("Checking Persons...", std::to_string(total) + " read", 0);
            return true;
        });
    } catch (const DatabaseError&) {
        throw;
    } catch (const std::exception& e) {
        throw DatabaseError(where + " can't be read to its end: " + Why(e) + ". No person was added.");
    }

    long added = 0;
    try {
        Database::Transaction t(recos);
        db->ForEachRow(select, [&](const std::vector<Variant>& row) {
            recos.InsertRow("Person", ExchangeFields(), row);
            ++added;
            if (added % 5000 == 0)
                Progress().Progress("Adding Persons...", std::to_string(added) + " of " + std::to_string(total),
                                    static_cast<int>(100 * added / total));
            return true;
        });
        t.Commit();
    } catch (const std::exception& e) {
        throw DatabaseError("The persons of " + where + " could not be added: " + Why(e) +
                            ". No person was added.");
    }
    return static_cast<int>(added);
}

}  // namespace ranvel
