// The masked fields of a request and the record fields of a stored person,
// one a line: date (dd/MM/yyyy), time (HH.MM), latitude and longitude
// (DDD:MM), time zone (+HH.MM), the N/S and E/W letters; then Day, Month,
// Year, Hour and Minutes as a person row holds them.
//
// They go through every reader the program has for them: the date and time
// checks of the form, the place editor's degree fields, a person's record
// filled from the form and stepped as a search steps it, the moment's chart
// built and calculated, and a record loaded from the store's texts.
//
// Beyond not crashing: a date that reads, written day-first, reads back as
// the same day.
#include <cstdint>
#include <stdexcept>
#include <string>

#include "harness.h"
#include "ranvel/chart/person.h"
#include "ranvel/data/places.h"
#include "ranvel/engine/request.h"
#include "ranvel/platform/datetime.h"
#include "ranvel/platform/vbmath.h"

using namespace ranvel;
using fuzz::Guarded;

namespace {

void ReadEverything(clsPerson& p)
{
    Guarded([&] { (void)p.GetBirthDate(); });
    Guarded([&] { (void)p.WeekDayOfBirth(); });
    Guarded([&] { (void)p.GetBirthDecimalTime(); });
    Guarded([&] { (void)p.GetBirthTimeFull(); });
    Guarded([&] { (void)p.GetBirthTime(); });
    (void)p.GetLatitudeFull();
    (void)p.GetLongitudeFull();
    (void)p.Latitude();
    (void)p.Longitude();
    (void)p.GetBirthPlace();
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fuzz::Init();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::vector<std::string> f = fuzz::Lines(data, size, 12);
    const std::string &date = f[0], &time = f[1], &lati = f[2], &longi = f[3], &zone = f[4], &ns = f[5], &ew = f[6];
    fuzz::Messages().Clear();

    Guarded([&] {
        const DateTime d = DateTime::ParseDayFirst(date);
        const std::string text = d.ToDayFirstText();
        if (DateTime::ParseDayFirst(text) != d.DateOnly())
            fuzz::Fail("'" + date + "' reads as " + d.ToIsoText() + ", and its text '" + text + "' as another day");
    });
    (void)MuhurthaRequest::ValiDateTime(time);
    for (const std::string& degrees : {lati, longi}) {
        (void)places::DegreesField(degrees);
        (void)places::StoredDegrees(degrees);
    }
    (void)places::CheckDegrees(lati, places::Axis::Latitude);
    (void)places::CheckDegrees(longi, places::Axis::Longitude);

    RequestPerson person;
    person.BDate = date;
    person.BTime = time;
    person.Lati = lati;
    person.Longi = longi;
    person.NS = ns;
    person.EW = ew;
    person.GMT = zone;
    clsPerson p;
    Guarded([&] {
        FillPersonRecord(p, person);
        ReadEverything(p);
        // The search's step, and the one-minute step of a zero.
        Guarded([&] { (void)p.AddMinutes(150); });
        Guarded([&] { (void)p.AddMinutes(0); });
        ReadEverything(p);
    });

    MuhurthaRequest request;
    request.MomentDate = date;
    request.MomentTime = time;
    request.Place.Lati = lati;
    request.Place.Longi = longi;
    request.Place.NS = ns;
    request.Place.EW = ew;
    request.Place.GMT = zone;
    Guarded([&] { request.BuildMomentChart(); });

    clsPerson stored;
    Guarded([&] {
        stored.Day(Variant(f[7]));
        stored.Month(Variant(f[8]));
        stored.Year(Variant(f[9]));
        stored.Hour(Variant(f[10]));
        stored.Minutes(Variant(f[11]));
        ReadEverything(stored);
    });
    return 0;
}
