#include "ranvel/platform/apppaths.h"

#include <cstdlib>
#include <filesystem>

#include "ranvel/platform/vbmath.h"

namespace fs = std::filesystem;

namespace ranvel {

namespace {

std::string g_appDir;

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

void SetAppDir(const std::string& dir) { g_appDir = dir.empty() ? std::string() : Normalised(dir); }

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

std::string AppPath(std::string_view relative)
{
    if (!relative.empty() && relative.front() == '/') return std::string(relative);
    return ResolvePath(AppDir(), relative);
}

bool FileExists(const std::string& path)
{
    std::error_code ec;
    return !path.empty() && fs::is_regular_file(path, ec);
}

}  // namespace ranvel
