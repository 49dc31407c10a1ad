// The day sheet: one day at one place as the chart reads it. Sunrise and
// sunset, the five limbs with the moments at which each tithi, nakshatra,
// yoga and karana of the day begins and ends, the lunar month, and the
// divisions of the day (Rahu Kaal, the evil Muhurthas, Chowgadiya, Hora) as
// the chart's own members give them. Nothing here is reckoned a second way:
// a limb's limits are the minutes at which the chart's own numbers change.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "ranvel/chart/planets.h"
#include "ranvel/engine/request.h"

namespace ranvel {

// One tithi, nakshatra, yoga or karana: its number and name, and the
// minutes of the place's clock at which it begins and ends (the first
// minute at which it holds, the first at which the next one holds).
struct LimbSpan {
    int Number = 0;
    std::string Name;
    DateTime Start, End;
};

// A part of the day as the chart's members give it: start and span are
// HH.MM values, with their arithmetic as the chart has it.
struct DayPart {
    int Number = 0;
    int Type = 0;
    std::string Name;
    double Start = 0;
    double Span = 0;
};

enum class Limb { Tithi, Nakshatra, Yoga, Karana };

struct DaySheet {
    DateTime Date;
    std::string Place;
    // The place lies west or south: its sunrise is searched as at the same
    // degrees north and east, as every chart's sunrise is.
    bool WestOrSouth = false;
    // With the astronomical sunrise chosen, the Sun did not cross the
    // horizon on this day, and the ecliptic rule gave the times.
    bool SunWithoutHorizon = false;
    int WeekDay = 0;  // 1 Sunday to 7 Saturday
    std::string DayName;
    // HH.MM values as the chart gives them, and the same as moments.
    double Sunrise = 0, Sunset = 0, NextSunrise = 0;
    DateTime SunriseMoment, SunsetMoment, NextSunriseMoment;
    // The one in force at sunrise first, then each one that begins before
    // the next sunrise.
    std::vector<LimbSpan> Tithis, Nakshatras, Yogas, Karanas;
    int LunarMonth = 0;
    std::string LunarMonthName;
    double RahuKaalStart = 0, RahuKaalSpan = 0;
    std::array<double, 4> EvilMuhurthaStart{};
    double EvilMuhurthaLength = 0;
    std::vector<DayPart> Chowgadiya;  // 16 parts: 8 of the day, 8 of the night
    std::vector<DayPart> Horas;       // 24 parts, an hour each from sunrise
};

// The number a chart shows for a limb: Tithi, Nakshatra, YogaNumber, and
// the karana of the naming rule (KaranNum).
int LimbNumberOf(clsPlanets& Chart, Limb Which);
// The same number from a Sun and a Moon, by the chart's own rules.
int LimbNumberOf(Limb Which, double Sun, double Moon);

// The sheet of a date at the place of a chart (its record's place and zone;
// its clock is not read). The chart's text database gives the names.
DaySheet BuildDaySheet(const clsPlanets& Place, const DateTime& Date);

// The sheet of a date at a request's place, its chart built as a request
// builds the place's chart, the names from the text database given.
DaySheet DaySheetOfPlace(const RequestPlace& Place, const DateTime& Date, std::shared_ptr<Database> TextDB,
                         std::shared_ptr<Database> RecosDB);
// Why a place can have no sheet, naming the field ("Latitude", ...); empty
// when it can. A place at 000:00, 000:00 is taken for a blank one.
std::string DayPlaceRefusal(const RequestPlace& Place);

// The lines a sheet carries on how its sunrise is found: the rule in use,
// and a second for a place west or south under the ecliptic rule or a day
// without sunrise (empty elsewhere).
std::string SunriseRule();
std::string SunriseRuleOfPlace(const DaySheet& Sheet);
// A division's HH.MM reading as the chart reckons it, "08.78" included.
std::string DivisionText(double hhmm);

// HH.MM value as "HH:MM", and as minutes of the day.
std::string ClockText(double hhmm);
int ClockMinutes(double hhmm);

}  // namespace ranvel
