// The notes on a request's offsets, over a clock that knows two zones: a
// note only where the field differs from the offset in force, an offer only
// where one offset answers, the range's changes, and the persons a request
// really has.
#include <gtest/gtest.h>

#include "engine/engine_fixture.h"
#include "ranvel/engine/zonenotes.h"
#include "ranvel/platform/zones.h"

namespace ranvel::test {
namespace {

// Summer time in "Test/North" from April to September, +01.00 against
// +00.00; the night of 31 March skips 01.00 to 01.59 and that of
// 30 September repeats it. "Test/Far" answers nothing.
class FakeZones : public ZoneClock {
public:
    ZoneReading At(const std::string& zone, const DateTime& t) const override
    {
        ZoneReading r;
        if (zone != "Test/North") {
            r.why = "no such zone";
            return r;
        }
        r.kind = ZoneReading::Kind::Normal;
        const bool summer = t.Month() >= 4 && t.Month() <= 9;
        r.minutes = r.later = summer ? 60 : 0;
        r.daylight = summer;
        if (t.Day() == 31 && t.Month() == 3 && t.Hour() == 1) {
            r.kind = ZoneReading::Kind::Skipped;
            r.minutes = 0;
            r.later = 60;
            r.daylight = false;
        }
        if (t.Day() == 30 && t.Month() == 9 && t.Hour() == 1) {
            r.kind = ZoneReading::Kind::Repeated;
            r.later = 0;
        }
        return r;
    }
    std::vector<ZoneChange> Changes(const std::string& zone, const DateTime& from, const DateTime& to) const override
    {
        std::vector<ZoneChange> out;
        const DateTime change = DateTime::FromParts(from.Year(), 3, 31, 1, 0);
        if (zone == "Test/North" && from <= change && change <= to) out.push_back({change, 60, true});
        return out;
    }
};

class ZoneNotes : public EngineTest {
protected:
    void SetUp() override
    {
        EngineTest::SetUp();
        SetZones(&zones);
        db->ExecuteScript("CREATE TABLE City (City TEXT COLLATE NOCASE, Country TEXT COLLATE NOCASE, GMTDIFF TEXT,"
                          " Zone TEXT);"
                          "INSERT INTO City VALUES ('Northby','Testland','+00.00','Test/North'),"
                          "('Farton','Testland','+05.00','Test/Far'),('Plain','Testland','+02.00','');");
    }
    void TearDown() override
    {
        SetZones(nullptr);
        EngineTest::TearDown();
    }
    std::optional<ZoneNote> Note(const char* city, const char* gmt, int d, int m, int h)
    {
        return OffsetNote(*db, city, "testland", gmt, DateTime::FromParts(2024, m, d, h, 30));
    }
    FakeZones zones;
};

TEST_F(ZoneNotes, AFieldIsNotedOnlyWhereItDiffersAndOfferedOnlyOneAnswer)
{
    EXPECT_FALSE(Note("Northby", "+00.00", 15, 1, 12));
    EXPECT_FALSE(Note("Northby", "+01.00", 15, 7, 12));
    const auto summer = Note("northby", "+00.00", 15, 7, 12);
    ASSERT_TRUE(summer);
    EXPECT_EQ(summer->Text, "Summer time was in force in Northby on 15/07/2024: +01.00");
    EXPECT_EQ(summer->Offset, "+01.00");
    const auto winter = Note("Northby", "+01.00", 15, 1, 12);
    ASSERT_TRUE(winter);
    EXPECT_EQ(winter->Offset, "+00.00");

    // The skipped hour offers nothing; the repeated one offers its first
    // pass only when the field holds neither.
    const auto skipped = Note("Northby", "+00.00", 31, 3, 1);
    ASSERT_TRUE(skipped);
    EXPECT_NE(skipped->Text.find("did not exist"), std::string::npos);
    EXPECT_EQ(skipped->Offset, "");
    const auto twice = Note("Northby", "+00.00", 30, 9, 1);
    ASSERT_TRUE(twice);
    EXPECT_NE(twice->Text.find("came twice"), std::string::npos);
    EXPECT_EQ(twice->Offset, "");
    EXPECT_EQ(Note("Northby", "+03.00", 30, 9, 1)->Offset, "+01.00");

    // A zone that can't be read keeps the field and says why; a city
    // without a zone, or not in the store, says nothing.
    const auto far = Note("Farton", "+05.00", 15, 7, 12);
    ASSERT_TRUE(far);
    EXPECT_NE(far->Text.find("no such zone"), std::string::npos);
    EXPECT_EQ(far->Offset, "");
    EXPECT_FALSE(Note("Plain", "+09.00", 15, 7, 12));
    EXPECT_FALSE(Note("Elsewhere", "+09.00", 15, 7, 12));

    EXPECT_EQ(ZoneFieldMinutes("-03.30"), -210);
    EXPECT_EQ(ZoneFieldMinutes("+05.45"), 345);
    EXPECT_FALSE(ZoneFieldMinutes("05.30"));
    EXPECT_FALSE(ZoneFieldMinutes("+05.60"));
}

TEST_F(ZoneNotes, ARequestsNotesCoverItsPlaceItsRangeAndItsPersons)
{
    MuhurthaRequest r;
    r.Category = "Marriage";
    r.SearchMode = 1;
    r.FromDate = "20/03/2024";
    r.ToDate = "10/04/2024";
    r.FromTime = "06.00";
    r.ToTime = "22.00";
    r.Place = {"Testland", "Northby", "051:30", "000:07", "N", "W", "+00.00"};
    r.Boy = {"B", 1, "14/07/1990", "09.20", 1, "Testland", "Northby", "051:30", "000:07", "N", "W", "+00.00"};
    r.Girl = {"G", 2, "14/01/1992", "05.45", 2, "Testland", "Northby", "051:30", "000:07", "N", "W", "+00.00"};
    r.Person = r.Boy;  // a marriage has no single person
    const std::vector<ZoneNote> notes = RequestZoneNotes(*db, r);
    ASSERT_EQ(notes.size(), 2u);
    EXPECT_EQ(notes[0].Field, "Place");
    EXPECT_NE(notes[0].Text.find("changes on 31/03/2024 at 01.00 to +01.00"), std::string::npos) << notes[0].Text;
    EXPECT_EQ(notes[1].Field, "Boy");
    // Five forty-five in the afternoon of a January day: no note for her.

    r.Category = "Journey";
    r.SearchMode = 2;
    r.MomentDate = "15/07/2024";
    r.MomentTime = "10.00";
    r.Person.BDate = "14/01/1990";
    const std::vector<ZoneNote> moment = RequestZoneNotes(*db, r);
    ASSERT_EQ(moment.size(), 1u);
    EXPECT_EQ(moment[0].Field, "Place");
    EXPECT_EQ(moment[0].Offset, "+01.00");
}

}  // namespace
}  // namespace ranvel::test
