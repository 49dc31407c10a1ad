// ranvel-cli run as a user runs it: what no request form would take is
// refused with exit 2 and a message that names the field, before any work
// and before any file is written; what the form takes still runs. And what
// the program says of itself: its version and the ephemeris it runs on.
#include <functional>
#include <regex>

#include "cli_run.h"

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;
using cli_run::Outcome;
using cli_run::Slurp;

fs::path Scratch() { return cli_run::Scratch("cli-checks"); }

Outcome Cli(std::vector<std::string> args)
{
    args.insert(args.begin(), RANVEL_CLI);
    return cli_run::Spawn(std::move(args), Scratch());
}

std::string Write(const std::string& name, const Json& j) { return cli_run::WriteJson(Scratch(), name, j); }

Json Place(const char* lati, const char* longi, const char* ns, const char* ew, const char* gmt)
{
    return {{"Country", "India"}, {"City", "New Delhi"}, {"Lati", lati}, {"Longi", longi},
            {"NS", ns},           {"EW", ew},            {"GMT", gmt}};
}

Json Person(const char* name, int sex)
{
    Json p = {{"Name", name}, {"Sex", sex}, {"BDate", "02/09/1990"}, {"BTime", "07.05"}, {"AMPM", 1}};
    p.update(Place("028:36", "077:12", "N", "E", "+05.30"));
    return p;
}

// One moment of a journey: the quickest request that runs the engine.
Json Moment()
{
    return {{"Category", "Journey"},
            {"MuhuName", "Setting out on a journey (Yatra)"},
            {"SearchMode", 2},
            {"MomentDate", "05/11/2024"},
            {"MomentTime", "10.30"},
            {"Place", Place("028:36", "077:12", "N", "E", "+05.30")},
            {"Person", Person("Ravi", 1)}};
}

Json Range()
{
    Json j = Moment();
    j.update({{"SearchMode", 1},
              {"FromDate", "01/11/2024"},
              {"ToDate", "03/11/2024"},
              {"FromTime", "06.00"},
              {"ToTime", "20.00"}});
    return j;
}

Json Marriage()
{
    Json j = Range();
    j.erase("Person");
    j.update({{"Category", "Marriage"}, {"MuhuName", "Marriage ceremony (Vivaha)"}, {"Boy", Person("Arjun", 1)},
              {"Girl", Person("Meera", 2)}});
    return j;
}

struct Case {
    const char* field;  // what the message must name
    std::function<Json()> request;
};

// A request that is the base with one change.
template <typename F>
std::function<Json()> With(Json (*base)(), F change)
{
    return [=] {
        Json j = base();
        change(j);
        return j;
    };
}

#define SET(base, path, value) With(base, [](Json& j) { j path = value; })
#define DROP(base, key) With(base, [](Json& j) { j.erase(key); })

TEST(RequestRefusals, EveryFieldNoFormWouldTakeIsNamedAndNothingIsWritten)
{
    const std::vector<Case> cases = {
        // the place
        {"Place.Lati", SET(Moment, ["Place"]["Lati"], "999:99")},
        {"Place.Lati", SET(Moment, ["Place"]["Lati"], "181:00")},
        {"Place.Lati", SET(Moment, ["Place"]["Lati"], "090:01")},
        {"Place.Lati", SET(Moment, ["Place"]["Lati"], "28:36")},
        {"Place.Lati", SET(Moment, ["Place"]["Lati"], 28)},
        {"Place.Longi", SET(Moment, ["Place"]["Longi"], "180:01")},
        {"Place.Longi", SET(Moment, ["Place"]["Longi"], "077:60")},
        {"Place.GMT", SET(Moment, ["Place"]["GMT"], "abc")},
        {"Place.GMT", SET(Moment, ["Place"]["GMT"], "+999999.00")},
        {"Place.GMT", SET(Moment, ["Place"]["GMT"], "+14.30")},
        {"Place.GMT", SET(Moment, ["Place"]["GMT"], "+05.60")},
        {"Place.GMT", SET(Moment, ["Place"]["GMT"], "05.30")},
        {"Place.GMT", SET(Moment, ["Place"]["GMT"], "+5,30")},
        {"Place.NS", SET(Moment, ["Place"]["NS"], "X")},
        {"Place.EW", SET(Moment, ["Place"]["EW"], "East")},
        {"Place.Height", SET(Moment, ["Place"]["Height"], "10")},
        // the person and the couple
        {"Person.Sex", SET(Moment, ["Person"]["Sex"], 99)},
        {"Person.AMPM", SET(Moment, ["Person"]["AMPM"], 3)},
        {"Person.BTime", SET(Moment, ["Person"]["BTime"], "99.99")},
        {"Person.BTime", SET(Moment, ["Person"]["BTime"], "24.00")},
        {"Person.BDate", SET(Moment, ["Person"]["BDate"], "31/02/1990")},
        {"Person.BDate", SET(Moment, ["Person"]["BDate"], "02/09/1899")},
        {"Person.BDate", SET(Moment, ["Person"]["BDate"], "2/9/1990")},
        {"Person.GMT", SET(Moment, ["Person"]["GMT"], "-14.01")},
        {"'Person' is missing", DROP(Moment, "Person")},
        {"'Girl' is missing", DROP(Marriage, "Girl")},
        {"Boy.BDate", With(Marriage, [](Json& j) { j["Boy"].erase("BDate"); })},
        // the moment and the range
        {"MomentDate", SET(Moment, ["MomentDate"], "01/11/20245")},
        {"MomentDate", SET(Moment, ["MomentDate"], "01/01/2100")},
        {"MomentDate", DROP(Range, "MomentDate")},
        {"MomentTime", SET(Moment, ["MomentTime"], "25.00")},
        {"MomentTime", SET(Moment, ["MomentTime"], "10:30")},
        {"MomentAMPM", SET(Moment, ["MomentAMPM"], 0)},
        {"SearchMode", SET(Moment, ["SearchMode"], 3)},
        {"FromDate", SET(Range, ["FromDate"], "garbage")},
        {"FromTime", SET(Range, ["FromTime"], "06.75")},
        {"ToTime", SET(Range, ["ToTime"], "ab.cd")},
        {"ToDate", SET(Range, ["ToDate"], "31/10/2024")},
        {"ToDate", With(Range, [](Json& j) { j["FromDate"] = "01/01/2000", j["ToDate"] = "02/01/2010"; })},
        {"ToDate", With(Range, [](Json& j) { j["FromDate"] = "01/01/1900", j["ToDate"] = "31/12/2099"; })},
        // the catalogue
        {"Category", SET(Moment, ["Category"], "Travel")},
        {"Category", DROP(Moment, "Category")},
        {"MuhuName", SET(Moment, ["MuhuName"], "Nothing")},
        {"MuhuName", SET(Moment, ["MuhuName"], "Marriage ceremony (Vivaha)")},
        {"MuhuName", SET(Moment, ["MuhuName"], "Setting out on a journey (Yatra) ")},
        // the run's settings
        {"settings.AyanType", SET(Moment, ["settings"]["AyanType"], 16)},
        {"settings.AyanType", SET(Moment, ["settings"]["AyanType"], "Lahiri")},
        {"settings.CustAyan", SET(Moment, ["settings"]["CustAyan"], "23,30")},
        {"settings.RahuKetuMode", SET(Moment, ["settings"]["RahuKetuMode"], 3)},
        {"settings.Ayanamsha", SET(Moment, ["settings"]["Ayanamsha"], 1)},
    };
    const fs::path png = Scratch() / "refused.png", pdf = Scratch() / "refused.pdf";
    for (const Case& c : cases) {
        const Json request = c.request();
        SCOPED_TRACE(request.dump());
        fs::remove(png);
        fs::remove(pdf);
        const Outcome o = Cli({"muhurtha", "--request", Write("request.json", request), "--json", "--png", png.string(),
                               "--pdf", pdf.string()});
        EXPECT_EQ(o.code, 2) << o.err;
        EXPECT_NE(o.err.find(c.field), std::string::npos) << o.err;
        EXPECT_EQ(o.out, "");
        EXPECT_FALSE(fs::exists(png));
        EXPECT_FALSE(fs::exists(pdf));
    }
}

TEST(RequestRefusals, OneRunNamesEveryWrongFieldAndTheMuhurthasThatExist)
{
    Json j = Moment();
    j["Place"]["NS"] = "X";
    j["Person"]["Sex"] = 99;
    j["MuhuName"] = "Nothing";
    const Outcome o = Cli({"muhurtha", "--request", Write("request.json", j)});
    EXPECT_EQ(o.code, 2);
    for (const char* named : {"'Place.NS'", "'Person.Sex'", "'MuhuName'", "catalogue --category Journey",
                              "\n    Setting out on a journey (Yatra)\n"})
        EXPECT_NE(o.err.find(named), std::string::npos) << named << " in\n" << o.err;
}

TEST(RequestRefusals, AFileThatNestsDeepOrOverflowsIsRefusedWithoutAFault)
{
    const fs::path deep = Scratch() / "deep.json", big = Scratch() / "big.json";
    std::ofstream(deep) << "{\"SearchMode\":" << std::string(100000, '[') << std::string(100000, ']') << "}";
    std::ofstream(big) << R"({"Person": {"Sex": 1e999}})";
    for (const fs::path& file : {deep, big}) {
        const Outcome o = Cli({"muhurtha", "--request", file.string()});
        EXPECT_EQ(o.code, 2) << file << ": " << o.err;
        EXPECT_NE(o.err.find(file.string()), std::string::npos) << o.err;
    }
}

TEST(RequestRefusals, WhatTheFormTakesStillRuns)
{
    const std::vector<std::function<Json()>> accepted = {
        SET(Moment, ["MomentTime"], "24.00"),  // the form's clock passes hour 24
        With(Moment, [](Json& j) { j["Place"] = Place("090:00", "180:00", "s", "w", "-14.00"); }),
        With(Moment, [](Json& j) { j["Place"]["GMT"] = "+14.00", j["Category"] = "journey"; }),
        SET(Moment, ["MuhuName"], "SETTING OUT ON A JOURNEY (YATRA)"),
        SET(Moment, ["FromDate"], "00/00/0000"),            // unused in a moment check
        SET(Moment, ["Boy"], (Json{{"BDate", "00/00/0000"}})),  // unused for one person
        SET(Range, ["ToDate"], "01/11/2024"),               // one day
        SET(Moment, ["settings"], (Json{{"AyanType", "15"}, {"CustAyan", "23.30"}, {"RahuKetuMode", 2}})),
    };
    for (const auto& request : accepted) {
        const Json j = request();
        const Outcome o = Cli({"muhurtha", "--request", Write("request.json", j), "--json"});
        EXPECT_EQ(o.code, 0) << j.dump() << "\n" << o.err;
        EXPECT_NE(o.out.find("\"BestMuhuScore\""), std::string::npos);
    }
    // Letters typed in small go in as the form keeps them, in capitals: a
    // southern place answers the same either way.
    const auto south = [&](const char* ns, const char* ew) {
        Json j = Moment();
        j["Place"] = Place("033:55", "151:11", ns, ew, "+10.00");
        return Cli({"muhurtha", "--request", Write(std::string("south-") + ns + ".json", j), "--json"}).out;
    };
    EXPECT_EQ(south("s", "e"), south("S", "E"));
}

TEST(ChartInputRefusals, ThePersonFieldsTheSettingsAndTheOptionsAreNamed)
{
    const Json person = {{"Name", "Test"}, {"Sex", 1}, {"Day", 30}, {"Month", 3}, {"Year", 2024}, {"Hour", 10},
                         {"Minutes", 30}, {"AMPM", 1}, {"LatDeg", 28}, {"LatMT", 38}, {"TextNS", "N"},
                         {"LongDeg", 77}, {"LongMT", 12}, {"TextEW", "E"}, {"GMTDIFF", "5.5"}, {"TimeCorr", "0"}};
    const std::string good = Write("chart.json", {{"person", person}});
    ASSERT_EQ(Cli({"chart", "--input", good, "--json"}).code, 0);
    ASSERT_EQ(Cli({"gochara", "--input", good, "--planet", "1", "--target", "0", "--tolerance", "60"}).code, 0);
    ASSERT_EQ(Cli({"record", "--input", good, "--step", "-90.5", "--count", "3"}).code, 0);

    // Each input in a file of its own, named by what it changes.
    const auto changed = [&](const char* key, const Json& value) {
        Json p = person;
        p[key] = value;
        return Write(std::string("person-") + key + ".json", {{"person", p}});
    };
    const Json vakya = {{"Day", 30}, {"Month", 3}, {"Year", 2024}, {"Hour", 10},
                        {"Minutes", 30}, {"Seconds", 0}, {"LatDeg", 28}, {"LatMin", 38}};
    const auto vakyaWith = [&](const char* key, const Json& value) {
        Json v = vakya;
        v[key] = value;
        return Write(std::string("vakya-") + key + ".json", v);
    };
    const auto gochara = [&](const std::string& input, const char* planet, const char* target, const char* tolerance) {
        std::vector<std::string> a = {"gochara", "--input", input, "--planet", planet, "--target", target};
        if (*tolerance) a.insert(a.end(), {"--tolerance", tolerance});
        return a;
    };
    const std::vector<std::pair<const char*, std::vector<std::string>>> cases = {
        {"'LatDeg'", {"chart", "--input", changed("LatDeg", 999)}},
        {"'LongMT'", {"chart", "--input", changed("LongMT", 60)}},
        {"'Day', 'Month' and 'Year'", {"chart", "--input", changed("Month", 2)}},
        {"'Year'", {"chart", "--input", changed("Year", 245)}},
        {"'Hour'", {"chart", "--input", changed("Hour", 24)}},
        {"'TextEW'", {"chart", "--input", changed("TextEW", "X")}},
        {"'GMTDIFF'", {"chart", "--input", changed("GMTDIFF", "abc")}},
        {"'Sex'", gochara(changed("Sex", 99), "1", "0", "60")},
        {"'TimeCorr'", {"record", "--input", changed("TimeCorr", "1e9")}},
        {"settings.AyanType",
         {"chart", "--input", Write("settings.json", {{"person", person}, {"settings", {{"AyanType", 0}}}})}},
        {"--planet", gochara(good, "13", "0", "60")},
        {"--target", gochara(good, "1", "361", "60")},
        {"--target", gochara(good, "1", "abc", "60")},
        {"--tolerance", gochara(good, "1", "0", "0")},
        {"--tolerance", gochara(good, "1", "0", "")},
        {"--step", {"record", "--step", "1,5"}},
        {"--count", {"record", "--count", "200000"}},
        {"--count", {"record", "--count", "2.5"}},
        {"ten years", {"record", "--step", "527040", "--count", "11"}},
        {"'Year'", {"vakya", "--input", vakyaWith("Year", 20245)}},
        {"'Day', 'Month' and 'Year'", {"vakya", "--input", vakyaWith("Month", 2)}},
        {"'Hour'", {"vakya", "--input", vakyaWith("Hour", 25)}},
        {"'LatDeg' and 'LatMin'", {"vakya", "--input", vakyaWith("LatDeg", 95)}},
        {"--category", {"catalogue", "--category", "Travel"}},
    };
    for (const auto& [named, args] : cases) {
        const Outcome o = Cli(args);
        EXPECT_EQ(o.code, 2) << named << "\n" << o.err;
        EXPECT_NE(o.err.find(named), std::string::npos) << o.err;
        EXPECT_EQ(o.out, "") << named;
    }
}

// The version and the ephemeris, with the library's files where it finds
// them and with SE_EPHE_PATH pointing at an empty folder, as on a machine
// without them: then the analytical ephemeris is named, and a report's cover
// says so at its foot; with the files the report carries no such line.
TEST(Version, NamesTheEphemerisWithItsFilesAndWithoutThem)
{
    const fs::path empty = Scratch() / "no-ephemeris";
    fs::create_directories(empty);
    const std::vector<std::string> hidden = {"SE_EPHE_PATH=" + empty.string()};
    const std::regex firstLine("ranvel-cli [0-9]+\\.[0-9]+\\.[0-9]+\n");
    const auto run = [&](std::vector<std::string> args, const std::vector<std::string>& env) {
        args.insert(args.begin(), RANVEL_CLI);
        return cli_run::Spawn(std::move(args), Scratch(), env);
    };
    const auto pdfText = [&](const std::vector<std::string>& env) {
        const std::string pdf = (Scratch() / "report.pdf").string();
        const Outcome o = run({"muhurtha", "--request", Write("request.json", Moment()), "--pdf", pdf}, env);
        EXPECT_EQ(o.code, 0) << o.err;
        return cli_run::Spawn({"pdftotext", pdf, "-"}, Scratch()).out;
    };

    const Outcome files = run({"--version"}, {});
    EXPECT_EQ(files.code, 0) << files.err;
    EXPECT_TRUE(std::regex_search(files.out, firstLine, std::regex_constants::match_continuous)) << files.out;
    EXPECT_NE(files.out.find("\nEphemeris: Swiss Ephemeris "), std::string::npos) << files.out;
    EXPECT_NE(files.out.find(" files ("), std::string::npos) << files.out;
    EXPECT_EQ(run({"version"}, {}).out, files.out);

    const Outcome analytical = run({"--version"}, hidden);
    EXPECT_EQ(analytical.code, 0) << analytical.err;
    EXPECT_TRUE(std::regex_search(analytical.out, firstLine, std::regex_constants::match_continuous));
    EXPECT_NE(analytical.out.find("\nEphemeris: the analytical ephemeris built into Swiss Ephemeris "),
              std::string::npos)
        << analytical.out;
    EXPECT_NE(analytical.out.find("(its data files were not found)\n"), std::string::npos) << analytical.out;

    EXPECT_EQ(run({"--version", "--json"}, {}).code, 2);
    EXPECT_EQ(pdfText({}).find("Ephemeris"), std::string::npos);
    EXPECT_NE(pdfText(hidden).find("analytical ephemeris"), std::string::npos);
}

}  // namespace
