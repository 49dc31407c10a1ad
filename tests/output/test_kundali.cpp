// The chart control: twelve boxes turned by the ascendant in the North
// chart and fixed by sign in the East and South ones, its folding of
// numbers, and the properties that the layout pass mends or keeps.
#include <gtest/gtest.h>

#include <QLabel>

#include "ranvel/output/Kundali.h"

namespace ranvel {
namespace {

TEST(Kundali, FoldsByWholeTwelvesOnly)
{
    EXPECT_EQ(Kundali::Expunger12(12), 12);
    EXPECT_EQ(Kundali::Expunger12(13), 1);
    EXPECT_EQ(Kundali::Expunger12(24), 0);
    EXPECT_EQ(Kundali::Expunger12(25), 1);
    EXPECT_EQ(Kundali::Expunger12(-1), 11);
    EXPECT_EQ(Kundali::Expunger12(-12), 12);
    EXPECT_EQ(Kundali::Expunger12(-13), 11);
    EXPECT_EQ(Kundali::Expunger12(0), 0);
}

TEST(Kundali, NorthTurnsTheBoxesByTheAscendant)
{
    Kundali k;
    k.HouseNumber(12);
    EXPECT_EQ(k.lblHouseNo(0)->text(), "12");
    EXPECT_EQ(k.lblHouseNo(1)->text(), "1");
    EXPECT_EQ(k.lblHouseNo(11)->text(), "11");
    EXPECT_EQ(k.LagnaNo(), 12);

    // The ascendant's own sign is the first house; Aries the second.
    k.PlanetPlace(12, "Asc");
    k.PlanetPlace(1, "Sun");
    EXPECT_EQ(k.HouseText(1), "Asc ");
    EXPECT_EQ(k.HouseText(2), "Sun ");

    k.HouseNumber(1);
    k.Clear();
    k.PlanetPlace(12, "Sun");
    EXPECT_EQ(k.HouseText(12), "Sun ");  // 11 is under 12 and stays
    for (const char* p : {"Mar", "Jup", "Sat"}) k.PlanetPlace(5, p);
    EXPECT_EQ(k.HouseText(5), "Mar Jup Sat ");
    EXPECT_EQ(k.HouseText(0), "");
    EXPECT_EQ(k.HouseText(13), "");
}

TEST(Kundali, EastAndSouthKeepTheSignsInPlace)
{
    for (int style : {Kundali::East, Kundali::South}) {
        Kundali k;
        k.ChartStyle(style);
        k.HouseNumber(7);
        k.PlanetPlace(7, "Moon");
        k.PlanetPlace(1, "Asc");
        EXPECT_EQ(k.HouseText(7), "Moon ") << style;
        EXPECT_EQ(k.HouseText(1), "Asc ") << style;
        EXPECT_EQ(k.lblHouseNo(0)->text(), "1") << style;
        // Each style puts box 0 in its own place.
        EXPECT_EQ(k.LogicalRect(k.lblPlanet(0)).topLeft(),
                  style == Kundali::East ? QPointF(385, 40) : QPointF(260, 70));
    }
}

TEST(Kundali, NumbersHiddenByTheEastChartStayHiddenInTheSouth)
{
    Kundali k;
    k.show();
    k.ChartStyle(Kundali::East);
    EXPECT_TRUE(k.lblHouseNo(0)->isVisible());
    EXPECT_FALSE(k.lblHouseNo(1)->isVisible());
    EXPECT_TRUE(k.lblHouseNo(3)->autoFillBackground());  // sits on a line
    k.ChartStyle(Kundali::South);
    EXPECT_FALSE(k.lblHouseNo(1)->isVisible());
    EXPECT_EQ(k.lblHouseNo(1)->text(), "2");
    EXPECT_TRUE(k.Line(7)->isVisible());
    k.ChartStyle(Kundali::North);
    EXPECT_TRUE(k.lblHouseNo(1)->isVisible());
    EXPECT_FALSE(k.Line(7)->isVisible());
    EXPECT_FALSE(k.Line(8)->isVisible());

    // Once made invisible, no layout pass shows them again.
    k.MakeHouseInvisible();
    EXPECT_TRUE(k.InvisHouseNum());
    k.HouseNumber(3);
    for (int i = 0; i < 12; ++i) EXPECT_FALSE(k.lblHouseNo(i)->isVisible()) << i;
    EXPECT_EQ(k.lblHouseNo(0)->text(), "3");
}

TEST(Kundali, WidthsOfNoughtBecomeOne)
{
    Kundali k;
    k.BorderWidth(0);
    EXPECT_EQ(k.BorderWidth(), 1);
    EXPECT_EQ(k.squMain()->BorderWidth(), 1);
    k.BorderWidth(4);
    k.HouseNumber(2);  // a layout pass places the square by its width
    EXPECT_EQ(k.LogicalRect(k.squMain()), QRectF(5, 5, 995, 995));
    k.LineWidth(0);
    EXPECT_EQ(k.LineWidth(), 1);
    for (int n = 1; n <= 8; ++n) EXPECT_EQ(k.Line(n)->BorderWidth(), 1) << n;
    k.LineWidth(3);
    for (int n = 1; n <= 8; ++n) EXPECT_EQ(k.Line(n)->BorderWidth(), 3) << n;
}

TEST(Kundali, ElementsStandInTheirOrderAndStretchWithTheControl)
{
    Kundali k;
    const std::vector<QWidget*>& e = k.Elements();
    ASSERT_EQ(e.size(), 34u);
    EXPECT_EQ(e[0]->objectName(), "lblPlanet(0)");
    EXPECT_EQ(e[12]->objectName(), "squMain");
    EXPECT_EQ(e[13]->objectName(), "lblHouseNo(0)");
    EXPECT_EQ(e[25]->objectName(), "imgCenter");
    EXPECT_EQ(e[26]->objectName(), "Line8");
    EXPECT_EQ(e[33]->objectName(), "Line1");
    EXPECT_EQ(TypeName(e[0]), "Label");
    EXPECT_EQ(TypeName(e[12]), "Shape");
    EXPECT_EQ(TypeName(e[25]), "Image");
    EXPECT_EQ(TypeName(e[33]), "Line");
    EXPECT_EQ(TypeName(&k), "Kundali");

    k.resize(500, 400);
    k.show();
    EXPECT_EQ(k.lblPlanet(0)->geometry(), QRect(200, 40, 100, 120));
    EXPECT_EQ(k.LogicalRect(k.Line(1)), QRectF(QPointF(500, 0), QPointF(0, 500)));
    k.ChartStyle(7);  // no such style: everything stays
    EXPECT_EQ(k.lblPlanet(0)->geometry(), QRect(200, 40, 100, 120));
}

}  // namespace
}  // namespace ranvel
