// The keys of the two settings stores with their defaults. The per-user
// store holds calculation choices and window state; GENDAT.INI what belongs
// to the installation. Both are read at need, never cached here.
#pragma once

#include <string>

namespace ranvel {

struct SettingKey {
    const char* section;
    const char* key;
    const char* deflt;
};

namespace keys {
// Per-user store.
inline constexpr SettingKey RahuKetuMode{"Init", "RahuKetuMode", "1"};
inline constexpr SettingKey AyanType{"Init", "AyanType", "1"};
inline constexpr SettingKey CustAyan{"Init", "CustAyan", "00.00"};
// Written as "Kundstyle", read as "KundStyle": the store does not mind case.
inline constexpr SettingKey KundStyle{"Init", "KundStyle", "2"};
inline constexpr SettingKey KundStyleWritten{"Init", "Kundstyle", "2"};
inline constexpr SettingKey CalcMangMod{"Settings", "CalcMangMod", "1"};
inline constexpr SettingKey CalcVarMod{"Settings", "CalcVarMod", "1"};
inline constexpr SettingKey UpagrahaMode{"Settings", "UpagrahaMode", "1"};
// "1": sunrise and sunset on the true horizon; anything else the ecliptic rule.
inline constexpr SettingKey AstroSunrise{"Settings", "AstroSunrise", "0"};
inline constexpr SettingKey DoneSetup{"Settings", "DoneSetup", "False"};
// The section name with its trailing backquote is the one always used.
inline constexpr SettingKey StartDir{"Settings`", "StartDir", ""};

// GENDAT.INI, section of the application's title.
inline constexpr SettingKey SelLang{"", "SelLang", "0"};
inline constexpr SettingKey DispName{"", "DispName", "Tessaly"};
inline constexpr SettingKey DispAdd{"", "DispAdd", "Ranvel Muhurtha Desk, 14 Lantern Row, Nashik 422001"};
inline constexpr SettingKey ShowError{"", "SHOWERROR", "True"};
}  // namespace keys

// Per-user store, with the key's default.
std::string ReadSetting(const SettingKey& key);
void WriteSetting(const SettingKey& key, const std::string& value);
// GENDAT.INI, with the key's default.
std::string ReadIni(const SettingKey& key);
void WriteIni(const SettingKey& key, const std::string& value);

}  // namespace ranvel
