// The place most tests stand at: Delhi, 28N38 77E12, GMT +5.5.
#pragma once

#include "ranvel/chart/person.h"

namespace ranvel::test {

inline void AtDelhi(clsPerson& p, int day, int month, int year, int hour, int minute)
{
    p.Day(day);
    p.Month(month);
    p.Year(year);
    p.Hour(hour);
    p.Minutes(minute);
    p.LatDeg(28);
    p.LatMT(38);
    p.TextNS("N");
    p.LongDeg(77);
    p.LongMT(12);
    p.TextEW("E");
    p.GMTDIFF("5.5");
    p.PLOB("Delhi");
    p.Country("India");
}

// A place of the world by its record's fields, for tests at places west,
// south and far from India.
struct TestPlace {
    const char* name;
    int latDeg, latMin;
    const char* ns;
    int lonDeg, lonMin;
    const char* ew;
    const char* gmt;  // hours, as the record reads them
};

// Puts the place and a moment of its clock into a record.
inline void PutAt(clsPerson& p, const TestPlace& at, int day, int month, int year, int hour, int minute)
{
    p.Day(day);
    p.Month(month);
    p.Year(year);
    p.Hour(hour);
    p.Minutes(minute);
    p.LatDeg(at.latDeg);
    p.LatMT(at.latMin);
    p.TextNS(at.ns);
    p.LongDeg(at.lonDeg);
    p.LongMT(at.lonMin);
    p.TextEW(at.ew);
    p.GMTDIFF(at.gmt);
    p.PLOB(at.name);
}

}  // namespace ranvel::test
