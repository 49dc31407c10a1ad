// The system's time zone database (Debian's tzdata) behind the zone seam,
// read through Qt's time zones: the same zone files every program of the
// desktop reads, with their whole history.
#pragma once

#include "ranvel/platform/zones.h"

namespace ranvel {

class SystemZones : public ZoneClock {
public:
    ZoneReading At(const std::string& zone, const DateTime& local) const override;
    std::vector<ZoneChange> Changes(const std::string& zone, const DateTime& from, const DateTime& to) const override;
};

// Puts the system's database behind Zones() for the rest of the run.
void UseSystemZones();

}  // namespace ranvel
