// The angle and date conversions on the chart, and its name lookups against
// a small text database made for the test.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>

#include "ranvel/chart/planets.h"
#include "ranvel/data/textlookup.h"
#include "ranvel/platform/sinks.h"

using namespace ranvel;

TEST(PlanetsConversions, AnglesFromAndToText)
{
    EXPECT_DOUBLE_EQ(clsPlanets::DegToDec(10, 30, 0), 10.5);
    EXPECT_NEAR(clsPlanets::DegToDec(1, 0, 36), 1.01, 1e-12);
    EXPECT_EQ(clsPlanets::DecToDeg(12.5), "12:30:0");
    EXPECT_EQ(clsPlanets::DecToDeg(10.755), "10:45:18");
    // The fraction comes from the value's text, so a negative keeps Int's
    // floor but a positive fraction.
    EXPECT_EQ(clsPlanets::DecToDeg(-12.5), "-13:30:0");
    EXPECT_DOUBLE_EQ(clsPlanets::MinToDec(28.30), 28.5);
    EXPECT_EQ(clsPlanets::ConvertValNoDeg(45.5), "15:30:00");
    EXPECT_EQ(clsPlanets::ConvertValNoDeg(30), "30:00:00");  // 30 is not above 30
    EXPECT_EQ(clsPlanets::ConvertValNoDeg(5.0125), "05:00:45");
}

TEST(PlanetsConversions, DatesByUnitsAndNumbers)
{
    DateTime d = DateTime::FromParts(2024, 1, 1);
    int unit = 3;
    double value = 1.75;
    EXPECT_EQ(clsPlanets::AddDecValToDate(d, unit, value), DateTime::FromParts(2024, 1, 2, 18));
    EXPECT_EQ(unit, 6);
    unit = 2;  // matches no step
    value = 5;
    EXPECT_EQ(clsPlanets::AddDecValToDate(d, unit, value), d);
    unit = 1;
    value = 1.5;  // half a year of 365.2564 days
    EXPECT_EQ(clsPlanets::AddDecValToDate(d, unit, value), DateTime::FromParts(2025, 7, 2, 15, 4, 36));
    EXPECT_EQ(clsPlanets::ConvertDateToNum(DateTime::FromParts(2024, 3, 5)), 20240305);
    EXPECT_EQ(clsPlanets::DateAddEx("m", 1, DateTime::FromParts(2024, 1, 31)), DateTime::FromParts(2024, 2, 29));
}

TEST(PlanetsConversions, NamesComeFromTheTextDatabase)
{
    auto db = Database::Create(":memory:");
    db->ExecuteScript(
        "CREATE TABLE CNVT (Head TEXT COLLATE NOCASE, Val TEXT, Category TEXT COLLATE NOCASE);"
        "INSERT INTO CNVT VALUES ('1','Aries','Rashi'),('2','Taurus','Rashi'),('3','Gemini','Rashi'),"
        "('4','Cancer','Rashi'),('5','Leo','Rashi'),('6','Virgo','Rashi'),('7','Libra','Rashi'),"
        "('8','Scorpio','Rashi'),('9','Sagittarius','Rashi'),('10','Capricorn','Rashi'),('11','Aquarius','Rashi'),"
        "('12','Pisces','Rashi'),('March','March','Months'),('0','Sunday','DAY'),(':','^','Symbols');");
    HeadlessMessageSink sink(true);
    SetMessageSink(&sink);
    ResetSymbolCache();

    clsPlanets chart;
    chart.setTextDB(db, nullptr);
    EXPECT_EQ(chart.ConvertToDegNoVal(0), "Aries");
    EXPECT_EQ(chart.ConvertToDegNoVal(359.9), "Pisces");
    EXPECT_EQ(chart.ConvertToDegNoVal(360), "");  // sign 13 holds no name
    EXPECT_THROW(chart.ConvertToDegNoVal(420), std::exception);
    EXPECT_EQ(chart.ConvertValNoDegNoSec(45.5), "15^30");
    EXPECT_EQ(chart.ConvertDateToText(DateTime::FromParts(2024, 3, 5)), "5 March 2024");
    int day = 1;
    EXPECT_EQ(chart.GetDayName(day), "Sunday");
    EXPECT_EQ(day, 0);
    EXPECT_TRUE(sink.Messages().empty());

    // A missing row: the message, and an empty name; the work goes on.
    EXPECT_EQ(chart.GetMonthNameByNum(4), "");
    ASSERT_EQ(sink.Messages().size(), 1u);
    EXPECT_EQ(sink.Messages()[0].text, "Item Not Found 'April' in  'Months'");
    SetMessageSink(nullptr);
    ResetSymbolCache();
}
