// "muhurtha": a request from JSON, the search, and its answer: the best
// Muhurtha with its lagna span, score and percent, the moments of its day,
// and what the analysis page says of each element.
#include <unistd.h>

#include <cstdio>
#include <iostream>

#include "chart_input.h"
#include "commands.h"
#include "person_json.h"
#include "ranvel/app/pagerender.h"
#include "ranvel/data/datafiles.h"
#include "ranvel/engine/analysis.h"
#include "ranvel/engine/request.h"
#include "ranvel/platform/apppaths.h"
#include "ranvel/platform/sinks.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel::cli {

namespace {

using Json = nlohmann::ordered_json;

std::string Text(const Json& obj, const char* where, const char* key, const std::string& blank)
{
    if (!obj.contains(key)) return blank;
    const Json& v = obj[key];
    if (v.is_string()) return v.get<std::string>();
    throw std::invalid_argument(std::string("request field '") + where + key + "' must be a text");
}

int Whole(const Json& obj, const char* where, const char* key, int deflt)
{
    if (!obj.contains(key)) return deflt;
    const Json& v = obj[key];
    if (v.is_number_integer()) return v.get<int>();
    if (v.is_string() && vb::IsNumeric(v.get<std::string>())) return vb::CLng(vb::ParseNumber(v.get<std::string>()));
    throw std::invalid_argument(std::string("request field '") + where + key + "' must be a whole number");
}

void Only(const Json& obj, const std::string& where, std::initializer_list<const char*> keys)
{
    if (!obj.is_object()) throw std::invalid_argument("request field '" + where + "' must be a JSON object");
    for (auto it = obj.begin(); it != obj.end(); ++it) {
        bool ok = false;
        for (const char* k : keys) ok = ok || it.key() == k;
        if (!ok) throw std::invalid_argument("unknown request field '" + where + (where.empty() ? "" : ".") + it.key() + "'");
    }
}

// The place fields, the same for the request's place and for each person.
template <typename T>
void PlaceOf(const Json& obj, const std::string& w, T& out)
{
    out.Country = Text(obj, w.c_str(), "Country", "");
    out.City = Text(obj, w.c_str(), "City", "");
    out.Lati = Text(obj, w.c_str(), "Lati", "000:00");
    out.Longi = Text(obj, w.c_str(), "Longi", "000:00");
    out.NS = Text(obj, w.c_str(), "NS", "N");
    out.EW = Text(obj, w.c_str(), "EW", "E");
    out.GMT = Text(obj, w.c_str(), "GMT", "+00.00");
}

RequestPerson PersonOf(const Json& obj, const std::string& name)
{
    Only(obj, name, {"Name", "Sex", "BDate", "BTime", "AMPM", "Country", "City", "Lati", "Longi", "NS", "EW", "GMT"});
    std::string w = name + ".";
    RequestPerson p;
    p.Name = Text(obj, w.c_str(), "Name", "");
    p.Sex = Whole(obj, w.c_str(), "Sex", 1);
    p.BDate = Text(obj, w.c_str(), "BDate", "00/00/0000");
    p.BTime = Text(obj, w.c_str(), "BTime", "00.00");
    p.AMPM = Whole(obj, w.c_str(), "AMPM", 1);
    PlaceOf(obj, w, p);
    return p;
}

MuhurthaRequest RequestOf(const Json& j)
{
    Only(j, "", {"Category", "MuhuName", "SearchMode", "MomentDate", "MomentTime", "MomentAMPM", "FromDate", "ToDate",
                 "FromTime", "ToTime", "Place", "Person", "Boy", "Girl", "settings"});
    MuhurthaRequest r;
    r.Category = Text(j, "", "Category", "");
    r.MuhuName = Text(j, "", "MuhuName", "");
    r.SearchMode = Whole(j, "", "SearchMode", 1);
    if (r.SearchMode != 1 && r.SearchMode != 2)
        throw std::invalid_argument("request field 'SearchMode' must be 1 (range) or 2 (moment)");
    r.MomentDate = Text(j, "", "MomentDate", "00/00/0000");
    r.MomentTime = Text(j, "", "MomentTime", "00.00");
    r.MomentAMPM = Whole(j, "", "MomentAMPM", 1);
    r.FromDate = Text(j, "", "FromDate", "00/00/0000");
    r.ToDate = Text(j, "", "ToDate", "00/00/0000");
    r.FromTime = Text(j, "", "FromTime", "00.00");
    r.ToTime = Text(j, "", "ToTime", "00.00");
    for (const char* f : {"MomentTime", "FromTime", "ToTime"}) {
        // The moment's clock is read in both modes; the window only in a range.
        if (r.SearchMode == 2 && std::string(f) != "MomentTime") continue;
        std::string t = Text(j, "", f, "00.00");
        if (MuhurthaRequest::ValiDateTime(t) || !vb::IsNumeric(t))
            throw std::invalid_argument(std::string("request field '") + f + "' is not a valid time (HH.MM): '" + t + "'");
    }
    if (r.SearchMode == 1) {
        for (const char* f : {"FromDate", "ToDate"}) {
            std::string d = Text(j, "", f, "00/00/0000");
            try {
                DateTime::ParseDayFirst(d);
            } catch (const vb::RuntimeError&) {
                throw std::invalid_argument(std::string("request field '") + f + "' is not a date (dd/MM/yyyy): '" + d + "'");
            }
        }
    }
    if (j.contains("Place")) {
        const Json& p = j["Place"];
        Only(p, "Place", {"Country", "City", "Lati", "Longi", "NS", "EW", "GMT"});
        PlaceOf(p, "Place.", r.Place);
    }
    if (j.contains("Person")) r.Person = PersonOf(j["Person"], "Person");
    if (j.contains("Boy")) r.Boy = PersonOf(j["Boy"], "Boy");
    if (j.contains("Girl")) r.Girl = PersonOf(j["Girl"], "Girl");
    return r;
}

Json Lagna(clsPlanets& chart)
{
    Json j;
    j["person"] = PersonToJson(chart.clsPerson());
    j["GetBirthTimeFull"] = chart.clsPerson().GetBirthTimeFull();
    return j;
}

}  // namespace

int CmdMuhurtha(const Args& args)
{
    args.Allow({"request", "json", "png", "pdf"});
    if (args.Value("request").empty()) throw std::invalid_argument("muhurtha needs --request FILE");
    const bool json = args.Flag("json");
    Json j = ReadJsonFile(args.Value("request"));
    if (!j.is_object()) throw std::invalid_argument("the request must be a JSON object");
    MuhurthaRequest request = RequestOf(j);
    RunSettings settings(j.contains("settings") ? j["settings"] : Json());

    HeadlessMessageSink messages(json);
    HeadlessProgressSink progress(!json && isatty(2));
    SetMessageSink(&messages);
    SetProgressSink(&progress);
    struct Restore {
        ~Restore()
        {
            SetMessageSink(nullptr);
            SetProgressSink(nullptr);
        }
    } restore;

    OpenAppData();
    if (!request.CheckRangeDates()) throw std::invalid_argument("the 'To:' date can't be lesser than the 'From:' date");
    ResetEngine(std::make_unique<clsMuhurtha>());
    clsMuhurtha& e = Engine();
    request.RunEngine(e, TextDB(), RecosDB());
    if (args.Has("png")) {
        std::string error;
        if (!RenderCoverPng(args.Value("png"), error)) throw std::runtime_error(error);
    }
    if (args.Has("pdf")) {
        std::string error;
        if (!RenderReportPdf(args.Value("pdf"), error)) throw std::runtime_error(error);
    }

    if (!json) {
        std::cout << ResultReport(e);
        return 0;
    }
    Json out;
    out["MuhuCode"] = e.MuhuCode;
    out["MuhuName"] = e.MuhuName;
    out["MuhuCategory"] = e.MuhuCategory();
    out["MuhuTests"] = e.MuhuTests;
    out["MuhuElements"] = e.MuhuElements;
    Json results = Json::array();
    for (std::size_t i = 1; i + 1 < e.Results.size(); ++i) {
        const MomentResult& r = e.Results[i];
        results.push_back({{"Time", r.Time}, {"Date", r.Date.ToIsoText()}, {"Score", r.Score}, {"FructElems", r.FructElems}});
    }
    out["Results"] = results;
    out["BestMuhuTime"] = e.BestMuhuTime();
    out["BestMuhuDate"] = e.BestMuhuDate().ToIsoText();
    out["BestMuhuScore"] = e.BestMuhuScore();
    out["BestMuhuFructElems"] = e.BestMuhuFructElems();
    out["MaxPossibleScore"] = e.MaxPossibleScore();
    out["BestMuhuPercent"] = e.BestMuhuPercent();
    Json day = Json::array();
    for (int i = 1; i <= e.GetBestDayMuhusCount(); ++i) {
        const MomentResult& r = e.DayResults[static_cast<std::size_t>(i)];
        day.push_back({{"Date", r.Date.ToIsoText()}, {"Time", r.Time}, {"Score", r.Score}});
    }
    out["DayResults"] = day;
    out["BestMuhuIndex"] = e.BestMuhuIndex();
    out["LagnaStart"] = Lagna(*e.LagnaStartChart);
    out["LagnaEnd"] = Lagna(*e.LagnaEndChart);
    Json msgs = Json::array();
    for (const Message& m : messages.Messages()) msgs.push_back(m.text);
    out["Messages"] = msgs;
    std::cout << DumpJson(out);
    return 0;
}

}  // namespace ranvel::cli
