#include "ranvel/engine/request.h"

#include "ranvel/engine/request_state.h"
#include "ranvel/platform/sinks.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

const std::vector<CategoryButton>& CategoryButtons()
{
    static const std::vector<CategoryButton> buttons = {
        {"butBusiness", "Business", "Auspicious timings for performing various business activities.", "Business"},
        {"butBuySell", "Buying and Selling", "Muhurthas for buying and selling things.", "BUYSELL"},
        {"butConstruction", "Construction", "Muhurthas for constructing your home and other buildings.", "Construction"},
        {"butCourt", "Court", "Muhurthas for filing a court case and punishing your enemy.", "Court"},
        {"butEducation", "Education", "Auspicious Muhurthas for Educational endeavours.", "Education"},
        {"butElection", "Election", "Auspicious Muhurthas for election related activities.", "Election"},
        {"butFarming", "Farming", "Important Muhurthas for agricultural activities.", "Farming"},
        {"butFinancial", "Financial", "Muhurthas related to financial transactions.", "FINANCE"},
        {"butHome", "Entering a House", "Auspicious Muhurthas for entering a house.", "ENTERHOME"},
        {"butJanma", "Janma Sanskars", "Muhurthas for performing various post-birth rites.", "BIRTHRITES"},
        {"butJob", "Job", "Muhurthas related to jobs.", "Job"},
        {"butJourney", "Journey", "Auspicious Muhurthas for Journeys.", "Journey"},
        {"butMarriage", "Marriage", "Muhurthas related to Marriage.", "Marriage"},
        {"butMiscllaneous", "Miscellaneous Muhurthas", "Important miscellaneous Muhurthas.", "Miscellaneous"},
    };
    return buttons;
}

namespace {
std::unique_ptr<clsMuhurtha>& EngineSlot()
{
    static std::unique_ptr<clsMuhurtha> engine;
    return engine;
}

// A date text of the form, read day-first ("02/09/1990").
DateTime DateOf(const std::string& text) { return DateTime::ParseDayFirst(text); }

// Degrees and minutes of a "000:00" text: the first three characters and
// the last two.
void DegreesOf(const std::string& text, Variant& deg, Variant& min)
{
    deg = Variant(vb::Left(text, 3));
    min = Variant(vb::Right(text, 2));
}

// Latitude and longitude from "000:00" texts, with their hemisphere letters.
void SetPlace(clsPerson& p, const std::string& lati, const std::string& longi, const std::string& ns,
              const std::string& ew)
{
    Variant deg, min;
    DegreesOf(lati, deg, min);
    p.LatDeg(deg);
    p.LatMT(min);
    DegreesOf(longi, deg, min);
    p.LongDeg(deg);
    p.LongMT(min);
    p.TextNS(ns);
    p.TextEW(ew);
}

}  // namespace

void FillPersonRecord(clsPerson& p, const RequestPerson& f)
{
    p.Name(f.Name);
    p.Day(vb::Mid(f.BDate, 1, 2));
    p.Month(vb::Mid(f.BDate, 4, 2));
    p.Year(vb::Right(f.BDate, 4));
    p.Hour(vb::Left(f.BTime, 2));
    p.Minutes(vb::Right(f.BTime, 2));
    p.AMPM(f.AMPM);
    p.PLOB(f.City);
    p.Sex(f.Sex);
    p.Country(f.Country);
    // Stored as it stands: "+05.30" then reads as 5.3 hours.
    p.GMTDIFF(f.GMT);
    SetPlace(p, f.Lati, f.Longi, f.NS, f.EW);
}

namespace {

// An "HH.MM" field as a number: 06.30 gives 6.3, the digits behind the point
// being minutes.
double ClockNumber(const std::string& text)
{
    if (!vb::IsNumeric(text)) return vb::Val(text);
    return vb::Val(vb::Format(vb::ParseNumber(text), "00.00"));
}
}  // namespace

clsMuhurtha& Engine()
{
    if (!EngineSlot()) EngineSlot() = std::make_unique<clsMuhurtha>();
    return *EngineSlot();
}

void ResetEngine(std::unique_ptr<clsMuhurtha> engine) { EngineSlot() = std::move(engine); }

bool MuhurthaRequest::CheckRangeDates()
{
    if (SearchMode != 1) return true;
    if (DateOf(ToDate) < DateOf(FromDate)) {
        MsgBox("The 'To:' date can't be lesser than the 'From:' date.\nPlease provide another date.", MsgButtons::OK,
               "Error in date.", MsgIcon::Information);
        return false;
    }
    return true;
}

bool MuhurthaRequest::ValiDateTime(const std::string& field)
{
    const std::string hh = vb::Left(field, 2);
    const std::string mm = vb::Right(field, 2);
    if (!vb::IsNumeric(hh) || !vb::IsNumeric(mm)) return true;
    return vb::ParseNumber(hh) > 24 || vb::ParseNumber(mm) > 59;
}

void MuhurthaRequest::LoadPersonChart() { FillPersonRecord(PersonChart()->clsPerson(), Person); }

void MuhurthaRequest::LoadBoyGirlCharts()
{
    FillPersonRecord(BoyChart()->clsPerson(), Boy);
    FillPersonRecord(GirlChart()->clsPerson(), Girl);
}

void MuhurthaRequest::BuildMomentChart()
{
    if (!MomentChart) {
        MomentChart = std::make_shared<clsPlanets>();
        MomentChart->setTextDB(textDB_, recosDB_);
    }
    clsPerson& p = MomentChart->clsPerson();
    p.Name("Muhurtha");
    p.Day(vb::Mid(MomentDate, 1, 2));
    p.Month(vb::Mid(MomentDate, 4, 2));
    p.Year(vb::Right(MomentDate, 4));
    p.Hour(vb::Left(MomentTime, 2));
    p.Minutes(vb::Right(MomentTime, 2));
    p.AMPM(MomentAMPM == 1 ? 1 : 2);
    p.PLOB(Place.City);
    p.Sex(1);
    p.Country(Place.Country);
    // The zone's minutes become hundredths, built as text: "+05.30" gives
    // 5.5 and "-05.30" gives -5.5.
    const std::string& gmt = Place.GMT;
    std::size_t point = gmt.find('.');
    std::string whole = point == std::string::npos ? gmt : gmt.substr(0, point);
    double minutes = point == std::string::npos ? 0 : vb::Val(vb::Left(gmt.substr(point + 1), 2));
    p.GMTDIFF(vb::Val(whole + "." + vb::Format(minutes / 60 * 100, "00")));
    SetPlace(p, Place.Lati, Place.Longi, Place.NS, Place.EW);
    MomentChart->Calculate();
}

void MuhurthaRequest::RunEngine(clsMuhurtha& engine, std::shared_ptr<Database> textDB, std::shared_ptr<Database> recosDB)
{
    textDB_ = textDB;
    recosDB_ = recosDB;
    MarriageRequest() = vb::UCase(Category) == "MARRIAGE";
    auto fresh = [&] {
        auto c = std::make_shared<clsPlanets>();
        c->setTextDB(textDB, recosDB);
        return c;
    };
    engine.MuhuChart = fresh();
    // A fault names the chart it arose in; the command ends all the same.
    auto naming = [](const char* whose, auto&& step) {
        try {
            step();
        } catch (const vb::RuntimeError& e) {
            throw vb::RuntimeError(std::string(e.what()) + " (in the chart of the " + whose + ")");
        }
    };
    if (MarriageRequest()) {
        BoyChart() = fresh();
        GirlChart() = fresh();
        MatchChart() = fresh();
        LoadBoyGirlCharts();
        naming("boy", [] { BoyChart()->Calculate(); });
        naming("girl", [] { GirlChart()->Calculate(); });
    } else {
        PersonChart() = fresh();
        LoadPersonChart();
        naming("person", [] { PersonChart()->Calculate(); });
    }
    naming("moment and place", [this] { BuildMomentChart(); });
    if (SearchMode == 1) {
        engine.CheckMuhurtha(MuhuName, Category, DateOf(FromDate), DateOf(ToDate), ClockNumber(FromTime),
                             ClockNumber(ToTime), *MomentChart);
    } else if (SearchMode == 2) {
        engine.CheckMuhuMoment(MuhuName, Category, *MomentChart);
    }
}

}  // namespace ranvel
