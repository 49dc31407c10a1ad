#include "chart_input.h"

#include <stdexcept>

#include "person_json.h"
#include "ranvel/data/datafiles.h"
#include "ranvel/platform/apppaths.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel::cli {

namespace {
const char* const kInitKeys[] = {"AyanType", "CustAyan", "RahuKetuMode"};
const char* const kSettingsKeys[] = {"CalcMangMod", "CalcVarMod", "UpagrahaMode"};

std::string SettingText(const std::string& key, const nlohmann::ordered_json& v)
{
    if (v.is_string()) return v.get<std::string>();
    if (v.is_number_integer()) return std::to_string(v.get<long long>());
    if (v.is_number()) return vb::CStr(v.get<double>());
    throw std::invalid_argument("setting '" + key + "' must be a number or a text");
}
}  // namespace

RunSettings::RunSettings(const nlohmann::ordered_json& settings)
    : overlay_(std::make_unique<OverlaySettingsStore>(Settings())), previous_(&Settings())
{
    if (!settings.is_null() && !settings.is_object()) throw std::invalid_argument("'settings' must be a JSON object");
    if (settings.is_object()) {
        for (auto it = settings.begin(); it != settings.end(); ++it) {
            const std::string& key = it.key();
            std::string section;
            for (const char* k : kInitKeys)
                if (key == k) section = "Init";
            for (const char* k : kSettingsKeys)
                if (key == k) section = "Settings";
            if (section.empty()) throw std::invalid_argument("unknown setting '" + key + "'");
            overlay_->Set(section, key, SettingText(key, it.value()));
        }
    }
    SetSettingsStore(overlay_.get());
}

RunSettings::~RunSettings() { SetSettingsStore(previous_); }

void OpenAppData()
{
    try {
        CheckStartupFiles();
    } catch (const FileAccessError& e) {
        throw std::runtime_error("File '" + e.Path() + "' Was Not Found.\nPlease Re-Install.");
    }
    LanguageList languages;
    languages.Fill();
    if (!TextDB()) throw std::runtime_error("no language database could be opened under " + AppPath("EPHE"));
}

std::unique_ptr<clsPlanets> ChartFromInput(const nlohmann::ordered_json& input)
{
    if (!input.is_object()) throw std::invalid_argument("the input must be a JSON object");
    for (auto it = input.begin(); it != input.end(); ++it)
        if (it.key() != "person" && it.key() != "settings")
            throw std::invalid_argument("unknown input field '" + it.key() + "'");
    auto chart = std::make_unique<clsPlanets>();
    if (input.contains("person")) PersonFromJson(input["person"], chart->clsPerson());
    return chart;
}

}  // namespace ranvel::cli
