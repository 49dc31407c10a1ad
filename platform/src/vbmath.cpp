#include "ranvel/platform/vbmath.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <limits>

namespace ranvel::vb {

double Int(double x) { return std::floor(x); }
double Fix(double x) { return std::trunc(x); }

double RoundHalfEven(double x)
{
    double r = std::floor(x);
    double diff = x - r;
    if (diff > 0.5) return r + 1.0;
    if (diff < 0.5) return r;
    return std::fmod(r, 2.0) == 0.0 ? r : r + 1.0;
}

std::int32_t CLng(double x)
{
    double r = RoundHalfEven(x);
    if (!(r >= -2147483648.0 && r <= 2147483647.0)) throw RuntimeError("Overflow");
    return static_cast<std::int32_t>(r);
}

std::int16_t CInt(double x)
{
    double r = RoundHalfEven(x);
    if (!(r >= -32768.0 && r <= 32767.0)) throw RuntimeError("Overflow");
    return static_cast<std::int16_t>(r);
}

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

double FromChars(const std::string& s)
{
    double v = 0.0;
    auto res = std::from_chars(s.data(), s.data() + s.size(), v);
    if (res.ec == std::errc::result_out_of_range) throw RuntimeError("Overflow");
    return v;
}

// Reads "&H1F" / "&O17" after the ampersand; returns false when no digit.
bool ReadRadix(std::string_view s, std::size_t pos, double& out, bool allowTrailing)
{
    if (pos + 1 >= s.size() + 1) return false;
    if (pos >= s.size()) return false;
    char kind = static_cast<char>(std::toupper(static_cast<unsigned char>(s[pos])));
    int base = kind == 'H' ? 16 : (kind == 'O' ? 8 : 0);
    if (base == 0) return false;
    std::uint64_t v = 0;
    std::size_t i = pos + 1, digits = 0;
    for (; i < s.size(); ++i) {
        if (IsBlank(s[i])) continue;
        int d;
        char c = static_cast<char>(std::toupper(static_cast<unsigned char>(s[i])));
        if (c >= '0' && c <= '9') d = c - '0';
        else if (base == 16 && c >= 'A' && c <= 'F') d = c - 'A' + 10;
        else break;
        if (d >= base) break;
        v = v * static_cast<std::uint64_t>(base) + static_cast<std::uint64_t>(d);
        ++digits;
    }
    if (digits == 0) return false;
    if (!allowTrailing && i != s.size()) return false;
    out = static_cast<double>(v);
    return true;
}

// Collects the longest numeric prefix of s (blanks skipped) in a form that
// from_chars reads. Returns the count of characters consumed from s.
std::size_t NumericPrefix(std::string_view s, std::string& out, bool skipInnerBlanks)
{
    out.clear();
    std::size_t i = 0;
    auto skip = [&] {
        while (i < s.size() && IsBlank(s[i])) ++i;
    };
    skip();
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) {
        if (s[i] == '-') out.push_back('-');
        ++i;
        if (skipInnerBlanks) skip();
    }
    std::size_t mantDigits = 0;
    bool point = false;
    std::size_t consumed = i;
    while (i < s.size()) {
        char c = s[i];
        if (c >= '0' && c <= '9') {
            out.push_back(c);
            ++mantDigits;
        } else if (c == '.' && !point) {
            point = true;
            out.push_back('.');
        } else if (skipInnerBlanks && IsBlank(c)) {
            // blanks inside a number are passed over
        } else {
            break;
        }
        ++i;
        consumed = i;
    }
    if (mantDigits == 0) {
        out.clear();
        return 0;
    }
    if (!out.empty() && out.back() == '.') out.pop_back();
    if (i < s.size() && (s[i] == 'e' || s[i] == 'E' || s[i] == 'd' || s[i] == 'D')) {
        std::size_t j = i + 1;
        std::string exp = "e";
        if (j < s.size() && (s[j] == '+' || s[j] == '-')) {
            exp.push_back(s[j]);
            ++j;
        }
        std::size_t expDigits = 0;
        while (j < s.size() && ((s[j] >= '0' && s[j] <= '9') || (skipInnerBlanks && IsBlank(s[j])))) {
            if (!IsBlank(s[j])) {
                exp.push_back(s[j]);
                ++expDigits;
            }
            ++j;
        }
        if (expDigits > 0) {
            out += exp;
            consumed = j;
        }
    }
    return consumed;
}

}  // namespace

double Val(std::string_view text)
{
    std::size_t i = 0;
    while (i < text.size() && IsBlank(text[i])) ++i;
    if (i < text.size() && text[i] == '&') {
        double v = 0;
        return ReadRadix(text, i + 1, v, true) ? v : 0.0;
    }
    std::string num;
    if (NumericPrefix(text, num, true) == 0) return 0.0;
    return FromChars(num);
}

namespace {
bool TryParseNumber(std::string_view text, double& out)
{
    std::string t = Trim(text);
    if (t.empty()) return false;
    if (t[0] == '&') return ReadRadix(t, 1, out, false);
    std::string num;
    std::size_t used = NumericPrefix(t, num, false);
    if (used == 0 || used != t.size()) return false;
    out = FromChars(num);
    return true;
}
}  // namespace

double ParseNumber(std::string_view text)
{
    double v = 0;
    if (!TryParseNumber(text, v)) throw RuntimeError("Type mismatch");
    return v;
}

bool IsNumeric(std::string_view text)
{
    double v = 0;
    try {
        return TryParseNumber(text, v);
    } catch (const RuntimeError&) {
        return false;
    }
}

namespace {

// x written with 15 significant digits: the digits without trailing zeros
// and the power of ten of the first one.
struct Digits15 {
    bool negative = false;
    std::string digits;  // "0" for zero
    int exponent = 0;    // value = 0.d1d2... is NOT used; value = d1.d2d3... * 10^exponent
};

Digits15 ToDigits15(double x)
{
    Digits15 d;
    if (x == 0.0 || !std::isfinite(x)) {
        d.digits = "0";
        return d;
    }
    char buf[64];
    auto res = std::to_chars(buf, buf + sizeof buf, x, std::chars_format::scientific, 14);
    std::string s(buf, res.ptr);
    std::size_t p = 0;
    if (s[p] == '-') {
        d.negative = true;
        ++p;
    }
    std::size_t e = s.find('e');
    for (std::size_t k = p; k < e; ++k)
        if (s[k] != '.') d.digits.push_back(s[k]);
    int exp = 0;
    std::from_chars(s.data() + e + 1 + (s[e + 1] == '+' ? 1 : 0), s.data() + s.size(), exp);
    d.exponent = exp;
    while (d.digits.size() > 1 && d.digits.back() == '0') d.digits.pop_back();
    return d;
}

// Writes digits d1d2... * 10^exponent in plain positional form.
std::string Positional(const std::string& digits, int exponent)
{
    std::string out;
    if (exponent < 0) {
        out = "0.";
        out.append(static_cast<std::size_t>(-exponent - 1), '0');
        out += digits;
        return out;
    }
    std::size_t whole = static_cast<std::size_t>(exponent) + 1;
    if (digits.size() <= whole) {
        out = digits;
        out.append(whole - digits.size(), '0');
    } else {
        out = digits.substr(0, whole) + "." + digits.substr(whole);
    }
    return out;
}

}  // namespace

std::string CStr(double x)
{
    Digits15 d = ToDigits15(x);
    if (d.digits == "0") return "0";
    std::string body;
    if (d.exponent >= -5 && d.exponent < 15) {
        body = Positional(d.digits, d.exponent);
    } else {
        body = d.digits.substr(0, 1);
        if (d.digits.size() > 1) body += "." + d.digits.substr(1);
        int e = d.exponent;
        body += e < 0 ? "E-" : "E+";
        int ae = e < 0 ? -e : e;
        if (ae < 10) body.push_back('0');
        body += std::to_string(ae);
    }
    return d.negative ? "-" + body : body;
}

std::string CStr(std::int64_t x) { return std::to_string(x); }

std::string DigitsBehindPoint(double x)
{
    std::string s = CStr(x);
    std::size_t p = s.find('.');
    if (p == std::string::npos) return {};
    std::size_t e = s.find('E', p);
    return s.substr(p + 1, e == std::string::npos ? std::string::npos : e - p - 1);
}

std::string Format(double x, std::string_view pattern)
{
    std::size_t point = pattern.find('.');
    std::size_t wholeZeros = point == std::string_view::npos ? pattern.size() : point;
    std::size_t fracDigits = point == std::string_view::npos ? 0 : pattern.size() - point - 1;

    Digits15 d = ToDigits15(x);
    // Decimal digits as a whole-number string scaled by 10^fracDigits, with
    // one extra digit for the rounding decision.
    std::string digits = d.digits;
    int exponent = d.exponent;
    // Position of the rounding digit relative to the first digit.
    long keep = static_cast<long>(exponent) + 1 + static_cast<long>(fracDigits);
    std::string kept;
    bool roundUp = false;
    if (d.digits == "0") {
        kept = "0";
    } else if (keep <= 0) {
        kept = "0";
        roundUp = keep == 0 && digits[0] >= '5';
    } else {
        if (static_cast<std::size_t>(keep) >= digits.size()) {
            kept = digits + std::string(static_cast<std::size_t>(keep) - digits.size(), '0');
        } else {
            kept = digits.substr(0, static_cast<std::size_t>(keep));
            roundUp = digits[static_cast<std::size_t>(keep)] >= '5';
        }
    }
    if (roundUp) {
        int i = static_cast<int>(kept.size()) - 1;
        while (i >= 0) {
            if (kept[static_cast<std::size_t>(i)] == '9') {
                kept[static_cast<std::size_t>(i)] = '0';
                --i;
            } else {
                ++kept[static_cast<std::size_t>(i)];
                break;
            }
        }
        if (i < 0) kept.insert(kept.begin(), '1');
    }
    // kept is the value times 10^fracDigits as a whole number.
    if (kept.size() <= fracDigits) kept.insert(0, fracDigits - kept.size() + 1, '0');
    std::string whole = kept.substr(0, kept.size() - fracDigits);
    std::string frac = kept.substr(kept.size() - fracDigits);
    std::size_t nz = whole.find_first_not_of('0');
    whole = nz == std::string::npos ? std::string() : whole.substr(nz);
    if (whole.size() < wholeZeros) whole.insert(0, wholeZeros - whole.size(), '0');
    std::string out = whole;
    if (fracDigits > 0) out += "." + frac;
    if (d.negative) out.insert(out.begin(), '-');
    return out;
}

std::string ShortestText(double x)
{
    char buf[64];
    auto res = std::to_chars(buf, buf + sizeof buf, x);
    return std::string(buf, res.ptr);
}

std::string Trim(std::string_view s)
{
    std::size_t b = s.find_first_not_of(' ');
    if (b == std::string_view::npos) return {};
    std::size_t e = s.find_last_not_of(' ');
    return std::string(s.substr(b, e - b + 1));
}

namespace {
// Case folding of the ASCII letters only, whatever the machine's locale.
char AsciiUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
char AsciiLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
}  // namespace

std::string UCase(std::string_view s)
{
    std::string r(s);
    std::transform(r.begin(), r.end(), r.begin(), AsciiUpper);
    return r;
}

std::string LCase(std::string_view s)
{
    std::string r(s);
    std::transform(r.begin(), r.end(), r.begin(), AsciiLower);
    return r;
}

std::string Mid(std::string_view s, long start, long length)
{
    if (start < 1) throw RuntimeError("Invalid procedure call or argument");
    std::size_t b = static_cast<std::size_t>(start - 1);
    if (b >= s.size()) return {};
    if (length < 0) return std::string(s.substr(b));
    return std::string(s.substr(b, static_cast<std::size_t>(length)));
}

std::string Left(std::string_view s, long n)
{
    if (n < 0) throw RuntimeError("Invalid procedure call or argument");
    return std::string(s.substr(0, std::min<std::size_t>(s.size(), static_cast<std::size_t>(n))));
}

std::string Right(std::string_view s, long n)
{
    if (n < 0) throw RuntimeError("Invalid procedure call or argument");
    std::size_t k = std::min<std::size_t>(s.size(), static_cast<std::size_t>(n));
    return std::string(s.substr(s.size() - k));
}

bool EqualsNoCase(std::string_view a, std::string_view b)
{
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (AsciiLower(a[i]) != AsciiLower(b[i])) return false;
    return true;
}

std::vector<std::string> Split(std::string_view s, char separator)
{
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (;;) {
        std::size_t p = s.find(separator, start);
        parts.emplace_back(s.substr(start, p == std::string_view::npos ? std::string_view::npos : p - start));
        if (p == std::string_view::npos) return parts;
        start = p + 1;
    }
}

}  // namespace ranvel::vb
