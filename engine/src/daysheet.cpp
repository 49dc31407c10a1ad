// The day sheet. A limb's limits are found by a time search on the Sun and
// the Moon: a secant on the limb's arc (the Moon's distance from the Sun for
// tithi and karana, the Moon for the nakshatra, their sum for the yoga)
// comes near, and the chart's own numbers minute by minute settle the first
// minute of the new limb.
#include "ranvel/engine/daysheet.h"

#include <cmath>
#include <cstdio>
#include <map>

#include "ranvel/chart/wrap.h"
#include "ranvel/platform/vbmath.h"

namespace ranvel {

namespace {

constexpr double kNak = 360.0 / 27.0;

// The arc a limb runs on, its step, and how fast it runs on an average day
// (degrees a minute), the secant's first guess.
struct Arc {
    double step;
    double rate;
};
Arc ArcOf(Limb which)
{
    switch (which) {
    case Limb::Tithi: return {12, 12.19 / 1440};
    case Limb::Karana: return {6, 12.19 / 1440};
    case Limb::Nakshatra: return {kNak, 13.18 / 1440};
    case Limb::Yoga: return {kNak, 14.17 / 1440};
    }
    return {12, 12.19 / 1440};
}

// What one minute shows: the four numbers and the arcs.
struct Probe {
    std::array<int, 4> numbers{};
    std::array<double, 4> arcs{};
};

// Puts a record at a moment of the place's clock, to the minute.
void SetMoment(clsPerson& r, const DateTime& moment)
{
    r.Day(moment.Day());
    r.Month(moment.Month());
    r.Year(moment.Year());
    r.Hour(moment.Hour());
    r.Minutes(moment.Minute());
    r.seconds(0);
    r.AMPM(moment.Hour() >= 12 ? 2 : 1);
}

// The charts of the day: made with the place's full record (hemisphere
// letters, country and zone included) and the place's texts.
class DayCharts {
public:
    DayCharts(clsPlanets& place, const DateTime& date) : place_(place), midnight_(date.DateOnly()) {}

    std::unique_ptr<clsPlanets> ChartAt(const DateTime& moment)
    {
        auto c = std::make_unique<clsPlanets>();
        place_.CopySettingTo(*c);
        clsPerson& from = place_.clsPerson();
        clsPerson& to = c->clsPerson();
        to.TextNS(from.TextNS());
        to.TextEW(from.TextEW());
        to.Country(from.Country());
        to.PLOB(from.PLOB());
        SetMoment(to, moment);
        c->setTextDB(place_.GetTxtDB(), place_.GetRecosDB());
        c->Calculate();
        return c;
    }

    DateTime MomentOf(long minute) const { return midnight_.AddMinutes(static_cast<double>(minute)); }

    const Probe& At(long minute)
    {
        auto it = probes_.find(minute);
        if (it != probes_.end()) return it->second;
        // One chart serves the probes, the limbs read afresh at each
        // Calculate from the Sun and the Moon alone. A chart left unread owes
        // its divisional rows, worked out in a batch after some dozens; this
        // chart's rows are never asked for, so a new one takes over first.
        const DateTime moment = MomentOf(minute);
        if (!work_ || ++uses_ % 60 == 0) {
            work_ = ChartAt(moment);
        } else {
            SetMoment(work_->clsPerson(), moment);
            work_->Calculate();
        }
        const double S = work_->LightLongi(1);
        const double M = work_->LightLongi(7);
        Probe p;
        for (Limb which : {Limb::Tithi, Limb::Nakshatra, Limb::Yoga, Limb::Karana}) {
            const auto i = static_cast<std::size_t>(which);
            p.numbers[i] = LimbNumberOf(which, S, M);
            switch (which) {
            case Limb::Tithi:
            case Limb::Karana: p.arcs[i] = Norm360(M - S); break;
            case Limb::Nakshatra: p.arcs[i] = M; break;
            case Limb::Yoga: p.arcs[i] = Norm360(S + M); break;
            }
        }
        return probes_.emplace(minute, p).first->second;
    }

    // Degrees a minute each arc ran over the day, once both sunrises are
    // known: the secant's first guess.
    void Rates(long from, long to)
    {
        for (Limb which : {Limb::Tithi, Limb::Nakshatra, Limb::Yoga, Limb::Karana}) {
            const double d = std::fmod(ArcAt(to, which) - ArcAt(from, which) + 720.0, 360.0);
            if (to > from && d > 0) rates_[static_cast<std::size_t>(which)] = d / static_cast<double>(to - from);
        }
    }
    double Rate(Limb which) const { return rates_[static_cast<std::size_t>(which)]; }

    int Number(long minute, Limb which) { return At(minute).numbers[static_cast<std::size_t>(which)]; }
    double ArcAt(long minute, Limb which) { return At(minute).arcs[static_cast<std::size_t>(which)]; }
    std::size_t Probes() const { return probes_.size(); }

private:
    clsPlanets& place_;
    DateTime midnight_;
    std::map<long, Probe> probes_;
    std::unique_ptr<clsPlanets> work_;
    long uses_ = 0;
    std::array<double, 4> rates_{ArcOf(Limb::Tithi).rate, ArcOf(Limb::Nakshatra).rate, ArcOf(Limb::Yoga).rate,
                                 ArcOf(Limb::Karana).rate};
};

// The difference of two arcs, taken the short way round.
double ArcDiff(double to, double from)
{
    double d = std::fmod(to - from, 360.0);
    if (d > 180) d -= 360;
    if (d <= -180) d += 360;
    return d;
}

// The first minute after `from` (Forward) at which the limb shows another
// number than at `from`, or the first minute of the limb in force at `from`
// (backward).
long FindLimit(DayCharts& charts, Limb which, long from, bool forward)
{
    const Arc arc = ArcOf(which);
    const int number = charts.Number(from, which);
    const double a0 = charts.ArcAt(from, which);
    // The arc's limit ahead or behind.
    const double base = std::floor(a0 / arc.step) * arc.step;
    const double wanted = forward ? base + arc.step - a0 : base - a0;  // degrees to go

    // Secant on the arc, in whole minutes.
    long t0 = from;
    double d0 = 0;
    double rate = charts.Rate(which);
    long t1 = from + std::lround(wanted / rate);
    for (int round = 0; round < 8; ++round) {
        if (t1 == t0) break;
        const double d1 = ArcDiff(charts.ArcAt(t1, which), a0);
        if (t1 != t0 && d1 != d0) rate = (d1 - d0) / static_cast<double>(t1 - t0);
        if (rate <= 0) rate = charts.Rate(which);
        const long next = t1 + std::lround((wanted - d1) / rate);
        t0 = t1;
        d0 = d1;
        t1 = next;
    }

    // The chart's numbers settle the minute: in the limb before it, out at it.
    long m = t1;
    if (forward) {
        if (m <= from) m = from + 1;
        for (int i = 0; i < 2880 && charts.Number(m, which) == number; ++i) ++m;
        for (int i = 0; i < 2880 && m - 1 > from && charts.Number(m - 1, which) != number; ++i) --m;
    } else {
        if (m > from) m = from;
        for (int i = 0; i < 2880 && charts.Number(m - 1, which) == number; ++i) --m;
        for (int i = 0; i < 2880 && m < from && charts.Number(m, which) != number; ++i) ++m;
    }
    return m;
}

// The name of a limb's number, by the chart's lookups.
std::string LimbName(clsPlanets& chart, Limb which, int number)
{
    Variant n(number);
    switch (which) {
    case Limb::Tithi: return chart.GetTithiName(n);
    case Limb::Nakshatra: return chart.GetNakshatraName(n);
    case Limb::Yoga: return chart.ConvertYoga(n);
    case Limb::Karana: return chart.GetTextBetween("CNVT", number, "KARAN").ToText();
    }
    return {};
}

std::vector<LimbSpan> Limbs(DayCharts& charts, clsPlanets& day, Limb which, long sunrise, long nextSunrise)
{
    std::vector<LimbSpan> out;
    long start = FindLimit(charts, which, sunrise, false);
    long at = sunrise;
    for (int guard = 0; guard < 8; ++guard) {
        const long end = FindLimit(charts, which, at, true);
        LimbSpan span;
        span.Number = charts.Number(at, which);
        span.Start = charts.MomentOf(start);
        span.End = charts.MomentOf(end);
        span.Name = LimbName(day, which, span.Number);
        out.push_back(span);
        if (end >= nextSunrise) break;
        start = at = end;
    }
    return out;
}

}  // namespace

int LimbNumberOf(clsPlanets& Chart, Limb Which)
{
    switch (Which) {
    case Limb::Tithi: return Chart.Tithi();
    case Limb::Nakshatra: return Chart.Nakshatra();
    case Limb::Yoga: return Chart.YogaNumber();
    case Limb::Karana: return Chart.KaranNum();
    }
    return 0;
}

int ClockMinutes(double hhmm)
{
    const double h = std::floor(hhmm + 1e-9);
    return static_cast<int>(h) * 60 + static_cast<int>(std::lround((hhmm - h) * 100));
}

std::string ClockText(double hhmm)
{
    int m = ClockMinutes(hhmm);
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "%02d:%02d", m / 60, m % 60);
    return buffer;
}

int LimbNumberOf(Limb Which, double Sun, double Moon)
{
    switch (Which) {
    case Limb::Tithi: return clsPlanets::TithiOf(Sun, Moon);
    case Limb::Nakshatra: return clsPlanets::NakshatraNum(Moon);
    case Limb::Yoga: return clsPlanets::YogaOf(Sun, Moon);
    case Limb::Karana: return clsPlanets::KaranNumOf(Sun, Moon);
    }
    return 0;
}

DaySheet BuildDaySheet(const clsPlanets& Place, const DateTime& Date)
{
    clsPlanets& place = const_cast<clsPlanets&>(Place);  // only read: CopySettingTo is not const
    DaySheet s;
    s.Date = Date.DateOnly();
    s.Place = place.clsPerson().PLOB();
    s.WestOrSouth = vb::UCase(place.clsPerson().TextEW()) == "W" || vb::UCase(place.clsPerson().TextNS()) == "S";
    DayCharts charts(place, s.Date);

    // The chart of the day stands at its sunrise, so that sunset is the one
    // that follows it and the divisions are those of this day.
    auto day = charts.ChartAt(s.Date.AddHours(12));
    s.Sunrise = day->SunRiseTime();
    const long sunrise = ClockMinutes(s.Sunrise);
    clsPerson& p = day->clsPerson();
    SetMoment(p, charts.MomentOf(sunrise));
    day->Calculate();
    s.Sunset = day->SunSetTime();
    auto next = charts.ChartAt(s.Date.AddDays(1).AddHours(12));
    s.NextSunrise = next->SunRiseTime();
    s.SunWithoutHorizon = day->SunWithoutHorizon() || next->SunWithoutHorizon();
    const long nextSunrise = 1440 + ClockMinutes(s.NextSunrise);
    s.SunriseMoment = charts.MomentOf(sunrise);
    s.SunsetMoment = charts.MomentOf(ClockMinutes(s.Sunset));
    s.NextSunriseMoment = charts.MomentOf(nextSunrise);

    s.WeekDay = p.WeekDayOfBirth();
    int n = s.WeekDay;
    s.DayName = day->GetDayName(n);

    charts.Rates(sunrise, nextSunrise);
    s.Tithis = Limbs(charts, *day, Limb::Tithi, sunrise, nextSunrise);
    s.Nakshatras = Limbs(charts, *day, Limb::Nakshatra, sunrise, nextSunrise);
    s.Yogas = Limbs(charts, *day, Limb::Yoga, sunrise, nextSunrise);
    s.Karanas = Limbs(charts, *day, Limb::Karana, sunrise, nextSunrise);

    s.LunarMonth = clsPlanets::VikramiMonth(day->PlanetLongi(1), p.GetBirthDate());
    s.LunarMonthName = day->GetVikramiMonth(s.LunarMonth);

    s.RahuKaalStart = day->GetRahuKaalStartToday();
    s.RahuKaalSpan = day->GetRahuKaalSpanToday();
    for (int i = 1; i <= 4; ++i) s.EvilMuhurthaStart[static_cast<std::size_t>(i - 1)] = day->GetEvilMuhurthaStart(i);
    s.EvilMuhurthaLength = day->GetMuhurthaLength();
    // Seven names serve the sixteen parts and the twenty-four Horas.
    std::map<int, std::string> chowgadiyaNames, horaNames;
    for (int i = 1; i <= 16; ++i) {
        DayPart part;
        part.Number = i;
        part.Type = clsPlanets::GetChogadiyaType(i, s.WeekDay);
        auto name = chowgadiyaNames.find(part.Type);
        if (name == chowgadiyaNames.end())
            name = chowgadiyaNames.emplace(part.Type, day->GetChowGadiyaName(part.Type)).first;
        part.Name = name->second;
        part.Start = day->GetChogadiyaStart(i);
        part.Span = day->GetChogadiyaSpan(i);
        s.Chowgadiya.push_back(part);
    }
    for (int i = 1; i <= 24; ++i) {
        DayPart part;
        part.Number = i;
        part.Type = clsPlanets::GetHoraType(i, s.WeekDay);
        auto name = horaNames.find(part.Type);
        if (name == horaNames.end()) name = horaNames.emplace(part.Type, day->GetHoraName(part.Type)).first;
        part.Name = name->second;
        part.Start = day->GetHoraStart(i);
        part.Span = 1;
        s.Horas.push_back(part);
    }
    return s;
}

DaySheet DaySheetOfPlace(const RequestPlace& Place, const DateTime& Date, std::shared_ptr<Database> TextDB,
                         std::shared_ptr<Database> RecosDB)
{
    MuhurthaRequest r;
    r.Place = Place;
    r.MomentDate = Date.ToDayFirstText();
    r.MomentTime = "12.00";
    r.MomentAMPM = 2;
    r.BuildMomentChart();
    r.MomentChart->setTextDB(std::move(TextDB), std::move(RecosDB));
    return BuildDaySheet(*r.MomentChart, Date);
}

std::string DayPlaceRefusal(const RequestPlace& Place)
{
    auto degrees = [](const std::string& text, int most, int& minutes) {
        int d = 0, m = 0;
        char tail = 0;
        if (text.size() != 6 || text[3] != ':' || std::sscanf(text.c_str(), "%3d:%2d%c", &d, &m, &tail) != 2 || d < 0 ||
            m < 0 || m > 59 || d * 60 + m > most * 60)
            return false;
        minutes = d * 60 + m;
        return true;
    };
    int lat = 0, lon = 0;
    if (!degrees(Place.Lati, 90, lat))
        return "Latitude '" + Place.Lati + "' is not a latitude DDD:MM of at most 090:00";
    if (!degrees(Place.Longi, 180, lon))
        return "Longitude '" + Place.Longi + "' is not a longitude DDD:MM of at most 180:00";
    if (lat == 0 && lon == 0)
        return "The place is blank: its Latitude and Longitude are both 000:00. Choose a city or give the place's "
               "latitude and longitude";
    return {};
}

std::string SunriseRule()
{
    if (clsPlanets::AstronomicalSunrise())
        return "Sunrise is the Sun's disc centre rising on the true horizon at the place, without refraction "
               "(the astronomical sunrise, chosen in place of the ecliptic rule); sunset its setting.";
    return "Sunrise is the rising of the Sun's point of the ecliptic, without refraction; sunset the setting of "
           "that point.";
}

std::string SunriseRuleOfPlace(const DaySheet& Sheet)
{
    if (Sheet.SunWithoutHorizon)
        return "The Sun does not cross the horizon at this place on this day: the rising of its point of the "
               "ecliptic stands in.";
    if (!Sheet.WestOrSouth || clsPlanets::AstronomicalSunrise()) return {};
    return "At a place west or south, the rising is searched as at the same degrees north and east.";
}

std::string DivisionText(double hhmm) { return vb::Format(hhmm, "00.00"); }

}  // namespace ranvel
