// The matching attributes of a birth (Varna, Vasya, Yoni, Gana, Nadi, Rajju)
// and the friendship of the planets. Numbers come from the Moon's sign or
// its Nakshatra; names from the text store under the attribute's head.
// Two tables are kept as the strings they have always been and are read by
// searching the text, so their irregularities (a Yoni that serves one
// Nakshatra, closing tags that do not match their openers) decide answers
// and are part of the tables.
#include <initializer_list>
#include <string>

#include "ranvel/chart/planets.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

namespace {

// Nakshatra to Yoni, "N<nakshatra>-S<yoni>|".
constexpr const char* kYoni =
    "N1-S1|N2-S2|N3-S3|N4-S4|N5-S4|N6-S5|N7-S6|N8-S3|N9-S6|N10-S7|N11-S7|N12-S8|N13-S9|N14-S10|N15-S9|N16-S10|"
    "N17-S11|N18-S11|N19-S5|N20-S13|N21-S13|N22-S12|N23-S14|N24-S1|N25-S14|N26-S8|N27-S2|";

// Each planet's friends [F], neutrals [N] and enemies [E], by the closing
// tag: the neutrals of Venus close as friends and the enemies of Saturn as
// neutrals, and so they count.
constexpr const char* kGrahaMaitri =
    "[HEAD1][F]P7,P4,P5[/F][N]P2[/N][E]P3,P6[/E][/HEAD1]"
    "[HEAD2][F]P1,P3[/F][N]P4,P5,P6[/N][E]P7[/E][/HEAD2]"
    "[HEAD3][F]P2,P6[/F][N]P4,P5[/F][E]P1,P7[/E][/HEAD3]"
    "[HEAD4][F]P1,P7,P5[/F][N]P3,P6[/N][E]P2[/E][/HEAD4]"
    "[HEAD5][F]P1,P4,P7[/F][N]P6[/N][E]P2,P3[/E][/HEAD5]"
    "[HEAD6][F]P2,P3[/F][N]P5[/N][E]P1,P7,P4[/N][/HEAD6]"
    "[HEAD7][F]P1,P2[/F][N]P4,P5,P3,P6[/N][/HEAD7]"
    "[HEAD8][F]P6,P3,P2[/F][E]P1,P7,P5,P4,P9[/E][/HEAD8]"
    "[HEAD9][F]P6,P3,P2[/F][E]P1,P7,P5,P4,P8[/E][/HEAD9]";

bool Among(int x, std::initializer_list<int> set)
{
    for (int v : set)
        if (v == x) return true;
    return false;
}

// The Rajju letters in the order of their keys "1H" to "5H".
constexpr const char* kRajjuLetters[5] = {"F", "W", "B", "T", "H"};

}  // namespace

// ---------------------------------------------------------------------------
// Varna: the number and the key of the name are two different orders of the
// same four groups, and each keeps its own.

int clsPlanets::VarnaNo()
{
    const int s = RashiNum();
    if (CalcModVarna() == 1) {
        if (Among(s, {1, 5, 9})) return 3;
        if (Among(s, {2, 6, 10})) return 2;
        if (Among(s, {3, 7, 11})) return 1;
        if (Among(s, {4, 8, 12})) return 4;
        return 0;
    }
    if (Among(s, {1, 3, 11})) return 2;
    if (Among(s, {2, 6, 10})) return 1;
    if (Among(s, {4, 8, 12})) return 4;
    if (Among(s, {5, 7, 9})) return 3;
    return 0;
}

std::string clsPlanets::Varna()
{
    const int s = RashiNum();
    std::string key;
    if (CalcModVarna() == 1) {
        if (Among(s, {1, 5, 9})) key = "2";
        else if (Among(s, {2, 6, 10})) key = "3";
        else if (Among(s, {3, 7, 11})) key = "4";
        else if (Among(s, {4, 8, 12})) key = "1";
    } else {
        if (Among(s, {1, 3, 11})) key = "3";
        else if (Among(s, {2, 6, 10})) key = "4";
        else if (Among(s, {4, 8, 12})) key = "1";
        else if (Among(s, {5, 7, 9})) key = "2";
    }
    return GetHeadValue(1, key, "VARNA").ToText();
}

// ---------------------------------------------------------------------------
// Vasya

int clsPlanets::VasyaNo() const
{
    const int s = RashiNum();
    if (Among(s, {3, 6, 7})) return 1;
    if (Among(s, {1, 2, 9})) return 2;
    if (Among(s, {4, 10, 11, 12})) return 3;
    if (s == 5) return 4;
    if (s == 8) return 5;
    return 0;
}

std::string clsPlanets::Vasya()
{
    static const char* const keys[5] = {"MANAV", "CHATUSPAD", "JALCHAR", "VANACHAR", "KEET"};
    const int n = VasyaNo();
    return GetHeadValue(1, n >= 1 && n <= 5 ? keys[n - 1] : "", "VASYA").ToText();
}

// ---------------------------------------------------------------------------
// Yoni

int clsPlanets::YoniNo() const
{
    const std::string table = kYoni;
    const std::string key = "N" + vb::CStr(Nakshatra()) + "-";
    const std::size_t at = table.find(key);
    if (at == std::string::npos) return 0;  // the Moon at exactly 360: Nakshatra 28
    const std::size_t from = at + key.size();
    const std::string entry = table.substr(from, table.find('|', from) - from);  // "S<yoni>"
    return static_cast<int>(vb::Fix(vb::Val(vb::Mid(entry, 2))));
}

std::string clsPlanets::YoniName() { return GetHeadValue(1, YoniNo(), "Yoni").ToText(); }

// ---------------------------------------------------------------------------
// Gana

int clsPlanets::Gana(int& n) const
{
    if (n == 0) n = Nakshatra();
    if (Among(n, {1, 5, 7, 8, 13, 15, 17, 22, 27})) return 3;
    if (Among(n, {2, 4, 6, 11, 12, 20, 21, 25, 26})) return 2;
    if (Among(n, {3, 9, 10, 14, 16, 18, 19, 23, 24})) return 1;
    return 0;
}

std::string clsPlanets::AssignGana()
{
    int n = 0;
    return GetHeadValue(1, Gana(n), "Gana").ToText();
}

// ---------------------------------------------------------------------------
// Nadi

int clsPlanets::NadiNo() const
{
    const int n = Nakshatra();
    if (Among(n, {1, 6, 7, 12, 13, 18, 19, 24, 25})) return 1;
    if (Among(n, {2, 5, 8, 11, 14, 17, 20, 23, 26})) return 2;
    if (Among(n, {3, 4, 9, 10, 15, 16, 21, 22, 27})) return 3;
    return 0;
}

std::string clsPlanets::AssignNadi() { return GetHeadValue(1, NadiNo(), "Nadi").ToText(); }

// The same three Nadis under their humours.
std::string clsPlanets::NadiPada() { return GetHeadValue(1, NadiNo(), "NADIPADA").ToText(); }

// ---------------------------------------------------------------------------
// Rajju

std::string clsPlanets::RajjuType(int n)
{
    if (Among(n, {1, 9, 10, 18, 19, 27})) return "F";
    if (Among(n, {2, 8, 11, 17, 20, 26})) return "W";
    if (Among(n, {3, 7, 12, 16, 21, 25})) return "B";
    if (Among(n, {4, 6, 13, 15, 22, 24})) return "T";
    if (Among(n, {5, 14, 23})) return "H";
    return {};
}

std::string clsPlanets::Rajju()
{
    // The name's key is the Rajju's place from the feet up, then "H".
    const std::string letter = RajjuType(Nakshatra());
    std::string key;
    for (int i = 0; i < 5; ++i)
        if (letter == kRajjuLetters[i]) key = vb::CStr(i + 1) + "H";
    return GetHeadValue(1, key, "Rajju").ToText();
}

// ---------------------------------------------------------------------------
// Friendship of the planets

int clsPlanets::GrahaMaitriNo() const { return GetRashiLordNum(RashiNum()); }

int clsPlanets::GrahaRelation(int a, int b)
{
    const std::string table = kGrahaMaitri;
    const std::string open = "[HEAD" + vb::CStr(a) + "]";
    const std::string close = "[/HEAD" + vb::CStr(a) + "]";
    std::string block;
    const std::size_t from = table.find(open);
    if (from != std::string::npos) {
        const std::size_t start = from + open.size();
        block = table.substr(start, table.find(close, start) - start);
    }

    const std::size_t at = block.find("P" + vb::CStr(b));
    if (at == std::string::npos) throw vb::RuntimeError("Invalid procedure call or argument");
    // The closing tag after b names the group, whatever opened it.
    const std::size_t slash = block.find('/', at);
    const char kind = slash != std::string::npos && slash + 1 < block.size() ? block[slash + 1] : '\0';
    switch (kind) {
    case 'E': return 3;
    case 'F': return 1;
    case 'N': return 2;
    default: return 0;
    }
}

}  // namespace ranvel
