// "muhurtha": a request from JSON, the search, and its answer: the best
// Muhurtha with its lagna span, score and percent, the moments of its day,
// and what the analysis page says of each element.
#include <unistd.h>

#include <cstdio>
#include <iostream>

#include "chart_input.h"
#include "commands.h"
#include "input_check.h"
#include "person_json.h"
#include "request_file.h"
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
    args.Allow({"request", "json", "png", "pdf", "sunrise"});
    if (args.Value("request").empty()) throw std::invalid_argument("muhurtha needs --request FILE");
    const bool json = args.Flag("json");
    RequestRun run(args.Value("request"), json);
    const SunriseOption sunrise(args);
    clsMuhurtha& e = run.Search();
    const HeadlessMessageSink& messages = run.Messages;
    if (args.Has("png")) {
        std::string error;
        if (!RenderCoverPng(args.Value("png"), error)) throw std::runtime_error(error);
    }
    if (args.Has("pdf")) {
        std::string error;
        if (!RenderReportPdf(args.Value("pdf"), error)) throw std::runtime_error(error);
    }

    if (!json) {
        std::cout << ResultReport(e) << ZoneNotesText(run.ZoneNotes);
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
    out["ZoneNotes"] = ZoneNotesJson(run.ZoneNotes);
    out["Messages"] = MessagesJson(messages);
    std::cout << DumpJson(out);
    return 0;
}

}  // namespace ranvel::cli
