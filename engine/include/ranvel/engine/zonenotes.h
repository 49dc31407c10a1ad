// Notes on the offsets of a request: where a place of the place store kept
// another offset at the request's local date and time than its field holds
// (summer time, war time, a zone that moved), where that time was skipped
// or came twice, and where a range of days crosses a change of the place's
// clock. The notes only tell and offer; the fields and the search keep the
// offset they hold.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ranvel/engine/request.h"
#include "ranvel/platform/database.h"

namespace ranvel {

struct ZoneNote {
    // Which fields: "Place" (the Muhurtha's), "Person", "Boy", "Girl".
    std::string Field;
    std::string Text;
    // The same in a few words, for beside the field ("Summer time: +01.00").
    std::string Short;
    // The offset the note offers for the field ("+01.00"); empty when it
    // offers none.
    std::string Offset;
};

// A date field (dd/MM/yyyy) and a time field (HH.MM of a 24-hour clock,
// a PM half moving a morning hour past noon) as a local moment; nothing
// while either is not yet a real date or time.
std::optional<DateTime> LocalMoment(const std::string& date, const std::string& time, int ampm);

// A zone field's text as minutes east of Greenwich: "+05.30" gives 330,
// "-03.30" gives -210; nothing when it is not of that shape.
std::optional<int> ZoneFieldMinutes(const std::string& field);

// The note on a place's zone field at a local date and time, or nothing
// when the field holds the offset in force or the place has no zone in the
// store.
std::optional<ZoneNote> OffsetNote(Database& recos, const std::string& city, const std::string& country,
                                   const std::string& gmt, const DateTime& local);

// The changes of the place's clock within the days of a range, a note each.
std::vector<ZoneNote> RangeChangeNotes(Database& recos, const RequestPlace& place, const DateTime& from,
                                       const DateTime& to);

// Every note of a request: the Muhurtha's place at the moment or the
// range's first moment and the range's changes, and each person's birth.
std::vector<ZoneNote> RequestZoneNotes(Database& recos, const MuhurthaRequest& request);

}  // namespace ranvel
