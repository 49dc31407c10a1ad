// ranvel-cli day as a user runs it: each time comes as the HH.MM text and as
// minutes of the day, and they agree; the limbs chain across the day; what
// the place or date can't be is refused, naming it, with exit 2.
#include "cli_run.h"

#include <algorithm>
#include <filesystem>

#include "support/pdftext.h"

namespace {

using Json = nlohmann::ordered_json;
using cli_run::Outcome;

Outcome Day(std::vector<std::string> args)
{
    args.insert(args.begin(), {RANVEL_CLI, "day"});
    return cli_run::Spawn(std::move(args), cli_run::Scratch("cli-day"));
}

const std::vector<std::string> kDelhi = {"--lati", "028:36", "--longi", "077:12", "--ns", "N", "--ew", "E", "--gmt",
                                         "+05.30", "--city", "New Delhi"};

int MinutesOfText(const std::string& hhmm) { return std::stoi(hhmm.substr(0, 2)) * 60 + std::stoi(hhmm.substr(3, 2)); }

}  // namespace

TEST(DayCommand, TimesComeAsTextAndMinutesAndTheLimbsChain)
{
    std::vector<std::string> args = {"--date", "17/05/2024", "--json"};
    args.insert(args.end(), kDelhi.begin(), kDelhi.end());
    const Outcome o = Day(args);
    ASSERT_EQ(o.code, 0) << o.err;
    const Json j = Json::parse(o.out);
    EXPECT_EQ(j["DayName"], "Friday");
    EXPECT_EQ(j["Place"], "New Delhi");
    EXPECT_EQ(j["Sunrise"]["Minutes"].get<int>(), MinutesOfText(j["Sunrise"]["Time"].get<std::string>()));
    for (const char* limb : {"Tithis", "Nakshatras", "Yogas", "Karanas"}) {
        const Json& spans = j[limb];
        ASSERT_FALSE(spans.empty()) << limb;
        EXPECT_LE(spans.front()["Start"]["Minutes"].get<long>(), j["Sunrise"]["Minutes"].get<long>()) << limb;
        EXPECT_GE(spans.back()["End"]["Minutes"].get<long>(), 1440 + j["NextSunrise"]["Minutes"].get<long>()) << limb;
        for (std::size_t i = 0; i < spans.size(); ++i) {
            const Json& s = spans[i];
            EXPECT_FALSE(s["Name"].get<std::string>().empty());
            // Minutes from the sheet's midnight and the clock text agree.
            const long m = s["End"]["Minutes"].get<long>();
            EXPECT_EQ(((m % 1440) + 1440) % 1440, MinutesOfText(s["End"]["Time"].get<std::string>()));
            if (i > 0) {
                EXPECT_EQ(s["Start"], spans[i - 1]["End"]);
            }
        }
    }
    EXPECT_EQ(j["Chowgadiya"].size(), 16u);
    EXPECT_EQ(j["Hora"].size(), 24u);
    EXPECT_EQ(j["Chowgadiya"][8]["Start"], j["Sunset"]);  // the night's first part begins at sunset
}

TEST(DayCommand, ImpossibleDatesAndPlacesAreRefusedNamingThem)
{
    struct Case {
        std::vector<std::string> args;
        const char* names;
    };
    const std::vector<Case> cases = {
        {{"--date", "31/02/2024"}, "--date"},
        {{"--date", "2024-05-17"}, "--date"},
        {{"--date", "17/05/2024", "--lati", "095:00", "--longi", "077:12"}, "--lati"},
        {{"--date", "17/05/2024", "--lati", "028:36", "--longi", "077:12", "--gmt", "+15.00"}, "--gmt"},
        {{"--date", "17/05/2024", "--lati", "000:00", "--longi", "000:00"}, "blank"},
        {{"--date", "17/05/2024"}, "needs a place"},
    };
    for (const Case& c : cases) {
        std::vector<std::string> args = c.args;
        if (args.size() == 2 && std::string(c.names) == "--date") args.insert(args.end(), kDelhi.begin(), kDelhi.end());
        const Outcome o = Day(args);
        EXPECT_EQ(o.code, 2) << c.names << ": " << o.err;
        EXPECT_NE(o.err.find(c.names), std::string::npos) << o.err;
        EXPECT_TRUE(o.out.empty()) << o.out;
    }
}

TEST(DayCommand, PdfIsThePrintedPageOrNothingWhenItCantBeWritten)
{
    const std::filesystem::path dir = cli_run::Scratch("cli-day-pdf");
    const std::string pdf = (dir / "sheet.pdf").string();
    std::vector<std::string> args = {"--date", "17/05/2024", "--json", "--pdf", pdf};
    args.insert(args.end(), kDelhi.begin(), kDelhi.end());
    const Outcome o = Day(args);
    ASSERT_EQ(o.code, 0) << o.err;
    const Json j = Json::parse(o.out);
    const std::vector<std::string> words = ranvel::test::PdfWordsOf(pdf);
    auto has = [&](const std::string& w) { return std::find(words.begin(), words.end(), w) != words.end(); };
    EXPECT_TRUE(has("Chowgadiya"));
    EXPECT_TRUE(has(j["Sunrise"]["Time"].get<std::string>().replace(2, 1, ":")));
    for (const Json& hora : j["Hora"]) EXPECT_TRUE(has(hora["Start"]["Time"].get<std::string>()));

    // Into a folder that is not there: refused before any work, no file.
    const std::string nowhere = (dir / "missing" / "sheet.pdf").string();
    args[4] = nowhere;
    const Outcome refused = Day(args);
    EXPECT_EQ(refused.code, 2);
    EXPECT_NE(refused.err.find("--pdf"), std::string::npos) << refused.err;
    EXPECT_TRUE(refused.out.empty());
    EXPECT_FALSE(std::filesystem::exists(nowhere));
}

TEST(DayCommand, TheAstronomicalSunriseIsTheTruePlacesAndSaysSo)
{
    const std::vector<std::string> newYork = {"--date", "15/06/2024", "--lati", "040:43", "--longi", "074:00",
                                              "--ns", "N", "--ew", "W", "--gmt", "-04.00", "--json"};
    std::vector<std::string> args = newYork;
    const Outcome ecliptic = Day(args);
    args.insert(args.end(), {"--sunrise", "astronomical"});
    const Outcome astronomical = Day(args);
    ASSERT_EQ(ecliptic.code, 0) << ecliptic.err;
    ASSERT_EQ(astronomical.code, 0) << astronomical.err;
    // The mirrored place's rising is hours off; the true horizon's is the
    // summer morning's.
    EXPECT_EQ(Json::parse(astronomical.out)["Sunrise"]["Time"], "05.29");
    EXPECT_NE(Json::parse(ecliptic.out)["Sunrise"]["Time"], "05.29");

    args = newYork;
    args.insert(args.end(), {"--sunrise", "dawn"});
    const Outcome refused = Day(args);
    EXPECT_EQ(refused.code, 2);
    EXPECT_NE(refused.err.find("--sunrise"), std::string::npos) << refused.err;
}
