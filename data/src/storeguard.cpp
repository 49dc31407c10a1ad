#include "ranvel/data/storeguard.h"

#include <filesystem>

#include "ranvel/platform/database.h"

namespace ranvel {

namespace fs = std::filesystem;

namespace {

constexpr int kCopies = 3;

std::string Copy(const std::string& path, int n) { return path + "." + std::to_string(n); }

// Copied under a name of its own, then renamed: a copy is whole or absent.
void CopyWhole(const std::string& from, const std::string& to)
{
    const std::string part = to + ".part";
    fs::copy_file(from, part, fs::copy_options::overwrite_existing);
    fs::rename(part, to);
}

}  // namespace

std::string StoreDamage(const std::string& path)
{
    std::error_code ec;
    if (!fs::is_regular_file(path, ec)) return "the file is missing";
    if (fs::file_size(path, ec) == 0) return "the file is empty";
    try {
        auto db = Database::Open(path);
        const std::string check = db->QuickCheck();
        if (check != "ok") return check;
        for (const char* table : {"Person", "Country", "City", "DisplayThemes", "PrintMods"})
            if (!db->HasTable(table)) return std::string("it has no table ") + table;
    } catch (const std::exception& e) {
        return e.what();
    }
    return {};
}

StoreGuardResult GuardStore(const std::string& path)
{
    StoreGuardResult result;
    const std::string damage = StoreDamage(path);
    std::error_code ec;
    if (damage.empty()) {
        // The copies move one place down, and the store becomes the newest.
        try {
            fs::remove(Copy(path, kCopies), ec);
            for (int n = kCopies - 1; n >= 1; --n)
                if (fs::exists(Copy(path, n), ec)) fs::rename(Copy(path, n), Copy(path, n + 1), ec);
            CopyWhole(path, Copy(path, 1));
        } catch (const std::exception&) {
            // No room for a copy takes nothing from the store itself.
        }
        return result;
    }
    for (int n = 1; n <= kCopies; ++n) {
        const std::string copy = Copy(path, n);
        if (!fs::is_regular_file(copy, ec) || !StoreDamage(copy).empty()) continue;
        try {
            if (fs::exists(path, ec)) fs::rename(path, path + ".damaged");
            CopyWhole(copy, path);
        } catch (const std::exception& e) {
            result.kind = StoreGuardResult::Kind::Lost;
            result.message = "The persons database '" + path + "' is damaged (" + damage +
                             "), and its good copy could not be put back: " + e.what();
            return result;
        }
        result.kind = StoreGuardResult::Kind::Restored;
        result.message = "The persons database '" + path + "' was damaged (" + damage +
                         "). The last good copy of it, kept at an earlier start, has been put back; the damaged "
                         "file is kept as '" + path + ".damaged'.";
        return result;
    }
    result.kind = StoreGuardResult::Kind::Lost;
    result.message = "The persons database '" + path + "' is damaged (" + damage +
                     "), and no good copy of it is kept.\nPlease Re-Install, or put back a copy of the file.";
    return result;
}

}  // namespace ranvel
