// The input of the chart commands: {"person": {...}, "settings": {...}}.
// The settings apply to this run only: they go into an overlay over the
// user's settings store, which is never written.
#pragma once

#include <memory>

#include <nlohmann/json.hpp>

#include "ranvel/chart/planets.h"
#include "ranvel/platform/settings.h"

namespace ranvel::cli {

class RunSettings {
public:
    // Installs the overlay as the process-wide store for the life of this
    // object, with the given "settings" object's keys (AyanType, CustAyan,
    // RahuKetuMode, ...) under section "Init".
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

// A new chart whose record holds the input's "person" (a missing field keeps
// the record's default), not yet calculated.
std::unique_ptr<clsPlanets> ChartFromInput(const nlohmann::ordered_json& input);

}  // namespace ranvel::cli
