// The input of the chart commands: {"person": {...}, "settings": {...}}.
// The settings apply to this run only: they go into an overlay over the
// user's settings store, which is never written.
#pragma once

#include <memory>

#include <nlohmann/json.hpp>

#include "input_check.h"
#include "ranvel/chart/planets.h"
#include "ranvel/platform/settings.h"

namespace ranvel::cli {

// The "settings" of an input: AyanType a whole number from 1 to 15, CustAyan
// the custom ayanamsha in degrees, RahuKetuMode, CalcMangMod, CalcVarMod and
// UpagrahaMode 1 or 2. Each refusal names where the settings stand.
void CheckSettings(const nlohmann::ordered_json& settings, const std::string& where, Refusals& refused);

class RunSettings {
public:
    // Installs the overlay as the process-wide store for the life of this
    // object, with the given "settings" object's keys (AyanType, CustAyan,
    // RahuKetuMode, ...) under section "Init". Settings that CheckSettings
    // refuses throw std::invalid_argument.
    explicit RunSettings(const nlohmann::ordered_json& settings);
    ~RunSettings();
    RunSettings(const RunSettings&) = delete;
    RunSettings& operator=(const RunSettings&) = delete;

private:
    std::unique_ptr<OverlaySettingsStore> overlay_;
    SettingsStore* previous_;
};

// Opens the installation's data under <app>: the person database and the
// text database of the language (English). A missing file is an error that
// names it.
void OpenAppData();

// Checks a whole input of the chart commands, its fields, its settings and
// its person, before anything is made of it; refuses with
// std::invalid_argument, one line a field.
void CheckChartInput(const nlohmann::ordered_json& input);

// A new chart whose record holds the input's "person" (a missing field keeps
// the record's default), not yet calculated.
std::unique_ptr<clsPlanets> ChartFromInput(const nlohmann::ordered_json& input);

}  // namespace ranvel::cli
