// Numeric conventions of the system: the arithmetic and number-to-text rules
// of the classic desktop runtime the calculations were first written for.
// Every conversion here is locale-free and uses "." as the decimal point.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace ranvel::vb {

// A run-time fault of the classic runtime ("Type mismatch", "Overflow",
// "Invalid use of Null" ...). It ends the current command.
class RuntimeError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Int: the largest whole number not above x.
double Int(double x);
// Fix: x cut towards zero.
double Fix(double x);
// A fraction stored into a whole number rounds half to even.
double RoundHalfEven(double x);
// CLng / CInt: round half to even and check the range ("Overflow").
std::int32_t CLng(double x);
std::int16_t CInt(double x);

// Val: the number a text begins with, 0 if none. Blanks, tabs and line
// breaks anywhere are skipped; "&H" and "&O" prefixes are read as hex and
// octal. "+05.30" gives 5.3, "12abc" gives 12, "" gives 0.
double Val(std::string_view text);

// CDbl of a text: the whole text (blanks around it allowed) must be a number,
// otherwise "Type mismatch".
double ParseNumber(std::string_view text);
// True when ParseNumber would succeed (IsNumeric of a text).
bool IsNumeric(std::string_view text);

// CStr of a double: at most 15 significant digits, no trailing zeros, no
// exponent between 1E-05 and 1E+15 (0.5 gives "0.5", 1e-6 gives "1E-06").
std::string CStr(double x);
std::string CStr(std::int64_t x);
inline std::string CStr(int x) { return CStr(static_cast<std::int64_t>(x)); }

// The digits behind the point of CStr(x), "" when there is none
// (6.05 gives "05").
std::string DigitsBehindPoint(double x);

// Format(x, pattern) for patterns made of zeros with at most one point
// ("00", "0.00", "000"): rounds half away from zero on the 15-digit text of
// x, pads the whole part with leading zeros to the count of zeros before the
// point.
std::string Format(double x, std::string_view pattern);

// The shortest text that reads back to the same double (for JSON and for
// storing numbers exactly).
std::string ShortestText(double x);

// Text helpers of the runtime.
std::string Trim(std::string_view s);
std::string UCase(std::string_view s);
std::string LCase(std::string_view s);
// Mid$(s, start, length) with 1-based start; length < 0 means to the end.
std::string Mid(std::string_view s, long start, long length = -1);
std::string Left(std::string_view s, long n);
std::string Right(std::string_view s, long n);
bool EqualsNoCase(std::string_view a, std::string_view b);
// Split: the parts between the separators, empty ones included; an empty
// text gives one empty part.
std::vector<std::string> Split(std::string_view s, char separator);

}  // namespace ranvel::vb
