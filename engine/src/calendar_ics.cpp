// The calendar as an iCalendar file: one event per listed day, spanning the
// lagna of the day's best moment. Times go out in UTC, so that a calendar
// program anywhere shows them at the place's own clock.
#include <cmath>
#include <cstdio>

#include "ranvel/engine/calendar.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

namespace {

// A moment of the place's clock in UTC, as the charts take it: the clock less
// the place's difference from Greenwich.
std::string UtcStamp(const DateTime& local, double gmtHours)
{
    const DateTime utc = local.AddSeconds(-std::llround(gmtHours * 3600.0));
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%04d%02d%02dT%02d%02d%02dZ", utc.Year(), utc.Month(), utc.Day(), utc.Hour(),
                  utc.Minute(), utc.Second());
    return buffer;
}

// A TEXT value with its backslash, semicolon, comma and line ends escaped.
std::string Escaped(const std::string& text)
{
    std::string out;
    for (char c : text) {
        switch (c) {
        case '\\': out += "\\\\"; break;
        case ';': out += "\\;"; break;
        case ',': out += "\\,"; break;
        case '\n': out += "\\n"; break;
        case '\r': break;
        default: out += c;
        }
    }
    return out;
}

// A content line folded at 75 octets, never inside a UTF-8 character, each
// line ended by CRLF.
std::string Folded(const std::string& line)
{
    std::string out;
    std::size_t start = 0;
    std::size_t room = 75;
    while (line.size() - start > room) {
        std::size_t cut = start + room;
        while (cut > start && (static_cast<unsigned char>(line[cut]) & 0xC0) == 0x80) --cut;
        out += line.substr(start, cut - start) + "\r\n ";
        start = cut;
        room = 74;  // the continuation's leading blank counts
    }
    return out + line.substr(start) + "\r\n";
}

std::string ElementList(const std::vector<CalendarElement>& elements)
{
    std::string out;
    for (const CalendarElement& e : elements) {
        if (!out.empty()) out += ", ";
        out += (e.Heading.empty() ? e.Code : e.Heading) + " (" + std::to_string(e.Score) + ")";
    }
    return out.empty() ? "none" : out;
}

}  // namespace

std::string CalendarIcs(const MuhurthaCalendar& Calendar, const std::vector<std::size_t>& Listed,
                        const DateTime& StampUtc)
{
    std::string out;
    auto put = [&out](const std::string& line) { out += Folded(line); };
    put("BEGIN:VCALENDAR");
    put("VERSION:2.0");
    put("PRODID:-//Ranvel//Muhurtha Calendar//EN");
    put("CALSCALE:GREGORIAN");
    put("METHOD:PUBLISH");
    const std::string stamp = UtcStamp(StampUtc, 0);
    int rank = 0;
    for (std::size_t i : Listed) {
        const CalendarDay& d = Calendar.Days[i];
        ++rank;
        char uid[96];
        std::snprintf(uid, sizeof uid, "%04d%02d%02d-%s@ranvel", d.Day.Year(), d.Day.Month(), d.Day.Day(),
                      Calendar.MuhuCode.c_str());
        put("BEGIN:VEVENT");
        put(std::string("UID:") + uid);
        put("DTSTAMP:" + stamp);
        put("DTSTART:" + UtcStamp(d.LagnaStart, Calendar.GmtHours));
        // A span that did not close after its start (a search that gave up)
        // is written as the moment of its start.
        if (d.LagnaStart < d.LagnaEnd) put("DTEND:" + UtcStamp(d.LagnaEnd, Calendar.GmtHours));
        put("SUMMARY:" + Escaped(Calendar.MuhuName + ": " + vb::Format(d.Percent, "0.00") + " percent"));
        std::string text = "Rank " + std::to_string(rank) + (d.EngineBest ? ", the best Muhurtha of the range" : "") +
                           ". Best moment " + d.Best.Time + ", score " + vb::CStr(d.Score) + " of " +
                           std::to_string(d.MaxScore) + ", band " + std::to_string(d.Band) + ". Lagna from " +
                           d.LagnaStartText + " to " + d.LagnaEndText + " (place's clock).\n" +
                           "Held: " + ElementList(d.Held) + ".\nDefects: " + ElementList(d.Defects) + ".";
        put("DESCRIPTION:" + Escaped(text));
        if (!Calendar.Place.empty()) put("LOCATION:" + Escaped(Calendar.Place));
        put("END:VEVENT");
    }
    put("END:VCALENDAR");
    return out;
}

}  // namespace ranvel
