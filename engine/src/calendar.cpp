// The Muhurtha calendar, read from the engine's last range search.
#include "ranvel/engine/calendar.h"

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <map>

#include "ranvel/platform/vbmath.h"

namespace ranvel {

namespace {

// The entries of a fruct list, each with the score it noted: "CODE-4:" gives
// 4, "CODE--4:" gives -4, by the rule that decides an element's flag.
std::vector<std::pair<std::string, int>> FructEntries(const std::string& fruct)
{
    std::vector<std::pair<std::string, int>> out;
    for (const std::string& entry : vb::Split(fruct, ':')) {
        if (entry.empty()) continue;
        std::vector<std::string> parts = vb::Split(entry, '-');
        int score = 0;
        if (parts.size() == 2) score = vb::CLng(vb::Val(parts[1]));
        else if (parts.size() == 3) score = -vb::CLng(vb::Val(parts[2]));
        out.emplace_back(parts[0], score);
    }
    return out;
}

const char* const kWeekDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};

std::string Printf(const char* format, ...) __attribute__((format(printf, 1, 2)));
std::string Printf(const char* format, ...)
{
    char buffer[512];
    va_list args;
    va_start(args, format);
    std::vsnprintf(buffer, sizeof buffer, format, args);
    va_end(args);
    return buffer;
}

}  // namespace

std::vector<std::size_t> MuhurthaCalendar::Listed(int Top, int MinBand) const
{
    std::vector<std::size_t> out;
    for (std::size_t i : Ranked) {
        if (static_cast<int>(out.size()) >= Top) break;
        if (Days[i].Band >= MinBand) out.push_back(i);
    }
    return out;
}

const CalendarDay* MuhurthaCalendar::DayOf(const DateTime& Date) const
{
    const DateTime day = Date.DateOnly();
    auto it = std::lower_bound(Days.begin(), Days.end(), day,
                               [](const CalendarDay& d, const DateTime& x) { return d.Day < x; });
    return it != Days.end() && it->Day == day ? &*it : nullptr;
}

std::string CheckCalendarRange(const DateTime& From, const DateTime& To)
{
    if (To.DateOnly() < From.DateOnly())
        return "The calendar needs a range: the last day " + To.ToDayFirstText() + " lies before the first day " +
               From.ToDayFirstText() + ".";
    if (From.DateOnly().AddYears(kCalendarMostYears) < To.DateOnly())
        return "A Muhurtha calendar covers at most " + std::to_string(kCalendarMostYears) + " years; the range " +
               From.ToDayFirstText() + " to " + To.ToDayFirstText() + " is longer. Please choose a shorter range.";
    return {};
}

bool IsCalendarBand(int Band) { return Band >= 10 && Band <= 100 && Band % 10 == 0; }

MuhurthaCalendar BuildCalendar(clsMuhurtha& Engine)
{
    MuhurthaCalendar cal;
    cal.MuhuCode = Engine.MuhuCode;
    cal.MuhuName = Engine.MuhuName;
    cal.Category = Engine.MuhuCategory();
    cal.StartDate = Engine.StartDate.DateOnly();
    cal.EndDate = Engine.EndDate.DateOnly();
    cal.TimeStart = Engine.TimeStart;
    cal.TimeEnd = Engine.TimeEnd;
    cal.Place = Engine.MuhuChart->clsPerson().PLOB();
    cal.GmtHours = vb::Val(Engine.MuhuChart->clsPerson().GMTDIFF());

    for (DateTime d = cal.StartDate; d <= cal.EndDate; d = d.AddDays(1)) {
        CalendarDay day;
        day.Day = d;
        cal.Days.push_back(day);
    }

    // The moments by day; the last record of Results is the empty one under
    // work. The engine's best is the earliest highest record, as PickBest
    // takes it.
    const std::vector<MomentResult>& results = Engine.Results;
    const std::size_t last = results.empty() ? 0 : results.size() - 1;
    std::size_t engineBest = 0;
    std::map<DateTime, std::size_t> dayOf;
    for (std::size_t i = 0; i < cal.Days.size(); ++i) dayOf[cal.Days[i].Day] = i;
    for (std::size_t i = 1; i < last; ++i) {
        const MomentResult& r = results[i];
        if (engineBest == 0 || r.Score > results[engineBest].Score) engineBest = i;
        auto [it, added] = dayOf.try_emplace(r.Date.DateOnly(), cal.Days.size());
        if (added) {
            // A moment outside the range's days (none should be): it gets a
            // day of its own, so that nothing the search tested is left out.
            CalendarDay day;
            day.Day = r.Date.DateOnly();
            cal.Days.push_back(day);
        }
        CalendarDay& day = cal.Days[it->second];
        if (!day.Tested || r.Score > results[day.ResultIndex].Score) day.ResultIndex = i;
        day.Tested = true;
        day.Moments.push_back(r);
    }
    std::sort(cal.Days.begin(), cal.Days.end(), [](const CalendarDay& a, const CalendarDay& b) { return a.Day < b.Day; });

    std::map<int, std::string> bandTexts;
    std::map<std::string, std::string> headings;
    for (CalendarDay& day : cal.Days) {
        if (!day.Tested) continue;
        day.Best = results[day.ResultIndex];
        day.Score = day.Best.Score < 0 ? 0 : day.Best.Score;
        day.MaxScore = Engine.MaxPossibleScoreOf(day.Best.FructElems);
        day.Percent = Engine.PercentOf(day.Score, day.Best.FructElems);
        day.Band = clsMuhurtha::BandOf(day.Percent);
        auto band = bandTexts.find(day.Band);
        if (band == bandTexts.end())
            band = bandTexts.emplace(day.Band, Engine.MuhuScoreText(day.Band).ToTextOrEmpty()).first;
        day.BandText = band->second;
        for (auto& [code, score] : FructEntries(day.Best.FructElems)) {
            auto h = headings.find(code);
            if (h == headings.end()) h = headings.emplace(code, Engine.ElementHeading(code).ToTextOrEmpty()).first;
            (score >= 1 ? day.Held : day.Defects).push_back({code, h->second, score});
        }
        clsMuhurtha::LagnaSpan span = Engine.LagnaSpanAt(day.Best.Date, day.Best.Time);
        day.LagnaStart = span.Start->clsPerson().GetBirthDate();
        day.LagnaEnd = span.End->clsPerson().GetBirthDate();
        day.LagnaStartText = span.Start->clsPerson().GetBirthTimeFull();
        day.LagnaEndText = span.End->clsPerson().GetBirthTimeFull();
        day.EngineBest = day.ResultIndex == engineBest;
    }

    for (std::size_t i = 0; i < cal.Days.size(); ++i)
        if (cal.Days[i].Tested) cal.Ranked.push_back(i);
    // The percent's maximum moves with the elements that occurred, so a day
    // of a lower score can reach a higher percent than the best Muhurtha;
    // the best Muhurtha still heads the list, as on the cover.
    std::stable_sort(cal.Ranked.begin(), cal.Ranked.end(), [&](std::size_t a, std::size_t b) {
        const CalendarDay& x = cal.Days[a];
        const CalendarDay& y = cal.Days[b];
        if (x.EngineBest != y.EngineBest) return x.EngineBest;
        if (x.Percent != y.Percent) return x.Percent > y.Percent;
        if (x.Best.Score != y.Best.Score) return x.Best.Score > y.Best.Score;
        return x.Day < y.Day;
    });
    return cal;
}

void PickCalendarDay(clsMuhurtha& Engine, const CalendarDay& Day)
{
    if (!Day.Tested) throw vb::RuntimeError("No moment was tested on " + Day.Day.ToDayFirstText() + ".");
    Engine.PickMoment(Day.ResultIndex);
}

std::string CalendarTable(const MuhurthaCalendar& Calendar, const std::vector<std::size_t>& Listed)
{
    std::size_t tested = 0;
    for (const CalendarDay& d : Calendar.Days) tested += d.Tested ? 1 : 0;
    std::string out = "Muhurtha calendar: " + Calendar.MuhuName + ", category " + Calendar.Category;
    if (!Calendar.Place.empty()) out += ", at " + Calendar.Place;
    out += "\n";
    out += Printf("Searched %s to %s, %s to %s each day: %zu days, %zu with tested moments\n\n",
                  Calendar.StartDate.ToDayFirstText().c_str(), Calendar.EndDate.ToDayFirstText().c_str(),
                  vb::Format(Calendar.TimeStart, "00.00").c_str(), vb::Format(Calendar.TimeEnd, "00.00").c_str(),
                  Calendar.Days.size(), tested);
    if (Listed.empty()) return out + "No day reaches the band asked for.\n";
    out += Printf("%zu of the %zu tested days, the best first:\n\n", Listed.size(), tested);
    out += "Rank  Date        Day  Moment  Score  Percent  Band  Lagna span\n";
    int rank = 0;
    for (std::size_t i : Listed) {
        const CalendarDay& d = Calendar.Days[i];
        out += Printf("%4d  %s  %s  %-6s  %5s  %7s  %4d  %s to %s%s\n", ++rank, d.Day.ToDayFirstText().c_str(),
                      kWeekDays[d.Day.WeekDay() - 1], d.Best.Time.c_str(), vb::CStr(d.Score).c_str(),
                      vb::Format(d.Percent, "0.00").c_str(), d.Band, d.LagnaStartText.c_str(),
                      d.LagnaEndText.c_str(), d.EngineBest ? "  (best Muhurtha)" : "");
    }
    return out;
}

}  // namespace ranvel
