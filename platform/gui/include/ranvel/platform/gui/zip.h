// Packing files into a zip archive for mail: deflate at its strongest
// level, each file under its own name alone, no folders.
#pragma once

#include <string>
#include <vector>

namespace ranvel {

// The folder part of a path ("/a/b/c.zip" gives "/a/b").
std::string FolderOf(const std::string& path);

// Writes a new archive at zipPath (replacing one that is there, written
// whole, readable by its owner alone) holding the files. False, with the
// reason, when a file can't be read or the archive can't be written; no
// half-written archive is left. `written`, when given, receives the bytes
// that went to the disk.
bool ZipFiles(const std::string& zipPath, const std::vector<std::string>& files, std::string& error,
              std::string* written = nullptr);

// The names and contents of an archive's entries, for reading one back.
struct ZipEntry {
    std::string name;
    std::string bytes;
    bool deflated = false;
};
std::vector<ZipEntry> ReadZip(const std::string& zipPath, std::string& error);

}  // namespace ranvel
