// The clocks of the world's time zones: the offset from Greenwich that a
// zone's clock kept at a local date and time, with its history (summer
// time, war time, a zone that moved), from the system's time zone database.
// The core asks through this seam; the desktop and the command line put the
// system's database behind it at start.
#pragma once

#include <string>
#include <vector>

#include "ranvel/platform/datetime.h"

namespace ranvel {

struct ZoneReading {
    enum class Kind {
        Unknown,   // no offset can be given: why says so
        Normal,    // one offset holds
        Skipped,   // the clock jumped over this local time
        Repeated,  // the clock showed this local time twice
    };
    Kind kind = Kind::Unknown;
    std::string why;
    // Minutes east of Greenwich in force. Repeated: the offset of the first
    // pass, later the second's; Skipped: the offset before the jump, later
    // the one after it.
    int minutes = 0;
    int later = 0;
    // Summer time in force (of the first pass for a repeated time).
    bool daylight = false;
};

// A change of a zone's clock: the local date and time at which the new
// offset begins (as the clock read just before it), and the new offset.
struct ZoneChange {
    DateTime local;
    int minutes = 0;
    bool daylight = false;
};

class ZoneClock {
public:
    virtual ~ZoneClock() = default;
    // The zone's offset at a local date and time; dates before 1900 and an
    // unknown zone name are Unknown.
    virtual ZoneReading At(const std::string& zone, const DateTime& local) const = 0;
    // The changes of the zone's clock from one local moment to another.
    virtual std::vector<ZoneChange> Changes(const std::string& zone, const DateTime& from,
                                            const DateTime& to) const = 0;
};

// The clock the program asks; until one is set, a clock that knows no zone
// and says that no time zone database is at hand.
ZoneClock& Zones();
void SetZones(ZoneClock* clock);

// Minutes east of Greenwich as the place fields write them: "+05.30",
// "-03.30", "+00.00".
std::string ZoneOffsetText(int minutes);

}  // namespace ranvel
