// The Muhurtha calendar against the search it is read from: each day's best
// is that day's earliest highest moment of Results, the first ranked day is
// the best Muhurtha with its lagna span, and a day made the best Muhurtha
// shows the calendar's own figures.
#include <map>
#include <regex>

#include "engine_fixture.h"
#include "ranvel/engine/calendar.h"
#include "ranvel/platform/vbmath.h"

using namespace ranvel;
using namespace ranvel::test;

class Calendar : public EngineTest {
protected:
    void SetUp() override
    {
        EngineTest::SetUp();
        texts = Database::Create(ScratchPath(std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()) +
                                             ".text.dat"));
        std::string sql = "CREATE TABLE Muhu (Head TEXT, Category TEXT, Val TEXT);";
        for (const char* code : {"T", "N", "D", "L", "TG", "M12", "RIKTABAD", "RAHUKAAL", "PH", "VISHDAY", "VISHTITHI",
                                 "LAGNASHUDDHI", "UTTARAYAN"})
            sql += std::string("INSERT INTO Muhu VALUES ('") + code + "','MuhuElems','About " + code + "');";
        for (int band = 10; band <= 100; band += 10)
            sql += "INSERT INTO Muhu VALUES ('" + std::to_string(band) + "','Muhuscore','Band " + std::to_string(band) +
                   "');";
        texts->ExecuteScript(sql);
        // The lagna test reads the sign memoised at the search's first
        // moment, so a moment check can score a day otherwise.
        AddMuhurtha("TST1", "Test", "Journey",
                    "T:2,T:3,T:5,T:7,T:10,T:11,T:13,N:4,N:7,N:13,N:17,D:2,D:5,L:3,L:6,TG,RIKTABAD,RAHUKAAL,PH,VISHDAY",
                    "T,N,D,L,TG,RIKTABAD,RAHUKAAL,PH,VISHDAY");
        PersonChart() = Delhi(14, 8, 1994, 9, 20);
        PersonChart()->Calculate();
        place = Delhi(1, 1, 2024, 0, 0);
        place->Calculate();
    }

    std::unique_ptr<clsMuhurtha> Search(const DateTime& from, const DateTime& to, double t0 = 6.0, double t1 = 22.0)
    {
        auto e = std::make_unique<clsMuhurtha>(db);
        e->MuhuChart->setTextDB(texts, nullptr);
        e->CheckMuhurtha("Test", "Journey", from, to, t0, t1, *place);
        return e;
    }

    std::shared_ptr<Database> texts;
    std::shared_ptr<clsPlanets> place;
};

TEST_F(Calendar, EachDayIsItsEarliestHighestMomentAndTheFirstRankedIsTheBestMuhurtha)
{
    auto e = Search(DateTime::FromParts(2024, 3, 13), DateTime::FromParts(2024, 4, 20));
    const MuhurthaCalendar cal = BuildCalendar(*e);

    ASSERT_EQ(cal.Days.size(), 39u);
    EXPECT_EQ(cal.Days.front().Day, DateTime::FromParts(2024, 3, 13));
    EXPECT_EQ(cal.Days.back().Day, DateTime::FromParts(2024, 4, 20));

    // The day's best from Results, by hand.
    std::map<DateTime, std::size_t> best;
    for (std::size_t i = 1; i + 1 < e->Results.size(); ++i) {
        auto [it, added] = best.try_emplace(e->Results[i].Date.DateOnly(), i);
        if (!added && e->Results[i].Score > e->Results[it->second].Score) it->second = i;
    }
    bool sawTie = false;
    for (const CalendarDay& d : cal.Days) {
        ASSERT_TRUE(d.Tested) << d.Day.ToDayFirstText();
        EXPECT_EQ(d.ResultIndex, best.at(d.Day));
        EXPECT_EQ(d.Best.Time, e->Results[d.ResultIndex].Time);
        EXPECT_EQ(d.Moments.size(), 7u);  // 06:00 ... 21:00
        int highest = 0;
        for (const MomentResult& m : d.Moments) highest += m.Score == d.Best.Score ? 1 : 0;
        sawTie = sawTie || highest > 1;
        // Held and defects together are the fruct list's entries.
        int sum = 0;
        for (const CalendarElement& x : d.Held) {
            EXPECT_GE(x.Score, 1);
            sum += x.Score;
        }
        for (const CalendarElement& x : d.Defects) {
            EXPECT_LE(x.Score, 0);
            sum += x.Score;
        }
        EXPECT_EQ(sum, d.Best.Score);
        EXPECT_EQ(d.BandText, "Band " + std::to_string(d.Band));
    }
    EXPECT_TRUE(sawTie) << "the catalogue should give a day with equal highest moments";

    // The first ranked day is the engine's own best, with its lagna span.
    const CalendarDay& first = cal.Days[cal.Ranked.front()];
    EXPECT_TRUE(first.EngineBest);
    EXPECT_EQ(first.Best.Date, e->BestMuhuDate());
    EXPECT_EQ(first.Best.Time, e->BestMuhuTime());
    EXPECT_EQ(vb::CStr(first.Score), e->BestMuhuScore());
    EXPECT_EQ(first.Percent, e->BestMuhuPercent());
    EXPECT_EQ(first.Band, e->ScoreBand());
    EXPECT_EQ(first.LagnaStartText, e->LagnaStartChart->clsPerson().GetBirthTimeFull());
    EXPECT_EQ(first.LagnaEndText, e->LagnaEndChart->clsPerson().GetBirthTimeFull());
    EXPECT_EQ(first.LagnaStart, e->LagnaStartChart->clsPerson().GetBirthDate());

    // The rest by percent, then score, then the earliest; every tested day
    // ranked once.
    ASSERT_EQ(cal.Ranked.size(), cal.Days.size());
    for (std::size_t k = 2; k < cal.Ranked.size(); ++k) {
        const CalendarDay& a = cal.Days[cal.Ranked[k - 1]];
        const CalendarDay& b = cal.Days[cal.Ranked[k]];
        ASSERT_GE(a.Percent, b.Percent);
        if (a.Percent == b.Percent && a.Best.Score == b.Best.Score) {
            ASSERT_LT(a.Day, b.Day);
        }
    }
    // Building the calendar leaves the best Muhurtha as it was.
    EXPECT_EQ(e->BestMuhuDate(), first.Best.Date);
    EXPECT_EQ(e->LagnaStartChart->clsPerson().GetBirthTimeFull(), first.LagnaStartText);
}

TEST_F(Calendar, ADayMadeTheBestMuhurthaShowsTheSearchsOwnFigures)
{
    auto e = Search(DateTime::FromParts(2024, 3, 1), DateTime::FromParts(2024, 3, 31));
    const MuhurthaCalendar cal = BuildCalendar(*e);

    int otherwise = 0;
    for (const CalendarDay& d : cal.Days) {
        PickCalendarDay(*e, d);
        EXPECT_EQ(e->BestMuhuDate(), d.Best.Date);
        EXPECT_EQ(e->BestMuhuTime(), d.Best.Time);
        EXPECT_EQ(e->BestMuhuScore(), vb::CStr(d.Score));
        EXPECT_EQ(e->BestMuhuFructElems(), d.Best.FructElems);
        EXPECT_EQ(e->MaxPossibleScore(), d.MaxScore);
        EXPECT_EQ(e->BestMuhuPercent(), d.Percent);
        EXPECT_EQ(e->ScoreBand(), d.Band);
        // The lagna span the calendar lists is the one the pages print.
        EXPECT_EQ(e->LagnaStartChart->clsPerson().GetBirthTimeFull(), d.LagnaStartText);
        EXPECT_EQ(e->LagnaEndChart->clsPerson().GetBirthTimeFull(), d.LagnaEndText);
        ASSERT_EQ(e->GetBestDayMuhusCount(), static_cast<int>(d.Moments.size()));
        EXPECT_EQ(e->GetDayMuhuTime(e->BestMuhuIndex()), d.Best.Time);

        // A moment check of the same moment starts a memo of its own.
        clsMuhurtha check(db);
        check.MuhuChart->setTextDB(texts, nullptr);
        auto moment = Delhi(d.Day.Day(), d.Day.Month(), d.Day.Year(), d.Best.Date.Hour(), d.Best.Date.Minute());
        moment->Calculate();
        check.CheckMuhuMoment("Test", "Journey", *moment);
        if (check.BestMuhuScore() != e->BestMuhuScore()) ++otherwise;
    }
    EXPECT_GT(otherwise, 0) << "no day of the month scores otherwise in a moment check";

    // And back to the best of the range.
    PickCalendarDay(*e, cal.Days[cal.Ranked.front()]);
    EXPECT_EQ(e->BestMuhuDate(), cal.Days[cal.Ranked.front()].Best.Date);
    CalendarDay untested;
    EXPECT_THROW(PickCalendarDay(*e, untested), vb::RuntimeError);
}

TEST_F(Calendar, ScoresBelowZeroShowAsZeroAndTheBestStillLeads)
{
    db->Execute("DELETE FROM Muhu");
    AddMuhurtha("TST1", "Test", "Journey", "RAHUKAAL,VISHDAY,PH,RIKTABAD", "RAHUKAAL,VISHDAY,PH,RIKTABAD");
    db->Execute("UPDATE Score SET Presence = -1 WHERE element = 'UTTARAYAN'");
    auto e = Search(DateTime::FromParts(2024, 5, 1), DateTime::FromParts(2024, 5, 20), 0.0, 23.59);
    const MuhurthaCalendar cal = BuildCalendar(*e);
    for (const CalendarDay& d : cal.Days) {
        EXPECT_GE(d.Score, 0);
        if (d.Best.Score < 0) {
            EXPECT_EQ(d.Percent, 0);
        }
    }
    EXPECT_TRUE(cal.Days[cal.Ranked.front()].EngineBest);
    EXPECT_EQ(cal.Days[cal.Ranked.front()].Best.Date, e->BestMuhuDate());
}

TEST_F(Calendar, ListingRangesAndTheIcsText)
{
    auto e = Search(DateTime::FromParts(2024, 3, 1), DateTime::FromParts(2024, 3, 20));
    const MuhurthaCalendar cal = BuildCalendar(*e);

    // Top and band.
    EXPECT_EQ(cal.Listed(5, 10).size(), 5u);
    EXPECT_EQ(cal.Listed(100, 10).size(), 20u);
    for (int band = 10; band <= 100; band += 10)
        for (std::size_t i : cal.Listed(100, band)) EXPECT_GE(cal.Days[i].Band, band);
    EXPECT_TRUE(cal.Listed(10, 110).empty());
    EXPECT_NE(CalendarTable(cal, {}).find("No day reaches"), std::string::npos);
    EXPECT_TRUE(IsCalendarBand(100) && IsCalendarBand(10));
    EXPECT_FALSE(IsCalendarBand(0) || IsCalendarBand(35) || IsCalendarBand(110));

    // Ten years and no more; an end before the start.
    const DateTime from = DateTime::FromParts(2024, 2, 29);
    EXPECT_EQ(CheckCalendarRange(from, DateTime::FromParts(2034, 2, 28)), "");
    EXPECT_NE(CheckCalendarRange(from, DateTime::FromParts(2034, 3, 1)).find("at most 10 years"), std::string::npos);
    EXPECT_NE(CheckCalendarRange(from, DateTime::FromParts(2024, 2, 28)), "");
    EXPECT_EQ(CheckCalendarRange(from, from), "");

    // The events: UTC times, the place's 5.5 hours taken off; lines of at
    // most 75 octets ended by CRLF; unfolded text carries the escapes.
    const std::vector<std::size_t> listed = cal.Listed(3, 10);
    const std::string ics = CalendarIcs(cal, listed, DateTime::FromParts(2026, 11, 25, 6, 0, 0));
    std::size_t events = 0;
    for (std::size_t p = 0; (p = ics.find("BEGIN:VEVENT", p)) != std::string::npos; ++p) ++events;
    EXPECT_EQ(events, 3u);
    std::size_t start = 0;
    while (start < ics.size()) {
        std::size_t end = ics.find("\r\n", start);
        ASSERT_NE(end, std::string::npos) << "a line without CRLF";
        EXPECT_LE(end - start, 75u);
        start = end + 2;
    }
    const CalendarDay& first = cal.Days[listed.front()];
    const DateTime utc = first.LagnaStart.AddSeconds(-5 * 3600 - 1800);
    char expected[40];
    std::snprintf(expected, sizeof expected, "DTSTART:%04d%02d%02dT%02d%02d%02dZ", utc.Year(), utc.Month(), utc.Day(),
                  utc.Hour(), utc.Minute(), utc.Second());
    EXPECT_NE(ics.find(expected), std::string::npos) << ics;
    const std::string unfolded = std::regex_replace(ics, std::regex("\r\n "), "");
    EXPECT_NE(unfolded.find("SUMMARY:Test: " + vb::Format(first.Percent, "0.00") + " percent"), std::string::npos);
    EXPECT_NE(unfolded.find("Held: About "), std::string::npos);
    EXPECT_NE(unfolded.find("DTSTAMP:20261125T060000Z"), std::string::npos);
}

TEST_F(Calendar, FoldingNeverSplitsACharacter)
{
    auto e = Search(DateTime::FromParts(2024, 3, 1), DateTime::FromParts(2024, 3, 1));
    texts->Execute("UPDATE Muhu SET Val = 'तिथि शुद्धि, पूर्ण; नक्षत्र\\बल' WHERE Category = 'MuhuElems'");
    const MuhurthaCalendar cal = BuildCalendar(*e);
    const std::string ics = CalendarIcs(cal, cal.Listed(1, 10), DateTime::FromParts(2026, 1, 1));
    // Every folded piece is valid UTF-8 on its own: no continuation byte
    // right after a fold.
    for (std::size_t p = 0; (p = ics.find("\r\n ", p)) != std::string::npos; p += 3)
        EXPECT_NE(static_cast<unsigned char>(ics[p + 3]) & 0xC0, 0x80);
    const std::string unfolded = std::regex_replace(ics, std::regex("\r\n "), "");
    EXPECT_NE(unfolded.find("तिथि शुद्धि\\, पूर्ण\\; नक्षत्र\\\\बल"), std::string::npos) << unfolded;
}
