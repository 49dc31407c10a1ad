// The wrapping functions at and around their bounds: a value equal to the
// bound stays, and only Norm9, Hour12 and ModReal lift a zero.
#include <gtest/gtest.h>

#include "ranvel/chart/wrap.h"

using namespace ranvel;

TEST(Wrap, BoundStaysAndNegativesComeAboveZero)
{
    EXPECT_EQ(Norm360(360), 360);
    EXPECT_EQ(Norm360(360.5), 0.5);
    EXPECT_EQ(Norm360(720), 360);
    EXPECT_EQ(Norm360(0), 0);
    EXPECT_EQ(Norm360(-10), 350);
    EXPECT_EQ(Norm360(-360), 360);  // adding goes on until above 0
    EXPECT_EQ(Norm360(-720), 360);
    EXPECT_EQ(Norm30(30), 30);
    EXPECT_EQ(Norm30(61), 1);
    EXPECT_EQ(Norm27(27), 27);
    EXPECT_EQ(Norm27(-1), 26);
    EXPECT_EQ(Norm24(24), 24);
    EXPECT_EQ(Norm24(25.5), 1.5);
    EXPECT_EQ(Norm7(7), 7);
    EXPECT_EQ(Norm7(8), 1);
    EXPECT_EQ(Norm7(0), 0);
}

TEST(Wrap, ZeroIsLiftedWhereTheRangeExcludesIt)
{
    EXPECT_EQ(Norm9(0), 9);
    EXPECT_EQ(Norm9(9), 9);
    EXPECT_EQ(Norm9(18), 9);
    EXPECT_EQ(Norm9(19), 1);
    EXPECT_EQ(Norm9(-9), 9);
    EXPECT_EQ(Hour12(0), 12);
    EXPECT_EQ(Hour12(12), 12);
    EXPECT_EQ(Hour12(13), 1);
    EXPECT_EQ(Hour12(24), 12);
    EXPECT_EQ(ModReal(0, 360), 360);
    EXPECT_EQ(ModReal(720, 360), 360);
    EXPECT_EQ(ModReal(725, 360), 5);
    EXPECT_EQ(ModReal(-5, 360), 355);
    EXPECT_EQ(ModReal(2.5, 1), 0.5);
}

TEST(Wrap, FractionAndTwoDigits)
{
    EXPECT_DOUBLE_EQ(FractionOf(-2.25), -0.25);
    EXPECT_DOUBLE_EQ(FractionOf(7.75), 0.75);
    EXPECT_EQ(TwoDigits(5), "05");
    EXPECT_EQ(TwoDigits(10), "10");
    EXPECT_EQ(TwoDigits(0), "00");
}
