// INI files: GENDAT.INI and the other files of <app>/DATA/INIFILES, and the
// file behind the per-user settings store. Reads and writes behave as the
// classic profile-string calls did: sections and keys without regard to
// case, values trimmed and freed of one pair of surrounding quotes, a
// missing file, section or key giving the default, and a write that changes
// one line in place and keeps every other line as it was.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace ranvel {

namespace ini {

// The value of key in section, or nothing when the file, the section or the
// key is missing. The first of repeated keys answers.
std::optional<std::string> ReadValue(const std::string& path, std::string_view section, std::string_view key);

// Replaces the value in place, adds the key at the end of its section, or
// adds the section at the end of the file; creates the file and its folders
// when missing. The file is replaced whole through a temporary file, so it
// is never left half written.
void WriteValue(const std::string& path, std::string_view section, std::string_view key, std::string_view value);

}  // namespace ini

class clsIni {
public:
    // At most this many characters of a value are read.
    static constexpr std::size_t MaxValueLength = 255;

    // An empty File means GENDAT.INI; a bare file name lies in
    // <app>/DATA/INIFILES; any other relative path is taken below <app>; an
    // absolute path is used as it stands. An empty Section means "Ranvel".
    std::string GetIniString(const std::string& Key, const std::string& Default, const std::string& Section,
                             const std::string& File) const;
    void WriteIniString(const std::string& Key, const std::string& Value, const std::string& Section,
                        const std::string& File) const;

    // The path that File stands for, by the rules above.
    static std::string IniPath(const std::string& File);
};

}  // namespace ranvel
