-- ExpTemp.JKP: the empty template that a person exchange file (.JKP) or a
-- person database file (.JKD) is copied from. The time correction fields
-- do not travel between installations, so the table leaves them out.

CREATE TABLE Person (
    Name    TEXT COLLATE NOCASE,
    Sex     TEXT COLLATE NOCASE,
    Day     TEXT COLLATE NOCASE,
    Month   TEXT COLLATE NOCASE,
    Year    TEXT COLLATE NOCASE,
    Hour    TEXT COLLATE NOCASE,
    Minutes TEXT COLLATE NOCASE,
    seconds TEXT COLLATE NOCASE,
    AMPM    TEXT COLLATE NOCASE,
    Country TEXT COLLATE NOCASE,
    City    TEXT COLLATE NOCASE,
    LatDeg  TEXT COLLATE NOCASE,
    LatMT   TEXT COLLATE NOCASE,
    TextNS  TEXT COLLATE NOCASE,
    LongDeg TEXT COLLATE NOCASE,
    LongMT  TEXT COLLATE NOCASE,
    TextEW  TEXT COLLATE NOCASE,
    GMTDIFF TEXT COLLATE NOCASE
);
