#include "ranvel/engine/zonenotes.h"

#include <cstdio>

#include "ranvel/data/cityzones.h"
#include "ranvel/platform/vbmath.h"
#include "ranvel/platform/zones.h"

namespace ranvel {

namespace {

std::string ClockText(const DateTime& t)
{
    char text[8];
    std::snprintf(text, sizeof text, "%02d.%02d", t.Hour(), t.Minute());
    return text;
}

// A date field and a time field of the form as a local moment; the time
// is of a 24-hour clock, a PM half moving a morning hour past noon.
std::optional<DateTime> LocalOfFields(const std::string& date, const std::string& time, int ampm)
{
    int d = 0, m = 0, y = 0, h = -1, mi = -1;
    char tail = 0;
    if (std::sscanf(date.c_str(), "%2d/%2d/%4d%c", &d, &m, &y, &tail) != 3 || !DateTime::IsValidDate(y, m, d))
        return std::nullopt;
    if (std::sscanf(time.c_str(), "%2d.%2d%c", &h, &mi, &tail) != 2 || h < 0 || h > 23 || mi < 0 || mi > 59)
        return std::nullopt;
    if (ampm == 2 && h < 12) h += 12;
    return DateTime::FromParts(y, m, d, h, mi);
}

}  // namespace

std::optional<DateTime> LocalMoment(const std::string& date, const std::string& time, int ampm)
{
    return LocalOfFields(date, time, ampm);
}

std::optional<int> ZoneFieldMinutes(const std::string& field)
{
    int h = 0, m = 0;
    char sign = 0, tail = 0;
    if (field.size() != 6 || std::sscanf(field.c_str(), "%c%2d.%2d%c", &sign, &h, &m, &tail) != 3 ||
        (sign != '+' && sign != '-') || m > 59)
        return std::nullopt;
    return (sign == '-' ? -1 : 1) * (h * 60 + m);
}

std::optional<ZoneNote> OffsetNote(Database& recos, const std::string& city, const std::string& country,
                                   const std::string& gmt, const DateTime& local)
{
    if (city.empty()) return std::nullopt;
    const std::vector<CityZone> found = CitiesNamed(recos, city, country);
    if (found.empty() || found.front().Zone.empty()) return std::nullopt;
    const ZoneReading r = Zones().At(found.front().Zone, local);
    const std::string on = local.ToDayFirstText();
    const std::string where = found.front().City;
    const std::optional<int> typed = ZoneFieldMinutes(gmt);
    ZoneNote n;
    switch (r.kind) {
    case ZoneReading::Kind::Unknown:
        n.Text = "The offset in force in " + where + " on " + on + " can't be looked up (" + r.why +
                 "); the offset typed is kept";
        n.Short = "Offset not known";
        return n;
    case ZoneReading::Kind::Skipped:
        n.Text = ClockText(local) + " on " + on + " did not exist in " + where + ": the clock moved from " +
                 ZoneOffsetText(r.minutes) + " to " + ZoneOffsetText(r.later) + " over it";
        n.Short = "Hour skipped";
        return n;
    case ZoneReading::Kind::Repeated:
        n.Text = ClockText(local) + " on " + on + " came twice in " + where + ": at " + ZoneOffsetText(r.minutes) +
                 (r.daylight ? " (summer time)" : "") + ", then at " + ZoneOffsetText(r.later);
        if (typed != r.minutes && typed != r.later) n.Offset = ZoneOffsetText(r.minutes);
        n.Short = "Hour came twice";
        return n;
    case ZoneReading::Kind::Normal: break;
    }
    if (typed == r.minutes) return std::nullopt;
    n.Offset = ZoneOffsetText(r.minutes);
    n.Text = r.daylight ? "Summer time was in force in " + where + " on " + on + ": " + n.Offset
                        : "The clock of " + where + " stood at " + n.Offset + " on " + on;
    n.Short = (r.daylight ? "Summer time: " : "In force: ") + n.Offset;
    return n;
}

std::vector<ZoneNote> RangeChangeNotes(Database& recos, const RequestPlace& place, const DateTime& from,
                                       const DateTime& to)
{
    std::vector<ZoneNote> out;
    if (place.City.empty()) return out;
    const std::vector<CityZone> found = CitiesNamed(recos, place.City, place.Country);
    if (found.empty() || found.front().Zone.empty()) return out;
    for (const ZoneChange& c : Zones().Changes(found.front().Zone, from, to)) {
        ZoneNote n;
        n.Field = "Place";
        n.Text = "The clock of " + found.front().City + " changes on " + c.local.ToDayFirstText() + " at " +
                 ClockText(c.local) + " to " + ZoneOffsetText(c.minutes) +
                 (c.daylight ? " (summer time)" : "") + "; the search keeps the one offset " + place.GMT;
        n.Short = "Clock changes in the range";
        out.push_back(n);
    }
    return out;
}

std::vector<ZoneNote> RequestZoneNotes(Database& recos, const MuhurthaRequest& r)
{
    std::vector<ZoneNote> out;
    auto add = [&](const char* field, const std::string& city, const std::string& country, const std::string& gmt,
                   const std::optional<DateTime>& local) {
        if (!local) return;
        if (auto n = OffsetNote(recos, city, country, gmt, *local)) {
            n->Field = field;
            out.push_back(*n);
        }
    };
    if (r.SearchMode == 2) {
        add("Place", r.Place.City, r.Place.Country, r.Place.GMT, LocalMoment(r.MomentDate, r.MomentTime, r.MomentAMPM));
    } else {
        const auto from = LocalMoment(r.FromDate, r.FromTime, 1);
        const auto to = LocalMoment(r.ToDate, r.ToTime, 1);
        add("Place", r.Place.City, r.Place.Country, r.Place.GMT, from);
        if (from && to && !(*to < *from))
            for (ZoneNote& n : RangeChangeNotes(recos, r.Place, *from, *to)) out.push_back(n);
    }
    const bool marriage = vb::UCase(r.Category) == "MARRIAGE";
    const std::pair<const char*, const RequestPerson*> persons[] = {
        {"Person", &r.Person}, {"Boy", &r.Boy}, {"Girl", &r.Girl}};
    for (const auto& [field, p] : persons) {
        if ((std::string(field) == "Person") == marriage) continue;
        add(field, p->City, p->Country, p->GMT, LocalMoment(p->BDate, p->BTime, p->AMPM));
    }
    return out;
}

}  // namespace ranvel
