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

}  // namespace ranvel::test
