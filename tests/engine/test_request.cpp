// The request without a screen: field checks, the charts it builds from the
// form's masks, and a generation end to end.
#include "engine_fixture.h"

#include "ranvel/engine/request.h"

using namespace ranvel;
using namespace ranvel::test;

class Request : public EngineTest {
protected:
    static MuhurthaRequest AtDelhi()
    {
        MuhurthaRequest r;
        r.Category = "Journey";
        r.MuhuName = "Test";
        r.Place = {"India", "Delhi", "028:38", "077:12", "N", "E", "+05.30"};
        r.Person = {"Asha", 2, "02/09/1990", "07.05", 1, "India", "Pune", "018:31", "073:51", "N", "E", "+05.30"};
        r.MomentDate = "15/03/2024";
        r.MomentTime = "10.30";
        r.FromDate = "15/03/2024";
        r.ToDate = "16/03/2024";
        r.FromTime = "06.00";
        r.ToTime = "12.00";
        return r;
    }
};

TEST_F(Request, TimeFieldsAndRanges)
{
    EXPECT_FALSE(MuhurthaRequest::ValiDateTime("24.00"));
    EXPECT_FALSE(MuhurthaRequest::ValiDateTime("06.59"));
    EXPECT_TRUE(MuhurthaRequest::ValiDateTime("25.00"));
    EXPECT_TRUE(MuhurthaRequest::ValiDateTime("12.60"));
    EXPECT_TRUE(MuhurthaRequest::ValiDateTime("ab.cd"));

    MuhurthaRequest r = AtDelhi();
    EXPECT_TRUE(r.CheckRangeDates());
    r.ToDate = r.FromDate;  // one day
    EXPECT_TRUE(r.CheckRangeDates());
    r.ToDate = "14/03/2024";
    EXPECT_FALSE(r.CheckRangeDates());
    ASSERT_EQ(messages.Messages().size(), 1u);
    EXPECT_EQ(messages.Messages()[0].title, "Error in date.");
    r.SearchMode = 2;  // a moment check has no range to check
    EXPECT_TRUE(r.CheckRangeDates());
}

TEST_F(Request, ThePlaceZoneBecomesHundredthsAndThePersonsStaysText)
{
    MuhurthaRequest r = AtDelhi();
    r.BuildMomentChart();
    clsPerson& m = r.MomentChart->clsPerson();
    EXPECT_EQ(m.GMTDIFF(), "5.5");
    EXPECT_EQ(m.GetBirthTime(), "10.30");
    EXPECT_EQ(m.GetLatti(), "28.38N");
    EXPECT_EQ(m.Name(), "Muhurtha");
    r.Place.GMT = "-05.30";
    r.BuildMomentChart();
    EXPECT_EQ(m.GMTDIFF(), "-5.5");
    r.Place.GMT = "+05.45";
    r.BuildMomentChart();
    EXPECT_EQ(m.GMTDIFF(), "5.75");

    PersonChart() = std::make_shared<clsPlanets>();
    r.LoadPersonChart();
    clsPerson& p = PersonChart()->clsPerson();
    EXPECT_EQ(p.GMTDIFF(), "+05.30");  // read later as 5.3 hours
    EXPECT_EQ(p.GetBirthDate().ToIsoText(), "1990-09-02T07:05:00");
    EXPECT_EQ(p.PLOB(), "Pune");
}

TEST_F(Request, AMomentCheckEndToEnd)
{
    AddMuhurtha("TST1", "Test", "Journey", "UTTARAYAN,D:6,RAHUKAAL", "UTTARAYAN,D,RAHUKAAL");
    clsMuhurtha e(db);
    MuhurthaRequest r = AtDelhi();
    r.SearchMode = 2;
    r.RunEngine(e, nullptr, nullptr);
    ASSERT_EQ(e.Results.size(), 3u);
    EXPECT_EQ(e.Results[1].Date.ToIsoText(), "2024-03-15T10:30:00");
    // A Friday at 10:30 with the Sun in Pisces: the northward half, the
    // day, and Friday's Rahu Kaal window all hold.
    EXPECT_EQ(e.Results[1].FructElems, "UTTARAYAN-3:D-5:RAHUKAAL--6:");
    EXPECT_EQ(e.BestMuhuScore(), "2");
    EXPECT_EQ(e.StartDate.DateOnly(), e.EndDate.DateOnly());
    EXPECT_FALSE(MarriageRequest());
}

TEST_F(Request, AMarriageRangeSearchBuildsBothCharts)
{
    AddMuhurtha("MAR1", "Wedding", "Marriage", "TG,M12,T:2,T:3,T:5", "TG,M12,T");
    clsMuhurtha e(db);
    MuhurthaRequest r = AtDelhi();
    r.Category = "Marriage";  // mixed case still selects the marriage path
    r.MuhuName = "Wedding";
    r.Boy = r.Person;
    r.Girl = r.Person;
    r.Girl.BDate = "14/02/1992";
    r.RunEngine(e, nullptr, nullptr);
    EXPECT_TRUE(MarriageRequest());
    EXPECT_EQ(BoyChart()->clsPerson().Year(), "1990");
    EXPECT_EQ(GirlChart()->clsPerson().Year(), "1992");
    EXPECT_EQ(e.MuhuCategory(), "MARRIAGE");
    // Two days of 06:00, 08:30, 11:00.
    EXPECT_EQ(e.Results.size(), 2u + 6u);
    EXPECT_GE(e.BestMuhuIndex(), 1);
    EXPECT_EQ(e.GetDayMuhuDate(e.BestMuhuIndex()), e.BestMuhuDate());
    MarriageRequest() = false;
}
