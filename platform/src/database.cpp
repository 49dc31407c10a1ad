#include "ranvel/platform/database.h"

#include <sqlite3.h>

#include <algorithm>
#include <filesystem>
#include <optional>

#include "criteria.h"
#include "ranvel/platform/vbmath.h"
#include "sqltokens.h"

namespace ranvel {

using sqltext::IsName;
using sqltext::IsPunct;
using sqltext::IsWord;
using sqltext::QuoteName;
using sqltext::Token;

namespace {

constexpr const char* kNotSupported = "Operation is not supported for this type of object.";
constexpr const char* kNoCurrent = "No current record.";
constexpr const char* kNoEdit = "Update or CancelUpdate without AddNew or Edit.";
constexpr const char* kRowidColumn = "\"__ranvel_rowid\"";

[[noreturn]] void Fail(sqlite3* db, std::string_view sql)
{
    throw DatabaseError(std::string(sqlite3_errmsg(db)) + " (query: " + std::string(sql) + ")");
}

// One prepared statement, finalized on every path out.
class Statement {
public:
    // Refuses a text that holds more than one statement.
    Statement(sqlite3* db, std::string_view sql) : db_(db), sql_(sql)
    {
        const char* tail = nullptr;
        if (sqlite3_prepare_v2(db, sql_.c_str(), static_cast<int>(sql_.size()), &stmt_, &tail) != SQLITE_OK) {
            Fail(db, sql_);
        }
        if (!stmt_) throw DatabaseError("Empty query: " + sql_);
        // Whatever follows must be blanks, semicolons or comments: preparing
        // it then gives no statement.
        std::string_view rest(tail, sql_.c_str() + sql_.size() - tail);
        if (rest.find_first_not_of(" \t\r\n;") != std::string_view::npos) {
            sqlite3_stmt* extra = nullptr;
            int rc = sqlite3_prepare_v2(db, rest.data(), static_cast<int>(rest.size()), &extra, nullptr);
            sqlite3_finalize(extra);
            if (rc != SQLITE_OK || extra) {
                sqlite3_finalize(stmt_);
                throw DatabaseError("A query may hold only one statement: " + sql_);
            }
        }
    }
    ~Statement() { sqlite3_finalize(stmt_); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    sqlite3_stmt* get() const { return stmt_; }

    void Bind(int index, const Variant& v)
    {
        int rc = std::visit(
            [&](const auto& x) -> int {
                using T = std::decay_t<decltype(x)>;
                if constexpr (std::is_same_v<T, std::monostate> || std::is_same_v<T, NullValue>)
                    return sqlite3_bind_null(stmt_, index);
                else if constexpr (std::is_same_v<T, bool>)
                    return sqlite3_bind_int64(stmt_, index, x ? 1 : 0);
                else if constexpr (std::is_same_v<T, std::int64_t>)
                    return sqlite3_bind_int64(stmt_, index, x);
                else if constexpr (std::is_same_v<T, double>)
                    return sqlite3_bind_double(stmt_, index, x);
                else if constexpr (std::is_same_v<T, std::string>)
                    return sqlite3_bind_text(stmt_, index, x.data(), static_cast<int>(x.size()), SQLITE_TRANSIENT);
                else
                    return sqlite3_bind_double(stmt_, index, x.Serial());
            },
            v.Raw());
        if (rc != SQLITE_OK) Fail(db_, sql_);
    }

    // True while a row is there.
    bool Step()
    {
        int rc = sqlite3_step(stmt_);
        if (rc == SQLITE_ROW) return true;
        if (rc == SQLITE_DONE) return false;
        Fail(db_, sql_);
    }

    Variant Column(int i) const
    {
        switch (sqlite3_column_type(stmt_, i)) {
        case SQLITE_INTEGER: return Variant(static_cast<long long>(sqlite3_column_int64(stmt_, i)));
        case SQLITE_FLOAT: return Variant(sqlite3_column_double(stmt_, i));
        case SQLITE_NULL: return Variant::Null();
        default: {
            const void* p = sqlite3_column_blob(stmt_, i);
            int n = sqlite3_column_bytes(stmt_, i);
            return Variant(std::string(static_cast<const char*>(p ? p : ""), static_cast<std::size_t>(n)));
        }
        }
    }

    int ColumnCount() const { return sqlite3_column_count(stmt_); }
    std::string ColumnName(int i) const
    {
        const char* n = sqlite3_column_name(stmt_, i);
        return n ? n : "";
    }

private:
    sqlite3* db_;
    std::string sql_;
    sqlite3_stmt* stmt_ = nullptr;
};

std::string TrimStatement(std::string_view sql)
{
    std::size_t b = sql.find_first_not_of(" \t\r\n");
    if (b == std::string_view::npos) return {};
    std::size_t e = sql.find_last_not_of(" \t\r\n;");
    if (e == std::string_view::npos || e < b) return {};
    return std::string(sql.substr(b, e - b + 1));
}

// "table", "view" or nothing, for a name compared case-insensitively.
std::optional<std::string> ObjectType(sqlite3* db, const std::string& name)
{
    Statement st(db,
                 "SELECT type FROM sqlite_master WHERE name = ?1 COLLATE NOCASE AND type IN ('table','view')");
    st.Bind(1, Variant(name));
    if (!st.Step()) return std::nullopt;
    return st.Column(0).ToText();
}

// The select a saved query stands for, unless it renames its columns.
std::optional<std::string> ViewBody(sqlite3* db, const std::string& name)
{
    Statement st(db, "SELECT sql FROM sqlite_master WHERE type = 'view' AND name = ?1 COLLATE NOCASE");
    st.Bind(1, Variant(name));
    if (!st.Step()) return std::nullopt;
    std::string sql = st.Column(0).ToTextOrEmpty();
    for (const Token& t : sqltext::Tokenize(sql)) {
        if (IsPunct(t, "(")) return std::nullopt;
        if (IsWord(t, "AS")) return TrimStatement(std::string_view(sql).substr(t.end));
    }
    return std::nullopt;
}

struct UpdatablePlan {
    std::string sql;    // the select with the rowid as its first column
    std::string table;  // the table the rows belong to
};

// Recognises "SELECT * FROM T [WHERE|ORDER|LIMIT ...]" (or "SELECT T.* ...")
// over one table, or over a saved query that is itself such a select, and
// rewrites it to also return the rowid of each row.
std::optional<UpdatablePlan> PlanUpdatable(sqlite3* db, const std::string& sql, int depth)
{
    if (depth > 8) return std::nullopt;
    std::vector<Token> t = sqltext::Tokenize(sql);
    if (t.size() < 4 || !IsWord(t[0], "SELECT")) return std::nullopt;
    std::size_t from = 0;
    const Token* qualifier = nullptr;
    if (IsPunct(t[1], "*")) {
        from = 2;
    } else if (t.size() >= 6 && IsName(t[1]) && IsPunct(t[2], ".") && IsPunct(t[3], "*")) {
        qualifier = &t[1];
        from = 4;
    } else {
        return std::nullopt;
    }
    if (from + 1 >= t.size() || !IsWord(t[from], "FROM") || !IsName(t[from + 1])) return std::nullopt;
    const Token& table = t[from + 1];
    if (table.kind == sqltext::TokKind::Word) {
        for (auto kw : {"SELECT", "WHERE", "ORDER", "LIMIT"})
            if (IsWord(table, kw)) return std::nullopt;
    }
    std::size_t next = from + 2;
    if (next < t.size() && !IsWord(t[next], "WHERE") && !IsWord(t[next], "ORDER") && !IsWord(t[next], "LIMIT"))
        return std::nullopt;
    for (std::size_t i = next; i < t.size(); ++i)
        for (auto kw : {"UNION", "INTERSECT", "EXCEPT", "GROUP", "HAVING", "WINDOW"})
            if (IsWord(t[i], kw)) return std::nullopt;
    if (qualifier && !vb::EqualsNoCase(qualifier->value, table.value)) return std::nullopt;

    auto type = ObjectType(db, table.value);
    if (!type) return std::nullopt;
    if (*type == "table") {
        std::string rewritten = sql.substr(0, t[1].begin) + QuoteName(table.value) + ".rowid AS " + kRowidColumn +
                                ", " + sql.substr(t[1].begin);
        return UpdatablePlan{std::move(rewritten), table.value};
    }
    auto body = ViewBody(db, table.value);
    if (!body) return std::nullopt;
    auto inner = PlanUpdatable(db, *body, depth + 1);
    if (!inner) return std::nullopt;
    std::string rewritten = sql.substr(0, table.begin) + "(" + inner->sql + ") AS " + QuoteName(table.value) +
                            sql.substr(table.end);
    return UpdatablePlan{std::move(rewritten), inner->table};
}

}  // namespace

// ---------------------------------------------------------------- Database

std::shared_ptr<Database> Database::OpenUntrusted(const std::string& path)
{
    std::error_code ec;
    if (!std::filesystem::is_regular_file(path, ec)) throw DatabaseError("Database file not found: '" + path + "'");
    sqlite3* db = nullptr;
    int rc = sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr);
    if (rc == SQLITE_OK) {
        sqlite3_db_config(db, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
        sqlite3_db_config(db, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
        sqlite3_limit(db, SQLITE_LIMIT_LENGTH, 64 * 1024);
        rc = sqlite3_exec(db, "SELECT count(*) FROM sqlite_master", nullptr, nullptr, nullptr);
    }
    if (rc != SQLITE_OK) {
        std::string msg = db ? sqlite3_errmsg(db) : sqlite3_errstr(rc);
        sqlite3_close_v2(db);
        throw DatabaseError("Cannot open database file '" + path + "': " + msg);
    }
    return std::shared_ptr<Database>(new Database(db, path));
}

std::shared_ptr<Database> Database::Open(const std::string& path)
{
    std::error_code ec;
    if (!std::filesystem::is_regular_file(path, ec))
        throw DatabaseError("Database file not found: '" + path + "'");
    sqlite3* db = nullptr;
    int rc = sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READWRITE, nullptr);
    if (rc != SQLITE_OK) {
        std::string msg = db ? sqlite3_errmsg(db) : sqlite3_errstr(rc);
        sqlite3_close_v2(db);
        throw DatabaseError("Cannot open database file '" + path + "': " + msg);
    }
    // The header is only read on first use; read it now so that a file that
    // is not a database fails here and not at some later query.
    rc = sqlite3_exec(db, "SELECT count(*) FROM sqlite_master", nullptr, nullptr, nullptr);
    if (rc != SQLITE_OK) {
        std::string msg = sqlite3_errmsg(db);
        sqlite3_close_v2(db);
        throw DatabaseError("Cannot open database file '" + path + "': " + msg);
    }
    sqlite3_busy_timeout(db, 5000);
    return std::shared_ptr<Database>(new Database(db, path));
}

std::shared_ptr<Database> Database::Create(const std::string& path)
{
    sqlite3* db = nullptr;
    int rc = sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    if (rc != SQLITE_OK) {
        std::string msg = db ? sqlite3_errmsg(db) : sqlite3_errstr(rc);
        sqlite3_close_v2(db);
        throw DatabaseError("Cannot create database file '" + path + "': " + msg);
    }
    sqlite3_busy_timeout(db, 5000);
    return std::shared_ptr<Database>(new Database(db, path));
}

Database::~Database() { sqlite3_close_v2(db_); }

std::unique_ptr<Recordset> Database::OpenRecordset(std::string_view sqlOrName)
{
    std::string sql = TrimStatement(sqlOrName);
    std::optional<UpdatablePlan> plan;
    try {
        std::vector<Token> toks = sqltext::Tokenize(sql);
        if (toks.size() == 1 && IsName(toks[0])) sql = "SELECT * FROM " + QuoteName(toks[0].value);
        plan = PlanUpdatable(db_, sql, 0);
    } catch (const DatabaseError&) {
        // Text that doesn't even split into tokens (an unclosed quote): the
        // statement below reports it.
    }
    bool updatable = plan.has_value();
    std::optional<Statement> st;
    if (updatable) {
        try {
            st.emplace(db_, plan->sql);
        } catch (const DatabaseError&) {
            // A table without rowids: fall back to the plain select, which
            // also reports any fault of the text in its own words.
            updatable = false;
        }
    }
    if (!updatable) st.emplace(db_, sql);
    if (!sqlite3_stmt_readonly(st->get()) || st->ColumnCount() == 0)
        throw DatabaseError("A recordset needs a SELECT query: " + sql);

    const int first = updatable ? 1 : 0;
    std::vector<std::string> fields;
    for (int i = first; i < st->ColumnCount(); ++i) fields.push_back(st->ColumnName(i));
    std::vector<std::vector<Variant>> rows;
    std::vector<std::int64_t> rowids;
    while (st->Step()) {
        std::vector<Variant> row;
        row.reserve(fields.size());
        for (int i = first; i < st->ColumnCount(); ++i) row.push_back(st->Column(i));
        rows.push_back(std::move(row));
        if (updatable) rowids.push_back(sqlite3_column_int64(st->get(), 0));
    }
    return std::make_unique<Recordset>(shared_from_this(), updatable ? plan->table : std::string(),
                                       std::move(fields), std::move(rows), std::move(rowids), updatable);
}

std::unique_ptr<Recordset> Database::OpenTable(std::string_view table)
{
    auto type = ObjectType(db_, std::string(table));
    if (!type || *type != "table") throw DatabaseError("No such table: '" + std::string(table) + "' in " + path_);
    return OpenRecordset("SELECT * FROM " + QuoteName(table));
}

int Database::Execute(std::string_view sql)
{
    Statement st(db_, sql);
    while (st.Step()) {
    }
    return sqlite3_changes(db_);
}

void Database::ExecuteScript(std::string_view sql)
{
    // A plain transaction when none is open, so that a failed script leaves
    // the file untouched to the byte; a savepoint inside the caller's own.
    const bool outermost = sqlite3_get_autocommit(db_) != 0;
    const char* begin = outermost ? "BEGIN" : "SAVEPOINT ranvel_script";
    const char* commit = outermost ? "COMMIT" : "RELEASE ranvel_script";
    const char* rollback = outermost ? "ROLLBACK" : "ROLLBACK TO ranvel_script; RELEASE ranvel_script";
    if (sqlite3_exec(db_, begin, nullptr, nullptr, nullptr) != SQLITE_OK) Fail(db_, begin);
    std::string text(sql);
    char* err = nullptr;
    int rc = sqlite3_exec(db_, text.c_str(), nullptr, nullptr, &err);
    if (rc == SQLITE_OK) rc = sqlite3_exec(db_, commit, nullptr, nullptr, nullptr);
    if (rc != SQLITE_OK) {
        std::string msg = err ? err : sqlite3_errmsg(db_);
        sqlite3_free(err);
        // The script itself may have ended the transaction; then this fails
        // harmlessly.
        sqlite3_exec(db_, rollback, nullptr, nullptr, nullptr);
        throw DatabaseError(msg + " (script in " + path_ + ")");
    }
}

bool Database::HasTable(std::string_view name) { return ObjectType(db_, std::string(name)).has_value(); }

bool Database::IsPlainTable(std::string_view name) { return ObjectType(db_, std::string(name)) == "table"; }

void Database::ForEachRow(std::string_view sql, const std::function<bool(const std::vector<Variant>& row)>& row)
{
    Statement st(db_, sql);
    std::vector<Variant> values;
    while (st.Step()) {
        values.clear();
        for (int i = 0; i < st.ColumnCount(); ++i) values.push_back(st.Column(i));
        if (!row(values)) break;
    }
}

void Database::InsertRow(std::string_view table, const std::vector<std::string>& fields,
                         const std::vector<Variant>& values)
{
    if (fields.size() != values.size()) throw DatabaseError("InsertRow: as many values as fields are needed");
    std::string sql = "INSERT INTO " + QuoteName(std::string(table)) + " (";
    std::string marks;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        sql += (i ? ", " : "") + QuoteName(fields[i]);
        marks += i ? ", ?" : "?";
    }
    sql += ") VALUES (" + marks + ")";
    Statement st(db_, sql);
    for (std::size_t i = 0; i < values.size(); ++i) st.Bind(static_cast<int>(i) + 1, values[i]);
    st.Step();
}

std::string Database::QuickCheck()
{
    std::string found;
    try {
        Statement st(db_, "PRAGMA quick_check");
        while (st.Step()) {
            const std::string line = st.Column(0).ToTextOrEmpty();
            if (line == "ok") continue;
            found += (found.empty() ? "" : "; ") + line;
        }
    } catch (const DatabaseError& e) {
        found = e.what();
    }
    return found.empty() ? "ok" : found;
}

Database::Transaction::Transaction(Database& db) : db_(db)
{
    if (sqlite3_exec(db_.db_, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr) != SQLITE_OK) Fail(db_.db_, "BEGIN");
}

Database::Transaction::~Transaction()
{
    if (open_) sqlite3_exec(db_.db_, "ROLLBACK", nullptr, nullptr, nullptr);
}

void Database::Transaction::Commit()
{
    if (sqlite3_exec(db_.db_, "COMMIT", nullptr, nullptr, nullptr) != SQLITE_OK) Fail(db_.db_, "COMMIT");
    open_ = false;
}

// --------------------------------------------------------------- Recordset

Recordset::Recordset(std::shared_ptr<Database> db, std::string table, std::vector<std::string> fields,
                     std::vector<std::vector<Variant>> rows, std::vector<std::int64_t> rowids, bool updatable)
    : db_(std::move(db)),
      table_(std::move(table)),
      fields_(std::move(fields)),
      rows_(std::move(rows)),
      rowids_(std::move(rowids)),
      updatable_(updatable)
{}

// Moving away from a row drops a pending Edit or AddNew, as the original
// engine did.
void Recordset::MoveFirst()
{
    if (rows_.empty()) throw DatabaseError(kNoCurrent);
    mode_ = EditMode::None;
    onDeleted_ = false;
    pos_ = 0;
}

void Recordset::MoveLast()
{
    if (rows_.empty()) throw DatabaseError(kNoCurrent);
    mode_ = EditMode::None;
    onDeleted_ = false;
    pos_ = static_cast<long>(rows_.size()) - 1;
}

void Recordset::MoveNext()
{
    mode_ = EditMode::None;
    if (onDeleted_) {  // the row after the deleted one already stands here
        onDeleted_ = false;
        return;
    }
    if (IsEOF()) throw DatabaseError(kNoCurrent);
    ++pos_;
}

void Recordset::MovePrevious()
{
    mode_ = EditMode::None;
    if (onDeleted_) {
        onDeleted_ = false;
        --pos_;
        return;
    }
    if (IsBOF()) throw DatabaseError(kNoCurrent);
    --pos_;
}

void Recordset::Move(long n)
{
    if ((n > 0 && IsEOF()) || (n < 0 && IsBOF())) throw DatabaseError(kNoCurrent);
    mode_ = EditMode::None;
    onDeleted_ = false;
    long target = pos_ + n;
    pos_ = std::clamp(target, -1L, static_cast<long>(rows_.size()));
}

std::size_t Recordset::FieldIndex(std::string_view name) const
{
    for (std::size_t i = 0; i < fields_.size(); ++i)
        if (vb::EqualsNoCase(fields_[i], name)) return i;
    throw DatabaseError("Item not found in this collection: '" + std::string(name) + "'");
}

bool Recordset::HasField(std::string_view name) const
{
    for (const auto& f : fields_)
        if (vb::EqualsNoCase(f, name)) return true;
    return false;
}

Variant Recordset::Field(std::string_view name) const { return Field(FieldIndex(name)); }

Variant Recordset::Field(std::size_t index) const
{
    if (index >= fields_.size())
        throw DatabaseError("Item not found in this collection: field number " + std::to_string(index));
    // During Edit or AddNew a read sees the values being prepared.
    if (mode_ != EditMode::None) return buffer_[index];
    if (onDeleted_) throw DatabaseError("Record is deleted.");
    if (IsEOF() || IsBOF()) throw DatabaseError(kNoCurrent);
    return rows_[pos_][index];
}

void Recordset::Edit()
{
    if (!updatable_) throw DatabaseError(kNotSupported);
    if (onDeleted_) throw DatabaseError("Record is deleted.");
    if (IsEOF() || IsBOF()) throw DatabaseError(kNoCurrent);
    mode_ = EditMode::Edit;
    buffer_ = rows_[pos_];
    dirty_.assign(fields_.size(), false);
}

void Recordset::AddNew()
{
    if (!updatable_) throw DatabaseError(kNotSupported);
    addFrom_ = pos_;
    mode_ = EditMode::Add;
    buffer_.assign(fields_.size(), Variant::Null());
    dirty_.assign(fields_.size(), false);
}

void Recordset::SetField(std::string_view name, const Variant& value)
{
    if (mode_ == EditMode::None) throw DatabaseError(updatable_ ? kNoEdit : kNotSupported);
    std::size_t i = FieldIndex(name);
    buffer_[i] = value;
    dirty_[i] = true;
}

namespace {

// The row as the file now holds it, in the order of the recordset's fields.
std::vector<Variant> ReadRow(sqlite3* db, const std::string& table, std::int64_t rowid,
                             const std::vector<std::string>& fields, const std::vector<Variant>& fallback)
{
    Statement st(db, "SELECT * FROM " + QuoteName(table) + " WHERE rowid = ?1");
    st.Bind(1, Variant(static_cast<long long>(rowid)));
    std::vector<Variant> row = fallback;
    if (!st.Step()) return row;
    for (int c = 0; c < st.ColumnCount(); ++c) {
        std::string name = st.ColumnName(c);
        for (std::size_t i = 0; i < fields.size(); ++i)
            if (vb::EqualsNoCase(fields[i], name)) row[i] = st.Column(c);
    }
    return row;
}

}  // namespace

void Recordset::Update()
{
    if (mode_ == EditMode::None) throw DatabaseError(updatable_ ? kNoEdit : kNotSupported);
    sqlite3* db = db_->Handle();
    std::vector<std::size_t> set;
    for (std::size_t i = 0; i < dirty_.size(); ++i)
        if (dirty_[i]) set.push_back(i);

    if (mode_ == EditMode::Edit) {
        if (!set.empty()) {
            std::string sql = "UPDATE " + QuoteName(table_) + " SET ";
            for (std::size_t k = 0; k < set.size(); ++k)
                sql += (k ? ", " : "") + QuoteName(fields_[set[k]]) + " = ?" + std::to_string(k + 1);
            sql += " WHERE rowid = ?" + std::to_string(set.size() + 1);
            Statement st(db, sql);
            for (std::size_t k = 0; k < set.size(); ++k) st.Bind(static_cast<int>(k + 1), buffer_[set[k]]);
            st.Bind(static_cast<int>(set.size() + 1), Variant(static_cast<long long>(rowids_[pos_])));
            st.Step();
            if (sqlite3_changes(db) == 0) throw DatabaseError("Record is deleted.");
            rows_[pos_] = ReadRow(db, table_, rowids_[pos_], fields_, buffer_);
        }
    } else {
        std::string sql = "INSERT INTO " + QuoteName(table_);
        if (set.empty()) {
            sql += " DEFAULT VALUES";
        } else {
            std::string names, marks;
            for (std::size_t k = 0; k < set.size(); ++k) {
                names += (k ? ", " : "") + QuoteName(fields_[set[k]]);
                marks += (k ? ", ?" : "?") + std::to_string(k + 1);
            }
            sql += " (" + names + ") VALUES (" + marks + ")";
        }
        Statement st(db, sql);
        for (std::size_t k = 0; k < set.size(); ++k) st.Bind(static_cast<int>(k + 1), buffer_[set[k]]);
        st.Step();
        std::int64_t rowid = sqlite3_last_insert_rowid(db);
        rows_.push_back(ReadRow(db, table_, rowid, fields_, buffer_));
        rowids_.push_back(rowid);
        pos_ = addFrom_;  // the row current before AddNew stays current
    }
    mode_ = EditMode::None;
    buffer_.clear();
    dirty_.clear();
}

void Recordset::CancelUpdate()
{
    mode_ = EditMode::None;
    buffer_.clear();
    dirty_.clear();
}

void Recordset::Delete()
{
    if (!updatable_) throw DatabaseError(kNotSupported);
    mode_ = EditMode::None;
    if (onDeleted_) throw DatabaseError("Record is deleted.");
    if (IsEOF() || IsBOF()) throw DatabaseError(kNoCurrent);
    Statement st(db_->Handle(), "DELETE FROM " + QuoteName(table_) + " WHERE rowid = ?1");
    st.Bind(1, Variant(static_cast<long long>(rowids_[pos_])));
    st.Step();
    if (sqlite3_changes(db_->Handle()) == 0) throw DatabaseError("Record is deleted.");
    rows_.erase(rows_.begin() + pos_);
    rowids_.erase(rowids_.begin() + pos_);
    onDeleted_ = true;
}

void Recordset::FindFirst(std::string_view criteria) { Find(criteria, 0); }

void Recordset::FindNext(std::string_view criteria) { Find(criteria, pos_ + 1); }

void Recordset::Find(std::string_view criteria, long from)
{
    Criteria c(criteria, fields_);  // a bad criterion throws before anything moves
    mode_ = EditMode::None;
    for (long i = std::max(from, 0L); i < static_cast<long>(rows_.size()); ++i) {
        if (c.Matches(rows_[i])) {
            pos_ = i;
            noMatch_ = false;
            return;
        }
    }
    noMatch_ = true;
}

}  // namespace ranvel
