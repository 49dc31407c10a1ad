// Date values: construction only from real dates, day-first text, the
// runtime's date arithmetic and its counting of whole units between dates.
#include <gtest/gtest.h>

#include "ranvel/platform/datetime.h"
#include "ranvel/platform/vbmath.h"

using namespace ranvel;

TEST(Dates, OnlyRealDatesAreMade)
{
    EXPECT_NO_THROW(DateTime::FromParts(2024, 2, 29));
    EXPECT_THROW(DateTime::FromParts(2023, 2, 29), vb::RuntimeError);
    EXPECT_THROW(DateTime::FromParts(2024, 4, 31), vb::RuntimeError);
    EXPECT_THROW(DateTime::FromParts(2024, 13, 1), vb::RuntimeError);
    EXPECT_THROW(DateTime::FromParts(2024, 0, 1), vb::RuntimeError);
    EXPECT_THROW(DateTime::ParseDayFirst("00/00/0000"), vb::RuntimeError);
    EXPECT_THROW(DateTime::ParseDayFirst("31/02/2024"), vb::RuntimeError);
    EXPECT_THROW(DateTime::ParseDayFirst("15/03/2024x"), vb::RuntimeError);
}

TEST(Dates, DayFirstText)
{
    DateTime d = DateTime::ParseDayFirst("2/9/1990");
    EXPECT_EQ(d.Day(), 2);
    EXPECT_EQ(d.Month(), 9);
    EXPECT_EQ(d.Year(), 1990);
    EXPECT_EQ(DateTime::ParseDayFirst("15/03/24").Year(), 2024);
    EXPECT_EQ(DateTime::ParseDayFirst("15/03/50").Year(), 1950);
    DateTime t = DateTime::ParseDayFirst("01/01/2000 6:05");
    EXPECT_EQ(t.Hour(), 6);
    EXPECT_EQ(t.Minute(), 5);
    EXPECT_EQ(t.ToDayFirstText(), "01/01/2000");
    EXPECT_EQ(t.ToIsoText(), "2000-01-01T06:05:00");
}

TEST(Dates, SerialNumberIsDaysWithTimeFraction)
{
    EXPECT_EQ(DateTime::FromParts(1899, 12, 30).Serial(), 0);
    EXPECT_EQ(DateTime::FromParts(1900, 1, 1).Serial(), 2);
    EXPECT_EQ(DateTime::FromParts(2000, 1, 1, 12).Serial(), 36526.5);
    // Before the zero day the whole part is negative and the clock still
    // counts forward.
    DateTime early = DateTime::FromParts(1899, 12, 29, 6);
    EXPECT_EQ(early.Serial(), -1.25);
    EXPECT_EQ(DateTime::FromSerial(-1.25), early);
    EXPECT_EQ(DateTime::FromSerial(36526.5), DateTime::FromParts(2000, 1, 1, 12));
}

TEST(Dates, WeekDaysRunFromSunday)
{
    EXPECT_EQ(DateTime::FromParts(2024, 3, 15).WeekDay(), 6);  // a Friday
    EXPECT_EQ(DateTime::FromParts(2024, 3, 17).WeekDay(), 1);
    EXPECT_EQ(DateTime::FromParts(1899, 12, 30).WeekDay(), 7);
}

TEST(Dates, ArithmeticAcrossMonthAndYearEnds)
{
    DateTime nye = DateTime::FromParts(2023, 12, 31, 23, 30);
    EXPECT_EQ(nye.AddMinutes(45), DateTime::FromParts(2024, 1, 1, 0, 15));
    EXPECT_EQ(nye.AddHours(-24), DateTime::FromParts(2023, 12, 30, 23, 30));
    EXPECT_EQ(DateTime::FromParts(2024, 2, 28).AddDays(1), DateTime::FromParts(2024, 2, 29));
    EXPECT_EQ(DateTime::FromParts(2023, 2, 28).AddDays(1), DateTime::FromParts(2023, 3, 1));
    // A day past the end of the target month becomes its last day.
    EXPECT_EQ(DateTime::FromParts(2024, 1, 31).AddMonths(1), DateTime::FromParts(2024, 2, 29));
    EXPECT_EQ(DateTime::FromParts(2024, 2, 29).AddYears(1), DateTime::FromParts(2025, 2, 28));
    EXPECT_EQ(DateTime::FromParts(2024, 2, 29).Add("yyyy", -4), DateTime::FromParts(2020, 2, 29));
    // Amounts with a fraction round half to even.
    EXPECT_EQ(DateTime::FromParts(2024, 1, 1).Add("h", 2.5), DateTime::FromParts(2024, 1, 1, 2));
    EXPECT_EQ(DateTime::FromParts(2024, 1, 1).Add("n", 3.5), DateTime::FromParts(2024, 1, 1, 0, 4));
    EXPECT_THROW(DateTime::FromParts(9999, 12, 31).AddDays(1), vb::RuntimeError);
    EXPECT_THROW(DateTime::FromParts(2024, 1, 1).Add("x", 1), vb::RuntimeError);
}

TEST(Dates, WholeUnitsBetweenCountBoundariesCrossed)
{
    DateTime ref = DateTime::FromParts(2004, 7, 3);
    EXPECT_EQ(DateTime::DiffHours(ref, DateTime::FromParts(2004, 7, 2, 23, 30)), -1);
    EXPECT_EQ(DateTime::DiffHours(ref, DateTime::FromParts(2004, 7, 3, 0, 59)), 0);
    EXPECT_EQ(DateTime::DiffHours(ref, DateTime::FromParts(2004, 7, 4, 1, 0)), 25);
    EXPECT_EQ(DateTime::DiffDays(DateTime::FromParts(2024, 1, 1, 23, 59), DateTime::FromParts(2024, 1, 2, 0, 1)), 1);
    EXPECT_EQ(DateTime::DiffDays(DateTime::FromParts(2024, 1, 1), DateTime::FromParts(2024, 3, 15, 18)), 74);
    EXPECT_EQ(DateTime::DiffMinutes(DateTime::FromParts(2024, 1, 1, 0, 0, 59), DateTime::FromParts(2024, 1, 1, 0, 1)), 1);
}
