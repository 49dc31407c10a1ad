#include "ranvel/data/cityzones.h"

#include <sqlite3.h>

#include <memory>

namespace ranvel {

namespace {

std::string Column(sqlite3_stmt* s, int i)
{
    const unsigned char* t = sqlite3_column_text(s, i);
    return t ? reinterpret_cast<const char*>(t) : "";
}

}  // namespace

std::vector<CityZone> CitiesNamed(Database& recos, const std::string& city, const std::string& country)
{
    std::vector<CityZone> out;
    if (!recos.HasTable("City")) return out;
    // The names are bound, never spliced: any name may be asked for.
    const bool zones = [&] {
        auto rs = recos.OpenRecordset("SELECT * FROM City LIMIT 0");
        return rs->HasField("Zone");
    }();
    std::string sql = std::string("SELECT City, Country, GMTDIFF, ") + (zones ? "Zone" : "''") +
                      " FROM City WHERE City = ?1 COLLATE NOCASE";
    if (!country.empty()) sql += " AND Country = ?2 COLLATE NOCASE";
    sql += " ORDER BY rowid";
    sqlite3_stmt* raw = nullptr;
    if (sqlite3_prepare_v2(recos.Handle(), sql.c_str(), -1, &raw, nullptr) != SQLITE_OK)
        throw DatabaseError(sqlite3_errmsg(recos.Handle()));
    std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> s(raw, sqlite3_finalize);
    sqlite3_bind_text(s.get(), 1, city.data(), static_cast<int>(city.size()), SQLITE_TRANSIENT);
    if (!country.empty()) sqlite3_bind_text(s.get(), 2, country.data(), static_cast<int>(country.size()), SQLITE_TRANSIENT);
    while (sqlite3_step(s.get()) == SQLITE_ROW)
        out.push_back({Column(s.get(), 0), Column(s.get(), 1), Column(s.get(), 2), Column(s.get(), 3)});
    return out;
}

bool AddCityZones(Database& store, const std::string& installedStore)
{
    if (!store.HasTable("City") || store.OpenRecordset("SELECT * FROM City LIMIT 0")->HasField("Zone")) return false;
    if (installedStore.empty() || installedStore == store.Path()) return false;
    {
        // Only an installation whose cities carry zones can give them.
        auto installed = Database::Open(installedStore);
        if (!installed->HasTable("City") || !installed->OpenRecordset("SELECT * FROM City LIMIT 0")->HasField("Zone"))
            return false;
    }
    sqlite3* db = store.Handle();
    sqlite3_stmt* raw = nullptr;
    if (sqlite3_prepare_v2(db, "ATTACH DATABASE ?1 AS installed", -1, &raw, nullptr) != SQLITE_OK)
        throw DatabaseError(sqlite3_errmsg(db));
    std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> attach(raw, sqlite3_finalize);
    sqlite3_bind_text(attach.get(), 1, installedStore.c_str(), -1, SQLITE_TRANSIENT);
    if (sqlite3_step(attach.get()) != SQLITE_DONE) throw DatabaseError(sqlite3_errmsg(db));
    attach.reset();
    struct Detach {
        Database& d;
        ~Detach()
        {
            try {
                d.Execute("DETACH DATABASE installed");
            } catch (...) {
            }
        }
    } detach{store};
    Database::Transaction t(store);
    store.Execute("ALTER TABLE City ADD COLUMN Zone TEXT COLLATE NOCASE");
    store.Execute("UPDATE City SET Zone = (SELECT i.Zone FROM installed.City AS i WHERE i.City = City.City AND "
                  "i.Country = City.Country ORDER BY i.rowid LIMIT 1)");
    t.Commit();
    return true;
}

}  // namespace ranvel
