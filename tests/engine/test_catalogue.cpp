// The catalogue as it is installed: MUHU.DAT and the English text database
// that the build makes from resources/. Every purpose must be found by its
// name, every test it lists must be one the engine knows and scores, the
// points must keep a flawless moment at the top of the scale, and every
// word the result pages ask for must be there.
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "data/data_tree.h"
#include "ranvel/engine/muhurtha.h"
#include "ranvel/engine/request.h"
#include "ranvel/engine/request_state.h"
#include "ranvel/platform/apppaths.h"
#include "ranvel/platform/database.h"
#include "ranvel/platform/settings.h"
#include "ranvel/platform/sinks.h"
#include "ranvel/platform/vbmath.h"

using namespace ranvel;

namespace {

struct Purpose {
    std::string code, name, category, val, elements;
};

struct Points {
    int presence = 0;
    bool maxeffect = false;
};


// The codes that compare the chart with their argument, and the values
// the chart can hold for them.
const std::map<std::string, std::pair<int, int>>& ArgumentRanges()
{
    static const std::map<std::string, std::pair<int, int>> ranges = {
        {"T", {1, 30}}, {"KP", {1, 30}}, {"SP", {1, 30}}, {"N", {1, 27}}, {"D", {1, 7}},
        {"D2", {1, 7}}, {"L", {1, 12}},  {"L2", {1, 12}}, {"M", {0, 12}}, {"MN", {0, 12}},
    };
    return ranges;
}

class Catalogue : public ::testing::Test {
protected:
    void SetUp() override
    {
        RANVEL_REQUIRE_BUILD_TREE();
        SetAppDir(ranvel::testing::BuiltTree().string());
        SetSettingsStore(&store);
        SetMessageSink(&messages);
        SetProgressSink(&progress);
        muhu = Database::Open(AppPath("EPHE\\COMMON\\MUHU.DAT"));
        text = Database::Open(AppPath("EPHE\\ENGLISH\\ENGLISH.DAT"));
        engine = std::make_unique<clsMuhurtha>(muhu);
        engine->MuhuChart->setTextDB(text, nullptr);

        auto rs = muhu->OpenRecordset("SELECT * FROM Muhu");
        for (rs->HasRows() ? rs->MoveFirst() : void(); !rs->IsEOF(); rs->MoveNext())
            purposes.push_back({rs->Field("MCode").ToTextOrEmpty(), rs->Field("mname").ToTextOrEmpty(),
                                rs->Field("Category").ToTextOrEmpty(), rs->Field("val").ToTextOrEmpty(),
                                rs->Field("Elements").ToTextOrEmpty()});
        rs = muhu->OpenRecordset("SELECT * FROM Score");
        for (rs->HasRows() ? rs->MoveFirst() : void(); !rs->IsEOF(); rs->MoveNext())
            points[rs->Field("element").ToTextOrEmpty()] = {rs->Field("Presence").ToLong(),
                                                            rs->Field("maxeffect").ToLong() != 0};
    }
    void TearDown() override
    {
        SetAppDir("");
        SetSettingsStore(nullptr);
        SetMessageSink(nullptr);
        SetProgressSink(nullptr);
    }

    // A text of the Muhu table by the lookup the analysis page makes; a
    // missing row leaves an "Item Not Found" message behind.
    std::string Sentence(const std::string& head, const std::string& category)
    {
        return engine->MuhuChart->GetHeadValue(10, Variant(head), category).ToTextOrEmpty();
    }

    // Every code that the catalogue uses or scores.
    std::set<std::string> AllElements() const
    {
        std::set<std::string> all;
        for (const auto& [e, p] : points) all.insert(e);
        for (const Purpose& m : purposes)
            for (const std::string& e : vb::Split(m.elements, ',')) all.insert(e);
        return all;
    }

    MemorySettingsStore store;
    HeadlessMessageSink messages{true};
    HeadlessProgressSink progress;
    std::shared_ptr<Database> muhu, text;
    std::unique_ptr<clsMuhurtha> engine;
    std::vector<Purpose> purposes;
    std::map<std::string, Points> points;
};

TEST_F(Catalogue, EveryTestItemIsAKnownScoredCodeWithAValueTheChartCanHold)
{
    ASSERT_GE(purposes.size(), 140u);
    for (const Purpose& m : purposes) {
        SCOPED_TRACE(m.code);
        ASSERT_FALSE(m.val.empty());
        EXPECT_EQ(m.val.find(' '), std::string::npos);
        EXPECT_EQ(m.elements.find(' '), std::string::npos);
        std::set<std::string> tested;
        for (const std::string& item : vb::Split(m.val, ',')) {
            std::vector<std::string> parts = vb::Split(item, ':');
            const std::string code = vb::UCase(parts[0]);
            EXPECT_TRUE(clsMuhurtha::IsKnownCode(code)) << item;
            EXPECT_TRUE(points.count(code)) << item << " has no Score row";
            tested.insert(code);
            auto range = ArgumentRanges().find(code);
            if (range == ArgumentRanges().end()) {
                EXPECT_EQ(parts.size(), 1u) << item << " takes no argument";
                continue;
            }
            // An equality test without its argument, or with one the chart
            // never holds, can never pass.
            ASSERT_EQ(parts.size(), 2u) << item;
            ASSERT_TRUE(vb::IsNumeric(parts[1])) << item;
            const int v = vb::CLng(vb::ParseNumber(parts[1]));
            EXPECT_EQ(vb::CStr(v), parts[1]) << item;
            EXPECT_GE(v, range->second.first) << item;
            EXPECT_LE(v, range->second.second) << item;
        }
        // The maximum goes through Elements, the score through val: the two
        // must name the same codes, each once, or the percent runs past 100
        // or never reaches it.
        std::vector<std::string> listed = vb::Split(m.elements, ',');
        std::set<std::string> elements(listed.begin(), listed.end());
        EXPECT_EQ(elements.size(), listed.size()) << "a code stands twice in " << m.elements;
        EXPECT_EQ(elements, tested);
    }
}

TEST_F(Catalogue, APerfectMomentReachesTheTopAndNoMore)
{
    for (const auto& [e, p] : points) {
        SCOPED_TRACE(e);
        EXPECT_TRUE(clsMuhurtha::IsKnownCode(e));
        // A defect marked maxeffect would lower the maximum even where it is
        // absent, and a flawless moment would pass 100 percent.
        if (p.presence < 0) {
            EXPECT_FALSE(p.maxeffect);
        }
    }
    for (const Purpose& m : purposes) {
        SCOPED_TRACE(m.code);
        std::vector<std::string> elements = vb::Split(m.elements, ',');
        int bar = 0;
        for (const std::string& e : elements)
            if (points[e].maxeffect) bar += points[e].presence;
        EXPECT_GE(bar, 50);
        EXPECT_LE(bar, 120);
        for (const char* pillar : {"T", "N", "D"})
            EXPECT_TRUE(std::set<std::string>(elements.begin(), elements.end()).count(pillar)) << pillar;
        // The maximum finds an element by plain text in the moment's list:
        // an element whose code lies inside another's ("SD" in "SSD") would
        // count whenever the other occurred.
        for (const std::string& a : elements)
            for (const std::string& b : elements)
                if (a != b && !points[a].maxeffect) {
                    EXPECT_EQ(b.find(a), std::string::npos) << a << " in " << b;
                }
    }
}

TEST_F(Catalogue, EveryCategoryOffersFivePurposesFoundByTheirNames)
{
    std::map<std::string, int> perCategory;
    for (const CategoryButton& b : CategoryButtons()) perCategory[b.key] = 0;
    std::set<std::string> codes;
    for (const Purpose& m : purposes) {
        SCOPED_TRACE(m.code);
        ASSERT_TRUE(perCategory.count(m.category)) << "no button asks for " << m.category;
        ++perCategory[m.category];
        EXPECT_TRUE(codes.insert(vb::UCase(m.code)).second) << "code used twice";
        // Names and codes go into queries between quotes, unescaped.
        EXPECT_EQ(m.code.find('\''), std::string::npos);
        ASSERT_EQ(m.name.find('\''), std::string::npos) << m.name;
        // The first row of a name within its category is the one found.
        EXPECT_EQ(engine->FindMuhuCode(m.name, m.category), m.code) << m.name;
        EXPECT_FALSE(engine->GetMuhuPrediCode(m.code).ToTextOrEmpty().empty()) << "no MuhuConvert row";
    }
    for (const auto& [category, n] : perCategory) EXPECT_GE(n, 5) << category;
}

TEST_F(Catalogue, EveryPurposeHasItsNamesAndNakshatraSentences)
{
    for (const Purpose& m : purposes) {
        SCOPED_TRACE(m.code);
        EXPECT_EQ(engine->GetMuhuName(m.code), m.name);
        EXPECT_EQ(Sentence(m.code, "Muhuname"), m.name);
        for (bool good : {true, false}) {
            const std::string head = engine->ElementTextHead(good, "N", m.code).ToTextOrEmpty();
            ASSERT_FALSE(head.empty());
            EXPECT_FALSE(Sentence(head, clsMuhurtha::ElementTextCategory(good, "N", m.code)).empty()) << head;
        }
    }
    for (const Message& msg : messages.Messages()) ADD_FAILURE() << msg.text;
}

TEST_F(Catalogue, EveryElementAndBandHasItsWords)
{
    for (const std::string& e : AllElements()) {
        SCOPED_TRACE(e);
        EXPECT_FALSE(engine->ElementHeading(e).ToTextOrEmpty().empty());
        if (e == "N") continue;  // by purpose, above
        std::string sentences[2];
        for (bool good : {true, false}) {
            const std::string head = engine->ElementTextHead(good, e, "").ToTextOrEmpty();
            if (head.empty()) continue;
            sentences[good] = Sentence(head, clsMuhurtha::ElementTextCategory(good, e, ""));
            EXPECT_FALSE(sentences[good].empty()) << head;
        }
        // A pair of keys must not say the same thing both ways.
        if (engine->ElementTextHead(true, e, "").ToTextOrEmpty() != engine->ElementTextHead(false, e, "").ToTextOrEmpty()) {
            EXPECT_NE(sentences[0], sentences[1]);
        }
    }
    for (int band = 10; band <= 100; band += 10)
        EXPECT_FALSE(engine->MuhuScoreText(band).ToTextOrEmpty().empty()) << band;

    // What the two result pages ask of the names table.
    for (const char* head : {"MuhuDet", "BestMuhurtha", "MuhuResult", "Muhurtha"})
        EXPECT_FALSE(engine->MuhuChart->GetTextBetween("CNVT", Variant(head), "Muhurtha").ToTextOrEmpty().empty()) << head;
    for (const char* head : {"Score", "Percent", "From", "To", "OnlyPlace", "Lat", "Long", "Date", "Lagna", "Tithi", "Day",
                             "Rashi", "Nak", "Yoga", "Karan", "HinduMonth", "Place", "Time", "Nakl", "Rashil"})
        EXPECT_FALSE(engine->MuhuChart->GetTextBetween("CNVT", Variant(head), "Gen").ToTextOrEmpty().empty()) << head;
    for (const Message& msg : messages.Messages()) ADD_FAILURE() << msg.text;

    auto heads = text->OpenRecordset("SELECT Head FROM Muhu");
    for (heads->HasRows() ? heads->MoveFirst() : void(); !heads->IsEOF(); heads->MoveNext())
        EXPECT_EQ(heads->Field("Head").ToTextOrEmpty().find('\''), std::string::npos) << heads->Field("Head").ToText();
}

// A month of real searches at Delhi: the best moment of an open season
// must land in a sensible part of the scale, neither starved by the
// maximum nor pushed past it.
TEST_F(Catalogue, AMonthOfSearchesLandsInASensibleBand)
{
    struct Case {
        const char* category;
        const char* name;
    };
    for (const Case& c : {Case{"Business", "Opening a new shop"}, Case{"Journey", "Setting out on a journey (Yatra)"},
                          Case{"Marriage", "Engagement (Sagai)"}}) {
        SCOPED_TRACE(c.name);
        clsMuhurtha e(muhu);
        MuhurthaRequest r;
        r.Category = c.category;
        r.MuhuName = c.name;
        r.Place = {"India", "Delhi", "028:38", "077:12", "N", "E", "+05.30"};
        r.Person = {"Asha", 2, "02/09/1990", "07.05", 1, "India", "Pune", "018:31", "073:51", "N", "E", "+05.30"};
        r.Boy = {"Ravi", 1, "12/08/1988", "21.40", 2, "India", "Delhi", "028:38", "077:12", "N", "E", "+05.30"};
        r.Girl = r.Person;
        r.MomentDate = r.FromDate = "01/02/2025";
        r.ToDate = "28/02/2025";
        r.MomentTime = r.FromTime = "06.00";
        r.ToTime = "20.00";
        r.RunEngine(e, text, nullptr);
        ASSERT_FALSE(e.MuhuCode.empty());
        EXPECT_GT(e.MaxPossibleScore(), 0);
        EXPECT_GE(e.BestMuhuPercent(), 50.0);
        EXPECT_LE(e.BestMuhuPercent(), 110.0);
    }
    MarriageRequest() = false;
    // An unknown code would have spoken up during the scan.
    for (const Message& msg : messages.Messages()) ADD_FAILURE() << msg.text;
}

}  // namespace
