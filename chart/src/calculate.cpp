// The chart computation: the record moved to Greenwich time and back, the
// positions from Swiss Ephemeris at the moment and one hour later, the
// ayanamsha, the system's own house division, the Moon numbers and the
// divisional tables. The order of the steps is part of the result.
#include <cmath>
#include <string>

#include "ranvel/chart/planets.h"
#include "ranvel/chart/vakya.h"
#include "ranvel/chart/wrap.h"
#include "ranvel/platform/settings.h"
#include "ranvel/platform/vbmath.h"

extern "C" {
#include <swephexp.h>
}

namespace ranvel {

namespace {
constexpr double kDegToRad = 0.017453292519944444;
constexpr double kPi = 3.14159265359;  // the twelve-place figure the houses are built on

bool IsWest(const std::string& ew) { return ew == "W" || ew == "w"; }
}  // namespace

// ---------------------------------------------------------------------------
// Settings of the chart

namespace {
int IntSetting(const std::string& section, const std::string& key, const std::string& deflt)
{
    // A value that is not a number is a run-time error of the caller.
    const std::string text = GetSetting(section, key, deflt);
    try {
        return Variant(text).ToLong();
    } catch (const vb::RuntimeError& e) {
        throw vb::RuntimeError(std::string(e.what()) + ": setting " + section + "/" + key + " holds '" + text + "'");
    }
}
}  // namespace

int clsPlanets::AyanType() const { return IntSetting("Init", "AyanType", "1"); }
void clsPlanets::AyanType(int value) { SaveSetting("Init", "AyanType", vb::CStr(value)); }

namespace {
// Read from the settings on first use and held; the setter holds and saves.
int Held(std::optional<int>& held, const char* key)
{
    if (!held) held = IntSetting("Settings", key, "1");
    return *held;
}
void Hold(std::optional<int>& held, const char* key, int value)
{
    held = value;
    SaveSetting("Settings", key, vb::CStr(value));
}
}  // namespace

int clsPlanets::CalcModmanglik() { return Held(calcModmanglik_, "CalcMangMod"); }
void clsPlanets::CalcModmanglik(int value) { Hold(calcModmanglik_, "CalcMangMod", value); }
int clsPlanets::CalcModVarna() { return Held(calcModVarna_, "CalcVarMod"); }
void clsPlanets::CalcModVarna(int value) { Hold(calcModVarna_, "CalcVarMod", value); }

// ---------------------------------------------------------------------------
// Calculate

namespace {
bool g_lazyBodies = true;
bool g_replayRows = false;
// Calculations left unread before their rows are worked out in a batch.
constexpr std::size_t kMostSkipped = 64;
}  // namespace

void clsPlanets::SetLazyBodies(bool lazy, bool replayRows)
{
    g_lazyBodies = lazy;
    g_replayRows = replayRows;
}

bool clsPlanets::ReplayRows() { return g_replayRows; }

void clsPlanets::Calculate()
{
    ranvel::clsPerson& P = clsPerson();
    const bool lazy = g_lazyBodies;

    // The bodies of the last calculation were never asked for: its
    // divisional rows are owed to the row that carries over.
    if (bodiesPending_) {
        if (skipped_.empty()) knownRow_ = vargaRow_;
        skipped_.push_back(pending_);
        bodiesPending_ = false;
        if (skipped_.size() > kMostSkipped) ReplaySkippedRows();
    }
    pendingSun_.reset();
    pendingMoon_.reset();

    // 1-2. Local clock to Greenwich, then the time correction; each step
    // wraps the hour once and moves the date with it.
    double h = P.HourN() + P.MinutesN() / 60.0;
    h = h - vb::Val(P.GMTDIFF());
    h = P.AdjustHour(h, P.DayN(), P.MonthN(), P.YearN());
    h = h + vb::Val(P.TimeCorr());
    h = P.AdjustHour(h, P.DayN(), P.MonthN(), P.YearN());

    // 3. The record now shows Greenwich time; Minutes may round to 60.
    P.Hour(vb::Int(h));
    P.Minutes(FractionOf(h) * 60.0);

    // 4. Day number.
    double day = P.DayN();
    double month = P.MonthN();
    double year = P.YearN();
    if (month < 3) {
        month += 12;
        year -= 1;
    }
    double a = vb::Int(year / 100.0);
    dayNumber_ = day + vb::Int(a / 4.0) + 2.0 - a + vb::Int(30.6 * (month + 1.0)) + vb::Int(year / 4.0) + 365.0 * year;

    // 5. Day fraction and centuries.
    dayFraction_ = (P.HourN() + P.MinutesN() / 60.0 - 12.0) / 24.0;
    centuries_ = (dayNumber_ - 694025.0 + dayFraction_) / 36525.0;

    // 6. The polynomial ayanamsha.
    const double T = centuries_;
    lysPlnt_[13] = T * 0.000308 * T + (T * 1.396042 + 22.460148);

    // 7. Positions: at once, or kept for the first reader of a body.
    if (lazy) {
        pending_ = PendingBodies{};
        pending_.greenwich = RecordMoment();
        pending_.rahuKetuMode = rahuKetuMode_;
        double lon = P.LongDegN() + P.LongMTN() / 60.0;
        if (IsWest(P.TextEW())) lon = -lon;
        double lat = P.LatDegN() + P.LatMTN() / 60.0;
        const std::string ns = P.TextNS();
        if (ns == "S" || ns == "s") lat = -lat;
        pending_.latitude = lat;
        pending_.longitude = lon;
    } else {
        ReadPlanets();
        ReadPlanetsNextHour();
    }

    // 8. Back to the local clock. The correction is not taken back: the
    // record stays moved by TimeCorr, and a second Calculate moves it again.
    h = h + vb::Val(P.GMTDIFF());
    h = P.AdjustHour(h, P.DayN(), P.MonthN(), P.YearN());
    P.Hour(vb::Int(h));
    P.Minutes(FractionOf(h) * 60.0);

    // 9-12. The houses need the ayanamsha alone; the Moon numbers and the
    // divisional rows wait for the bodies when they are kept.
    if (lazy) pending_.local = RecordMoment();
    ApplyAyanamsha();
    ComputeHouses();
    if (lazy) {
        pending_.lagna = bhavMid_[0];
        bodiesPending_ = true;
        return;
    }
    ComputeMoonNumbers();
    FillVargaTable();
}

clsPlanets::Moment clsPlanets::RecordMoment()
{
    ranvel::clsPerson& P = clsPerson();
    return Moment{P.YearN(), P.MonthN(), P.DayN(), P.HourN(), P.MinutesN()};
}

double clsPlanets::JulianDayAt(const Moment& m, double extraHours)
{
    double hour = m.Hours();
    if (extraHours != 0) hour = hour + extraHours;
    double J = swe_julday(m.year, m.month, m.day, hour, SE_GREG_CAL);
    // The conversion's validity code is not read; it overwrites J.
    swe_date_conversion(m.year, m.month, m.day, hour, 'g', &J);
    return J;
}

double clsPlanets::JulianDayOfRecord() { return JulianDayAt(RecordMoment()); }

namespace {
// Body numbers of the library in the order they are asked for, and the
// entries of the table that receive them (0 for the nodes, placed apart).
constexpr int kBodyEntry[12] = {1, 7, 2, 3, 4, 5, 6, 10, 11, 12, 0, 0};

void AskBody(int body, double J, double xx[6])
{
    char serr[256] = {0};
    char name[20] = {0};
    // The name is asked for and never used.
    swe_get_planet_name(body, name);
    // Civil Greenwich Julian day as ephemeris time, tropical, geocentric,
    // no speed: only the longitude is read, and no return code.
    swe_calc(J, body, 0, xx, serr);
}

double KPAyanamshaAt(double J)
{
    swe_set_sid_mode(SE_SIDM_KRISHNAMURTI, 0, 0);
    return swe_get_ayanamsa(J);
}
}  // namespace

void clsPlanets::ReadBodiesAt(double J, std::size_t base, int rahuKetuMode, std::array<double, 27>& table)
{
    double xx[6] = {0, 0, 0, 0, 0, 0};
    for (int body = 0; body <= 11; ++body) {
        AskBody(body, J, xx);
        if (body <= 9) {
            table[base + static_cast<std::size_t>(kBodyEntry[body])] = xx[0];
        } else if ((body == 10 && rahuKetuMode == 1) || (body == 11 && rahuKetuMode == 2)) {
            table[base + 8] = xx[0];
            table[base + 9] = Norm360(xx[0] + 180.0);
        }
    }
}

void clsPlanets::ReadPlanets()
{
    ranvel::clsPerson& P = clsPerson();
    double J = JulianDayOfRecord();
    double U = J - swe_deltat(J);
    ReadBodiesAt(J, 0, rahuKetuMode_, lysPlnt_);

    double lon = P.LongDegN() + P.LongMTN() / 60.0;
    if (IsWest(P.TextEW())) lon = -lon;
    double lat = P.LatDegN() + P.LatMTN() / 60.0;
    const std::string ns = P.TextNS();
    if (ns == "S" || ns == "s") lat = -lat;
    // Houses one delta T before the planets' moment: deliberate.
    swe_houses(U, lat, lon, 'P', cusps_.data(), ascmc_.data());
    const double kp = KPAyanVal();
    for (std::size_t i = 1; i <= 12; ++i) kpHouse_[i] = cusps_[i] - kp;
}

void clsPlanets::ReadPlanetsNextHour()
{
    // One hour later, unwrapped: the library may get an hour of 24 or more.
    double J = JulianDayAt(RecordMoment(), 1.0);
    double U = J - swe_deltat(J);
    (void)U;
    ReadBodiesAt(J, 13, rahuKetuMode_, lysPlnt_);
}

void clsPlanets::EnsureBodies() const
{
    if (bodiesPending_) const_cast<clsPlanets*>(this)->ReadBodies();
}

void clsPlanets::ReadBodies()
{
    bodiesPending_ = false;
    const PendingBodies& m = pending_;
    // The moment, its houses and their KP cusps, an hour later: what
    // Calculate once read in its seventh step.
    const double J = JulianDayAt(m.greenwich);
    const double U = J - swe_deltat(J);
    ReadBodiesAt(J, 0, m.rahuKetuMode, lysPlnt_);
    std::array<double, 14> cusps{};
    swe_houses(U, m.latitude, m.longitude, 'P', cusps.data(), ascmc_.data());
    // The houses' middles stand already; the library's own cusps give the
    // KP houses and the unused first slot.
    cusps_[0] = cusps[0];
    const double kp = KPAyanamshaAt(J);
    for (std::size_t i = 1; i <= 12; ++i) kpHouse_[i] = cusps[i] - kp;
    const double J1 = JulianDayAt(m.greenwich, 1.0);
    (void)swe_deltat(J1);
    ReadBodiesAt(J1, 13, m.rahuKetuMode, lysPlnt_);

    // The ayanamsha off every entry but its own, which stands.
    if (m.subtract)
        for (std::size_t i = 1; i <= 26; ++i)
            if (i != 13) lysPlnt_[i] = Norm360(lysPlnt_[i] - m.ayanamsha);
    kpHouse_[0] = m.lagna + lysPlnt_[13] - KPAyanamshaAt(JulianDayAt(m.local));
    ComputeMoonNumbers();
    FillVargaTable();
}

double clsPlanets::PendingSun() const { return PendingAlone(SE_SUN, pendingSun_); }

double clsPlanets::PendingAlone(int body, std::optional<double>& kept) const
{
    if (!kept) {
        double xx[6] = {0, 0, 0, 0, 0, 0};
        char serr[256] = {0};
        swe_calc(JulianDayAt(pending_.greenwich), body, 0, xx, serr);
        kept = pending_.subtract ? Norm360(xx[0] - pending_.ayanamsha) : xx[0];
    }
    return *kept;
}

void clsPlanets::RowsOf(const PendingBodies& m)
{
    std::array<double, 27> table{};
    ReadBodiesAt(JulianDayAt(m.greenwich), 0, m.rahuKetuMode, table);
    if (m.subtract)
        for (std::size_t i = 1; i <= 12; ++i) table[i] = Norm360(table[i] - m.ayanamsha);
    VargaRowOf(m.lagna);
    for (std::size_t p = 1; p <= 12; ++p) VargaRowOf(table[p]);
}

void clsPlanets::ReplaySkippedRows()
{
    vargaRow_ = knownRow_;
    for (const PendingBodies& m : skipped_) RowsOf(m);
    skipped_.clear();
}

double clsPlanets::SwissAyanamsha(int code)
{
    double J = JulianDayOfRecord();
    if (code == 3) swe_set_sid_mode(SE_SIDM_KRISHNAMURTI, 0, 0);
    else if (code == 2) swe_set_sid_mode(SE_SIDM_RAMAN, 0, 0);
    return swe_get_ayanamsa(J);
}

double clsPlanets::KPAyanVal() { return SwissAyanamsha(3); }

void clsPlanets::LoadVakyaPositions()
{
    ranvel::clsPerson& P = clsPerson();
    if (!vakya_) vakya_ = std::make_shared<clsVakya>();
    clsVakya& v = *vakya_;
    auto run = [&](int hour) {
        v.Calculate(P.DayN(), P.MonthN(), P.YearN(), hour, P.MinutesN(), P.secondsN(), P.LatDegN(), P.LatMTN(),
                    P.LongDegN(), P.LongMTN(), lysPlnt_[13]);
    };
    auto place = [&](std::size_t base) {
        lysPlnt_[base + 1] = v.VakyaSun;
        lysPlnt_[base + 2] = v.VakyaMercury;
        lysPlnt_[base + 3] = v.VakyaVenus;
        lysPlnt_[base + 4] = v.VakyaMars;
        lysPlnt_[base + 5] = v.VakyaJupiter;
        lysPlnt_[base + 6] = v.VakyaSaturn;
        lysPlnt_[base + 7] = v.VakyaMoon;
        lysPlnt_[base + 8] = v.VakyaRahu;
        lysPlnt_[base + 9] = v.VakyaKetu;
    };
    run(P.HourN() + 1);  // an hour later first: entries 14 to 22
    place(13);
    run(P.HourN());  // then the moment: entries 1 to 9 and the Lagna
    place(0);
    bhavMid_[0] = v.VakyaLagna;
}

void clsPlanets::ApplyAyanamsha()
{
    ranvel::clsPerson& P = clsPerson();
    // The first year, with the days to the moment (clock left out).
    DateTime moment = P.GetBirthDate();
    double days = static_cast<double>(DateTime::DiffDays(DateTime::FromParts(P.YearN(), 1, 1), moment));
    const double y = P.YearN() + days / 365.2564;
    const int t = AyanType();

    if (t != 1) {
        for (std::size_t i = 0; i <= 12; ++i) {
            bhavMid_[i] += lysPlnt_[13];
            if (bhavMid_[i] > 360) bhavMid_[i] -= 360;
            bhavBegin_[i] += lysPlnt_[13];
            if (bhavBegin_[i] > 360) bhavBegin_[i] -= 360;
        }
    }

    double a = 0;
    bool subtract = true;
    bool houses = true;
    switch (t) {
    case 1: a = lysPlnt_[13]; houses = false; break;
    case 2: a = (y - 397.186) * 50.3389 / 3600.0; break;
    case 3: a = KPAyanVal(); break;
    case 4: a = (y - 298.883) * 49.5 / 3600.0; break;
    case 5: a = (y - 199.0) * 49.636 / 3600.0; break;
    case 6: a = (y - 498.0) * 50.0 / 3600.0; break;
    case 7: a = (y - 238.0) * 50.3086 / 3600.0; break;
    case 8: a = (y - 320.0) * 50.34 / 3600.0; break;
    case 9: a = (y - 284.0) * 49.0 / 3600.0; break;
    case 10: a = (y - 384.483) * 50.277 / 3600.0; break;
    case 11: a = (y - 663.0) * 60.66 / 3600.0; break;
    case 13: a = vb::Val(GetSetting("Init", "CustAyan", "00.00")); break;
    case 15: {
        // The chart's own reckoning is never calculated, so its Kali day is
        // that of the zero date and the value is the same for every moment.
        if (!vakya_) vakya_ = std::make_shared<clsVakya>();
        a = vakya_->CalcVakyaAyanamsha(vakya_->FindKaliDin());
        break;
    }
    default: subtract = false; break;  // 12, 14 and any other: no ayanamsha
    }

    pending_.subtract = subtract;
    pending_.ayanamsha = a;
    if (!subtract) {
        lysPlnt_[13] = 0;
        return;
    }
    // Kept bodies take it off when they are read.
    if (!g_lazyBodies)
        for (std::size_t i = 1; i <= 26; ++i) lysPlnt_[i] = Norm360(lysPlnt_[i] - a);
    if (houses) {
        for (std::size_t i = 0; i <= 12; ++i) {
            bhavMid_[i] = Norm360(bhavMid_[i] - a);
            bhavBegin_[i] = Norm360(bhavBegin_[i] - a);
        }
    }
    lysPlnt_[13] = a;
}

double clsPlanets::AscendantFor(double t, double lat) const
{
    double r = 15.0 * t + 90.0;
    if (r >= 360) r -= 360;
    const double tr = t * kPi / 12.0;
    const double latr = lat * kDegToRad;
    const double er = obliq_ * kDegToRad;
    double A = std::atan(-std::cos(tr) / (std::sin(er) * std::sin(latr) / std::cos(latr) + std::cos(er) * std::sin(tr))) /
               kDegToRad;
    if (A < 0) A += 180;
    if (r - A > 75) A += 180;  // a signed comparison
    A -= lysPlnt_[13];
    if (A < 0) A += 360;
    if (A > 360) A -= 360;  // exactly 360 stands
    return A;
}

void clsPlanets::ComputeHouses()
{
    ranvel::clsPerson& P = clsPerson();
    const double T = centuries_;
    obliq_ = 23.452294 - T * 0.0130125;
    const double R = FractionOf(T * 100.00214 + 0.2769) * 24.0;
    const double g = dayFraction_ * 24.0 + 12.0;
    double L = (P.LongDegN() + P.LongMTN() / 60.0) / 15.0;
    if (IsWest(P.TextEW())) L = -L;
    double S = FractionOf((R + g + L) / 24.0) * 24.0;
    if (S < 0) S += 24;
    sidrealTime_ = S;

    const double MC = AscendantFor(S - 6.0, 0.0);
    double lat = P.LatDegN() + P.LatMTN() / 60.0;
    if (P.TextNS() == "S") lat = -lat;  // only the capital letter counts here
    const double Asc = AscendantFor(S, lat);

    double A = (MC + 180.0 - Asc) / 3.0;
    if (MC > Asc) A -= 120.0;
    const double B = 60.0 - A;

    auto run = [&](double start, double step, std::size_t first) {
        for (std::size_t i = 0; i <= 3; ++i) {
            double v = start + static_cast<double>(i) * step;
            if (v >= 360) v -= 360;
            bhavMid_[first + i] = v;
        }
    };
    run(Asc, A, 0);
    run(MC + 180.0, B, 3);
    run(Asc + 180.0, A, 6);
    run(MC, B, 9);

    double b0 = bhavMid_[11] > bhavMid_[0] ? (bhavMid_[0] + 360.0 + bhavMid_[11]) / 2.0 : (bhavMid_[0] + bhavMid_[11]) / 2.0;
    for (int k = 0; k < 2 && b0 >= 360; ++k) b0 -= 360;
    bhavBegin_[0] = b0;
    for (std::size_t i = 1; i <= 12; ++i) {
        double v = (bhavMid_[i] + bhavMid_[i - 1]) / 2.0;
        if (bhavMid_[i] < bhavMid_[i - 1]) v += 180;
        if (v > 360) v -= 360;
        bhavBegin_[i] = v;
    }

    for (std::size_t i = 0; i <= 11; ++i) cusps_[i + 1] = bhavMid_[i] + lysPlnt_[13];
    // Kept bodies take the first KP house with them.
    if (!g_lazyBodies) kpHouse_[0] = bhavMid_[0] + lysPlnt_[13] - KPAyanVal();
}

// ---------------------------------------------------------------------------
// Readers of the tables

double clsPlanets::PlanetLongi(int p) const
{
    CheckIndex(p, 0, 26);
    if (p == 0) return bhavMid_[0];
    // The Lagna and the ayanamsha stand at once; the Sun alone is read by
    // itself, as the searches of sunrise ask for nothing else.
    if (bodiesPending_ && p != 13) {
        if (p == 1) return PendingSun();
        EnsureBodies();
    }
    return lysPlnt_[static_cast<std::size_t>(p)];
}

double clsPlanets::LightLongi(int p) const
{
    if (bodiesPending_ && p == 7) return PendingAlone(SE_MOON, pendingMoon_);
    return PlanetLongi(p);
}

void clsPlanets::PlanetLongi(int p, double value)
{
    CheckIndex(p, 0, 26);
    if (p == 0) {
        bhavMid_[0] = value;
        return;
    }
    EnsureBodies();
    lysPlnt_[static_cast<std::size_t>(p)] = value;
}

double clsPlanets::BhavMid(int i) const
{
    CheckIndex(i, 0, 12);
    return bhavMid_[static_cast<std::size_t>(i)];
}

double clsPlanets::BhavBegin(int i) const
{
    CheckIndex(i, 0, 12);
    return bhavBegin_[static_cast<std::size_t>(i)];
}

double clsPlanets::KPHouse(int i) const
{
    CheckIndex(i, 0, 13);
    EnsureBodies();
    return kpHouse_[static_cast<std::size_t>(i)];
}

std::string clsPlanets::BhavMidName(int i) { return ConvertToDegNoVal(BhavMid(i)); }
std::string clsPlanets::BhavBeginName(int i) { return ConvertToDegNoVal(BhavBegin(i)); }

double clsPlanets::PlanetSpeed(int p)
{
    CheckIndex(p, 0, 13);
    if (p != 0) {
        EnsureBodies();
        return lysPlnt_[static_cast<std::size_t>(p + 13)] - lysPlnt_[static_cast<std::size_t>(p)];
    }
    // The Lagna from a scratch chart moved by AddMinutes(60).
    clsPlanets scratch;
    CopySettingTo(scratch);
    scratch.clsPerson().AddMinutes(60);
    scratch.Calculate();
    return Norm360(scratch.BhavMid(0) - BhavMid(0));
}

std::string clsPlanets::AyanamshName() { return GetHeadValue(1, AyanType(), "AyanName").ToText(); }

void clsPlanets::CopySettingTo(clsPlanets& other)
{
    ranvel::clsPerson& from = clsPerson();
    ranvel::clsPerson& to = other.clsPerson();
    to.Day(from.DayN());
    to.Month(from.MonthN());
    to.Year(from.YearN());
    to.Hour(from.HourN());
    to.Minutes(from.MinutesN());
    to.seconds(from.secondsN());
    to.LongDeg(from.LongDegN());
    to.LongMT(from.LongMTN());
    to.LatDeg(from.LatDegN());
    to.LatMT(from.LatMTN());
    to.GMTDIFF(from.GMTDIFF());
    to.Name(from.Name());
    to.PLOB(from.PLOB());
    to.InheritPlaceLetters(from.PlaceNS(), from.PlaceEW());
}

}  // namespace ranvel
