// Signs of the planets, the lords of the signs, dignity, combustion and the
// names by which planets and signs are shown. The tables are the tradition's
// as this system settles them, asymmetries included.
#include <cmath>
#include <initializer_list>

#include "ranvel/chart/planets.h"
#include "ranvel/chart/wrap.h"
#include "ranvel/platform/sinks.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

namespace {

// Rows of the planet tables, by planet number 1 Sun to 9 Ketu (index 0 is
// the Lagna, which has no row).
constexpr int kExaltSign[10] = {0, 1, 6, 12, 10, 4, 7, 2, 2, 8};
constexpr int kFallSign[10] = {0, 7, 12, 6, 4, 10, 1, 8, 8, 2};
constexpr int kSpeedPoints[10] = {0, 4, 6, 5, 3, 2, 1, 7, 0, 0};
// The orb within which the Sun burns a planet; 0 for those it never burns.
constexpr double kCombustOrb[10] = {0, 0, 7, 7, 8, 9, 9, 12, 0, 0};

// Lord of each sign, Aries first.
constexpr int kSignLord[12] = {4, 3, 2, 7, 1, 2, 3, 4, 5, 6, 6, 5};

// The short names the text store must hold: a store without them is taken
// as damaged.
const char* const kExpectedAbbrev[13] = {"Asc", "Sun", "Mer", "Ven", "Mar", "Jup", "Sat",
                                         "Moon", "Rah", "Ket", "Ura", "Nep", "Plu"};

bool InRow(int p, int lo, int hi) { return p >= lo && p <= hi; }

bool Among(int x, std::initializer_list<int> set)
{
    for (int v : set)
        if (v == x) return true;
    return false;
}

double CombustOrb(int p) { return InRow(p, 1, 9) ? kCombustOrb[p] : 0; }

}  // namespace

// ---------------------------------------------------------------------------
// Signs of the planets

int clsPlanets::PlanetRashiNum(int p) const { return static_cast<int>(vb::CLng(vb::Int(PlanetLongi(p) / 30.0) + 1)); }

int clsPlanets::PlanetSign(int p)
{
    // The first sign computed stands for the life of the object, across
    // later calculations; only 0 to 13 are kept.
    if (p < 0 || p > 13) return PlanetRashiNum(p);
    int& memo = signMemo_[static_cast<std::size_t>(p)];
    if (memo == 0) memo = PlanetRashiNum(p);
    return memo;
}

int clsPlanets::Sign(int p)
{
    auto bySign = [this](int q) { return static_cast<int>(vb::CLng(vb::Fix(PlanetLongi(q) / 30.0) + 1)); };
    if (p < 0 || p > 13) return bySign(p);
    int& memo = signMemo_[static_cast<std::size_t>(p)];
    if (memo == 0) memo = bySign(p);
    return memo;
}

std::string clsPlanets::PlanetRashiName(int p) { return ConvertRashi(PlanetRashiNum(p)); }

int clsPlanets::RashiNum() const
{
    const int s = PlanetRashiNum(7);
    return InRow(s, 1, 12) ? s : 0;  // a Moon at exactly 360 falls outside the signs
}

std::string clsPlanets::RashiName() { return ConvertRashi(RashiNum()); }

bool clsPlanets::RetroGrade(int p) const
{
    CheckIndex(p, 0, 13);
    if (p == 13) return false;
    if (p != 0) EnsureBodies();
    // The table against itself an hour later, with no allowance for the wrap
    // at 0 Aries. Slot 0 is never written, so the Lagna compares 0 with the
    // ayanamsha.
    return lysPlnt_[static_cast<std::size_t>(p)] > lysPlnt_[static_cast<std::size_t>(p + 13)];
}

int clsPlanets::PlanetHouse(int p) const
{
    return static_cast<int>(Hour12(PlanetRashiNum(p) + PlanetRashiNum(0) + 1));
}

int clsPlanets::GetSunAyan() const
{
    const int s = PlanetRashiNum(1);
    if (Among(s, {10, 11, 12, 1, 2, 3, 4})) return 1;
    if (InRow(s, 5, 9)) return 2;
    return 0;
}

// ---------------------------------------------------------------------------
// Combustion and orbs

Variant clsPlanets::Combust(int p) const
{
    if (p == 1) return false;
    if (!InRow(p, 2, 7)) return Variant();
    // No wrap at 0 Aries: a Sun at 359 and a planet at 1 are 358 apart.
    return std::fabs(PlanetLongi(1) - PlanetLongi(p)) <= kCombustOrb[p];
}

bool clsPlanets::CheckIfCombust(double a, int p, double b)
{
    const double orb = CombustOrb(p);
    if (orb == 0) return false;
    return std::fabs(a - b) <= orb;
}

bool clsPlanets::WithinOrbOfSun(int p) const
{
    if (p == 1) return false;
    const double sun = PlanetLongi(1);
    const double lon = PlanetLongi(p);
    return Norm360(sun - lon) <= 15 || Norm360(lon - sun) <= 15;
}

double clsPlanets::PlanetOrb(int p) const
{
    switch (p) {
    case 1: return 15;
    case 2:
    case 3: return RetroGrade(p) ? 6 : 7;
    case 4: return 8;
    case 5:
    case 6: return 9;
    case 7: return 12;
    default: return 0;
    }
}

double clsPlanets::PlanetMutOrb(int a, int b) const { return (PlanetOrb(a) + PlanetOrb(b)) / 2.0; }

int clsPlanets::PlanetSpeedPoints(int p) { return InRow(p, 1, 9) ? kSpeedPoints[p] : 0; }

// ---------------------------------------------------------------------------
// Dignity

bool clsPlanets::Exalted(int p) const { return InRow(p, 1, 9) && PlanetRashiNum(p) == kExaltSign[p]; }

bool clsPlanets::Debilitated(int p) const { return InRow(p, 1, 9) && PlanetRashiNum(p) == kFallSign[p]; }

bool clsPlanets::CheckIfDebi(int p, int sign) { return InRow(p, 1, 9) && sign == kFallSign[p]; }

bool clsPlanets::CheckOwnHouse(int p, int sign)
{
    switch (p) {
    case 1: return sign == 5;
    case 2: return Among(sign, {3, 6});
    case 3: return Among(sign, {2, 7});
    case 4: return Among(sign, {1, 8});
    case 5: return Among(sign, {9, 12});
    case 6: return Among(sign, {10, 11});
    case 7: return sign == 4;
    case 8: return sign == 11;
    case 9: return sign == 8;
    case 10: return sign == 11;
    case 11: return sign == 12;
    case 12: return sign == 8;
    default: return false;
    }
}

bool clsPlanets::IsPlanetEnemy(int a, int b)
{
    // Each row is a's own view; b need not count a as an enemy in return.
    switch (a) {
    case 1: return Among(b, {9, 3, 6, 8});
    case 2: return Among(b, {4, 5});
    case 3: return Among(b, {1, 5});
    case 4: return Among(b, {6, 8});
    case 6: return Among(b, {1, 9});
    case 7: return b == 2;
    case 8: return Among(b, {9, 1, 7, 4});
    case 9: return Among(b, {8, 6, 1, 7});
    default: return false;  // Jupiter counts no one an enemy
    }
}

int clsPlanets::GetRashiLordNum(int n) { return InRow(n, 1, 12) ? kSignLord[n - 1] : 0; }

int clsPlanets::FindRashiLordNo(int& n) { return GetRashiLordNum(n); }

// ---------------------------------------------------------------------------
// Names

std::string clsPlanets::ConvertRashi(const Variant& n)
{
    double d = n.ToDouble();
    if (d != vb::Int(d)) d = vb::Int(d / 30.0) + 1;  // a longitude
    // The table runs 0 to 13 with names in 1 to 12: 0 and 13 (a longitude
    // of exactly 360) are empty, and beyond the table is an error.
    if (d < 0 || d > 13) throw vb::RuntimeError("Subscript out of range");
    return RashiNameOf(static_cast<int>(d));
}

std::string clsPlanets::PlanetName(int p)
{
    std::string text = GetTextBetween("CNVT", p, "PLNTABB").ToText();
    CheckIndex(p, 0, 13);
    if (p <= 12 && text != kExpectedAbbrev[p])
        MsgBox("Invalid Data File. Please Re-install. Program will Terminate", MsgButtons::OK, "Invalid Data File",
               MsgIcon::Critical);
    return text;  // the caller goes on with what the store holds
}

std::string clsPlanets::PlanetNameFull(int p)
{
    CheckIndex(p, 0, 13);
    if (p == 13) return {};  // the table's last entry holds no name
    if (!planetFullNamesFilled_) {
        for (int i = 0; i <= 12; ++i)
            planetFullNames_[static_cast<std::size_t>(i)] = GetTextBetween("CNVT", i, "PLANETS").ToText();
        planetFullNamesFilled_ = true;
    }
    return planetFullNames_[static_cast<std::size_t>(p)];
}

std::string clsPlanets::PlanetNameSmall(int p) { return GetTextBetween("CNVT", p, "PLNTABBSU").ToText(); }

}  // namespace ranvel
