#include "datatree.h"

#include <sqlite3.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "avi.h"
#include "csv.h"
#include "ranvel/platform/apppaths.h"
#include "ranvel/platform/database.h"

namespace ranvel::makedata {

namespace fs = std::filesystem;

namespace {

// The program opens these without ever reading them: they need only exist.
constexpr const char* kPlaceholderFiles[] = {"CONYEAR.DAT", "SADESAT.Dat", "SCGRAHA.DAT", "SCRASI.DAT", "SCYONI.DAT"};

// Where the rows of a new RECOS.Dat's place tables come from.
constexpr std::pair<const char*, const char*> kPlaceSources[] = {{"countries.csv", "Country"}, {"cities.csv", "City"}};

std::string ReadFile(const fs::path& p)
{
    std::ifstream in(p, std::ios::binary);
    if (!in) throw SourceError(p.string() + ": cannot be read");
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::string Upper(std::string s)
{
    for (char& c : s)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return s;
}

bool SameNoCase(const std::string& a, const std::string& b)
{
    return Upper(a) == Upper(b);
}

// The CSV files of a folder in name order; none when the folder is missing.
std::vector<fs::path> CsvFilesIn(const fs::path& dir)
{
    std::vector<fs::path> out;
    std::error_code ec;
    if (!fs::is_directory(dir, ec)) return out;
    for (const auto& e : fs::directory_iterator(dir))
        if (e.is_regular_file() && SameNoCase(e.path().extension().string(), ".csv")) out.push_back(e.path());
    std::sort(out.begin(), out.end());
    return out;
}

// A file being built beside its final place. Unless Commit() runs, the
// temporary file (and any journal SQLite left with it) goes away.
class PendingFile {
public:
    explicit PendingFile(fs::path target) : target_(std::move(target))
    {
        temp_ = target_.parent_path() / ("." + target_.filename().string() + ".building");
        Discard();  // whatever an interrupted run left
    }
    ~PendingFile()
    {
        if (!done_) Discard();
    }
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;

    const fs::path& Temp() const { return temp_; }

    // Moves the new file into place, unless the old one already holds the
    // very same bytes; tells whether the target changed.
    bool Commit()
    {
        done_ = true;
        std::error_code ec;
        if (fs::is_regular_file(target_, ec) && ReadFile(target_) == ReadFile(temp_)) {
            Discard();
            return false;
        }
        fs::rename(temp_, target_);
        return true;
    }

private:
    void Discard()
    {
        std::error_code ec;
        fs::remove(temp_, ec);
        fs::remove(fs::path(temp_.string() + "-journal"), ec);
    }

    fs::path target_;
    fs::path temp_;
    bool done_ = false;
};

// One prepared statement of the tool's own, finalized on every path out.
class Statement {
public:
    Statement(Database& db, const std::string& sql) : db_(db.Handle())
    {
        if (sqlite3_prepare_v2(db_, sql.c_str(), -1, &stmt_, nullptr) != SQLITE_OK)
            throw DatabaseError(std::string(sqlite3_errmsg(db_)) + " (query: " + sql + ")");
    }
    ~Statement() { sqlite3_finalize(stmt_); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    sqlite3_stmt* get() const { return stmt_; }
    bool Step()
    {
        int rc = sqlite3_step(stmt_);
        if (rc == SQLITE_ROW) return true;
        if (rc == SQLITE_DONE) return false;
        throw DatabaseError(sqlite3_errmsg(db_));
    }
    std::string Text(int col) const
    {
        const unsigned char* t = sqlite3_column_text(stmt_, col);
        return t ? reinterpret_cast<const char*>(t) : "";
    }

private:
    sqlite3* db_;
    sqlite3_stmt* stmt_ = nullptr;
};

std::string Quote(const std::string& name)
{
    return "\"" + name + "\"";
}

// The table of that name without regard to case, as the schema spells it.
std::optional<std::string> FindTable(Database& db, const std::string& name)
{
    Statement st(db, "SELECT name FROM sqlite_master WHERE type = 'table' AND name = ?1 COLLATE NOCASE");
    sqlite3_bind_text(st.get(), 1, name.c_str(), -1, SQLITE_TRANSIENT);
    if (!st.Step()) return std::nullopt;
    return st.Text(0);
}

std::vector<std::string> Columns(Database& db, const std::string& table)
{
    std::vector<std::string> out;
    Statement st(db, "SELECT name FROM pragma_table_info(" + Quote(table) + ")");
    while (st.Step()) out.push_back(st.Text(0));
    return out;
}

// The text tables are searched by head and category with the values pasted
// into the query between single quotes, and the first row of a key is the
// only one ever seen. So a key may hold no apostrophe and may come once.
struct TextRules {
    bool enforce = false;
};

void LoadCsv(Database& db, const fs::path& file, const std::string& table, TextRules rules)
{
    const std::string source = file.string();
    CsvTable csv = ParseCsv(ReadFile(file), source);
    const std::vector<std::string> columns = Columns(db, table);

    std::string names, marks;
    std::vector<std::string> seen;
    int headAt = -1, categoryAt = -1, valAt = -1;
    for (std::size_t k = 0; k < csv.fields.size(); ++k) {
        const std::string& f = csv.fields[k];
        auto col = std::find_if(columns.begin(), columns.end(), [&](const std::string& c) { return SameNoCase(c, f); });
        if (col == columns.end()) throw SourceError(source + ":1: table " + table + " has no field '" + f + "'");
        if (std::any_of(seen.begin(), seen.end(), [&](const std::string& s) { return SameNoCase(s, f); }))
            throw SourceError(source + ":1: the field '" + f + "' is named twice");
        seen.push_back(f);
        if (SameNoCase(f, "Head")) headAt = static_cast<int>(k);
        if (SameNoCase(f, "Category")) categoryAt = static_cast<int>(k);
        if (SameNoCase(f, "Val")) valAt = static_cast<int>(k);
        names += (k ? ", " : "") + Quote(*col);
        marks += (k ? ", ?" : "?") + std::to_string(k + 1);
    }
    if (rules.enforce && (headAt < 0 || valAt < 0))
        throw SourceError(source + ":1: a text table needs the fields Head and Val");

    Statement insert(db, "INSERT INTO " + Quote(table) + " (" + names + ") VALUES (" + marks + ")");
    for (const CsvRecord& rec : csv.records) {
        auto at = [&](const std::string& what) { return source + ":" + std::to_string(rec.line) + ": " + what; };
        if (rules.enforce) {
            if (!rec.fields[headAt] || rec.fields[headAt]->empty()) throw SourceError(at("a text without a head"));
            if (!rec.fields[valAt]) throw SourceError(at("Val is Null; write \"\" for an empty text"));
            for (int k : {headAt, categoryAt})
                if (k >= 0 && rec.fields[k] && rec.fields[k]->find('\'') != std::string::npos)
                    throw SourceError(at("an apostrophe in a key would break the lookup query"));
        }
        sqlite3_reset(insert.get());
        for (std::size_t k = 0; k < rec.fields.size(); ++k) {
            const int slot = static_cast<int>(k + 1);
            if (rec.fields[k])
                sqlite3_bind_text(insert.get(), slot, rec.fields[k]->c_str(), static_cast<int>(rec.fields[k]->size()),
                                  SQLITE_TRANSIENT);
            else
                sqlite3_bind_null(insert.get(), slot);
        }
        if (sqlite3_step(insert.get()) != SQLITE_DONE) throw SourceError(at(sqlite3_errmsg(db.Handle())));
    }
}

// Keys compare as the lookups compare them, without regard to case.
void CheckUniqueKeys(Database& db, const std::string& table, const fs::path& file)
{
    const auto cols = Columns(db, table);
    const bool hasCategory =
        std::any_of(cols.begin(), cols.end(), [](const std::string& c) { return SameNoCase(c, "Category"); });
    const std::string key = hasCategory ? "Head, Category" : "Head";
    Statement st(db, "SELECT " + key + " FROM " + Quote(table) + " GROUP BY " + key + " HAVING count(*) > 1 LIMIT 1");
    if (st.Step()) {
        std::string what = "'" + st.Text(0) + "'" + (hasCategory ? " in '" + st.Text(1) + "'" : "");
        throw SourceError(file.string() + ": the key " + what +
                          " stands more than once; only its first row could be found");
    }
}

struct RowSource {
    fs::path file;
    std::string table;  // as named by the source; matched without regard to case
};

// Builds one database from its schema and rows under a temporary name;
// tells whether the file in place changed.
bool BuildDatabase(const fs::path& target, const fs::path& schema, const std::vector<RowSource>& rows, TextRules rules)
{
    const std::string sql = ReadFile(schema);
    PendingFile pending(target);
    {
        auto db = Database::Create(pending.Temp().string());
        db->ExecuteScript(sql);
        db->Execute("BEGIN");
        for (const RowSource& r : rows) {
            auto table = FindTable(*db, r.table);
            if (!table)
                throw SourceError(r.file.string() + ": no table " + r.table + " in " + schema.filename().string());
            LoadCsv(*db, r.file, *table, rules);
            if (rules.enforce) CheckUniqueKeys(*db, *table, r.file);
        }
        db->Execute("COMMIT");
    }
    return pending.Commit();
}

// A table's rows may be split over "<Table>.csv" and further files
// "<Table>-<part>.csv"; the plain file loads first, the parts after it in
// name order, so the table order of the rows is fixed by the sources.
std::vector<RowSource> RowsOfFolder(const fs::path& dir)
{
    std::vector<RowSource> out;
    for (const fs::path& f : CsvFilesIn(dir)) {
        std::string stem = f.stem().string();
        out.push_back({f, stem.substr(0, stem.find('-'))});
    }
    std::stable_sort(out.begin(), out.end(), [](const RowSource& a, const RowSource& b) {
        if (Upper(a.table) != Upper(b.table)) return Upper(a.table) < Upper(b.table);
        bool aPlain = Upper(a.file.stem().string()) == Upper(a.table);
        bool bPlain = Upper(b.file.stem().string()) == Upper(b.table);
        if (aPlain != bPlain) return aPlain;
        return a.file < b.file;
    });
    return out;
}

bool BuildPlaceholder(const fs::path& target)
{
    PendingFile pending(target);
    {
        auto db = Database::Create(pending.Temp().string());
        db->Execute("PRAGMA user_version = 0");  // writes the header: a real, empty database
    }
    return pending.Commit();
}

bool WriteBytes(const fs::path& target, const std::string& bytes)
{
    PendingFile pending(target);
    {
        std::ofstream out(pending.Temp(), std::ios::binary);
        out << bytes;
        out.close();
        if (!out) throw SourceError(pending.Temp().string() + ": cannot be written");
    }
    return pending.Commit();
}

// Adds to the user's database what the schema has and it lacks: tables,
// then their indexes and the saved queries, in the schema's order, all in
// one transaction. Rows and existing objects are never touched.
std::vector<std::string> AddMissingObjects(const fs::path& target, const fs::path& schema)
{
    auto reference = Database::Create(":memory:");
    reference->ExecuteScript(ReadFile(schema));
    auto db = Database::Open(target.string());

    std::string script;
    std::vector<std::string> added;
    Statement objects(*reference, "SELECT name, sql FROM sqlite_master WHERE sql IS NOT NULL ORDER BY rowid");
    while (objects.Step()) {
        const std::string name = objects.Text(0);
        Statement has(*db, "SELECT 1 FROM sqlite_master WHERE name = ?1 COLLATE NOCASE");
        sqlite3_bind_text(has.get(), 1, name.c_str(), -1, SQLITE_TRANSIENT);
        if (has.Step()) continue;
        script += objects.Text(1) + ";\n";
        added.push_back(name);
    }
    if (!script.empty()) db->ExecuteScript(script);
    return added;
}

void Require(const fs::path& p)
{
    std::error_code ec;
    if (!fs::is_regular_file(p, ec)) throw SourceError(p.string() + ": missing");
}

}  // namespace

void BuildDataTree(const TreeOptions& options, const std::function<void(const std::string&)>& note)
{
    const fs::path& res = options.resources;
    const fs::path db = res / "db";
    for (const char* schema : {"recos.sql", "langs.sql", "muhu.sql", "exptemp.sql", "text.sql"}) Require(db / schema);

    const fs::path common = options.app / "EPHE" / "COMMON";
    const fs::path inifiles = options.app / "DATA" / "INIFILES";
    fs::create_directories(common);
    fs::create_directories(inifiles);
    auto report = [&](bool changed, const fs::path& p) {
        if (changed) note(fs::relative(p, options.app).generic_string());
    };

    // The program's own files: always rebuilt, replaced when they differ.
    report(BuildDatabase(common / "LANGS.Dat", db / "langs.sql", RowsOfFolder(db / "langs"), {}), common / "LANGS.Dat");
    report(BuildDatabase(common / "MUHU.DAT", db / "muhu.sql", RowsOfFolder(db / "muhu"), {}), common / "MUHU.DAT");
    report(BuildDatabase(common / "ExpTemp.JKP", db / "exptemp.sql", {}, {}), common / "ExpTemp.JKP");

    std::vector<fs::path> languages;
    std::error_code ec;
    if (fs::is_directory(res / "text", ec))
        for (const auto& e : fs::directory_iterator(res / "text"))
            if (e.is_directory()) languages.push_back(e.path());
    std::sort(languages.begin(), languages.end());
    for (const fs::path& lang : languages) {
        const std::string dir = Upper(lang.filename().string());
        const fs::path folder = options.app / "EPHE" / dir;
        fs::create_directories(folder);
        const fs::path target = folder / (dir + ".DAT");
        report(BuildDatabase(target, db / "text.sql", RowsOfFolder(lang), TextRules{true}), target);
    }

    for (const char* name : kPlaceholderFiles) report(BuildPlaceholder(common / name), common / name);
    report(WriteBytes(common / "Wait.avi", MakeWaitAnimation()), common / "Wait.avi");

    // The manual: pages and pictures, replaced when they differ.
    if (fs::is_directory(res / "help", ec)) {
        const fs::path help = options.app / "HELP";
        fs::create_directories(help);
        for (const auto& e : fs::directory_iterator(res / "help")) {
            if (!e.is_regular_file()) continue;
            const fs::path target = help / e.path().filename();
            report(WriteBytes(target, ReadFile(e.path())), target);
        }
    }

    // The user's files: made once, then only completed.
    const fs::path recos = ResolvePath(common.string(), "RECOS.Dat");
    if (FileExists(recos)) {
        for (const std::string& name : AddMissingObjects(recos, db / "recos.sql"))
            note(fs::relative(recos, options.app).generic_string() + ": added " + name);
    } else {
        std::vector<RowSource> rows = RowsOfFolder(db / "recos");
        for (const auto& [file, table] : kPlaceSources)
            if (fs::is_regular_file(res / "places" / file, ec)) rows.push_back({res / "places" / file, table});
        report(BuildDatabase(recos, db / "recos.sql", rows, {}), recos);
    }

    if (fs::is_directory(res / "ini", ec)) {
        for (const auto& e : fs::directory_iterator(res / "ini")) {
            if (!e.is_regular_file()) continue;
            const fs::path target = ResolvePath(inifiles.string(), e.path().filename().string());
            if (!FileExists(target)) report(WriteBytes(target, ReadFile(e.path())), target);
        }
    }
}

}  // namespace ranvel::makedata
