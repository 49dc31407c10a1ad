// No INI library in Debian reads and rewrites in place without regard to
// case, so this small parser is written by hand.
#include "ranvel/platform/ini.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "ranvel/platform/apppaths.h"
#include "ranvel/platform/vbmath.h"
#include "ranvel/platform/wholefile.h"

namespace fs = std::filesystem;

namespace ranvel {

namespace {

constexpr std::string_view kBom = "\xEF\xBB\xBF";

std::string TrimBlanks(std::string_view s)
{
    std::size_t b = s.find_first_not_of(" \t");
    if (b == std::string_view::npos) return {};
    std::size_t e = s.find_last_not_of(" \t");
    return std::string(s.substr(b, e - b + 1));
}

// The file as lines without their line ends; remembers whether it used CRLF.
struct IniText {
    std::vector<std::string> lines;
    bool crlf = false;
};

bool Load(const std::string& path, IniText& out)
{
    std::error_code ec;
    if (fs::is_directory(path, ec))
        throw vb::RuntimeError("Cannot read '" + path + "': it is a folder, not a settings file.");
    std::ifstream in(path, std::ios::binary);
    if (!in) return false;
    std::string content;
    try {
        content.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    } catch (const std::exception&) {
        throw vb::RuntimeError("Cannot read '" + path + "': " + std::strerror(errno));
    }
    std::size_t start = 0;
    while (start < content.size()) {
        std::size_t nl = content.find('\n', start);
        std::size_t end = nl == std::string::npos ? content.size() : nl;
        std::string line = content.substr(start, end - start);
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
            out.crlf = true;
        }
        out.lines.push_back(std::move(line));
        start = end + 1;
    }
    return true;
}

// The line without a byte order mark (only the first line can have one).
std::string_view Content(const IniText& t, std::size_t i)
{
    std::string_view s = t.lines[i];
    if (i == 0 && s.substr(0, kBom.size()) == kBom) s.remove_prefix(kBom.size());
    return s;
}

bool SectionHeader(std::string_view line, std::string& name)
{
    std::string t = TrimBlanks(line);
    if (t.size() < 2 || t.front() != '[') return false;
    std::size_t close = t.rfind(']');
    if (close == std::string::npos || close == 0) return false;
    name = TrimBlanks(std::string_view(t).substr(1, close - 1));
    return true;
}

// "key = value"; comment lines and lines without "=" are not entries.
bool Entry(std::string_view line, std::string& key, std::size_t& eq)
{
    std::string t = TrimBlanks(line);
    if (t.empty() || t[0] == ';' || t[0] == '#') return false;
    eq = line.find('=');
    if (eq == std::string_view::npos) return false;
    key = TrimBlanks(line.substr(0, eq));
    return true;
}

std::string Unquote(std::string v)
{
    if (v.size() >= 2 && (v.front() == '"' || v.front() == '\'') && v.back() == v.front())
        return v.substr(1, v.size() - 2);
    return v;
}

void Save(const std::string& path, const IniText& t)
{
    const char* eol = t.crlf ? "\r\n" : "\n";
    std::string content;
    for (const auto& line : t.lines) content += line + eol;
    WriteWholeFile(path, content, true);
}

}  // namespace

namespace ini {

std::optional<std::string> ReadValue(const std::string& path, std::string_view section, std::string_view key)
{
    IniText t;
    if (!Load(path, t)) return std::nullopt;
    const std::string wantSection = TrimBlanks(section);
    const std::string wantKey = TrimBlanks(key);
    bool inSection = false;
    std::string name;
    std::size_t eq = 0;
    for (std::size_t i = 0; i < t.lines.size(); ++i) {
        std::string_view line = Content(t, i);
        if (SectionHeader(line, name)) {
            inSection = vb::EqualsNoCase(name, wantSection);
        } else if (inSection && Entry(line, name, eq) && vb::EqualsNoCase(name, wantKey)) {
            return Unquote(TrimBlanks(line.substr(eq + 1)));
        }
    }
    return std::nullopt;
}

void WriteValue(const std::string& path, std::string_view section, std::string_view key, std::string_view value)
{
    IniText t;
    Load(path, t);
    const std::string wantSection = TrimBlanks(section);
    const std::string wantKey = TrimBlanks(key);
    const std::string newEntry = wantKey + "=" + std::string(value);

    bool inSection = false;
    bool seenSection = false;
    bool inFirstBlock = false;
    std::size_t insertAfter = 0;  // last non-blank line of the first block of the section
    std::string name;
    std::size_t eq = 0;
    for (std::size_t i = 0; i < t.lines.size(); ++i) {
        std::string_view line = Content(t, i);
        if (SectionHeader(line, name)) {
            inSection = vb::EqualsNoCase(name, wantSection);
            inFirstBlock = inSection && !seenSection;
            if (inFirstBlock) {
                seenSection = true;
                insertAfter = i;
            }
            continue;
        }
        if (!inSection) continue;
        if (inFirstBlock && !TrimBlanks(line).empty()) insertAfter = i;
        if (Entry(line, name, eq) && vb::EqualsNoCase(name, wantKey)) {
            // Keep the key's spelling and the blanks around "=" as they were.
            std::size_t at = t.lines[i].size() - line.size() + eq + 1;
            std::size_t ws = at;
            while (ws < t.lines[i].size() && (t.lines[i][ws] == ' ' || t.lines[i][ws] == '\t')) ++ws;
            const std::string written = t.lines[i].substr(0, ws) + std::string(value);
            // A value that is already there is not written again: a start
            // on a full disk or a read-only file needs no write.
            if (written == t.lines[i]) return;
            t.lines[i] = written;
            Save(path, t);
            return;
        }
    }
    if (seenSection) {
        t.lines.insert(t.lines.begin() + static_cast<long>(insertAfter) + 1, newEntry);
    } else {
        if (!t.lines.empty() && !TrimBlanks(Content(t, t.lines.size() - 1)).empty()) t.lines.emplace_back();
        t.lines.push_back("[" + wantSection + "]");
        t.lines.push_back(newEntry);
    }
    Save(path, t);
}

}  // namespace ini

std::string clsIni::IniPath(const std::string& File)
{
    if (File.empty()) return AppPath("DATA/INIFILES/GENDAT.INI");
    if (File.front() == '/') return File;
    if (File.find_first_of("/\\") == std::string::npos) return AppPath("DATA/INIFILES/" + File);
    return AppPath(File);
}

std::string clsIni::GetIniString(const std::string& Key, const std::string& Default, const std::string& Section,
                                 const std::string& File) const
{
    std::string v = ini::ReadValue(IniPath(File), Section.empty() ? "Ranvel" : Section, Key).value_or(Default);
    if (v.size() > MaxValueLength) v.resize(MaxValueLength);
    return v;
}

void clsIni::WriteIniString(const std::string& Key, const std::string& Value, const std::string& Section,
                            const std::string& File) const
{
    ini::WriteValue(IniPath(File), Section.empty() ? "Ranvel" : Section, Key, Value);
}

}  // namespace ranvel
