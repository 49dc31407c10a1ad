#include "ranvel/platform/gui/systemzones.h"

#include <QTimeZone>
#include <algorithm>

namespace ranvel {

namespace {

constexpr int kFirstYear = 1900;

// A DateTime's wall clock as seconds of a UTC line: local times compare and
// step as plain numbers on it.
QDateTime AsUtc(const DateTime& t)
{
    return QDateTime(QDate(t.Year(), t.Month(), t.Day()), QTime(t.Hour(), t.Minute(), t.Second()), QTimeZone::utc());
}

DateTime FromUtcClock(const QDateTime& t)
{
    const QDate d = t.date();
    const QTime c = t.time();
    return DateTime::FromParts(d.year(), d.month(), d.day(), c.hour(), c.minute(), c.second());
}

bool Open(const std::string& zone, QTimeZone& tz, std::string& why)
{
    const QByteArray id = QByteArray::fromStdString(zone);
    if (zone.empty()) {
        why = "the place has no time zone";
        return false;
    }
    if (QTimeZone::availableTimeZoneIds().isEmpty()) {
        why = "no time zone database is installed";
        return false;
    }
    if (!QTimeZone::isTimeZoneIdAvailable(id)) {
        why = "the time zone '" + zone + "' is not known to the time zone database";
        return false;
    }
    tz = QTimeZone(id);
    if (!tz.isValid()) {
        why = "the time zone '" + zone + "' can't be read";
        return false;
    }
    return true;
}

}  // namespace

ZoneReading SystemZones::At(const std::string& zone, const DateTime& local) const
{
    ZoneReading r;
    if (local.Year() < kFirstYear) {
        r.why = "the time zone database is not asked for dates before " + std::to_string(kFirstYear);
        return r;
    }
    QTimeZone tz;
    if (!Open(zone, tz, r.why)) return r;
    // The offsets a day either side can hold; each that maps the local time
    // back onto itself is one pass of the clock over it.
    const QDateTime wall = AsUtc(local);
    std::vector<int> offsets;
    for (qint64 hours : {-26, 26}) {
        const int o = tz.offsetFromUtc(wall.addSecs(hours * 3600));
        if (std::find(offsets.begin(), offsets.end(), o) == offsets.end()) offsets.push_back(o);
    }
    std::vector<std::pair<int, bool>> passes;  // offset (seconds), summer time
    for (int o : offsets) {
        const QDateTime utc = wall.addSecs(-o);
        if (tz.offsetFromUtc(utc) == o) passes.push_back({o, tz.isDaylightTime(utc)});
    }
    // The earlier pass in time is the one with the larger offset.
    std::sort(passes.begin(), passes.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
    if (passes.empty()) {
        r.kind = ZoneReading::Kind::Skipped;
        r.minutes = tz.offsetFromUtc(wall.addSecs(-26 * 3600)) / 60;
        r.later = tz.offsetFromUtc(wall.addSecs(26 * 3600)) / 60;
        r.daylight = tz.isDaylightTime(wall.addSecs(26 * 3600));
        return r;
    }
    r.kind = passes.size() == 1 ? ZoneReading::Kind::Normal : ZoneReading::Kind::Repeated;
    r.minutes = passes.front().first / 60;
    r.daylight = passes.front().second;
    r.later = passes.back().first / 60;
    return r;
}

std::vector<ZoneChange> SystemZones::Changes(const std::string& zone, const DateTime& from, const DateTime& to) const
{
    std::vector<ZoneChange> out;
    QTimeZone tz;
    std::string why;
    if (from.Year() < kFirstYear || !Open(zone, tz, why)) return out;
    // From a day before, on the zone's own transitions.
    QDateTime at = AsUtc(from).addSecs(-tz.offsetFromUtc(AsUtc(from)));
    const QDateTime end = AsUtc(to).addSecs(-tz.offsetFromUtc(AsUtc(to)));
    int before = tz.offsetFromUtc(at);
    for (int guard = 0; guard < 1000; ++guard) {
        const QTimeZone::OffsetData next = tz.nextTransition(at);
        if (!next.atUtc.isValid() || next.atUtc > end) break;
        at = next.atUtc;
        if (next.offsetFromUtc == before) continue;  // a change of name or rule only
        ZoneChange c;
        c.local = FromUtcClock(next.atUtc.toUTC().addSecs(before));
        c.minutes = next.offsetFromUtc / 60;
        c.daylight = next.daylightTimeOffset != 0;
        out.push_back(c);
        before = next.offsetFromUtc;
    }
    return out;
}

void UseSystemZones()
{
    static SystemZones zones;
    SetZones(&zones);
}

}  // namespace ranvel
