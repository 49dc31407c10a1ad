#include "ranvel/platform/apppaths.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "ranvel/platform/vbmath.h"

namespace fs = std::filesystem;

namespace ranvel {

namespace {

std::string g_appDir;
// The installation and per-user folder whose user files were last made
// ready; a new installation folder makes them ready again.
std::string g_seededFor;
// The installation whose place for the user's files was last decided, and
// the decision; a new installation folder decides again.
std::string g_decidedFor;
bool g_perUser = false;

std::string Normalised(const std::string& dir)
{
    std::error_code ec;
    fs::path p = fs::absolute(fs::path(dir), ec);
    if (ec) p = fs::path(dir);
    std::string s = p.lexically_normal().string();
    while (s.size() > 1 && s.back() == '/') s.pop_back();
    return s;
}

}  // namespace

std::string AppDir()
{
    if (!g_appDir.empty()) return g_appDir;
    if (const char* env = std::getenv("RANVEL_APP_DIR"); env && *env) return Normalised(env);
    std::error_code ec;
    fs::path exe = fs::read_symlink("/proc/self/exe", ec);
    if (ec) return Normalised(".");
    return exe.parent_path().string();
}

void SetAppDir(const std::string& dir)
{
    g_appDir = dir.empty() ? std::string() : Normalised(dir);
    g_seededFor.clear();
    g_decidedFor.clear();
}

std::string ResolvePath(const std::string& base, std::string_view relative)
{
    fs::path cur(base);
    bool onDisk = true;  // once a part is missing, nothing below it can exist
    std::size_t i = 0;
    while (i < relative.size()) {
        std::size_t j = relative.find_first_of("\\/", i);
        if (j == std::string_view::npos) j = relative.size();
        std::string part(relative.substr(i, j - i));
        i = j + 1;
        if (part.empty() || part == ".") continue;
        if (onDisk && part != "..") {
            std::error_code ec;
            if (!fs::exists(cur / part, ec)) {
                // Several spellings of one name: take the first in byte order,
                // so the choice doesn't depend on the directory's order.
                std::string found;
                for (const auto& entry : fs::directory_iterator(cur, ec)) {
                    std::string name = entry.path().filename().string();
                    if (vb::EqualsNoCase(name, part) && (found.empty() || name < found)) found = name;
                }
                if (found.empty()) onDisk = false;
                else part = found;
            }
        }
        cur /= part;
    }
    std::string out = cur.string();
    if (!relative.empty() && (relative.back() == '/' || relative.back() == '\\') && out.back() != '/') out += '/';
    return out;
}

namespace {

int g_userDataMode = -1;

// The relative name in lower case with "/" separators and no empty parts.
std::string Canonical(std::string_view relative)
{
    std::string out;
    std::size_t i = 0;
    while (i < relative.size()) {
        std::size_t j = relative.find_first_of("\\/", i);
        if (j == std::string_view::npos) j = relative.size();
        std::string_view part = relative.substr(i, j - i);
        i = j + 1;
        if (part.empty() || part == ".") continue;
        if (!out.empty()) out += '/';
        out += vb::LCase(part);
    }
    return out;
}

bool IsUserFile(const std::string& canonical)
{
    return canonical == "ephe/common/recos.dat" || canonical == "ephe/common/langs.dat" ||
           canonical.rfind("data/inifiles/", 0) == 0 || canonical == "data/inifiles";
}

bool Writable(const std::string& path) { return ::access(path.c_str(), W_OK) == 0; }

// The installation can be written when its settings folder and the folder
// of its stores can, and so can the files in them.
bool InstallationWritable(const std::string& app)
{
    std::string ini = ResolvePath(app, "DATA/INIFILES");
    std::string common = ResolvePath(app, "EPHE/COMMON");
    std::error_code ec;
    if (!fs::is_directory(ini, ec) && !fs::is_directory(common, ec)) return true;  // no tree to speak of
    for (const std::string& dir : {ini, common}) {
        if (!fs::is_directory(dir, ec)) continue;
        if (!Writable(dir)) return false;
    }
    for (const char* f : {"EPHE/COMMON/RECOS.Dat", "EPHE/COMMON/LANGS.Dat", "DATA/INIFILES/GENDAT.INI"}) {
        std::string p = ResolvePath(app, f);
        if (FileExists(p) && !Writable(p)) return false;
    }
    return true;
}

void CopyIfMissing(const fs::path& from, const fs::path& to)
{
    std::error_code ec;
    if (!fs::is_regular_file(from, ec) || fs::exists(to, ec)) return;
    fs::create_directories(to.parent_path(), ec);
    fs::path tmp = to;
    tmp += ".part";
    if (fs::copy_file(from, tmp, fs::copy_options::overwrite_existing, ec)) {
        fs::permissions(tmp, fs::perms::owner_read | fs::perms::owner_write, fs::perm_options::add, ec);
        fs::rename(tmp, to, ec);
    }
    if (ec) fs::remove(tmp, ec);
}

// Copies the user's files from the installation the first time; a stamp
// keeps a deleted theme file from coming back at the next start.
void SeedUserData(const std::string& app, const std::string& user)
{
    const std::string key = app + "\n" + user;
    if (g_seededFor == key) return;
    std::error_code ec;
    fs::create_directories(user, ec);
    const fs::path stamp = fs::path(user) / ".installed-from";
    if (!fs::exists(stamp, ec)) {
        CopyIfMissing(ResolvePath(app, "EPHE/COMMON/RECOS.Dat"), fs::path(user) / "EPHE/COMMON/RECOS.Dat");
        fs::path ini = ResolvePath(app, "DATA/INIFILES");
        if (fs::is_directory(ini, ec))
            for (const auto& entry : fs::directory_iterator(ini, ec))
                if (entry.is_regular_file(ec))
                    CopyIfMissing(entry.path(), fs::path(user) / "DATA/INIFILES" / entry.path().filename());
        std::ofstream(stamp) << app << "\n";
    }
    // The language table is rewritten at every start and holds nothing of the
    // user's: it follows the installation.
    fs::path langs = ResolvePath(app, "EPHE/COMMON/LANGS.Dat");
    fs::path mine = fs::path(user) / "EPHE/COMMON/LANGS.Dat";
    if (fs::is_regular_file(langs, ec) &&
        (!fs::exists(mine, ec) || fs::last_write_time(langs, ec) > fs::last_write_time(mine, ec))) {
        fs::remove(mine, ec);
        CopyIfMissing(langs, mine);
    }
    g_seededFor = key;
}

// The per-user folder, whether or not it is in use.
std::string PerUserDir()
{
    const char* xdg = std::getenv("XDG_DATA_HOME");
    if (xdg && *xdg == '/') return Normalised(std::string(xdg) + "/ranvel");
    const char* home = std::getenv("HOME");
    return Normalised(std::string(home && *home ? home : ".") + "/.local/share/ranvel");
}

// An installation made for every user of the machine says so with this
// file beside the program: its users' files then live in their own folders
// even for a user who may write there (root), so that no run writes into
// what the package manager owns and will replace.
bool SharedInstallation(const std::string& app)
{
    return FileExists(ResolvePath(app, "INSTALLED"));
}

// The per-user folder was once made for this installation: the user's
// files live there from then on, whatever the installation's rights say
// later, so that persons saved in one place never hide behind another.
bool PerUserFolderIsThisInstallations(const std::string& app)
{
    std::ifstream stamp(fs::path(PerUserDir()) / ".installed-from");
    std::string first;
    return stamp && std::getline(stamp, first) && first == app;
}

}  // namespace

std::string UserDataDir() { return UsesUserDataDir() ? PerUserDir() : AppDir(); }

bool UsesUserDataDir()
{
    if (g_userDataMode >= 0) return g_userDataMode == 1;
    const std::string app = AppDir();
    if (g_decidedFor != app) {
        g_perUser = PerUserFolderIsThisInstallations(app) || SharedInstallation(app) || !InstallationWritable(app);
        g_decidedFor = app;
    }
    return g_perUser;
}

void SetUserDataMode(int mode) { g_userDataMode = mode; }

std::string AppPath(std::string_view relative)
{
    if (!relative.empty() && relative.front() == '/') return std::string(relative);
    if (UsesUserDataDir() && IsUserFile(Canonical(relative))) {
        const std::string user = UserDataDir();
        SeedUserData(AppDir(), user);
        return ResolvePath(user, relative);
    }
    return ResolvePath(AppDir(), relative);
}

bool FileExists(const std::string& path)
{
    std::error_code ec;
    return !path.empty() && fs::is_regular_file(path, ec);
}

}  // namespace ranvel
