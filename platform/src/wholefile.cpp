#include "ranvel/platform/wholefile.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "ranvel/platform/vbmath.h"

namespace fs = std::filesystem;

namespace ranvel {

void WriteWholeFile(const std::string& Path, std::string_view Content, bool MakeFolders)
{
    fs::path target(Path);
    std::error_code ec;
    if (MakeFolders && target.has_parent_path()) fs::create_directories(target.parent_path(), ec);
    if (fs::is_directory(target, ec)) throw vb::RuntimeError("Cannot write '" + Path + "': it is a folder.");
    const std::string tmp = Path + ".tmp" + std::to_string(::getpid());
    FILE* f = std::fopen(tmp.c_str(), "wb");
    if (!f) throw vb::RuntimeError("Cannot write '" + Path + "': " + std::strerror(errno));
    bool ok = std::fwrite(Content.data(), 1, Content.size(), f) == Content.size();
    ok = std::fflush(f) == 0 && ok;
    ok = ::fsync(::fileno(f)) == 0 && ok;
    ok = std::fclose(f) == 0 && ok;
    std::string why = ok ? std::string() : std::strerror(errno);
    if (ok) {
        fs::rename(tmp, target, ec);
        ok = !ec;
        if (ec) why = ec.message();
    }
    if (!ok) {
        fs::remove(tmp, ec);
        throw vb::RuntimeError("Cannot write '" + Path + "': " + why + ". The file there before is left as it was.");
    }
}

}  // namespace ranvel
