#include "ranvel/platform/zones.h"

#include <cstdio>
#include <cstdlib>

namespace ranvel {

namespace {

class NoZones : public ZoneClock {
public:
    ZoneReading At(const std::string&, const DateTime&) const override
    {
        ZoneReading r;
        r.why = "no time zone database is at hand";
        return r;
    }
    std::vector<ZoneChange> Changes(const std::string&, const DateTime&, const DateTime&) const override { return {}; }
};

ZoneClock* g_zones = nullptr;

}  // namespace

ZoneClock& Zones()
{
    static NoZones none;
    return g_zones ? *g_zones : none;
}

void SetZones(ZoneClock* clock) { g_zones = clock; }

std::string ZoneOffsetText(int minutes)
{
    char text[16];
    const int a = std::abs(minutes);
    std::snprintf(text, sizeof text, "%c%02d.%02d", minutes < 0 ? '-' : '+', a / 60, a % 60);
    return text;
}

}  // namespace ranvel
