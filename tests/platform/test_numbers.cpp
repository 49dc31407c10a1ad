// The runtime's number rules: rounding, leading numbers, number texts and
// zero patterns. Results here decide which moments are tested and how
// scores and percents print, so each rule is pinned at its edges.
#include <gtest/gtest.h>

#include <clocale>

#include "ranvel/platform/variant.h"
#include "ranvel/platform/vbmath.h"

using namespace ranvel;

TEST(Numbers, IntFixAndHalfEvenRounding)
{
    EXPECT_EQ(vb::Int(-2.5), -3);
    EXPECT_EQ(vb::Fix(-2.5), -2);
    EXPECT_EQ(vb::Int(2.9999), 2);
    // A fraction of exactly one half goes to the even neighbour.
    EXPECT_EQ(vb::CLng(0.5), 0);
    EXPECT_EQ(vb::CLng(1.5), 2);
    EXPECT_EQ(vb::CLng(2.5), 2);
    EXPECT_EQ(vb::CLng(-1.5), -2);
    EXPECT_EQ(vb::CLng(-2.5), -2);
    EXPECT_EQ(vb::CLng(2.5000001), 3);
    EXPECT_THROW(vb::CLng(3e9), vb::RuntimeError);
    EXPECT_THROW(vb::CInt(40000), vb::RuntimeError);
}

TEST(Numbers, ValReadsTheLeadingNumber)
{
    EXPECT_DOUBLE_EQ(vb::Val("+05.30"), 5.3);
    EXPECT_DOUBLE_EQ(vb::Val("-05.30"), -5.3);
    EXPECT_DOUBLE_EQ(vb::Val("12abc"), 12);
    EXPECT_DOUBLE_EQ(vb::Val(" 1 2 3"), 123);
    EXPECT_DOUBLE_EQ(vb::Val(".5"), 0.5);
    EXPECT_DOUBLE_EQ(vb::Val("1.2.3"), 1.2);
    EXPECT_DOUBLE_EQ(vb::Val("1e3x"), 1000);
    EXPECT_DOUBLE_EQ(vb::Val("1e"), 1);
    EXPECT_DOUBLE_EQ(vb::Val("&H1F"), 31);
    EXPECT_DOUBLE_EQ(vb::Val("23.30 deg"), 23.3);
    EXPECT_EQ(vb::Val(""), 0);
    EXPECT_EQ(vb::Val("abc"), 0);
    EXPECT_EQ(vb::Val("-"), 0);
}

TEST(Numbers, StrictParsingRefusesTrailingText)
{
    EXPECT_DOUBLE_EQ(vb::ParseNumber(" 12.5 "), 12.5);
    EXPECT_DOUBLE_EQ(vb::ParseNumber("-3"), -3);
    EXPECT_THROW(vb::ParseNumber("12x"), vb::RuntimeError);
    EXPECT_THROW(vb::ParseNumber(""), vb::RuntimeError);
    EXPECT_FALSE(vb::IsNumeric("1,5"));
    EXPECT_TRUE(vb::IsNumeric("1.5"));
}

TEST(Numbers, NumberTextHasFifteenDigitsAndNoTrailingZeros)
{
    EXPECT_EQ(vb::CStr(0.5), "0.5");
    EXPECT_EQ(vb::CStr(6.05), "6.05");
    EXPECT_EQ(vb::CStr(100.0), "100");
    EXPECT_EQ(vb::CStr(-2.5), "-2.5");
    EXPECT_EQ(vb::CStr(0.0), "0");
    EXPECT_EQ(vb::CStr(1.0 / 3.0), "0.333333333333333");
    EXPECT_EQ(vb::CStr(2.8333333333333335), "2.83333333333333");
    EXPECT_EQ(vb::CStr(2.0 / 3.0), "0.666666666666667");
    EXPECT_EQ(vb::CStr(0.00001), "0.00001");
    EXPECT_EQ(vb::CStr(0.000001), "1E-06");
    EXPECT_EQ(vb::CStr(123456789012345.0), "123456789012345");
    EXPECT_EQ(vb::CStr(1e15), "1E+15");
    EXPECT_EQ(vb::CStr(1.5e-7), "1.5E-07");
    EXPECT_EQ(vb::DigitsBehindPoint(6.05), "05");
    EXPECT_EQ(vb::DigitsBehindPoint(6.0), "");
}

TEST(Numbers, ZeroPatternsRoundHalfAwayFromZero)
{
    EXPECT_EQ(vb::Format(5, "00"), "05");
    EXPECT_EQ(vb::Format(2.5, "00"), "03");
    EXPECT_EQ(vb::Format(-2.5, "0"), "-3");
    EXPECT_EQ(vb::Format(8.333333, "00"), "08");
    EXPECT_EQ(vb::Format(98.3333, "00"), "98");
    EXPECT_EQ(vb::Format(99.5, "00"), "100");
    EXPECT_EQ(vb::Format(123, "00"), "123");
    // Rounded on the decimal text, so a binary 2.675 still goes up.
    EXPECT_EQ(vb::Format(2.675, "0.00"), "2.68");
    EXPECT_EQ(vb::Format(0.125, "0.00"), "0.13");
    EXPECT_EQ(vb::Format(0.004, "0.00"), "0.00");
    EXPECT_EQ(vb::Format(0.005, "0.00"), "0.01");
    EXPECT_EQ(vb::Format(87.5, "0.00"), "87.50");
    EXPECT_EQ(vb::Format(0.0, "0.00"), "0.00");
}

TEST(Numbers, ConversionsIgnoreTheMachineLocale)
{
    const char* old = std::setlocale(LC_ALL, nullptr);
    std::string saved = old ? old : "C";
    if (!std::setlocale(LC_ALL, "de_DE.UTF-8") && !std::setlocale(LC_ALL, "fr_FR.UTF-8"))
        GTEST_SKIP() << "no locale with a decimal comma on this machine";
    EXPECT_EQ(vb::CStr(5.5), "5.5");
    EXPECT_DOUBLE_EQ(vb::Val("5.5"), 5.5);
    EXPECT_EQ(vb::Format(5.5, "0.00"), "5.50");
    std::setlocale(LC_ALL, saved.c_str());
}

TEST(Numbers, VariantConversions)
{
    EXPECT_EQ(Variant("7.5").ToLong(), 8);
    EXPECT_EQ(Variant(6.5).ToLong(), 6);
    EXPECT_EQ(Variant().ToDouble(), 0);
    EXPECT_EQ(Variant(true).ToDouble(), -1);
    EXPECT_EQ(Variant(5.5).ToText(), "5.5");
    EXPECT_EQ(Variant(12).ToText(), "12");
    EXPECT_THROW(Variant::Null().ToText(), vb::RuntimeError);
    EXPECT_EQ(Variant::Null().ToTextOrEmpty(), "");
    EXPECT_THROW(Variant("abc").ToLong(), vb::RuntimeError);
    EXPECT_TRUE(Variant("True").ToBool());
    EXPECT_TRUE(Variant(-1).ToBool());
    EXPECT_FALSE(Variant(0).ToBool());
}
