// The moment record: its getters' text forms and its movement through time,
// across day, month and year ends and leap days. The search moves the record
// with AddMinutes, so its odd steps decide which moments are tested.
#include <gtest/gtest.h>

#include "ranvel/chart/person.h"
#include "ranvel/platform/vbmath.h"

using namespace ranvel;

namespace {
clsPerson At(int d, int m, int y, int hh, int mm)
{
    clsPerson p;
    p.Day(d);
    p.Month(m);
    p.Year(y);
    p.Hour(hh);
    p.Minutes(mm);
    return p;
}
std::string Stamp(const clsPerson& p) { return p.GetBirthDate().ToIsoText(); }
}  // namespace

TEST(Person, SettersConvertAndRoundHalfToEven)
{
    clsPerson p;
    p.Day("7");
    p.Hour(6.5);
    p.Minutes("7.5");
    p.LatDeg(28.49);
    p.Sex(1.5);
    EXPECT_EQ(p.Day(), "07");
    EXPECT_EQ(p.Hour(), "6");
    EXPECT_EQ(p.Minutes(), "8");
    EXPECT_EQ(p.LatDeg(), "28");
    EXPECT_EQ(p.Sex(), 2);
    EXPECT_THROW(p.Day("x"), vb::RuntimeError);
    p.GMTDIFF(5.5);
    EXPECT_EQ(p.GMTDIFF(), "5.5");
    p.Name("  Asha ");
    EXPECT_EQ(p.Name(), "Asha");
}

TEST(Person, GetterTextForms)
{
    clsPerson p = At(2, 9, 1990, 7, 5);
    p.LatDeg(28);
    p.LatMT(38);
    p.TextNS("N");
    p.LongDeg(77);
    p.LongMT(5);
    p.TextEW("e");
    p.PLOB("Delhi");
    p.Country("India");
    EXPECT_EQ(p.Month(), "09");
    EXPECT_EQ(p.GetBirthTime(), "07.05");
    EXPECT_DOUBLE_EQ(p.GetBirthDecimalTime(), 7.08);
    EXPECT_EQ(p.GetLatti(), "28.38N");
    EXPECT_EQ(p.GetLongi(), "77.5e");  // no leading zero on the minutes
    EXPECT_EQ(p.GetLatitudeFull(), "28.38 N");
    EXPECT_DOUBLE_EQ(p.Latitude(), 28.38);
    EXPECT_DOUBLE_EQ(p.Longitude(), 77.05);
    EXPECT_EQ(p.GetBirthPlace(), "Delhi, India");
    EXPECT_EQ(p.WeekDayOfBirth(), 1);  // 2 September 1990 was a Sunday
    p.Minutes(59);
    EXPECT_DOUBLE_EQ(p.GetBirthDecimalTime(), 7.98);
}

TEST(Person, TwelveHourClockDecidesAmPmOnce)
{
    clsPerson p = At(1, 1, 2000, 0, 5);
    EXPECT_EQ(p.GetBirthTimeFull(), "12:05 AM");
    EXPECT_EQ(p.AMPM(), "1");
    p.Hour(13);
    EXPECT_EQ(p.GetBirthTimeFull(), "01:05 AM");  // AMPM was already decided
    clsPerson q = At(1, 1, 2000, 12, 0);
    EXPECT_EQ(q.GetBirthTimeFull(), "12:00 PM");
    q.AMPM(0);
    q.Hour(0);
    q.AMPM(2);
    EXPECT_EQ(q.GetBirthTimeFull(), "12:00 PM");
    q.AMPM(3);  // anything but 1 prints PM
    EXPECT_EQ(q.GetBirthTimeFull(), "12:00 PM");
}

TEST(Person, BirthDateReadsMinutesSixtyAsTheNextHour)
{
    clsPerson p = At(31, 12, 2023, 23, 60);
    EXPECT_EQ(Stamp(p), "2024-01-01T00:00:00");
    clsPerson q = At(31, 2, 2023, 0, 0);
    EXPECT_THROW(q.GetBirthDate(), vb::RuntimeError);
}

TEST(Person, SetBirthDateDecidesAmPm)
{
    clsPerson p;
    p.seconds(42);
    p.SetBirthDate(DateTime::FromParts(2024, 3, 15, 12, 30, 15));
    EXPECT_EQ(Stamp(p), "2024-03-15T12:30:00");
    EXPECT_EQ(p.AMPM(), "2");
    EXPECT_EQ(p.seconds(), "42");
}

TEST(Person, AdjustHourWrapsOnceAndLeavesTwentyFour)
{
    clsPerson p = At(1, 1, 2000, 0, 0);
    EXPECT_EQ(p.AdjustHour(24, 31, 12, 2023), 24);
    EXPECT_EQ(p.Day(), "01");  // untouched
    EXPECT_NEAR(p.AdjustHour(24.01, 31, 12, 2023), 0.01, 1e-12);
    EXPECT_EQ(Stamp(p), "2024-01-01T00:00:00");
    EXPECT_EQ(p.AdjustHour(-0.5, 1, 3, 2024), 23.5);
    EXPECT_EQ(p.Day() + "/" + p.Month() + "/" + p.Year(), "29/02/2024");
    EXPECT_EQ(p.AdjustHour(-0.5, 1, 1, 2024), 23.5);
    EXPECT_EQ(p.Year(), "2023");
    EXPECT_EQ(p.AdjustHour(49, 1, 1, 2024), 25);  // one wrap, not a loop
}

TEST(Person, AddDaysKeepsTheClock)
{
    clsPerson p = At(28, 2, 2024, 10, 15);
    p.AddDays(1);
    EXPECT_EQ(Stamp(p), "2024-02-29T10:15:00");
    p.AddDays(366);
    EXPECT_EQ(Stamp(p), "2025-03-01T10:15:00");
    p.AddDays(-60);
    EXPECT_EQ(Stamp(p), "2024-12-31T10:15:00");
}

TEST(Person, AddMinutesStepsIncludingItsExtraMinute)
{
    clsPerson p = At(15, 3, 2024, 10, 0);
    p.AddMinutes(60);  // sixty minutes, not an hour and zero
    EXPECT_EQ(Stamp(p), "2024-03-15T11:00:00");
    p.AddMinutes(61);
    EXPECT_EQ(Stamp(p), "2024-03-15T12:01:00");
    p.AddMinutes(0);  // zero becomes one minute
    EXPECT_EQ(Stamp(p), "2024-03-15T12:02:00");
    p.AddMinutes(120);  // two hours and, again, one minute
    EXPECT_EQ(Stamp(p), "2024-03-15T14:03:00");
    p.AddMinutes(150);
    EXPECT_EQ(Stamp(p), "2024-03-15T16:33:00");
    p.AddMinutes(0.5);  // 33.5 minutes store as 34, half to even
    EXPECT_EQ(Stamp(p), "2024-03-15T16:34:00");
    p.AddMinutes(0.5);  // 34.5 store as 34: no move at all
    EXPECT_EQ(Stamp(p), "2024-03-15T16:34:00");
}

TEST(Person, AddMinutesAcrossDayMonthYearEnds)
{
    clsPerson p = At(1, 1, 2024, 0, 0);
    p.AddMinutes(-1);
    EXPECT_EQ(Stamp(p), "2023-12-31T23:59:00");
    p.AddMinutes(1);
    EXPECT_EQ(Stamp(p), "2024-01-01T00:00:00");
    clsPerson q = At(28, 2, 2024, 22, 30);
    q.AddMinutes(150);
    EXPECT_EQ(Stamp(q), "2024-02-29T01:00:00");
    q.AddMinutes(-3000);  // 50 hours back, and the extra minute back too
    EXPECT_EQ(Stamp(q), "2024-02-26T22:59:00");
    q.AddMinutes(1440 * 3);
    EXPECT_EQ(Stamp(q), "2024-02-29T23:00:00");
}

TEST(Person, AddMinutesReturnsItsClockMarker)
{
    clsPerson p = At(15, 3, 2024, 7, 0);
    EXPECT_DOUBLE_EQ(p.AddMinutes(5), 7.5);  // 7:05 reads as "7.5"
    EXPECT_DOUBLE_EQ(p.AddMinutes(55), 8.0);
    EXPECT_DOUBLE_EQ(p.AddMinutes(150), 10.3);  // "10.30"
}
