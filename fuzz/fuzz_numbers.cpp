// The runtime's number readers on any text: Val, ParseNumber (CDbl of a
// text), IsNumeric, and the loose value's conversions, with the number
// read written back by CStr and Format and used as a date and an amount of
// date arithmetic.
//
// Beyond not crashing: where the whole text is a number, Val reads the same
// number from it; CStr's text of a number reads back to that text; and
// Format's two decimals lie within half a hundredth of the number.
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "harness.h"
#include "ranvel/platform/datetime.h"
#include "ranvel/platform/variant.h"
#include "ranvel/platform/vbmath.h"

using namespace ranvel;
using fuzz::Guarded;

namespace {

std::string Shown(double x) { return vb::ShortestText(x); }

void WrittenBack(double x)
{
    // At the ends of the doubles, 15 digits round past what a double holds
    // (CStr of the largest reads back as an overflow, as it always did).
    if (x != 0 && !(std::fabs(x) > 1e-300 && std::fabs(x) < 1e308)) return;
    const std::string text = vb::CStr(x);
    if (!vb::IsNumeric(text)) fuzz::Fail("CStr(" + Shown(x) + ") = '" + text + "' is not a number");
    if (vb::CStr(vb::ParseNumber(text)) != text)
        fuzz::Fail("CStr(" + Shown(x) + ") = '" + text + "' reads back as " + Shown(vb::ParseNumber(text)));
    if (std::fabs(x) < 1e12) {
        const std::string two = vb::Format(x, "00.00");
        if (!vb::IsNumeric(two)) fuzz::Fail("Format(" + Shown(x) + ", \"00.00\") = '" + two + "' is not a number");
        const double error = std::fabs(vb::ParseNumber(two) - x);
        if (error > 0.005 + std::fabs(x) * 1e-14)
            fuzz::Fail("Format(" + Shown(x) + ", \"00.00\") = '" + two + "' is " + Shown(error) + " away");
    }
}

void AsAmounts(double x)
{
    const DateTime day = DateTime::FromParts(2024, 3, 17, 10, 30);
    for (const char* interval : {"yyyy", "q", "m", "d", "ww", "h", "n", "s"})
        Guarded([&] { (void)day.Add(interval, x); });
    Guarded([&] { (void)Variant(x).ToDate(); });
    Guarded([&] { (void)vb::CLng(x); });
    Guarded([&] { (void)vb::CInt(x); });
    (void)vb::RoundHalfEven(x);
    (void)vb::DigitsBehindPoint(x);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fuzz::Init();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);

    double val = 0;
    bool valRead = false;
    Guarded([&] {
        val = vb::Val(text);
        valRead = true;
    });
    if (vb::IsNumeric(text)) {
        const double number = vb::ParseNumber(text);
        if (!valRead || !(val == number))
            fuzz::Fail("'" + text + "' is a number, " + Shown(number) + ", but Val reads " +
                       (valRead ? Shown(val) : std::string("an error")));
        WrittenBack(number);
        AsAmounts(number);
    }
    if (valRead) AsAmounts(val);

    const Variant loose(text);
    Guarded([&] { (void)loose.ToDouble(); });
    Guarded([&] { (void)loose.ToLong(); });
    Guarded([&] { (void)loose.ToBool(); });
    Guarded([&] { (void)loose.ToDate(); });
    return 0;
}
