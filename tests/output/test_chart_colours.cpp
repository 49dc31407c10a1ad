// The chart's colours and widths reach every element of the control, and
// a page's chart takes the active set.
#include <gtest/gtest.h>

#include <QLabel>

#include "ranvel/output/Kundali.h"
#include "ranvel/output/chartcolors.h"

namespace ranvel {
namespace {

TEST(KundaliThemeColours, EveryElementTakesItsPartOfTheActiveSet)
{
    const ChartColors saved = ActiveChartColors();
    ActiveChartColors() = {.KunBackColor = 0xE7F8FF, .KunBorderColor = 0x000080, .KunLineColor = 0x82004B,
                           .KunNumColor = 0x005CB8, .KunTxtColor = 0x1A1A8B, .KunLineWidth = 2, .KunBorderWidth = 0};
    Kundali k;
    k.ChartStyle(Kundali::South);
    ApplyChartColors(k);
    ActiveChartColors() = saved;

    EXPECT_EQ(k.BackColor(), QColor(0xFF, 0xF8, 0xE7));
    EXPECT_EQ(k.squMain()->BorderColor(), QColor(0x80, 0, 0));
    EXPECT_EQ(k.squMain()->BorderWidth(), 1);  // a width of 0 is drawn as 1
    for (int n = 1; n <= 8; ++n) {
        EXPECT_EQ(k.Line(n)->BorderColor(), QColor(0x4B, 0, 0x82)) << n;
        EXPECT_EQ(k.Line(n)->BorderWidth(), 2) << n;
    }
    EXPECT_EQ(k.lblHouseNo(5)->palette().color(QPalette::WindowText), QColor(0xB8, 0x5C, 0));
    EXPECT_EQ(k.lblPlanet(5)->palette().color(QPalette::WindowText), QColor(0x8B, 0x1A, 0x1A));
}

}  // namespace
}  // namespace ranvel
