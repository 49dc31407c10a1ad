// The loosely typed value that fields, settings and lookups hand around:
// Empty, Null, a boolean, a whole number, a double, a text or a date.
// Conversions follow the classic runtime (CStr, CDbl, CLng with half-to-even
// rounding), always with "." as the decimal point.
#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "ranvel/platform/datetime.h"

namespace ranvel {

struct NullValue {
    bool operator==(const NullValue&) const = default;
};

class Variant {
public:
    Variant() = default;  // Empty
    Variant(NullValue) : v_(NullValue{}) {}
    Variant(bool b) : v_(b) {}
    Variant(int i) : v_(static_cast<std::int64_t>(i)) {}
    Variant(long i) : v_(static_cast<std::int64_t>(i)) {}
    Variant(long long i) : v_(static_cast<std::int64_t>(i)) {}
    Variant(unsigned i) : v_(static_cast<std::int64_t>(i)) {}
    Variant(unsigned long i) : v_(static_cast<std::int64_t>(i)) {}
    Variant(unsigned long long i) : v_(static_cast<std::int64_t>(i)) {}
    Variant(double d) : v_(d) {}
    Variant(const char* s) : v_(std::string(s)) {}
    Variant(std::string s) : v_(std::move(s)) {}
    Variant(std::string_view s) : v_(std::string(s)) {}
    Variant(const DateTime& d) : v_(d) {}

    static Variant Null() { return Variant(NullValue{}); }

    bool IsEmpty() const { return std::holds_alternative<std::monostate>(v_); }
    bool IsNull() const { return std::holds_alternative<NullValue>(v_); }
    bool IsText() const { return std::holds_alternative<std::string>(v_); }
    bool IsNumber() const
    {
        return std::holds_alternative<std::int64_t>(v_) || std::holds_alternative<double>(v_) ||
               std::holds_alternative<bool>(v_);
    }
    bool IsDate() const { return std::holds_alternative<DateTime>(v_); }

    // CDbl: Empty 0, True -1, a text must be a number, Null is an error.
    double ToDouble() const;
    // CLng: as ToDouble, rounded half to even into 32 bits.
    std::int32_t ToLong() const;
    // CStr: Empty "", True "True", a double by its 15-digit text; Null is an
    // error.
    std::string ToText() const;
    // The text, with Null read as "" (for fields where Null means nothing).
    std::string ToTextOrEmpty() const { return IsNull() ? std::string() : ToText(); }
    // CBool: numbers non-zero, texts "True"/"False" or numeric.
    bool ToBool() const;
    DateTime ToDate() const;

    const auto& Raw() const { return v_; }
    bool operator==(const Variant&) const = default;

private:
    std::variant<std::monostate, NullValue, bool, std::int64_t, double, std::string, DateTime> v_;
};

}  // namespace ranvel
