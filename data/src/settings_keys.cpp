#include "ranvel/data/settings_keys.h"

#include "ranvel/platform/ini.h"
#include "ranvel/platform/settings.h"

namespace ranvel {

std::string ReadSetting(const SettingKey& key) { return GetSetting(key.section, key.key, key.deflt); }
void WriteSetting(const SettingKey& key, const std::string& value) { SaveSetting(key.section, key.key, value); }
std::string ReadIni(const SettingKey& key) { return clsIni().GetIniString(key.key, key.deflt, key.section, ""); }
void WriteIni(const SettingKey& key, const std::string& value) { clsIni().WriteIniString(key.key, value, key.section, ""); }

}  // namespace ranvel
