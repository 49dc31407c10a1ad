// "day": the sheet of one day at one place: sunrise and sunset, the limbs
// with their limits, the lunar month and the divisions of the day.
#include <cstdio>
#include <iostream>

#include "chart_input.h"
#include "commands.h"
#include "input_check.h"
#include "person_json.h"
#include "request_file.h"
#include "ranvel/app/pagerender.h"
#include "ranvel/data/datafiles.h"
#include "ranvel/engine/daysheet.h"
#include "ranvel/engine/request.h"
#include "ranvel/platform/sinks.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel::cli {

namespace {

using Json = nlohmann::ordered_json;

// The place from --place-file, or from the place options.
RequestPlace ReadPlaceOf(const Args& args)
{
    static const char* const kOptions[][2] = {{"country", "Country"}, {"city", "City"}, {"lati", "Lati"},
                                              {"longi", "Longi"},     {"ns", "NS"},     {"ew", "EW"},
                                              {"gmt", "GMT"}};
    Json place = Json::object();
    bool options = false;
    for (const auto& o : kOptions)
        if (args.Has(o[0])) {
            place[o[1]] = args.Value(o[0]);
            options = true;
        }
    if (args.Has("place-file")) {
        if (options) throw std::invalid_argument("give the place either by --place-file or by the place options, not both");
        place = ReadJsonFile(args.Value("place-file"));
    } else if (!options) {
        throw std::invalid_argument("day needs a place: --place-file FILE, or --lati, --longi, --ns, --ew and --gmt");
    }
    RequestPlace p;
    try {
        p = ReadPlace(place, args.Has("place-file") ? "the place file" : "the place");
    } catch (const std::invalid_argument& e) {
        if (args.Has("place-file")) throw;
        // The fields came from the options: the message names those.
        std::string why = e.what();
        for (const auto& o : kOptions)
            for (std::size_t at; (at = why.find(std::string("request field '") + o[1] + "'")) != std::string::npos;)
                why.replace(at, std::string("request field '").size() + std::string(o[1]).size() + 1,
                            std::string("option --") + o[0]);
        throw std::invalid_argument(why);
    }
    const std::string refusal = DayPlaceRefusal(p);
    if (!refusal.empty()) throw std::invalid_argument(refusal);
    return p;
}

Json Clock(double hhmm)
{
    return {{"Time", DivisionText(hhmm)}, {"Minutes", ClockMinutes(hhmm)}};
}

// A moment of the sheet as the place's clock reads it, and as minutes from
// the sheet's midnight (below 0 the day before, from 1440 the day after).
Json Moment(const DaySheet& s, const DateTime& m)
{
    char text[8];
    std::snprintf(text, sizeof text, "%02d.%02d", m.Hour(), m.Minute());
    return {{"Date", m.ToDayFirstText()}, {"Time", text}, {"Minutes", DateTime::DiffMinutes(s.Date, m)}};
}

Json Limbs(const DaySheet& s, const std::vector<LimbSpan>& spans)
{
    Json out = Json::array();
    for (const LimbSpan& l : spans)
        out.push_back({{"Number", l.Number}, {"Name", l.Name}, {"Start", Moment(s, l.Start)}, {"End", Moment(s, l.End)}});
    return out;
}

Json Parts(const std::vector<DayPart>& parts)
{
    Json out = Json::array();
    for (const DayPart& p : parts)
        out.push_back({{"Number", p.Number}, {"Type", p.Type}, {"Name", p.Name}, {"Start", Clock(p.Start)},
                       {"Span", Clock(p.Span)}});
    return out;
}

std::string LimbLines(const char* title, const std::vector<LimbSpan>& spans)
{
    std::string out = std::string(title) + ":\n";
    for (const LimbSpan& l : spans) {
        char line[160];
        std::snprintf(line, sizeof line, "  %-22s %2d  from %s %02d:%02d  to %s %02d:%02d\n", l.Name.c_str(), l.Number,
                      l.Start.ToDayFirstText().c_str(), l.Start.Hour(), l.Start.Minute(),
                      l.End.ToDayFirstText().c_str(), l.End.Hour(), l.End.Minute());
        out += line;
    }
    return out;
}

std::string Table(const DaySheet& s)
{
    std::string out = "Day sheet of " + s.Date.ToDayFirstText() + " (" + s.DayName + ")";
    if (!s.Place.empty()) out += " at " + s.Place;
    out += "\n";
    out += "Sunrise " + ClockText(s.Sunrise) + ", sunset " + ClockText(s.Sunset) + ", next sunrise " +
           ClockText(s.NextSunrise) + "\n";
    out += SunriseRule() + "\n";
    if (!SunriseRuleOfPlace(s).empty()) out += SunriseRuleOfPlace(s) + "\n";
    out += "Lunar month: " + s.LunarMonthName + "\n\n";
    out += LimbLines("Tithi", s.Tithis) + LimbLines("Nakshatra", s.Nakshatras) + LimbLines("Yoga", s.Yogas) +
           LimbLines("Karana", s.Karanas) + "\n";
    out += "The divisions below are the chart's HH.MM readings, reckoned as plain numbers.\n";
    out += "Rahu Kaal from " + DivisionText(s.RahuKaalStart) + " for " + DivisionText(s.RahuKaalSpan) + "\n";
    out += "Evil Muhurthas from";
    for (double e : s.EvilMuhurthaStart) out += " " + DivisionText(e);
    out += ", each for " + DivisionText(s.EvilMuhurthaLength) + "\n\nChowgadiya:\n";
    for (const DayPart& p : s.Chowgadiya) {
        char line[96];
        std::snprintf(line, sizeof line, "  %2d  %-8s from %s\n", p.Number, p.Name.c_str(), DivisionText(p.Start).c_str());
        out += line;
    }
    out += "\nHora:\n";
    for (const DayPart& p : s.Horas) {
        char line[96];
        std::snprintf(line, sizeof line, "  %2d  %-8s from %s\n", p.Number, p.Name.c_str(), DivisionText(p.Start).c_str());
        out += line;
    }
    return out;
}

}  // namespace

int CmdDay(const Args& args)
{
    args.Allow({"date", "place-file", "country", "city", "lati", "longi", "ns", "ew", "gmt", "json", "pdf", "sunrise"});
    if (!args.Has("date")) throw std::invalid_argument("day needs --date dd/MM/yyyy");
    const DateTime date = ReadDayDate("--date", args.Value("date"));
    const RequestPlace place = ReadPlaceOf(args);
    CheckTarget(args, "pdf");

    HeadlessMessageSink messages(args.Flag("json"));
    SetMessageSink(&messages);
    struct Restore {
        ~Restore() { SetMessageSink(nullptr); }
    } restore;
    OpenAppData();
    // The place's chart is built as a request builds it (its zone's minutes
    // as hundredths), with the language's texts.
    const SunriseOption sunrise(args);
    const DaySheet s = DaySheetOfPlace(place, date, TextDB(), RecosDB());
    if (args.Has("pdf")) {
        std::string error;
        if (!RenderDaySheetPdf(s, args.Value("pdf"), error)) throw std::runtime_error(error);
    }

    if (!args.Flag("json")) {
        std::cout << Table(s);
        return 0;
    }
    Json out;
    out["Date"] = s.Date.ToDayFirstText();
    out["Place"] = s.Place;
    out["WeekDay"] = s.WeekDay;
    out["DayName"] = s.DayName;
    out["Sunrise"] = Clock(s.Sunrise);
    out["Sunset"] = Clock(s.Sunset);
    out["NextSunrise"] = Clock(s.NextSunrise);
    out["Tithis"] = Limbs(s, s.Tithis);
    out["Nakshatras"] = Limbs(s, s.Nakshatras);
    out["Yogas"] = Limbs(s, s.Yogas);
    out["Karanas"] = Limbs(s, s.Karanas);
    out["LunarMonth"] = {{"Number", s.LunarMonth}, {"Name", s.LunarMonthName}};
    out["RahuKaal"] = {{"Start", Clock(s.RahuKaalStart)}, {"Span", Clock(s.RahuKaalSpan)}};
    Json evil = Json::array();
    for (double e : s.EvilMuhurthaStart) evil.push_back(Clock(e));
    out["EvilMuhurthas"] = {{"Starts", evil}, {"Span", Clock(s.EvilMuhurthaLength)}};
    out["Chowgadiya"] = Parts(s.Chowgadiya);
    out["Hora"] = Parts(s.Horas);
    out["Messages"] = MessagesJson(messages);
    std::cout << DumpJson(out);
    return 0;
}

}  // namespace ranvel::cli
