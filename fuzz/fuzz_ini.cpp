// GENDAT.INI and the settings file as any bytes: the first line of the
// input is a value, the rest the file. The keys the program reads are read,
// then two writes are made the way the program makes them: the user's name
// through clsIni, and the value through the settings store, into the
// section whose name ends in "`".
//
// Beyond not crashing: a written value reads back as it was given, no other
// key changes its value, and writing the same value again leaves the file
// as it is, byte for byte.
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "harness.h"
#include "ranvel/platform/ini.h"
#include "ranvel/platform/settings.h"

using namespace ranvel;

namespace {

// Keys of GENDAT.INI and of the settings store, in the sections the program
// keeps them in.
const std::array<std::pair<const char*, const char*>, 12> kProbes = {{
    {"Ranvel", "SelLang"},
    {"Ranvel", "DispName"},
    {"Ranvel", "DispAdd"},
    {"KUNCOLOR", "KunBackColor"},
    {"KUNCOLOR", "KunLineWidth"},
    {"Init", "AyanType"},
    {"Init", "CustAyan"},
    {"Init", "Kundstyle"},
    {"Settings", "DoneSetup"},
    {"Settings`", "StartDir"},
    {"Settings`", "Other"},
    {"", ""},
}};

constexpr const char* kName = "Fuzz Name";

std::string Shown(const std::optional<std::string>& v) { return v ? "'" + *v + "'" : "(none)"; }

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fuzz::Init();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::vector<std::string> parts = fuzz::Lines(data, size, 2);
    const std::string value = parts[0];
    const std::string path =
        fuzz::WriteScratchFile("app/DATA/INIFILES/GENDAT.INI", reinterpret_cast<const std::uint8_t*>(parts[1].data()),
                               parts[1].size());
    clsIni ini;
    IniSettingsStore store(path);

    std::array<std::optional<std::string>, kProbes.size()> before;
    for (std::size_t i = 0; i < kProbes.size(); ++i) before[i] = ini::ReadValue(path, kProbes[i].first, kProbes[i].second);
    (void)ini.GetIniString("DispAdd", "", "", "");

    ini.WriteIniString("DispName", kName, "", "");
    store.Set("Settings`", "StartDir", value);
    const std::string once = fuzz::ReadWholeFile(path);

    if (auto name = ini::ReadValue(path, "Ranvel", "DispName"); name != kName)
        fuzz::Fail("DispName reads " + Shown(name) + " after writing '" + kName + "'");
    // A line break can't be kept inside a line: the checks of the value
    // hold for values without one.
    const bool oneLine = value.find_first_of("\r\n") == std::string::npos;
    if (oneLine) {
        if (auto back = store.Get("Settings`", "StartDir"); back != value)
            fuzz::Fail("StartDir reads " + Shown(back) + " after writing '" + value + "'");
    }
    for (std::size_t i = 0; i < kProbes.size(); ++i) {
        const std::string key = kProbes[i].second;
        if (key == "DispName" || key == "StartDir") continue;
        auto after = ini::ReadValue(path, kProbes[i].first, kProbes[i].second);
        if (after != before[i])
            fuzz::Fail(std::string("[") + kProbes[i].first + "] " + key + " changed from " + Shown(before[i]) +
                       " to " + Shown(after) + " by writing other keys");
    }

    ini.WriteIniString("DispName", kName, "", "");
    store.Set("Settings`", "StartDir", value);
    if (oneLine && fuzz::ReadWholeFile(path) != once) fuzz::Fail("writing the same values again changed the file");
    return 0;
}
