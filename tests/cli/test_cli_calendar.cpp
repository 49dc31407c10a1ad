// ranvel-cli calendar run as a user runs it, on the 30-day marriage search
// at Delhi: each day must be the search's own moments as the muhurtha
// command answers them, the iCalendar file must read back in a parser that
// is not ours, and every refusal must come before the search with nothing
// left on disk.
#include <map>

#include "cli_run.h"

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;
using cli_run::Outcome;
using cli_run::Slurp;

const std::string kSample = RANVEL_SAMPLES "/marriage-delhi.json";

fs::path Scratch() { return cli_run::Scratch("cli-calendar"); }

Outcome Spawn(std::vector<std::string> args, const std::vector<std::string>& env = {})
{
    return cli_run::Spawn(std::move(args), Scratch(), env);
}

Outcome Cli(std::vector<std::string> args, const std::vector<std::string>& env = {})
{
    args.insert(args.begin(), RANVEL_CLI);
    return Spawn(args, env);
}

Json RunJson(const std::vector<std::string>& args)
{
    const Outcome o = Cli(args);
    EXPECT_EQ(o.code, 0) << o.err;
    return Json::parse(o.out);
}

std::string WriteRequest(const std::string& name, const Json& request) { return cli_run::WriteJson(Scratch(), name, request); }

double Num(const Json& v) { return v.is_string() ? std::stod(v.get<std::string>()) : v.get<double>(); }

TEST(CalendarOfASearch, EachDayIsTheSearchsOwnBestMomentAndTheFirstIsTheBestMuhurtha)
{
    const Json m = RunJson({"muhurtha", "--request", kSample, "--json"});
    const Json c = RunJson({"calendar", "--request", kSample, "--json"});

    // The day's moments as the search tested them, by date.
    std::map<std::string, std::vector<Json>> byDay;
    for (const Json& r : m["Results"]) byDay[r["Date"].get<std::string>().substr(0, 10)].push_back(r);

    ASSERT_EQ(c["Days"].size(), 30u);
    EXPECT_EQ(c["StartDate"], c["Days"].front()["Date"]);
    EXPECT_EQ(c["EndDate"], c["Days"].back()["Date"]);
    std::string before;
    for (const Json& d : c["Days"]) {
        const std::string date = d["Date"];
        SCOPED_TRACE(date);
        EXPECT_LT(before, date);
        before = date;
        const auto tested = byDay.find(date);
        ASSERT_EQ(d["Tested"].get<bool>(), tested != byDay.end());
        if (tested == byDay.end()) continue;
        const Json* best = nullptr;
        for (const Json& r : tested->second)
            if (!best || r["Score"].get<double>() > (*best)["Score"].get<double>()) best = &r;
        EXPECT_EQ(d["Time"], (*best)["Time"]);
        EXPECT_EQ(d["Moment"], (*best)["Date"]);
        EXPECT_EQ(d["Score"].get<double>(), std::max(0.0, (*best)["Score"].get<double>()));
        ASSERT_EQ(d["Moments"].size(), tested->second.size());
        for (std::size_t i = 0; i < tested->second.size(); ++i) {
            EXPECT_EQ(d["Moments"][i]["Time"], tested->second[i]["Time"]);
            EXPECT_EQ(d["Moments"][i]["Score"], tested->second[i]["Score"]);
        }
        EXPECT_GE(d["Percent"].get<double>(), 0.0);
        EXPECT_LE(d["Percent"].get<double>(), 100.0);
        EXPECT_LE(d["LagnaStart"].get<std::string>(), d["Moment"].get<std::string>());
        EXPECT_GT(d["LagnaEnd"].get<std::string>(), d["Moment"].get<std::string>());
    }

    // The first ranked day is the engine's best Muhurtha, lagna span and all.
    ASSERT_EQ(c["Ranked"].size(), 10u);
    const std::string first = c["Ranked"][0]["Date"];
    const Json* top = nullptr;
    for (const Json& d : c["Days"]) {
        if (d["Date"] == first) top = &d;
        EXPECT_EQ(d.value("EngineBest", false), d["Date"] == first) << d["Date"];
    }
    ASSERT_NE(top, nullptr);
    EXPECT_EQ((*top)["Moment"], m["BestMuhuDate"]);
    EXPECT_EQ(c["BestMuhuDate"], m["BestMuhuDate"]);
    EXPECT_EQ((*top)["Time"], m["BestMuhuTime"]);
    EXPECT_EQ((*top)["Score"].get<double>(), Num(m["BestMuhuScore"]));
    EXPECT_EQ(Num(c["BestMuhuScore"]), Num(m["BestMuhuScore"]));
    EXPECT_EQ((*top)["Percent"], m["BestMuhuPercent"]);
    EXPECT_EQ((*top)["LagnaStartTime"], m["LagnaStart"]["GetBirthTimeFull"]);
    EXPECT_EQ((*top)["LagnaEndTime"], m["LagnaEnd"]["GetBirthTimeFull"]);
}

TEST(CalendarOfASearch, TopAndBandChooseTheListedDaysAndTheLocaleChangesNoNumber)
{
    const Json all = RunJson({"calendar", "--request", kSample, "--json", "--top", "100"});
    const Json some = RunJson({"calendar", "--request", kSample, "--json", "--top", "3", "--min-band", "90"});
    std::map<std::string, int> band;
    for (const Json& d : all["Days"])
        if (d["Tested"].get<bool>()) band[d["Date"].get<std::string>()] = d["Band"].get<int>();
    ASSERT_EQ(all["Ranked"].size(), band.size());  // every tested day, once
    // The listed days of band 90 or more are the first of those in the full
    // ranking, in its order.
    std::vector<Json> wanted;
    for (const Json& r : all["Ranked"])
        if (band[r["Date"].get<std::string>()] >= 90 && wanted.size() < 3) wanted.push_back(r["Date"]);
    ASSERT_EQ(some["Ranked"].size(), wanted.size());
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        EXPECT_EQ(some["Ranked"][i]["Rank"], i + 1);
        EXPECT_EQ(some["Ranked"][i]["Date"], wanted[i]);
    }

    // The table under a locale with a decimal comma reads as under C.
    const std::vector<std::string> table = {"calendar", "--request", kSample, "--top", "5"};
    const Outcome c = Cli(table, {"LC_ALL=C"});
    const Outcome de = Cli(table, {"LC_ALL=de_DE.UTF-8"});
    ASSERT_EQ(c.code, 0) << c.err;
    EXPECT_EQ(de.out, c.out);
    EXPECT_NE(c.out.find("100.00"), std::string::npos) << c.out;
    EXPECT_NE(c.out.find("(best Muhurtha)"), std::string::npos) << c.out;
}

TEST(CalendarIcs, OneUtcEventPerListedDayReadBackByAnotherParser)
{
    const fs::path ics = Scratch() / "marriage.ics", json = Scratch() / "marriage.json";
    fs::remove(ics);
    const std::vector<std::string> stamp = {"SOURCE_DATE_EPOCH=1700000000"};
    const Outcome o = Cli({"calendar", "--request", kSample, "--top", "5", "--json", "--ics", ics.string()}, stamp);
    ASSERT_EQ(o.code, 0) << o.err;
    std::ofstream(json) << o.out;
    const std::string text = Slurp(ics);
    EXPECT_NE(text.find("DTSTAMP:20231114T221320Z\r\n"), std::string::npos);

    // The same request at the same stamp writes the same octets; no work file
    // is left beside the target.
    ASSERT_EQ(Cli({"calendar", "--request", kSample, "--top", "5", "--ics", ics.string()}, stamp).code, 0);
    EXPECT_EQ(Slurp(ics), text);
    for (const auto& entry : fs::directory_iterator(Scratch()))
        EXPECT_NE(entry.path().filename().string().rfind("marriage.ics.", 0), 0u) << entry.path();

    // The place's clock is 5.5 hours ahead of UTC, as its "+05.30" reads.
    Outcome py;
    for (const char* python : {"/usr/bin/python3", "python3"}) {
        py = Spawn({python, RANVEL_ICS_CHECK, ics.string(), json.string(), "5", "5.5"});
        if (py.code == 0 || py.code == 1) break;
    }
    if (py.code == 77) GTEST_SKIP() << "the lines are sound; " << py.out;
    EXPECT_EQ(py.code, 0) << py.out << py.err;
}

TEST(CalendarRefusals, EachIsNamedBeforeTheSearchAndLeavesNoFile)
{
    Json moment = Json::parse(Slurp(kSample));
    moment["SearchMode"] = 2;
    Json eleven = Json::parse(Slurp(kSample));
    eleven["ToDate"] = "01/11/2035";
    const std::string momentFile = WriteRequest("moment.json", moment);
    const std::string elevenFile = WriteRequest("eleven.json", eleven);

    const fs::path targets = Scratch() / "targets";
    fs::create_directories(targets / "folder.ics");
    const std::string ics = (targets / "cal.ics").string();
    struct Case {
        const char* says;
        std::vector<std::string> args;
        std::vector<std::string> env;
    };
    const std::vector<Case> cases = {
        {"The calendar needs a range of dates", {"--request", momentFile, "--ics", ics}, {}},
        {"is a moment check", {"--request", momentFile}, {}},
        {"covers at most 10 years", {"--request", elevenFile, "--ics", ics}, {}},
        {"--top must be 1 or more, not 0", {"--request", kSample, "--top", "0", "--ics", ics}, {}},
        {"--top must be 1 or more, not -3", {"--request", kSample, "--top", "-3", "--ics", ics}, {}},
        {"--top must be a whole number, not 'abc'", {"--request", kSample, "--top", "abc", "--ics", ics}, {}},
        {"--top must be a whole number, not '2.5'", {"--request", kSample, "--top", "2.5", "--ics", ics}, {}},
        {"--min-band must be one of the bands 10, 20, ... 100, not 35",
         {"--request", kSample, "--min-band", "35", "--ics", ics}, {}},
        {"--min-band must be one of the bands", {"--request", kSample, "--min-band", "0", "--ics", ics}, {}},
        {"--min-band must be one of the bands", {"--request", kSample, "--min-band", "110", "--ics", ics}, {}},
        {"does not exist", {"--request", kSample, "--ics", (targets / "missing" / "cal.ics").string()}, {}},
        {"it is a folder", {"--request", kSample, "--ics", (targets / "folder.ics").string()}, {}},
        {"does not exist", {"--request", kSample, "--ics", ics, "--png", (targets / "missing" / "c.png").string()}, {}},
        {"does not exist", {"--request", kSample, "--ics", ics, "--pdf", (targets / "missing" / "c.pdf").string()}, {}},
        {"SOURCE_DATE_EPOCH must be", {"--request", kSample, "--ics", ics}, {"SOURCE_DATE_EPOCH=yesterday"}},
        {"unknown option", {"--request", kSample, "--days", "3"}, {}},
    };
    for (const Case& c : cases) {
        std::vector<std::string> args = c.args;
        args.insert(args.begin(), "calendar");
        const Outcome o = Cli(args, c.env);
        SCOPED_TRACE(c.says);
        EXPECT_EQ(o.code, 2) << o.err;
        EXPECT_NE(o.err.find(c.says), std::string::npos) << o.err;
        EXPECT_EQ(o.out, "");
        for (const auto& entry : fs::directory_iterator(targets))
            EXPECT_EQ(entry.path().filename(), "folder.ics") << "left behind: " << entry.path();
    }
}

// The picture and the PDF come whole from the output library, or not at all.
TEST(CalendarSheets, PictureAndPdfAreWrittenWhole)
{
    const fs::path png = Scratch() / "cal.png", pdf = Scratch() / "cal.pdf";
    fs::remove(png);
    fs::remove(pdf);
    const Outcome o = Cli({"calendar", "--request", kSample, "--png", png.string(), "--pdf", pdf.string()},
                          {"QT_QPA_PLATFORM=offscreen"});
    ASSERT_EQ(o.code, 0) << o.err;
    EXPECT_EQ(Slurp(png).substr(0, 8), "\x89PNG\r\n\x1a\n");
    EXPECT_EQ(Slurp(pdf).substr(0, 5), "%PDF-");
}

}  // namespace
