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

constexpr double kWholeCircle = 360.0;
// The ayanamshas the chart knows, numbered from 1.
constexpr int kLastAyanType = 15;

std::string SettingText(const std::string& key, const nlohmann::ordered_json& v)
{
    if (v.is_string()) return v.get<std::string>();
    if (v.is_number_integer()) return std::to_string(v.get<long long>());
    if (v.is_number()) return vb::CStr(v.get<double>());
    throw std::invalid_argument("setting '" + key + "' must be a number or a text");
}
}  // namespace

void CheckSettings(const nlohmann::ordered_json& settings, const std::string& where, Refusals& refused)
{
    if (settings.is_null()) return;
    if (!settings.is_object()) {
        refused.Add("'" + where + "' must be a JSON object");
        return;
    }
    for (auto it = settings.begin(); it != settings.end(); ++it) {
        const std::string& key = it.key();
        const std::string name = "setting '" + where + "." + key + "'";
        const nlohmann::ordered_json& v = it.value();
        if (key == "AyanType") {
            auto n = JsonWhole(v);
            if (!n || *n < 1 || *n > kLastAyanType)
                refused.Add(name + " must be a whole number from 1 to " + std::to_string(kLastAyanType) +
                            " (1 Lahiri, 2 Raman, 3 KP, 12 Sayan, 13 custom, 15 Vakya), not " + Shown(v));
        } else if (key == "CustAyan") {
            auto d = JsonNumber(v);
            if (!d || *d < 0 || *d >= kWholeCircle)
                refused.Add(name + " must be the custom ayanamsha in degrees, a number from 0 up to 360 written "
                                   "with '.' (like \"23.30\"), not " + Shown(v));
        } else if (key == "RahuKetuMode" || key == "CalcMangMod" || key == "CalcVarMod" || key == "UpagrahaMode") {
            auto n = JsonWhole(v);
            if (!n || (*n != 1 && *n != 2)) {
                const char* meaning = key == "RahuKetuMode"   ? " (1 mean nodes, 2 true nodes)"
                                      : key == "UpagrahaMode" ? " (1 the end of the day part, 2 its beginning)"
                                                              : " (1 North, 2 South)";
                refused.Add(name + " must be 1 or 2" + meaning + ", not " + Shown(v));
            }
        } else {
            refused.Add("unknown setting '" + where + "." + key +
                        "' (known: AyanType, CustAyan, RahuKetuMode, CalcMangMod, CalcVarMod, UpagrahaMode)");
        }
    }
}

RunSettings::RunSettings(const nlohmann::ordered_json& settings)
    : overlay_(std::make_unique<OverlaySettingsStore>(Settings())), previous_(&Settings())
{
    Refusals refused;
    CheckSettings(settings, "settings", refused);
    refused.ThrowIfAny();
    if (settings.is_object()) {
        for (auto it = settings.begin(); it != settings.end(); ++it) {
            const std::string& key = it.key();
            std::string section;
            for (const char* k : kInitKeys)
                if (key == k) section = "Init";
            for (const char* k : kSettingsKeys)
                if (key == k) section = "Settings";
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

void CheckChartInput(const nlohmann::ordered_json& input)
{
    if (!input.is_object()) throw std::invalid_argument("the input must be a JSON object");
    Refusals refused;
    for (auto it = input.begin(); it != input.end(); ++it)
        if (it.key() != "person" && it.key() != "settings") refused.Add("unknown input field '" + it.key() + "'");
    if (input.contains("settings")) CheckSettings(input["settings"], "settings", refused);
    try {
        // A record of its own: the chart's is made once the settings stand.
        clsPerson scratch;
        PersonFromJson(input.contains("person") ? input["person"] : nlohmann::ordered_json::object(), scratch);
    } catch (const std::invalid_argument& e) {
        refused.Add(e.what());
    }
    refused.ThrowIfAny();
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
