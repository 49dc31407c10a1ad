// The element tests: each item of a Muhurtha's test list is run against the
// working chart, and a test that holds adds its Presence. True always means
// the element is present; whether that is good or bad is the sign of its
// Presence in the Score table.
#include <cmath>
#include <initializer_list>
#include <unordered_map>

#include "ranvel/chart/wrap.h"
#include "ranvel/engine/muhurtha.h"
#include "ranvel/engine/request_state.h"
#include "ranvel/platform/sinks.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

namespace {

bool In(int x, std::initializer_list<int> set)
{
    for (int v : set)
        if (x == v) return true;
    return false;
}


// The digits of a number behind its point, read as a fraction ("6.05" gives
// 0.05), from the number's own text.
double FractionDigits(double x) { return vb::Val("0." + vb::DigitsBehindPoint(x)); }

int TithiClass(int t)
{
    if (In(t, {1, 6, 11, 16, 21, 26})) return 1;  // Nanda
    if (In(t, {2, 7, 12, 17, 22, 27})) return 2;  // Bhadra
    if (In(t, {3, 8, 13, 18, 23, 28})) return 3;  // Jaya
    if (In(t, {4, 9, 14, 19, 24, 29})) return 4;  // Rikta
    if (In(t, {5, 10, 15, 20, 25, 30})) return 5; // Purna
    return 0;
}

// The yogas of tithi, week day and nakshatra. The week days of the two
// pushkar tables count 1, 2, 3, and stay so.
bool CheckTithiYoga(int nak, int tithi, int day, int kind)
{
    switch (kind) {
    case 1: {
        int c = TithiClass(tithi);
        return (day == 3 && c == 3) || (day == 4 && c == 2) || (day == 5 && c == 5) || (day == 6 && c == 1) ||
               (day == 7 && c == 4);
    }
    case 10:
        return (day == 1 && tithi == 2 && nak == 23) || (day == 2 && tithi == 7 && nak == 14) ||
               (day == 3 && tithi == 12 && nak == 5);
    case 11:
        return (day == 1 && tithi == 2 && In(nak, {3, 7})) || (day == 2 && tithi == 7 && In(nak, {12, 16})) ||
               (day == 3 && tithi == 12 && In(nak, {21, 26}));
    case 12:
        switch (day) {
        case 1: return In(nak, {1, 8, 12, 13, 19, 21, 26});
        case 2: return In(nak, {4, 5, 8, 17, 22});
        case 3: return In(nak, {1, 3, 9, 26});
        case 4: return In(nak, {3, 4, 5, 13, 17});
        case 5: return In(nak, {1, 7, 8, 17, 27});
        case 6: return In(nak, {1, 7, 17, 22, 27});
        case 7: return In(nak, {4, 15, 22});
        default: return false;
        }
    default: return false;
    }
}

bool CheckTara(int natal, int moment)
{
    int x = moment - natal + 1;
    if (x < 1) x += 27;
    int r = x % 9;
    return In(r, {0, 2, 4, 6, 8});
}

// 12 cannot come out of the difference; it stays in the list.
bool CheckMoonFromNatal(int a, int b)
{
    int d = a - b;
    if (d < 0) d += 12;
    return In(d, {6, 8, 12});
}

bool CheckPanchak(int nak) { return In(nak, {23, 24, 25, 26, 27}); }

bool CheckBhadra(int karana, int tithi, bool morning)
{
    if (karana != 7) return false;
    return (In(tithi, {4, 8, 11, 15}) && morning) || (In(tithi, {18, 22, 25, 29}) && !morning);
}

bool CheckMoonDirection(int d, int t)
{
    switch (d) {
    case 1: return !In(t, {2, 3});
    case 2: return !In(t, {1, 4});
    case 3: return !In(t, {2, 4});
    case 4: return !In(t, {1, 3});
    default: return false;
    }
}

int YoginiDirection(int t)
{
    switch (t) {
    case 1: case 9: return 1;
    case 2: case 10: return 7;
    case 3: case 11: return 2;
    case 4: case 12: return 4;
    case 5: case 13: return 3;
    case 6: case 14: return 5;
    case 7: case 15: return 6;
    case 8: case 30: return 8;
    default: return 0;
    }
}

bool CheckDishaShula(int day, int direction)
{
    return (day == 2 && direction == 1) || (day == 7 && direction == 1) || (day == 1 && direction == 2) ||
           (day == 6 && direction == 2) || (day == 3 && direction == 3) || (day == 4 && direction == 3) ||
           (day == 5 && direction == 4);
}

bool Between(double low, double high, double x) { return low <= x && x < high; }

// Fixed clock hours, with no regard to sunrise.
bool CheckRahuKaal(int day, double t)
{
    switch (day) {
    case 1: return Between(16.5, 18, t);
    case 2: return Between(7.5, 9, t);
    case 3: return Between(15, 16.5, t);
    case 4: return Between(12, 13.5, t);
    case 5: return Between(13.5, 15, t);
    case 6: return Between(10.5, 12, t);
    case 7: return Between(9, 10.5, t);
    default: return false;
    }
}

int VishDayGhati(int day)
{
    static constexpr int g[8] = {0, 20, 2, 12, 10, 7, 5, 25};
    return day >= 1 && day <= 7 ? g[day] : 0;
}

int VishTithiGhati(int t)
{
    static constexpr int g[16] = {0, 15, 5, 8, 7, 7, 5, 4, 8, 7, 10, 3, 13, 14, 7, 8};
    if (t >= 1 && t <= 15) return g[t];
    if (t >= 16 && t <= 30) return g[t - 15];
    return 0;
}

// Ghatis to an HH.MM value: the hours, and the digits behind their point as
// a fraction of sixty minutes.
double GhatiToClock(double g)
{
    double h = g * 24 / 60;
    return vb::Int(h) + FractionDigits(h) * 0.6;
}

// Carries minutes of 60 and more into the hour, once.
double NormalClock(double t)
{
    if (FractionDigits(t) > 0.59) t = t - 0.6 + 1;
    return t;
}

// The window is compared on a mixed clock, an HH.MM start against a
// decimal time: deliberately as it stands.
bool CheckVishDay(double sunrise, int day, double t)
{
    double m = VishDayGhati(day) * 24.0;
    double A = vb::Int(m / 60) + sunrise;
    double f = FractionDigits(m / 60);
    double start = NormalClock(A + f * 60 / 100);
    (void)NormalClock(start + 1.36);  // worked out and not used
    return start <= t && t <= start + 96.0 / 60;
}

bool CheckVishTithi(double moon, double sun, int tithi, double sunrise, double t)
{
    double d = moon - sun;
    if (d < 0) d += 360;
    if (d > 180) d -= 180;
    volatile double unused = VishTithiGhati(tithi) * d;  // computed and discarded
    (void)unused;
    double w1 = d / 60;
    double w2 = w1 + 4;
    double start = NormalClock(GhatiToClock(w1) + sunrise);
    double end = NormalClock(GhatiToClock(w2) + sunrise);
    return start <= t && t <= end;
}

bool CheckPaat(int m, int s)
{
    switch (m) {
    case 4: return In(s, {6, 7, 11, 14, 19, 24});
    case 5: return In(s, {5, 6, 10, 13, 18, 23});
    case 10: return In(s, {1, 5, 8, 13, 18, 27});
    case 12: return In(s, {3, 6, 11, 12, 16, 25});
    case 13: return In(s, {2, 5, 10, 15, 24, 25});
    case 15: return In(s, {3, 8, 13, 22, 23, 27});
    case 17: return In(s, {1, 6, 11, 20, 21, 25});
    case 19: return In(s, {4, 9, 18, 19, 23, 26});
    case 21: return In(s, {2, 7, 11, 12, 16, 19, 24});
    case 26: return In(s, {2, 11, 12, 16, 19, 24});
    case 27: return In(s, {1, 10, 11, 15, 18, 23});
    default: return false;
    }
}

bool CheckKrantiSamya(int s, int m)
{
    static constexpr int pairs[6][2] = {{1, 5}, {2, 10}, {7, 11}, {6, 12}, {4, 8}, {3, 9}};
    for (const auto& p : pairs)
        if ((s == p[0] || s == p[1]) && (m == p[0] || m == p[1])) return true;
    return false;
}

bool CheckUpagraha(int sunNak, int moonNak)
{
    int x = moonNak - sunNak + 1;
    while (x > 27) x -= 27;
    if (x < 0) {
        while (x <= 0) x += 27;
    }
    return In(x, {5, 7, 8, 10, 14, 15, 19, 21, 22, 23, 24, 25});
}

bool CheckTithiDagdha(int sunSign, int tithi)
{
    if (In(sunSign, {9, 12})) return In(tithi, {2, 17});
    if (In(sunSign, {2, 11})) return In(tithi, {4, 19});
    if (In(sunSign, {1, 4})) return In(tithi, {6, 21});
    if (In(sunSign, {3, 6})) return In(tithi, {8, 23});
    if (In(sunSign, {5, 8})) return In(tithi, {10, 25});
    if (In(sunSign, {7, 10})) return In(tithi, {12, 27});
    return false;
}

// Given the Sun's sign number, not a degree: the last two spans are never
// reached.
bool CheckEarthSleeping(double x)
{
    x = Norm30(x);
    return Between(5, 6, x) || Between(7, 8, x) || Between(9, 11, x) || Between(21, 22, x) || Between(28, 29, x);
}

enum class Code {
    T, N, D, L, M12, TG, M, RIKTABAD, UTTARAYAN, RAHUKAAL, DP, TP, PH, SD, SSD, BHADRA, MDIR, YOGNIV, DISHASHULA,
    VISHDAY, VISHTITHI, JUPVENCOMBUST, LAGNASHUDDHI, VEDHANAK, LATTADOSHA, PAATDOSHA, KRANTISAMYA, YUTIDOSHA,
    JAMITRADOSHA, EKARGALADOSHA, UPAGRAHADOSHA, TITHIDAGDHADOSHA, EARTHSLEEPING, HARISHAYAN, KHARMAAS, BOYSURYA,
    GIRLGURU, BOYMOON, GIRLMOON
};

const std::unordered_map<std::string, Code>& Codes()
{
    // Codes that share a test map to the same entry.
    static const std::unordered_map<std::string, Code> codes = {
        {"T", Code::T},
        {"KP", Code::T},
        {"SP", Code::T},
        {"N", Code::N},
        {"D", Code::D},
        {"D2", Code::D},
        {"L", Code::L},
        {"L2", Code::L},
        {"M12", Code::M12},
        {"TG", Code::TG},
        {"M", Code::M},
        {"MN", Code::M},
        {"RIKTABAD", Code::RIKTABAD},
        {"UTTARAYAN", Code::UTTARAYAN},
        {"RAHUKAAL", Code::RAHUKAAL},
        {"DP", Code::DP},
        {"DP2", Code::DP},
        {"TP", Code::TP},
        {"TP2", Code::TP},
        {"PH", Code::PH},
        {"SD", Code::SD},
        {"SSD", Code::SSD},
        {"BHADRA", Code::BHADRA},
        {"BHADRABAD", Code::BHADRA},
        {"MDIR", Code::MDIR},
        {"YOGNIV", Code::YOGNIV},
        {"DISHASHULA", Code::DISHASHULA},
        {"VISHDAY", Code::VISHDAY},
        {"VISHTITHI", Code::VISHTITHI},
        {"JUPVENCOMBUST", Code::JUPVENCOMBUST},
        {"LAGNASHUDDHI", Code::LAGNASHUDDHI},
        {"VEDHANAK", Code::VEDHANAK},
        {"LATTADOSHA", Code::LATTADOSHA},
        {"PAATDOSHA", Code::PAATDOSHA},
        {"KRANTISAMYA", Code::KRANTISAMYA},
        {"YUTIDOSHA", Code::YUTIDOSHA},
        {"JAMITRADOSHA", Code::JAMITRADOSHA},
        {"EKARGALADOSHA", Code::EKARGALADOSHA},
        {"UPAGRAHADOSHA", Code::UPAGRAHADOSHA},
        {"TITHIDAGDHADOSHA", Code::TITHIDAGDHADOSHA},
        {"EARTHSLEEPING", Code::EARTHSLEEPING},
        {"HARISHAYAN", Code::HARISHAYAN},
        {"KHARMAAS", Code::KHARMAAS},
        {"BOYSURYA", Code::BOYSURYA},
        {"GIRLGURU", Code::GIRLGURU},
        {"BOYMOON", Code::BOYMOON},
        {"GIRLMOON", Code::GIRLMOON},
    };
    return codes;
}

}  // namespace

bool clsMuhurtha::IsKnownCode(const std::string& Code) { return Codes().count(Code) > 0; }

bool clsMuhurtha::GetHariShayan(int Tithi, int Month)
{
    if (Month == 3) return Tithi >= 11;
    if (Month == 4 || Month == 5 || Month == 6) return Tithi >= 1;
    if (Month == 7) return Tithi <= 11;
    return false;
}

bool clsMuhurtha::GetKharMaas(int SunSign) { return SunSign == 9 || SunSign == 12; }

std::string clsMuhurtha::SunriseByLagna(clsPlanets& Chart)
{
    // Two tests of one moment ask the same: the answer of the moment is kept.
    const clsPerson& p = Chart.clsPerson();
    std::string key = p.GetBirthDate().ToIsoText() + "|" + p.LatDeg() + ":" + p.LatMT() + "|" + p.LongDeg() + ":" +
                      p.LongMT() + "|" + p.GMTDIFF();
    if (caching_ && key == sunriseKey_) return sunriseValue_;
    // The Sun's disc on the true horizon when the user chose it; where it
    // does not rise, the Lagna's search below.
    if (clsPlanets::AstronomicalSunrise()) {
        if (const std::optional<double> rise = Chart.SunRiseAfterMoment()) {
            sunriseKey_ = key;
            sunriseValue_ = vb::Format(*rise, "00.00");
            return sunriseValue_;
        }
    }
    clsPlanets copy;
    Chart.CopySettingTo(copy);
    copy.Calculate();
    clsGochara search;
    auto found = search.Gochara(0, copy.PlanetLongi(1), 9, copy);
    std::string value = found->clsPerson().GetBirthTime();
    sunriseKey_ = key;
    sunriseValue_ = value;
    return value;
}

bool clsMuhurtha::TestOf(const std::string& code, const std::string& arg, bool& known)
{
    known = true;
    auto it = Codes().find(code);
    if (it == Codes().end()) {
        known = false;
        return false;
    }
    clsPlanets& c = *MuhuChart;
    clsPerson& p = c.clsPerson();
    switch (it->second) {
    case Code::T: return vb::CStr(c.Tithi()) == arg;
    case Code::N: return vb::CStr(c.Nakshatra()) == arg;
    case Code::D: return vb::CStr(p.WeekDayOfBirth()) == arg;
    case Code::L: return vb::CStr(c.PlanetSign(0)) == arg;
    case Code::M: return vb::CStr(clsPlanets::VikramiMonth(c.PlanetLongi(1), p.GetBirthDate())) == arg;
    case Code::M12: {
        const int moment = c.PlanetSign(7);
        if (MarriageRequest())
            return !CheckMoonFromNatal(BoyChart()->PlanetRashiNum(7), moment) ||
                   !CheckMoonFromNatal(GirlChart()->PlanetRashiNum(7), moment);
        if (!PersonChart()) throw vb::RuntimeError("Object variable or With block variable not set");
        return !CheckMoonFromNatal(PersonChart()->PlanetRashiNum(7), moment);
    }
    case Code::TG: {
        const int moment = c.Nakshatra();
        if (MarriageRequest())
            return CheckTara(BoyChart()->Nakshatra(), moment) || CheckTara(GirlChart()->Nakshatra(), moment);
        if (!PersonChart()) throw vb::RuntimeError("Object variable or With block variable not set");
        return CheckTara(PersonChart()->Nakshatra(), moment);
    }
    case Code::RIKTABAD: return TithiClass(c.Tithi()) == 4;
    case Code::UTTARAYAN: return c.GetSunAyan() == 1;
    case Code::RAHUKAAL: return CheckRahuKaal(p.WeekDayOfBirth(), p.GetBirthDecimalTime());
    case Code::DP: return CheckTithiYoga(c.Nakshatra(), c.Tithi(), p.WeekDayOfBirth(), 10);
    case Code::TP: return CheckTithiYoga(c.Nakshatra(), c.Tithi(), p.WeekDayOfBirth(), 11);
    case Code::SD: return CheckTithiYoga(c.Nakshatra(), c.Tithi(), p.WeekDayOfBirth(), 1);
    case Code::SSD: return CheckTithiYoga(c.Nakshatra(), c.Tithi(), p.WeekDayOfBirth(), 12);
    case Code::PH: return CheckPanchak(c.Nakshatra());
    // The 24-hour hour: 12:59 still counts as morning.
    case Code::BHADRA: return CheckBhadra(c.KaranNumber(), c.Tithi(), p.HourN() <= 12);
    // The request has no travel direction; it is always 1.
    case Code::MDIR: return CheckMoonDirection(c.FindPlanetDirection(7), 1);
    case Code::YOGNIV: return YoginiDirection(c.Tithi()) != 0;
    case Code::DISHASHULA: return CheckDishaShula(p.WeekDayOfBirth(), 1);
    case Code::VISHDAY:
        return CheckVishDay(vb::Val(SunriseByLagna(c)), p.WeekDayOfBirth(), p.GetBirthDecimalTime());
    case Code::VISHTITHI:
        return CheckVishTithi(c.PlanetLongi(7), c.PlanetLongi(1), c.Tithi(), vb::Val(SunriseByLagna(c)),
                              p.GetBirthDecimalTime());
    case Code::JUPVENCOMBUST: {
        bool jupiter = c.Combust(5).ToBool();
        bool venus = c.Combust(3).ToBool();
        return jupiter || venus;
    }
    case Code::LAGNASHUDDHI: {
        // Every rule is asked, so the lagna's sign is read (and kept) at the
        // first moment that runs the test.
        auto house = [&](int planet, std::initializer_list<int> houses) { return In(c.PlanetHouse(planet), houses); };
        bool any = false;
        any |= house(1, {1, 7});
        any |= house(7, {1, 6, 7, 8, 12});
        any |= house(4, {1, 7, 8, 10});
        any |= house(2, {7, 8});
        any |= house(5, {7, 8});
        any |= house(3, {3, 6, 7, 8});
        any |= house(6, {1, 7, 12});
        any |= house(8, {1});
        any |= house(5, {7});
        any |= house(9, {1, 7});
        int lagnaSign = c.PlanetSign(0);
        any |= house(clsPlanets::FindRashiLordNo(lagnaSign), {1});
        any |= house(9, {7});
        return any;
    }
    case Code::VEDHANAK: (void)c.Nakshatra(); return false;
    case Code::LATTADOSHA: {
        static constexpr int order[7][2] = {{1, 12}, {6, 8}, {5, 6}, {4, 3}, {2, -7}, {8, -9}, {3, -5}};
        const int moment = c.Nakshatra();
        for (const auto& o : order)
            if (ModReal(c.NakOf(o[0]) + o[1] - 1, 27) == moment) return true;
        if (c.PlanetLongi(7) <= 180) return ModReal(c.NakOf(7) - 22 - 1, 27) == moment;
        return false;
    }
    case Code::PAATDOSHA: return CheckPaat(c.Nakshatra(), c.NakOf(1));
    case Code::KRANTISAMYA: return CheckKrantiSamya(c.PlanetRashiNum(1), c.PlanetRashiNum(7));
    case Code::YUTIDOSHA: {
        const int moment = c.Nakshatra();
        for (int planet : {1, 3, 4, 6, 8, 9})
            if (c.NakOf(planet) == moment) return true;
        return false;
    }
    case Code::JAMITRADOSHA: {
        const double x = Hour12(c.PlanetRashiNum(0) + 8);
        for (int planet = 1; planet <= 9; ++planet)
            if (c.PlanetRashiNum(planet) == x) return true;
        return false;
    }
    case Code::EKARGALADOSHA: return false;
    case Code::UPAGRAHADOSHA: return CheckUpagraha(c.NakOf(1), c.NakOf(7));
    case Code::TITHIDAGDHADOSHA: return CheckTithiDagdha(c.PlanetRashiNum(1), c.Tithi());
    case Code::EARTHSLEEPING: return CheckEarthSleeping(c.PlanetRashiNum(1));
    case Code::HARISHAYAN:
        return GetHariShayan(c.Tithi(), clsPlanets::VikramiMonth(c.PlanetLongi(1), p.GetBirthDate()));
    case Code::KHARMAAS: return GetKharMaas(c.PlanetSign(1));
    // Four codes that read their charts and always answer no.
    case Code::BOYSURYA: (void)BoyChart()->RashiNum(); (void)c.PlanetSign(1); return false;
    case Code::GIRLGURU: (void)GirlChart()->RashiNum(); (void)c.PlanetSign(5); return false;
    case Code::BOYMOON: (void)BoyChart()->RashiNum(); (void)c.PlanetSign(7); return false;
    case Code::GIRLMOON: (void)GirlChart()->RashiNum(); (void)c.PlanetSign(7); return false;
    }
    return false;
}

std::int32_t clsMuhurtha::CheckElement(const std::string& Item)
{
    std::vector<std::string> parts = vb::Split(Item, ':');
    const std::string code = vb::UCase(parts[0]);
    const std::string arg = parts.size() == 2 ? parts[1] : std::string();
    bool known = true;
    const bool present = TestOf(code, arg, known);
    if (!known) {
        MsgBox(code);
        return 0;
    }
    if (!present) return 0;
    const std::int32_t score = GetPresence(code);
    if (Results.empty()) Results.emplace_back();
    Results.back().AddFruct(code, score);
    return score;
}

void clsMuhurtha::ScoreElements()
{
    for (const std::string& item : vb::Split(MuhuTests, ',')) CurrentScore = vb::CLng(static_cast<double>(CurrentScore) + CheckElement(item));
}

}  // namespace ranvel
