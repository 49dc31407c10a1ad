// ranvel-cli zone as a user runs it: the offset in force as the place fields
// write it, the city taken among several of its name, and refusals.
#include "cli_run.h"

namespace {

using Json = nlohmann::ordered_json;
using cli_run::Outcome;

Outcome Zone(std::vector<std::string> args)
{
    args.insert(args.begin(), {RANVEL_CLI, "zone"});
    return cli_run::Spawn(std::move(args), cli_run::Scratch("cli-zone"));
}

}  // namespace

TEST(ZoneCommand, GivesTheOffsetInForceAndTheCityItTook)
{
    const Outcome summer = Zone({"--city", "London", "--country", "United Kingdom", "--date", "14/07/1990", "--time",
                                 "12.00", "--json"});
    ASSERT_EQ(summer.code, 0) << summer.err;
    const Json j = Json::parse(summer.out);
    EXPECT_EQ(j["Zone"], "Europe/London");
    EXPECT_EQ(j["Offset"], "+01.00");
    EXPECT_EQ(j["SummerTime"], true);

    // Several cities of the name: the first of the store is taken, and the
    // others are named.
    const Outcome any = Zone({"--city", "London", "--date", "14/07/1990", "--time", "12.00"});
    ASSERT_EQ(any.code, 0) << any.err;
    EXPECT_NE(any.out.find("--country"), std::string::npos) << any.out;
    EXPECT_NE(any.out.find("United Kingdom"), std::string::npos) << any.out;

    const Outcome twice = Zone({"--city", "New York", "--date", "03/11/2024", "--time", "01.30", "--json"});
    ASSERT_EQ(twice.code, 0) << twice.err;
    EXPECT_EQ(Json::parse(twice.out)["Kind"], "Repeated");
}

TEST(ZoneCommand, RefusesWhatItCantRead)
{
    struct Case {
        std::vector<std::string> args;
        const char* names;
    };
    for (const Case& c : std::vector<Case>{
             {{"--city", "Nowhere", "--date", "14/07/1990", "--time", "12.00"}, "Nowhere"},
             {{"--city", "London", "--date", "31/02/1990", "--time", "12.00"}, "--date"},
             {{"--city", "London", "--date", "14/07/1990", "--time", "24.00"}, "--time"},
             {{"--date", "14/07/1990", "--time", "12.00"}, "--city"},
         }) {
        const Outcome o = Zone(c.args);
        EXPECT_EQ(o.code, 2) << c.names;
        EXPECT_NE(o.err.find(c.names), std::string::npos) << o.err;
        EXPECT_TRUE(o.out.empty());
    }
}
