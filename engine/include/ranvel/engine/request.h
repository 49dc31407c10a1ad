// A Muhurtha request as the request form holds it: texts in the form's masks
// ("dd/MM/yyyy", "HH.MM", "000:00", "+00.00"), turned into charts and handed
// to the engine. It stands without a screen, so the command line and the
// desktop generate the same way.
#pragma once

#include <memory>
#include <string>

#include "ranvel/chart/planets.h"
#include "ranvel/engine/muhurtha.h"

namespace ranvel {

// One person's fields: name, sex, birth date "dd/MM/yyyy", time "HH.MM", AM
// or PM (1, 2), and the place.
struct RequestPerson {
    std::string Name;
    int Sex = 1;
    std::string BDate = "00/00/0000";
    std::string BTime = "00.00";
    int AMPM = 1;
    std::string Country, City;
    std::string Lati = "000:00";
    std::string Longi = "000:00";
    std::string NS = "N";
    std::string EW = "E";
    std::string GMT = "+00.00";
};

struct RequestPlace {
    std::string Country, City;
    std::string Lati = "000:00";
    std::string Longi = "000:00";
    std::string NS = "N";
    std::string EW = "E";
    std::string GMT = "+00.00";
};

// The category keys of the fourteen buttons of the first page.
struct CategoryButton {
    const char* button;
    const char* caption;
    const char* description;
    const char* key;
};
const std::vector<CategoryButton>& CategoryButtons();

class MuhurthaRequest {
public:
    std::string Category;
    std::string MuhuName;
    int SearchMode = 1;  // 1 range search, 2 moment check
    int RequestPage = 1;
    std::shared_ptr<clsPlanets> MomentChart;
    std::string MomentDate = "00/00/0000";
    std::string MomentTime = "00.00";
    int MomentAMPM = 1;  // the first option of the AM/PM pair is 1
    std::string FromDate = "00/00/0000", ToDate = "00/00/0000";
    std::string FromTime = "00.00", ToTime = "00.00";
    RequestPlace Place;
    RequestPerson Person, Boy, Girl;

private:
    std::shared_ptr<Database> textDB_, recosDB_;

public:

    // In range mode: a To date before the From date is refused with the
    // message "Error in date."; equal dates pass.
    bool CheckRangeDates();
    // True when the time text is refused: hour above 24 or minutes above 59,
    // or either not a number.
    static bool ValiDateTime(const std::string& field);
    // The generation: charts for the persons and the place, then the engine.
    void RunEngine(clsMuhurtha& engine, std::shared_ptr<Database> textDB, std::shared_ptr<Database> recosDB);
    // Makes MomentChart when it is missing, with the text database of the
    // last generation.
    void BuildMomentChart();
    void LoadPersonChart();
    void LoadBoyGirlCharts();
};

// Copies a person's fields into a record: the date and time split from
// their texts, the zone's text as it stands ("+05.30" then reads as 5.3
// hours), the place from the "000:00" texts.
void FillPersonRecord(clsPerson& p, const RequestPerson& f);

// The process-wide engine, made on first use.
clsMuhurtha& Engine();
void ResetEngine(std::unique_ptr<clsMuhurtha> engine);

}  // namespace ranvel
