#include "ranvel/platform/settings.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

#include "ranvel/platform/ini.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

namespace {

SettingsStore* g_store = nullptr;

std::string HomeDir()
{
    if (const char* home = std::getenv("HOME"); home && *home) return home;
    if (const passwd* pw = ::getpwuid(::getuid()); pw && pw->pw_dir) return pw->pw_dir;
    return ".";
}

}  // namespace

std::string IniSettingsStore::DefaultPath()
{
    // A relative XDG_CONFIG_HOME is to be ignored.
    const char* xdg = std::getenv("XDG_CONFIG_HOME");
    std::string base = xdg && xdg[0] == '/' ? std::string(xdg) : HomeDir() + "/.config";
    return base + "/Ranvel/settings.ini";
}

std::optional<std::string> IniSettingsStore::Get(const std::string& section, const std::string& key) const
{
    return ini::ReadValue(path_, section, key);
}

void IniSettingsStore::Set(const std::string& section, const std::string& key, const std::string& value)
{
    // Reading trims blanks and strips one pair of quotes; a value that would
    // lose something that way is written inside quotes.
    bool wrap = !value.empty() && (value.front() == ' ' || value.front() == '\t' || value.back() == ' ' ||
                                   value.back() == '\t' || value.front() == '"' || value.front() == '\'');
    ini::WriteValue(path_, section, key, wrap ? "\"" + value + "\"" : value);
}

std::optional<std::string> MemorySettingsStore::Get(const std::string& section, const std::string& key) const
{
    auto it = values_.find(vb::LCase(section) + '\n' + vb::LCase(key));
    if (it == values_.end()) return std::nullopt;
    return it->second;
}

void MemorySettingsStore::Set(const std::string& section, const std::string& key, const std::string& value)
{
    values_[vb::LCase(section) + '\n' + vb::LCase(key)] = value;
}

std::optional<std::string> OverlaySettingsStore::Get(const std::string& section, const std::string& key) const
{
    if (auto v = written_.Get(section, key)) return v;
    return base_.Get(section, key);
}

void OverlaySettingsStore::Set(const std::string& section, const std::string& key, const std::string& value)
{
    written_.Set(section, key, value);
}

SettingsStore& Settings()
{
    if (g_store) return *g_store;
    static IniSettingsStore user(IniSettingsStore::DefaultPath());
    return user;
}

void SetSettingsStore(SettingsStore* store) { g_store = store; }

std::string GetSetting(const std::string& section, const std::string& key, const std::string& deflt)
{
    return Settings().Get(section, key).value_or(deflt);
}

void SaveSetting(const std::string& section, const std::string& key, const std::string& value)
{
    Settings().Set(section, key, value);
}

}  // namespace ranvel
