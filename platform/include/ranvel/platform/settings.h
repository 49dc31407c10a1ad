// The per-user settings store: calculation choices and window state, kept
// by section and key under the application's title. Sections and keys are
// matched without regard to case ("Kundstyle" written is "KundStyle" read);
// a section name may hold any character but "]" and line breaks
// ("Settings`" included).
//
// The process-wide store is an INI file in the user's configuration folder.
// Tests and the command line install an overlay, which reads through to
// the real store but keeps every write in memory.
#pragma once

#include <map>
#include <optional>
#include <string>

namespace ranvel {

class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    virtual std::optional<std::string> Get(const std::string& section, const std::string& key) const = 0;
    virtual void Set(const std::string& section, const std::string& key, const std::string& value) = 0;
};

// Backed by an INI file; every Get reads the file anew and every Set
// rewrites it, so a change shows at the next read.
class IniSettingsStore : public SettingsStore {
public:
    explicit IniSettingsStore(std::string path) : path_(std::move(path)) {}
    // $XDG_CONFIG_HOME/Ranvel/settings.ini, else ~/.config/Ranvel/settings.ini.
    static std::string DefaultPath();

    const std::string& Path() const { return path_; }
    std::optional<std::string> Get(const std::string& section, const std::string& key) const override;
    void Set(const std::string& section, const std::string& key, const std::string& value) override;

private:
    std::string path_;
};

class MemorySettingsStore : public SettingsStore {
public:
    std::optional<std::string> Get(const std::string& section, const std::string& key) const override;
    void Set(const std::string& section, const std::string& key, const std::string& value) override;

private:
    std::map<std::string, std::string> values_;  // by lower-case "section\nkey"
};

// Reads its own writes first, then the base; never writes to the base.
class OverlaySettingsStore : public SettingsStore {
public:
    explicit OverlaySettingsStore(const SettingsStore& base) : base_(base) {}
    std::optional<std::string> Get(const std::string& section, const std::string& key) const override;
    void Set(const std::string& section, const std::string& key, const std::string& value) override;

private:
    const SettingsStore& base_;
    MemorySettingsStore written_;
};

// The process-wide store: the user's INI store until another is installed.
SettingsStore& Settings();
void SetSettingsStore(SettingsStore* store);  // nullptr restores the default

// The stored value, or deflt when there is none (the application's title,
// "Ranvel", is implied).
std::string GetSetting(const std::string& section, const std::string& key, const std::string& deflt);
void SaveSetting(const std::string& section, const std::string& key, const std::string& value);

}  // namespace ranvel
