// The database seam: SQLite files that hold the tables the system names,
// reached the way the program's logic asks for them: open a file, run one
// SELECT and step its rows in order, read and write fields by name, add,
// edit, update, delete, find the first matching row, open a whole table.
//
// A recordset reads all its rows when it is opened. A recordset over one
// table ("SELECT * FROM T ...", a whole table, or a saved query that is such
// a select) can be changed; the change goes to the file at once, one
// statement at a time, so a failing statement leaves the file as it was.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ranvel/platform/variant.h"

struct sqlite3;

namespace ranvel {

// A query or file failure. The message names what failed; the calling
// command reports it.
class DatabaseError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class Recordset;

class Database : public std::enable_shared_from_this<Database> {
public:
    // Opens an existing file; throws DatabaseError when it is missing or is
    // not a database.
    static std::shared_ptr<Database> Open(const std::string& path);
    // Opens a file that came from elsewhere (an exchange file) for reading
    // only, trusting nothing in its schema: its views and generated columns
    // may not call functions with side effects, and no text or blob may be
    // longer than a person's fields could ever be.
    static std::shared_ptr<Database> OpenUntrusted(const std::string& path);
    // Makes a new, empty database file (for generated data and templates).
    static std::shared_ptr<Database> Create(const std::string& path);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    const std::string& Path() const { return path_; }

    // Runs one SELECT (or the name of a table or saved query) and reads its
    // rows. More than one statement in the text is refused.
    std::unique_ptr<Recordset> OpenRecordset(std::string_view sqlOrName);
    // Opens a whole table in table order.
    std::unique_ptr<Recordset> OpenTable(std::string_view table);
    // Runs one statement that returns no rows; gives the count of changed rows.
    int Execute(std::string_view sql);
    // Runs a script of several statements inside one transaction; nothing is
    // kept if one fails. For building data files, never for user input.
    void ExecuteScript(std::string_view sql);

    bool HasTable(std::string_view name);
    // A real table, not a view of that name.
    bool IsPlainTable(std::string_view name);

    // Steps the rows of one SELECT one at a time without keeping them, for
    // files too large to read whole. `row` answers false to stop.
    void ForEachRow(std::string_view sql, const std::function<bool(const std::vector<Variant>& row)>& row);
    // Adds one row to a table, the values bound to the fields named.
    void InsertRow(std::string_view table, const std::vector<std::string>& fields,
                   const std::vector<Variant>& values);
    // The file's own check of its pages and indexes: "ok", or what it found.
    std::string QuickCheck();

    // The writes made while a transaction lives land together when it
    // commits, and not at all when it is dropped without.
    class Transaction {
    public:
        explicit Transaction(Database& db);
        ~Transaction();
        void Commit();
        Transaction(const Transaction&) = delete;
        Transaction& operator=(const Transaction&) = delete;

    private:
        Database& db_;
        bool open_ = true;
    };

    sqlite3* Handle() const { return db_; }

private:
    Database(sqlite3* db, std::string path) : db_(db), path_(std::move(path)) {}
    sqlite3* db_ = nullptr;
    std::string path_;
};

class Recordset {
public:
    // Called by Database; not for direct use.
    Recordset(std::shared_ptr<Database> db, std::string table, std::vector<std::string> fields,
              std::vector<std::vector<Variant>> rows, std::vector<std::int64_t> rowids, bool updatable);

    bool IsEOF() const { return pos_ >= static_cast<long>(rows_.size()); }
    bool IsBOF() const { return pos_ < 0 || rows_.empty(); }
    bool HasRows() const { return !rows_.empty(); }
    long RecordCount() const { return static_cast<long>(rows_.size()); }
    long AbsolutePosition() const { return pos_; }

    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();
    // Moves n rows from the current one (n may be negative).
    void Move(long n);

    // The field of the current row, name compared case-insensitively.
    // Unknown names and reads off the ends are errors.
    Variant Field(std::string_view name) const;
    Variant Field(std::size_t index) const;
    const std::vector<std::string>& FieldNames() const { return fields_; }
    bool HasField(std::string_view name) const;

    // Edit the current row or start a new one, set fields, then Update.
    void Edit();
    void AddNew();
    void SetField(std::string_view name, const Variant& value);
    void Update();
    void CancelUpdate();
    // Deletes the current row from the file and from this recordset; the
    // position then stands on the row after it.
    void Delete();

    // FindFirst with a criterion such as "City = 'Delhi'": moves to the first
    // row (in recordset order) that matches; NoMatch() tells whether none did.
    void FindFirst(std::string_view criteria);
    void FindNext(std::string_view criteria);
    bool NoMatch() const { return noMatch_; }

    bool Updatable() const { return updatable_; }

private:
    std::size_t FieldIndex(std::string_view name) const;
    void Find(std::string_view criteria, long from);

    std::shared_ptr<Database> db_;
    std::string table_;
    std::vector<std::string> fields_;
    std::vector<std::vector<Variant>> rows_;
    std::vector<std::int64_t> rowids_;
    bool updatable_ = false;
    long pos_ = 0;
    enum class EditMode { None, Edit, Add } mode_ = EditMode::None;
    std::vector<Variant> buffer_;
    std::vector<bool> dirty_;
    bool noMatch_ = true;
    // A deleted row stays current until the next move, as in the original
    // engine: reading it is an error, and MoveNext goes on to the row after.
    bool onDeleted_ = false;
    // An added row does not become current: the row before AddNew stays.
    long addFrom_ = 0;
};

}  // namespace ranvel
