// "calendar": every day of a range request with its best moment as the
// search scored it, ranked and graded; printed as a table or JSON, and
// written as an iCalendar file, a picture of the month grids and a PDF.
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <iostream>

#include "commands.h"
#include "input_check.h"
#include "person_json.h"
#include "request_file.h"
#include "ranvel/app/pagerender.h"
#include "ranvel/data/themes.h"
#include "ranvel/engine/calendar.h"
#include "ranvel/output/calendarsheet.h"
#include "ranvel/platform/vbmath.h"
#include "ranvel/platform/wholefile.h"

namespace fs = std::filesystem;

namespace ranvel::cli {

namespace {

using Json = nlohmann::ordered_json;

// A whole number of the command line, or a refusal naming the option.
int WholeNumber(const Args& args, const std::string& name, int fallback)
{
    if (!args.Has(name)) return fallback;
    const std::string text = args.Value(name);
    const auto n = PlainWhole(text);
    if (!n) throw std::invalid_argument("--" + name + " must be a whole number, not '" + text + "'");
    // Past any count of days a range can hold, a number means "all".
    return static_cast<int>(std::clamp<long long>(*n, -1000000, 1000000));
}

// The moment the file is written, in UTC; SOURCE_DATE_EPOCH (seconds since
// 1970) makes it fixed for files that must come out the same at every run.
DateTime StampUtc()
{
    std::time_t now = std::time(nullptr);
    if (const char* fixed = std::getenv("SOURCE_DATE_EPOCH")) {
        const auto seconds = PlainWhole(fixed);
        if (!seconds || *seconds < 0 || *seconds > 4102444799LL)  // up to the end of 2099
            throw std::invalid_argument(std::string("SOURCE_DATE_EPOCH must be a whole number of seconds since "
                                                    "1970-01-01 UTC, not '") + fixed + "'");
        now = static_cast<std::time_t>(*seconds);
    }
    std::tm utc{};
    gmtime_r(&now, &utc);
    return DateTime::FromParts(utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_mday, utc.tm_hour, utc.tm_min, utc.tm_sec);
}

// A calendar is made of a range's days: a moment check, or a range the
// calendar does not cover, is refused for what it is before the request's
// fields are read one by one. What does not read as a mode or a date here is
// left for the request's own checks to name.
void CheckCalendarKind(const Json& file, const std::string& path)
{
    if (!file.is_object()) return;
    const auto mode = file.contains("SearchMode") ? JsonWhole(file["SearchMode"]) : std::optional<long long>(1);
    if (mode && *mode == 2)
        throw std::invalid_argument("The calendar needs a range of dates: the request '" + path +
                                    "' is a moment check (\"SearchMode\": 2). Give it \"SearchMode\": 1 with "
                                    "\"FromDate\" and \"ToDate\".");
    if (!mode || *mode != 1) return;
    const auto date = [&](const char* key) -> std::optional<DateTime> {
        if (!file.contains(key) || !file[key].is_string()) return std::nullopt;
        return FormDate(file[key].get<std::string>());
    };
    const auto from = date("FromDate"), to = date("ToDate");
    if (!from || !to) return;
    const std::string refused = CheckCalendarRange(*from, *to);
    if (!refused.empty()) throw std::invalid_argument(refused);
}

Json Elements(const std::vector<CalendarElement>& elements)
{
    Json out = Json::array();
    for (const CalendarElement& e : elements) out.push_back({{"Code", e.Code}, {"Heading", e.Heading}, {"Score", e.Score}});
    return out;
}

Json DayJson(const CalendarDay& d)
{
    Json j;
    j["Date"] = d.Day.ToIsoText().substr(0, 10);
    j["Tested"] = d.Tested;
    if (!d.Tested) return j;
    j["Time"] = d.Best.Time;
    j["Moment"] = d.Best.Date.ToIsoText();
    j["Score"] = d.Score;
    j["MaxScore"] = d.MaxScore;
    j["Percent"] = d.Percent;
    j["Band"] = d.Band;
    j["BandText"] = d.BandText;
    j["LagnaStart"] = d.LagnaStart.ToIsoText();
    j["LagnaEnd"] = d.LagnaEnd.ToIsoText();
    j["LagnaStartTime"] = d.LagnaStartText;
    j["LagnaEndTime"] = d.LagnaEndText;
    j["Held"] = Elements(d.Held);
    j["Defects"] = Elements(d.Defects);
    j["EngineBest"] = d.EngineBest;
    Json moments = Json::array();
    for (const MomentResult& m : d.Moments) moments.push_back({{"Time", m.Time}, {"Score", m.Score}});
    j["Moments"] = moments;
    return j;
}

}  // namespace

int CmdCalendar(const Args& args)
{
    args.Allow({"request", "json", "top", "min-band", "ics", "png", "pdf", "sunrise"});
    if (args.Value("request").empty()) throw std::invalid_argument("calendar needs --request FILE");
    const bool json = args.Flag("json");
    const int top = WholeNumber(args, "top", 10);
    if (top < 1) throw std::invalid_argument("--top must be 1 or more, not " + args.Value("top"));
    const int minBand = WholeNumber(args, "min-band", 10);
    if (!IsCalendarBand(minBand))
        throw std::invalid_argument("--min-band must be one of the bands 10, 20, ... 100, not " +
                                    args.Value("min-band"));
    for (const char* target : {"ics", "png", "pdf"}) CheckTarget(args, target);
    const DateTime stamp = args.Has("ics") ? StampUtc() : DateTime();

    const std::string path = args.Value("request");
    RequestRun run(path, json, [&path](const Json& file) { CheckCalendarKind(file, path); });
    const SunriseOption sunrise(args);
    clsMuhurtha& e = run.Search();
    const MuhurthaCalendar cal = BuildCalendar(e);
    const std::vector<std::size_t> listed = cal.Listed(top, minBand);

    if (args.Has("ics")) WriteWholeFile(args.Value("ics"), CalendarIcs(cal, listed, stamp));
    if (args.Has("png") || args.Has("pdf")) {
        // The pictures are drawn as the desktop draws them: its fonts, the
        // user's page colours.
        EnsureOffscreenApplication();
        LoadActiveColors();
    }
    if (args.Has("png")) SaveCalendarPng(cal, args.Value("png"));
    if (args.Has("pdf")) SaveCalendarPdf(cal, listed, args.Value("pdf"));

    if (!json) {
        std::cout << CalendarTable(cal, listed) << ZoneNotesText(run.ZoneNotes);
        return 0;
    }
    Json out;
    out["MuhuCode"] = cal.MuhuCode;
    out["MuhuName"] = cal.MuhuName;
    out["MuhuCategory"] = cal.Category;
    out["StartDate"] = cal.StartDate.ToIsoText().substr(0, 10);
    out["EndDate"] = cal.EndDate.ToIsoText().substr(0, 10);
    out["Place"] = cal.Place;
    out["BestMuhuDate"] = e.BestMuhuDate().ToIsoText();
    out["BestMuhuTime"] = e.BestMuhuTime();
    out["BestMuhuScore"] = e.BestMuhuScoreValue();
    out["BestMuhuPercent"] = e.BestMuhuPercent();
    Json days = Json::array();
    for (const CalendarDay& d : cal.Days) days.push_back(DayJson(d));
    out["Days"] = days;
    Json ranked = Json::array();
    int rank = 0;
    for (std::size_t i : listed) ranked.push_back({{"Rank", ++rank}, {"Date", cal.Days[i].Day.ToIsoText().substr(0, 10)}});
    out["Ranked"] = ranked;
    out["ZoneNotes"] = ZoneNotesJson(run.ZoneNotes);
    out["Messages"] = MessagesJson(run.Messages);
    std::cout << DumpJson(out);
    return 0;
}

}  // namespace ranvel::cli
