#!/usr/bin/env python3
"""Reads back an iCalendar file of `ranvel-cli calendar` against the JSON of
the same run.

    ics_check.py FILE.ics CALENDAR.json EVENTS GMT_HOURS

The file's lines are checked as octets first (CRLF ends, at most 75 octets
each); then an independent parser reads it: one event per ranked day, in
rank order, from the lagna's start to its end in UTC (the place's clock less
GMT_HOURS), the purpose and percent in the summary, the held elements and
the defects in the description. Exit 0 when all holds, 1 with the reasons,
77 when the parser is not installed.
"""
import datetime
import json
import sys


def main():
    ics_path, json_path, events_wanted, gmt_hours = sys.argv[1], sys.argv[2], int(sys.argv[3]), float(sys.argv[4])
    raw = open(ics_path, "rb").read()
    cal_json = json.load(open(json_path, encoding="utf-8"))
    faults = []

    lines = raw.split(b"\r\n")
    if lines[-1] != b"":
        faults.append("the file does not end with CRLF")
    for n, line in enumerate(lines[:-1], 1):
        if b"\r" in line or b"\n" in line:
            faults.append("line %d holds a bare CR or LF" % n)
        if len(line) > 75:
            faults.append("line %d is %d octets long" % (n, len(line)))
    if faults:
        print("\n".join(faults))
        return 1

    try:
        import icalendar
    except ImportError:
        print("python icalendar is not installed")
        return 77

    days = {d["Date"]: d for d in cal_json["Days"]}
    ranked = [days[r["Date"]] for r in cal_json["Ranked"]]
    events = icalendar.Calendar.from_ical(raw).walk("VEVENT")
    if len(events) != events_wanted or len(ranked) != events_wanted:
        faults.append("%d events and %d ranked days, %d wanted" % (len(events), len(ranked), events_wanted))
    offset = datetime.timedelta(hours=gmt_hours)
    utc = datetime.timedelta(0)
    for day, event in zip(ranked, events):
        where = day["Date"] + ": "
        for key, local in (("DTSTART", day["LagnaStart"]), ("DTEND", day["LagnaEnd"])):
            if key not in event:
                faults.append(where + key + " is missing")
                continue
            at = event.decoded(key)
            if not isinstance(at, datetime.datetime) or at.utcoffset() != utc:
                faults.append(where + "%s %r is not a UTC date and time" % (key, at))
                continue
            wanted = datetime.datetime.fromisoformat(local) - offset
            if at.replace(tzinfo=None) != wanted:
                faults.append(where + "%s %s, not %s" % (key, at, wanted))
        summary = str(event.get("SUMMARY", ""))
        percent = "%.2f" % day["Percent"]
        if cal_json["MuhuName"] not in summary or percent not in summary:
            faults.append(where + "SUMMARY %r lacks the purpose or %s" % (summary, percent))
        description = str(event.get("DESCRIPTION", ""))
        held, _, defects = description.partition("Defects:")
        for part, elements in ((held, day["Held"]), (defects, day["Defects"])):
            for e in elements:
                if (e["Heading"] or e["Code"]) not in part:
                    faults.append(where + "DESCRIPTION lacks %s in its place" % (e["Heading"] or e["Code"]))
    uids = [str(e.get("UID")) for e in events]
    if len(set(uids)) != len(uids):
        faults.append("the events' UIDs repeat: %s" % uids)
    if faults:
        print("\n".join(faults))
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
