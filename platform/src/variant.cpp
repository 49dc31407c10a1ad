#include "ranvel/platform/variant.h"

#include <cstdio>

#include "ranvel/platform/vbmath.h"

namespace ranvel {

namespace {
[[noreturn]] void InvalidNull() { throw vb::RuntimeError("Invalid use of Null"); }
}  // namespace

double Variant::ToDouble() const
{
    return std::visit(
        [](const auto& x) -> double {
            using T = std::decay_t<decltype(x)>;
            if constexpr (std::is_same_v<T, std::monostate>) return 0.0;
            else if constexpr (std::is_same_v<T, NullValue>) InvalidNull();
            else if constexpr (std::is_same_v<T, bool>) return x ? -1.0 : 0.0;
            else if constexpr (std::is_same_v<T, std::int64_t>) return static_cast<double>(x);
            else if constexpr (std::is_same_v<T, double>) return x;
            else if constexpr (std::is_same_v<T, std::string>) return vb::ParseNumber(x);
            else return x.Serial();
        },
        v_);
}

std::int32_t Variant::ToLong() const
{
    if (auto p = std::get_if<std::int64_t>(&v_)) {
        if (*p < INT32_MIN || *p > INT32_MAX) throw vb::RuntimeError("Overflow");
        return static_cast<std::int32_t>(*p);
    }
    return vb::CLng(ToDouble());
}

std::string Variant::ToText() const
{
    return std::visit(
        [](const auto& x) -> std::string {
            using T = std::decay_t<decltype(x)>;
            if constexpr (std::is_same_v<T, std::monostate>) return {};
            else if constexpr (std::is_same_v<T, NullValue>) InvalidNull();
            else if constexpr (std::is_same_v<T, bool>) return x ? "True" : "False";
            else if constexpr (std::is_same_v<T, std::int64_t>) return vb::CStr(x);
            else if constexpr (std::is_same_v<T, double>) return vb::CStr(x);
            else if constexpr (std::is_same_v<T, std::string>) return x;
            else {
                // A date prints day-first, with the clock only when it has one.
                std::string s = x.ToDayFirstText();
                if (x.Hour() || x.Minute() || x.Second()) {
                    char b[16];
                    std::snprintf(b, sizeof b, " %02d:%02d:%02d", x.Hour(), x.Minute(), x.Second());
                    s += b;
                }
                return s;
            }
        },
        v_);
}

bool Variant::ToBool() const
{
    if (auto p = std::get_if<std::string>(&v_)) {
        if (vb::EqualsNoCase(vb::Trim(*p), "True")) return true;
        if (vb::EqualsNoCase(vb::Trim(*p), "False")) return false;
    }
    if (auto p = std::get_if<bool>(&v_)) return *p;
    return ToDouble() != 0.0;
}

DateTime Variant::ToDate() const
{
    if (auto p = std::get_if<DateTime>(&v_)) return *p;
    if (auto p = std::get_if<std::string>(&v_)) return DateTime::ParseDayFirst(*p);
    if (IsNull()) InvalidNull();
    return DateTime::FromSerial(ToDouble());
}

}  // namespace ranvel
