// The Muhurtha calendar: every day of a range search with its best moment as
// the search scored it, graded by the percent and band of the result pages
// and ranked. Nothing here scores a moment: the days are read from the
// engine's Results, the percent and band by the engine's own rules, and each
// day's lagna span is found the way the best Muhurtha's is.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "ranvel/engine/muhurtha.h"

namespace ranvel {

// One element of a day's best moment: its code, its heading in the current
// language and the score it brought.
struct CalendarElement {
    std::string Code;
    std::string Heading;
    int Score = 0;
};

struct CalendarDay {
    DateTime Day;             // the date, clock at 0:00
    bool Tested = false;      // a moment of the search fell on this day
    std::vector<MomentResult> Moments;  // the day's tested moments in time order
    // Of the day's best moment (the earliest highest score): its record in
    // the engine's Results, its record, and its score with a score below 0
    // shown as 0, as for the best Muhurtha.
    std::size_t ResultIndex = 0;
    MomentResult Best;
    double Score = 0;
    std::int32_t MaxScore = 0;
    double Percent = 0;
    int Band = 10;            // 10, 20 ... 100
    std::string BandText;     // the band's sentence
    // The lagna span around the best moment: its limits as moments of the
    // place's clock, and as the pages print them ("HH:MM:SS").
    DateTime LagnaStart, LagnaEnd;
    std::string LagnaStartText, LagnaEndText;
    std::vector<CalendarElement> Held;     // elements that brought 1 or more
    std::vector<CalendarElement> Defects;  // elements that brought 0 or less
    bool EngineBest = false;  // the engine's own best Muhurtha of the range
};

struct MuhurthaCalendar {
    std::string MuhuCode, MuhuName, Category;
    DateTime StartDate, EndDate;
    double TimeStart = 0, TimeEnd = 0;
    std::string Place;        // the place's name as the search's chart holds it
    double GmtHours = 0;      // the place's difference from Greenwich as the charts read it
    std::vector<CalendarDay> Days;  // every day of the range, in date order
    // Every tested day, best first: the engine's best Muhurtha, then by
    // percent, higher scores first among equal percents, then the earliest.
    std::vector<std::size_t> Ranked;

    // The first Top of the ranked days whose band is at least MinBand.
    std::vector<std::size_t> Listed(int Top, int MinBand) const;
    // The day of a date, or nullptr.
    const CalendarDay* DayOf(const DateTime& Date) const;
};

// The longest range a calendar is made for, in years, and the message that
// refuses a longer one ("" when the range is fine).
constexpr int kCalendarMostYears = 10;
std::string CheckCalendarRange(const DateTime& From, const DateTime& To);
// True for the bands a user may name: 10, 20 ... 100.
bool IsCalendarBand(int Band);

// The calendar of the engine's last range search. The engine's best members
// are left as they are.
MuhurthaCalendar BuildCalendar(clsMuhurtha& Engine);

// Makes a day's best moment the engine's best Muhurtha, so that the result
// pages, printing, PDF and mail show that day exactly as the calendar does.
void PickCalendarDay(clsMuhurtha& Engine, const CalendarDay& Day);

// The ranked table that the command line prints.
std::string CalendarTable(const MuhurthaCalendar& Calendar, const std::vector<std::size_t>& Listed);

// An iCalendar text (CRLF lines folded at 75 octets) with one event per
// listed day, from the lagna span's start to its end in UTC. Stamp is the
// moment of writing, in UTC.
std::string CalendarIcs(const MuhurthaCalendar& Calendar, const std::vector<std::size_t>& Listed,
                        const DateTime& StampUtc);

}  // namespace ranvel
