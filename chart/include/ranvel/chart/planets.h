// clsPlanets: the chart of one moment and place. Its owner fills the record
// it exposes, calls Calculate, and reads positions and everything derived
// from them. This unit holds the record, the text store binding and the
// conversions of angle and date that stand beside the record.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ranvel/chart/person.h"
#include "ranvel/platform/database.h"
#include "ranvel/platform/datetime.h"
#include "ranvel/platform/variant.h"

namespace ranvel {

class clsVakya;

class clsPlanets {
public:
    clsPlanets();

    // The chart's record, made on first read; may be replaced by assignment.
    ranvel::clsPerson& clsPerson();
    void clsPerson(std::shared_ptr<ranvel::clsPerson> person);
    std::shared_ptr<ranvel::clsPerson> PersonRef();

    // Passes the value on to the record.
    void SetBirthDate(const DateTime& date);

    // ===== Chart computation (planets.cpp, calculate.cpp) =====
    // The one operation that does astronomy; see calculate.cpp for its steps.
    // The record's arithmetic, the ayanamsha and the houses (the Lagna) are
    // worked out at once; the bodies are read from the ephemeris when one of
    // them, or anything made of them, is first asked for. Every value read
    // is the one a full calculation gives.
    void Calculate();
    // For tests only: false reads every body at each Calculate, in the
    // order of work the chart has always had; replayRows works out the
    // divisional rows of unread calculations whenever some are owed, not
    // only where a kept entry needs them.
    static void SetLazyBodies(bool lazy, bool replayRows = false);
    static bool ReplayRows();

    // The planet table, 0 to 26: p 0 reaches BhavMid(0), the Lagna.
    double PlanetLongi(int p) const;
    void PlanetLongi(int p, double value);
    double LysPlnt(int p) const { return PlanetLongi(p); }
    // The Sun (1) or the Moon (7) alone, the other bodies left waiting: a
    // time search on the two lights reads nothing else. The value is the
    // one PlanetLongi gives.
    double LightLongi(int p) const;
    void LysPlnt(int p, double value) { PlanetLongi(p, value); }
    double BhavMid(int i) const;
    double BhavBegin(int i) const;
    std::string BhavMidName(int i);
    std::string BhavBeginName(int i);
    double KPHouse(int i) const;
    // The KP ayanamsha of the record's moment as it stands, asked anew.
    double KPAyanVal();
    double SidrealTime() const { return sidrealTime_; }
    double Obliq() const { return obliq_; }

    // Int(longitude / 30) + 1, computed afresh; p 0 for the Lagna.
    int PlanetRashiNum(int p) const;
    // The same, kept for the life of the object for p up to 13: the first
    // sign computed stands across later calculations. Sign uses Fix and
    // shares the memo.
    int PlanetSign(int p);
    int Sign(int p);
    std::string PlanetRashiName(int p);
    // The Moon's sign (0 for a longitude of exactly 360) and its name.
    int RashiNum() const;
    std::string RashiName();
    // Degrees per hour from the table; for the Lagna from a scratch chart
    // moved by AddMinutes(60), exactly an hour.
    double PlanetSpeed(int p);
    bool RetroGrade(int p) const;
    // Hour12 of the sum of the signs of p and the Lagna, plus one.
    int PlanetHouse(int p) const;
    int GetSunAyan() const;
    std::string AyanamshName();
    // Copies the moment and place to another chart's record, but not the
    // hemisphere letters, country, AMPM, time correction or sex.
    void CopySettingTo(clsPlanets& other);

    // Settings of the chart.
    int AyanType() const;  // read afresh at every use
    void AyanType(int value);
    int RahuKetuMode() const { return rahuKetuMode_; }
    void RahuKetuMode(int value) { rahuKetuMode_ = value; }
    int CalcModmanglik();
    void CalcModmanglik(int value);
    int CalcModVarna();
    void CalcModVarna(int value);

    // The last two steps of Calculate, on the tables as they stand: the Moon
    // numbers (panchanga.cpp) and the divisional tables (varga.cpp). Public
    // so that a chart whose longitudes were set directly can be completed.
    void ComputeMoonNumbers();
    void FillVargaTable();

    // ===== Panchanga (panchanga.cpp) =====
    int Tithi() const
    {
        EnsureBodies();
        return tithi_;
    }
    std::string TithiName();
    // t is a number as text; a value with a fraction is raised to Int + 1,
    // in place.
    std::string GetTithiName(Variant& t);
    double TithiValue() const;
    static int TithiShuklaKrishna(int t);
    static int GetTithiType(int t);
    int Nakshatra() const;
    static int NakshatraNum(double lon);
    // The numbers Calculate leaves for a Sun and a Moon.
    static int TithiOf(double sun, double moon);
    static int YogaOf(double sun, double moon);
    static int KaranNumOf(double sun, double moon);
    int NakOf(int p) const;
    double NakPada() const
    {
        EnsureBodies();
        return pada_;
    }
    double Pada() const { return NakPada(); }
    static int NakPadaNum(double lon);
    // n a number, or a longitude when it has a fraction (turned into a
    // nakshatra number in place).
    std::string GetNakshatraName(Variant& n);
    std::string GetNakLordName(int n);
    int YogaNumber() const
    {
        EnsureBodies();
        return yoga_;
    }
    std::string YogaName();
    Variant FindYoga(const Variant& n);
    std::string ConvertYoga(Variant& n);
    int KaranNumber() const;
    // The karana number of the naming rule (differs from KaranNumber).
    int KaranNum() const;
    std::string KaranName();
    static int VikramiMonth(double lon, const DateTime& date);
    std::string GetVikramiMonth(int n);
    int WeekDayLord() const;
    // Planet number of the lord of week day n, 0 for anything else.
    static int WeekDayLordOfDay(int n);
    static int WeekDayLordFromDay(int n);
    int FindPlanetDirection(int p) const;
    int Nak28GetNakshatra() const;
    static int GetTaraNum(int a, int b);

    // ===== Signs, lords, dignity, combustion (predicates.cpp) =====
    // Empty (reads as false) for p outside 2 to 7; false for the Sun.
    Variant Combust(int p) const;
    static bool CheckIfCombust(double a, int p, double b);
    bool WithinOrbOfSun(int p) const;
    double PlanetOrb(int p) const;
    double PlanetMutOrb(int a, int b) const;
    static int PlanetSpeedPoints(int p);
    bool Exalted(int p) const;
    bool Debilitated(int p) const;
    static bool CheckIfDebi(int p, int sign);
    static bool CheckOwnHouse(int p, int sign);
    static bool IsPlanetEnemy(int a, int b);
    static int GetRashiLordNum(int n);
    static int FindRashiLordNo(int& n);
    // Name of sign n; a value with a fraction is a longitude.
    std::string ConvertRashi(const Variant& n);
    // Short name with the text file's integrity check.
    std::string PlanetName(int p);
    std::string PlanetNameFull(int p);
    std::string PlanetNameSmall(int p);

    // ===== Divisional tables (varga.cpp) =====
    int PrediVarga(int p, int v) const;

    // ===== Sun, sidereal time and day span (sun.cpp) =====
    // Sunrise and sunset as HH.MM values, found by the Lagna reaching the
    // Sun's point (and the point opposite). Kept on the object from the
    // first call: a later Calculate does not clear them.
    double SunRiseTime();
    double SunSetTime();
    // Sunrise and sunset as the Sun's disc centre crossing the true horizon
    // at the true place, without refraction, in place of the Lagna's
    // reaching the Sun's point: a choice of the user's, off unless set.
    static bool AstronomicalSunrise();
    // With that choice, the Sun did not cross the horizon on the chart's day
    // (or by the moment's next sunrise) and the ecliptic rule stood in.
    bool SunWithoutHorizon() const { return sunWithoutHorizon_; }
    // The Sun's next rising on the true horizon after the chart's moment,
    // as the chart's HH.MM number; nothing where it does not rise within a
    // day and a half.
    std::optional<double> SunRiseAfterMoment();
    // Decimal hours from sunrise to sunset.
    double DayDuration();
    // Decimal hours of the night, kept like sunrise.
    double NightDuration();
    // The zone correction as a minutes-and-seconds value, unsigned.
    double LTCorrection();
    // By day, from the ascendant.
    bool CheckIfDay() const;
    // By day, from the clock.
    bool DayBirth();
    // The word for direct or retrograde motion of p.
    std::string Direction(int p);

    // ===== Upagrahas, day divisions, personal attributes =====
    // (upagraha.cpp, daydivisions.cpp, attributes.cpp)
    // BEGIN sensitive points, day divisions and attributes
    // Sensitive points (upagraha.cpp). Each returns a longitude in degrees
    // and is kept on the object from its first computation; 0 means not yet
    // computed. A later Calculate does not clear them, the setter of
    // UpagrahaMode does. Nine are fixed arcs from the Sun.
    double DhumaLongi();
    double VyatipataLongi();
    double PariveshaLongi();
    double IndraChapaLongi();
    double UpaketuLongi();
    double BhukampaLongi();
    double UlkaLongi();
    double BrahmadandaLongi();
    double DhwajaLongi();
    // Seven are the Lagna at the end (UpagrahaMode 1) or the beginning
    // (any other mode) of an eighth of the day or night picked by week day.
    double KalaBelaLong();
    double ParidhiLong();
    double MrityuLong();
    double ArdhaPraharLong();
    double YamaKantakaLong();
    double KodandaLong();
    double GulikaLong();
    // The Lagna at a week day's ghati out of the day's or night's thirty.
    double MandiLong();
    // The point of number n, 1 Dhuma to 17 Mandi; 0 for any other n.
    double UpagrahaLongi(int n);
    std::string UpagrahaName(int n);
    // The first three letters of the name.
    std::string UpagrahaNameSmall(int n);
    int UpagrahaSign(int n);
    int UpagrahaNak(int n);
    int UpaNakPada(int n);
    // Planet number of the lord of the point's sign.
    int UpagrahaLord(int n);
    int GulikaSign();
    // Read afresh at every use. The setter saves and clears the points
    // together with sunrise, sunset and night span.
    int UpagrahaMode() const;
    void UpagrahaMode(int value);

    // Day divisions (daydivisions.cpp). Sunrise and sunset enter as the
    // HH.MM values they are, as plain numbers: spans and starts are numbers
    // of that kind and their minutes are not true sixtieths.
    static int GetDayHora(int TheDay);
    // Element of a sign: 1 fire, 2 earth, 3 air, 4 water; 0 off the signs.
    static int GetRashiElement(int RashiName);
    static int GetChogadiyaType(int ChogadiyaNum, int TheDay);
    // Parts 1 to 8 run from sunrise, 9 to 16 from sunset; 0 for any other.
    double GetChogadiyaStart(int ChogNum);
    double GetChogadiyaSpan(int ChogNum);
    std::string GetChowGadiyaName(int ChogType);
    double GetRahuKaalSpanToday();
    double GetRahuKaalStartToday();
    // A Hora is one clock hour here, running on from sunrise.
    double GetHoraStart(int HoraNum);
    static int GetHoraType(int HoraNum, int TheDay);
    std::string GetHoraName(int HoraNum);
    // EvilM 1 to 4; any other gives sunrise less one part.
    double GetEvilMuhurthaStart(int EvilM);
    double GetMuhurthaLength();
    // Lord of p's Hora: 1 Sun or 7 Moon, from the sign as it stands now.
    int CheckHora(int p) const;
    // The same by the memoised Sign and KrishAmsha.
    int HoraLord(int p);
    // Degrees of p within its sign.
    double KrishAmsha(int p) const;

    // Personal attributes (attributes.cpp), from the Moon and its
    // Nakshatra. Each ...No gives the number, each name member the word
    // from the text store.
    int VarnaNo();
    std::string Varna();
    int VasyaNo() const;
    std::string Vasya();
    int YoniNo() const;
    std::string YoniName();
    // The Gana of Nakshatra n; an n of 0 is first set to the birth
    // Nakshatra, in place.
    int Gana(int& n) const;
    std::string AssignGana();
    int NadiNo() const;
    std::string AssignNadi();
    std::string NadiPada();
    // "F", "W", "B", "T" or "H" for Nakshatra n; "" off the table.
    static std::string RajjuType(int n);
    std::string Rajju();
    int GrahaMaitriNo() const;
    // 1 friend, 2 neutral, 3 enemy: a's view of b. A b that a's row does not
    // hold is a run-time error.
    static int GrahaRelation(int a, int b);
    // END sensitive points, day divisions and attributes

    // ===== Text store =====
    // Keeps the text database; the person database goes to the record.
    void setTextDB(std::shared_ptr<Database> textDB, std::shared_ptr<Database> recosDB);
    std::shared_ptr<Database> GetTxtDB() const { return textDB_; }
    std::shared_ptr<Database> GetRecosDB() const { return recosDB_; }
    Variant GetTextBetween(std::string_view table, const Variant& head, std::string_view category);
    Variant GetHeadValue(int mode, const Variant& head, std::string_view category);
    Variant GetConjText(const Variant& head);
    std::string GetGenText(const Variant& head);

    // ===== Conversions of angle and date (planets.cpp) =====
    static double DegToDec(int d, int m, int s);
    // "d:m:s" of a decimal value, the fraction read from the value's text.
    static std::string DecToDeg(double x);
    // A DD.MM value in decimal degrees.
    static double MinToDec(double x);
    // The sign's name of a longitude, from the object's table of the twelve
    // names.
    std::string ConvertToDegNoVal(double lon);
    // "dd:mm:ss" within the sign.
    static std::string ConvertValNoDeg(double x);
    // Degrees and minutes within the sign, joined by the language's ":".
    std::string ConvertValNoDegNoSec(double x);
    static DateTime DateAddEx(std::string_view interval, double amount, const DateTime& date);
    // Moves a date by a value with a fraction, unit by unit (1 years, 3 days,
    // 4 hours, 5 minutes, 6 seconds); unit and value are changed in place.
    static DateTime AddDecValToDate(const DateTime& date, int& unit, double& value);
    std::string ConvertDateToText(const DateTime& date);
    static long ConvertDateToNum(const DateTime& date);
    std::string GetMonthNameByNum(int n);
    // Takes one off n in place and names that week day.
    std::string GetDayName(int& n);

private:
    // calculate.cpp
    // A moment of the record: date and clock.
    struct Moment {
        int year = 0, month = 0, day = 0, hour = 0, minutes = 0;
        double Hours() const { return hour + minutes / 60.0; }
    };
    Moment RecordMoment();
    static double JulianDayAt(const Moment& m, double extraHours = 0);
    // What a Calculate leaves for the bodies to be read later: the moment
    // in Greenwich time, the record's local moment, the ayanamsha to take
    // off, and the Lagna of the divisional row.
    struct PendingBodies {
        Moment greenwich, local;
        double ayanamsha = 0;
        bool subtract = false;
        double lagna = 0;
        int rahuKetuMode = 1;
        double latitude = 0, longitude = 0;  // of the houses, signed
    };
    // Reads the bodies of the pending calculation, if any, and completes
    // the tables made of them.
    void EnsureBodies() const;
    void ReadBodies();
    // The Sun or the Moon of the pending calculation alone.
    double PendingSun() const;
    double PendingAlone(int body, std::optional<double>& kept) const;
    // The twelve bodies at a moment, in the ephemeris's order, into the
    // planet table's entries from base.
    static void ReadBodiesAt(double J, std::size_t base, int rahuKetuMode, std::array<double, 27>& table);
    // The divisional rows as they have always been filled, into the table.
    void FillRows();
    // The divisional rows of the calculations that were never read: they
    // carry over into the next row only where a rule keeps an entry.
    void ReplaySkippedRows();
    void RowsOf(const PendingBodies& m);
    void ReadPlanets();
    void ReadPlanetsNextHour();
    void ApplyAyanamsha();
    void ComputeHouses();
    double AscendantFor(double t, double lat) const;
    double SwissAyanamsha(int code);
    // Fills the planet table from the traditional reckoning in place of the
    // ephemeris. Nothing calls it: the reckoning reaches the chart only
    // through its ayanamsha.
    void LoadVakyaPositions();
    double JulianDayOfRecord();
    // varga.cpp
    void VargaRowOf(double longitude);
    // The sign names, shared by ConvertRashi and ConvertToDegNoVal.
    const std::string& RashiNameOf(int sign);
    static void CheckIndex(int i, int lo, int hi);

    std::shared_ptr<ranvel::clsPerson> person_;
    // The traditional reckoning that gives the Vakya ayanamsha; made on
    // first need and kept.
    std::shared_ptr<clsVakya> vakya_;
    std::shared_ptr<Database> textDB_;
    std::shared_ptr<Database> recosDB_;

    // Filled by Calculate.
    // The bodies' tables are completed on first read (EnsureBodies), so
    // they change under const readers.
    mutable std::array<double, 27> lysPlnt_{};  // 1 to 26; 0 is never written
    std::array<double, 13> bhavMid_{};
    std::array<double, 13> bhavBegin_{};
    mutable std::array<double, 14> kpHouse_{};
    mutable std::array<double, 14> cusps_{};  // swe_houses output, then tropical middles
    mutable std::array<double, 10> ascmc_{};  // swe_houses second output, read by nothing
    mutable bool bodiesPending_ = false;
    mutable PendingBodies pending_;
    mutable std::optional<double> pendingSun_, pendingMoon_;
    // Calculations whose bodies were never read, since the divisional row
    // was last known, and the row then.
    mutable std::vector<PendingBodies> skipped_;
    mutable std::array<std::int16_t, 18> knownRow_{};
    double centuries_ = 0;                // T
    double dayNumber_ = 0;                // N
    double dayFraction_ = 0;              // (GMT hours - 12) / 24
    double obliq_ = 0;
    double sidrealTime_ = 0;
    mutable int tithi_ = 0;
    mutable int nakIndex_ = 0;
    mutable int yoga_ = 0;
    mutable double pada_ = 0;
    mutable int moonSignIndex_ = 0;

    // Kept across Calculate.
    std::array<int, 14> signMemo_{};  // 0 means not yet computed
    int rahuKetuMode_ = 1;
    std::optional<int> calcModmanglik_;  // read from the settings on first use
    std::optional<int> calcModVarna_;
    mutable std::array<std::array<std::int16_t, 18>, 14> vargaTable_{};
    mutable std::array<std::int16_t, 18> vargaRow_{};  // scratch row, 1 to 17, kept between points

    // Kept across Calculate: sunrise, sunset, night span (0 = not yet).
    double sunRise_ = 0;
    double sunSet_ = 0;
    bool sunWithoutHorizon_ = false;
    double nightSpan_ = 0;
    std::array<std::string, 2> directionWords_;
    bool directionWordsFilled_ = false;
    // BEGIN state of sensitive points, day divisions and attributes
    // upagraha.cpp: the seventeen points by number, 1 to 17 (0 = not yet).
    std::array<double, 18> upagraha_{};
    double UpagrahaAtPart(int DayPart, int NightPart);
    // The kept point n, 10 KalaBela to 16 Gulika, at its part by the mode.
    double DayPartPoint(int n);
    // The Lagna of this chart's day at decimal hour t, on a scratch chart.
    double LagnaAtHour(double t);
    // Sunrise and sunset read as plain numbers, the day and night parts.
    double PlainDayPart();
    double PlainNightPart();
    // END state of sensitive points, day divisions and attributes

    // Name tables, filled on first use.
    std::array<std::string, 12> rashiNames_;
    bool rashiNamesFilled_ = false;
    std::array<std::string, 28> nakNames_;
    bool nakNamesFilled_ = false;
    std::array<std::string, 13> planetFullNames_;
    bool planetFullNamesFilled_ = false;
};

}  // namespace ranvel
