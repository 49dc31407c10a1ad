// clsPerson: the record of one moment and one place. Every chart owns one,
// and the engine moves it through time to ask what the sky looks like then.
// It is not a value object: the chart rewrites its clock while it works.
//
// Getters and setters carry the field's name. A setter takes a loosely typed
// value and converts it to the field's stored type, a fraction rounding half
// to even. Getters return what the record shows (two-digit day and month,
// trimmed texts ...); the ...N() accessors give the stored number itself.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "ranvel/platform/database.h"
#include "ranvel/platform/datetime.h"
#include "ranvel/platform/variant.h"

namespace ranvel {

class clsPerson {
public:
    // --- fields, in their order ---
    std::string Name() const;
    void Name(const Variant& v);
    std::int16_t Sex() const { return sex_; }
    void Sex(const Variant& v);
    std::string Day() const;  // two digits
    void Day(const Variant& v);
    std::string Month() const;  // two digits
    void Month(const Variant& v);
    std::string Year() const;
    void Year(const Variant& v);
    std::string Hour() const;  // 0 to 23 on a 24-hour clock; 24 can occur
    void Hour(const Variant& v);
    std::string Minutes() const;  // 60 can occur after a calculation
    void Minutes(const Variant& v);
    std::string seconds() const;
    void seconds(const Variant& v);
    std::string AMPM() const;  // 0 undecided, 1 AM, 2 PM
    void AMPM(const Variant& v);
    std::string Country() const;
    void Country(const Variant& v);
    std::string LatDeg() const;
    void LatDeg(const Variant& v);
    std::string LatMT() const;
    void LatMT(const Variant& v);
    std::string TextNS() const;
    void TextNS(const Variant& v);
    std::string LongDeg() const;
    void LongDeg(const Variant& v);
    std::string LongMT() const;
    void LongMT(const Variant& v);
    std::string TextEW() const;
    void TextEW(const Variant& v);
    std::string PLOB() const;
    void PLOB(const Variant& v);
    const std::string& GMTDIFF() const { return gmtDiff_; }  // as stored
    void GMTDIFF(const Variant& v);
    const std::string& TimeCorr() const { return timeCorr_; }  // as stored
    void TimeCorr(const Variant& v);
    std::int32_t TimeCorrInde() const { return timeCorrInde_; }
    void TimeCorrInde(const Variant& v);

    // --- the stored numbers ---
    std::int32_t DayN() const { return day_; }
    std::int32_t MonthN() const { return month_; }
    std::int32_t YearN() const { return year_; }
    std::int32_t HourN() const { return hour_; }
    std::int32_t MinutesN() const { return minutes_; }
    std::int32_t secondsN() const { return seconds_; }
    std::int16_t AMPMN() const { return ampm_; }
    std::int32_t LatDegN() const { return latDeg_; }
    std::int32_t LatMTN() const { return latMT_; }
    std::int32_t LongDegN() const { return longDeg_; }
    std::int32_t LongMTN() const { return longMT_; }
    // The stored hemisphere letters, untrimmed.
    const std::string& TextNSRaw() const { return textNS_; }
    const std::string& TextEWRaw() const { return textEW_; }
    // The place's hemispheres whatever the record shows: its own letters, or
    // else those of the record it was copied from (a chart's copy carries no
    // letters of its own). Read only where the true place is asked for, the
    // Sun's rising on the true horizon.
    std::string PlaceNS() const { return TextNS().empty() ? placeNS_ : TextNS(); }
    std::string PlaceEW() const { return TextEW().empty() ? placeEW_ : TextEW(); }
    void InheritPlaceLetters(const std::string& ns, const std::string& ew)
    {
        placeNS_ = ns;
        placeEW_ = ew;
    }

    // --- the moment ---
    // Day/Month/Year read day-first as a date, then Hour hours and Minutes
    // minutes added (so Minutes 60 reads as the next hour). Seconds are left
    // out. An impossible date is a run-time error.
    DateTime GetBirthDate() const;
    // Week day of the date alone, 1 Sunday to 7 Saturday.
    int WeekDayOfBirth() const;
    // "07.05"
    std::string GetBirthTime() const;
    // Hour, a point, and the minutes as hundredths in two digits: 7:05 gives
    // 7.08.
    double GetBirthDecimalTime() const;
    // "07:05 AM". Decides AMPM first when it is still 0.
    std::string GetBirthTimeFull();
    // "28.38N", no leading zeros; the ...Full forms put a blank before the
    // letter.
    std::string GetLatti() const;
    std::string GetLongi() const;
    std::string GetLatitudeFull() const;
    std::string GetLongitudeFull() const;
    // Degrees plus minutes / 100, unsigned: for display and storing.
    double Latitude() const;
    double Longitude() const;
    // "PLOB, Country"
    std::string GetBirthPlace() const;

    // Day, Month, Year, Hour, Minutes from the value; AMPM from the hour.
    void SetBirthDate(const DateTime& date);
    // Wraps an hour that fell outside the day once, moving the date given in
    // the arguments a day forward or back and writing it into the record.
    // Exactly 24 is returned as it is.
    double AdjustHour(double hour, int day, int month, int year);
    // Moves the date by whole days; the clock stays.
    void AddDays(double days);
    // Moves the record by a number of minutes. A step of 0 minutes becomes
    // one minute, so AddMinutes(0) and AddMinutes(120) both move one minute
    // more than asked: callers rely on this stepping. Returns Hour and
    // Minutes read as "H.M" (7:05 gives 7.5), a marker, not a value.
    double AddMinutes(double minutes);

    // --- the person table (RECOS.Dat, table Person, browsed through the
    // saved query qryPersonName) ---
    // Keeps the handle, opens qryPersonName and stands on its first row.
    void SetDB(std::shared_ptr<Database> db);
    std::shared_ptr<Database> GetDB() const { return db_; }
    long RecordCount() const;
    // To the first row, then n rows on, and load it (nothing on no rows).
    void MoveTo(long n);
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    // A new row holding this record.
    void AddNew();
    // Writes this record over the current row.
    void Save();
    void Delete();
    // Loads the first person of that name; false when there is none. The
    // name goes into the query as it stands.
    bool FindPerson(const std::string& name);
    // Stands on the first row of that name (without regard to case) and
    // loads nothing, neither it nor the rows before it: a row the store
    // can't load back can still be written over or deleted. False when
    // there is none.
    bool MoveToName(const std::string& name);

    // Throws, with what is wrong, for a person row that the store could not
    // load back or a chart could never be cast from: fields that do not read
    // as numbers, no name or one with an apostrophe (it would break the
    // store's queries), a date that is no date, an hour or minute out of the
    // clock.
    static void CheckRow(const Recordset& rs);

private:
    DateTime DateOfRecord() const;
    void LoadPerson(const Recordset& rs);
    void StorePerson(Recordset& rs) const;
    Recordset& Rows() const;

    std::shared_ptr<Database> db_;
    std::shared_ptr<Recordset> rs_;

    std::string name_;
    std::int16_t sex_ = 0;
    std::int32_t day_ = 0;
    std::int32_t month_ = 0;
    std::int32_t year_ = 0;
    std::int32_t hour_ = 0;
    std::int32_t minutes_ = 0;
    std::int32_t seconds_ = 0;
    std::int16_t ampm_ = 0;
    std::string country_;
    std::int32_t latDeg_ = 0;
    std::int32_t latMT_ = 0;
    std::string textNS_;
    std::int32_t longDeg_ = 0;
    std::int32_t longMT_ = 0;
    std::string textEW_;
    std::string placeNS_, placeEW_;
    std::string plob_;
    std::string gmtDiff_;
    std::string timeCorr_;
    std::int32_t timeCorrInde_ = 0;
};

}  // namespace ranvel
