// The range search: which moments are tested, how the best is picked, and
// the lagna span around it.
#include "engine_fixture.h"

#include "ranvel/platform/vbmath.h"

using namespace ranvel;
using namespace ranvel::test;

class Search : public EngineTest {
protected:
    // The place of a request, calculated as the request builds it; its
    // 00:00 then reads as 24:00 of the day before, which the first moment
    // of a search undoes.
    std::shared_ptr<clsPlanets> Place()
    {
        auto c = Delhi(1, 1, 2024, 0, 0);
        c->Calculate();
        return c;
    }

    std::vector<std::string> Moments(const clsMuhurtha& e)
    {
        std::vector<std::string> out;
        for (std::size_t i = 1; i + 1 < e.Results.size(); ++i)
            out.push_back(e.Results[i].Date.ToIsoText().substr(0, 16));
        return out;
    }
};

TEST_F(Search, AWholeDayIsTestedEveryHundredAndFiftyMinutes)
{
    AddMuhurtha("TST1", "Test", "Journey", "", "");
    clsMuhurtha e(db);
    auto place = Place();
    e.CheckMuhurtha("Test", "Journey", DateTime::FromParts(2024, 3, 15), DateTime::FromParts(2024, 3, 15), 0.0, 23.59,
                    *place);
    std::vector<std::string> expected = {"2024-03-15T00:00", "2024-03-15T02:30", "2024-03-15T05:00", "2024-03-15T07:30",
                                         "2024-03-15T10:00", "2024-03-15T12:30", "2024-03-15T15:00", "2024-03-15T17:30",
                                         "2024-03-15T20:00", "2024-03-15T22:30"};
    EXPECT_EQ(Moments(e), expected);
    EXPECT_TRUE(e.Results.back().Time.empty());  // the trailing record under work
}

TEST_F(Search, TheClockMarkerSkipsTensOfMinutes)
{
    // 06:35 + 150 minutes is 09:05, whose marker 9.5 is read as 09:50.
    AddMuhurtha("TST1", "Test", "Journey", "", "");
    clsMuhurtha e(db);
    auto place = Place();
    e.CheckMuhurtha("Test", "Journey", DateTime::FromParts(2024, 3, 15), DateTime::FromParts(2024, 3, 15), 6.35, 13,
                    *place);
    std::vector<std::string> expected = {"2024-03-15T06:35", "2024-03-15T09:50", "2024-03-15T12:20"};
    EXPECT_EQ(Moments(e), expected);
}

TEST_F(Search, WindowsOfOneMomentAndAcrossMidnight)
{
    AddMuhurtha("TST1", "Test", "Journey", "", "");
    clsMuhurtha e(db);
    auto place = Place();
    e.CheckMuhurtha("Test", "Journey", DateTime::FromParts(2024, 3, 15), DateTime::FromParts(2024, 3, 16), 6.0, 6.0,
                    *place);
    EXPECT_EQ(Moments(e), (std::vector<std::string>{"2024-03-15T06:00", "2024-03-16T06:00"}));

    // 22:30 steps to 01:00 of the next date: no further day is added.
    e.CheckMuhurtha("Test", "Journey", DateTime::FromParts(2024, 3, 15), DateTime::FromParts(2024, 3, 16), 22.3, 23.59,
                    *place);
    EXPECT_EQ(Moments(e), (std::vector<std::string>{"2024-03-15T22:30", "2024-03-16T22:30"}));
}

TEST_F(Search, TiesGoToTheEarliestAndNegativeBestShowsZero)
{
    AddMuhurtha("TST1", "Test", "Journey", "RIKTABAD,RAHUKAAL", "RIKTABAD,RAHUKAAL");
    clsMuhurtha e(db);
    e.MuhuChart = Delhi(15, 3, 2024, 10, 0);
    e.MuhuChart->Calculate();
    MomentResult a, b, c;
    a.Date = DateTime::FromParts(2024, 3, 15, 6);
    a.Time = "06.00";
    a.Score = -6;
    b.Date = DateTime::FromParts(2024, 3, 15, 8, 30);
    b.Time = "08.30";
    b.Score = -6;
    b.FructElems = "RAHUKAAL--6:";
    c.Date = DateTime::FromParts(2024, 3, 16, 6);
    c.Time = "06.00";
    c.Score = -14;
    e.Results = {MomentResult{}, a, b, c, MomentResult{}};
    e.PickBest();
    EXPECT_EQ(e.BestMuhuTime(), "06.00");
    EXPECT_EQ(e.BestMuhuScore(), "0");  // floored for the best members only
    EXPECT_EQ(e.Results[1].Score, -6);
    EXPECT_EQ(e.GetBestDayMuhusCount(), 2);
    EXPECT_EQ(e.GetDayMuhuTime(2), "08.30");
    EXPECT_EQ(e.BestMuhuIndex(), 1);
    EXPECT_EQ(e.BestMuhuPercent(), 0);
}

TEST_F(Search, TheLagnaSpanSurroundsTheBestMoment)
{
    AddMuhurtha("TST1", "Test", "Journey", "UTTARAYAN", "UTTARAYAN");
    clsMuhurtha e(db);
    auto place = Place();
    e.CheckMuhurtha("Test", "Journey", DateTime::FromParts(2024, 3, 15), DateTime::FromParts(2024, 3, 15), 10.0, 10.0,
                    *place);
    const double lagna = e.BestChart->PlanetLongi(0);
    const double start = clsMuhurtha::LagnaStartDeg(lagna);
    EXPECT_NEAR(e.LagnaStartChart->PlanetLongi(0), start, 0.5);
    EXPECT_NEAR(e.LagnaEndChart->PlanetLongi(0), start + 30, 0.5);
    EXPECT_LT(e.LagnaStartChart->clsPerson().GetBirthDate(), e.BestMuhuDate());
    EXPECT_GT(e.LagnaEndChart->clsPerson().GetBirthDate(), e.BestMuhuDate());
    EXPECT_EQ(clsMuhurtha::LagnaStartDeg(60), 30);  // the wrap leaves 30 standing
    EXPECT_EQ(clsMuhurtha::LagnaStartDeg(75.2), 60);
}

TEST_F(Search, MaximumPercentAndBand)
{
    // T and D count in the maximum always; TG only when it occurred, and
    // "T" is found inside "TG-4:" as well: that over-count stays.
    AddMuhurtha("TST1", "Test", "Journey", "", "T,D,TG,RAHUKAAL");
    clsMuhurtha e(db);
    e.LoadMuhurtha("TST1");
    e.MuhuChart = Delhi(15, 3, 2024, 10, 0);
    e.MuhuChart->Calculate();
    MomentResult r;
    r.Date = DateTime::FromParts(2024, 3, 15, 10);
    r.Time = "10.00";
    r.Score = 9;
    r.FructElems = "D-5:TG-4:";
    e.Results = {MomentResult{}, r, MomentResult{}};
    e.PickBest();
    EXPECT_EQ(e.MaxPossibleScore(), 10 + 5 + 4);
    EXPECT_DOUBLE_EQ(e.BestMuhuPercent(), 47.37);  // 9 / 19
    EXPECT_EQ(e.ScoreBand(), 50);
    e.MuhuElements = "T,D";  // 15 at most
    EXPECT_DOUBLE_EQ(e.BestMuhuPercent(), 60);
    EXPECT_EQ(e.ScoreBand(), 70);
    e.MuhuElements = "";  // nothing to reach
    EXPECT_EQ(e.BestMuhuPercent(), 0);
}

TEST_F(Search, CachesChangeNoResult)
{
    AddMuhurtha("TST1", "Test", "Journey", "T:2,T:3,T:5,N:4,N:7,D:2,D:5,RIKTABAD,RAHUKAAL,PH,VISHDAY,VISHTITHI",
                "T,N,D,RIKTABAD,RAHUKAAL,PH,VISHDAY,VISHTITHI");
    auto place = Place();
    auto run = [&](bool caching) {
        clsMuhurtha e(db);
        e.SetCaching(caching);
        e.CheckMuhurtha("Test", "Journey", DateTime::FromParts(2024, 3, 1), DateTime::FromParts(2024, 3, 31), 0.0, 23.59,
                        *place);
        std::vector<std::string> out;
        for (const MomentResult& r : e.Results)
            out.push_back(r.Date.ToIsoText() + " " + r.Time + " " + vb::CStr(r.Score) + " " + r.FructElems);
        return out;
    };
    auto cached = run(true);
    EXPECT_EQ(cached.size(), 31u * 10 + 2);
    EXPECT_EQ(cached, run(false));
}
