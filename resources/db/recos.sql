-- RECOS.Dat: the user's own store of persons, places, display themes and
-- print page sets. The tool creates it once; on later builds it only adds
-- objects that are missing, so whatever the user saved here stays.
-- Every text column compares without regard to case; yes/no values are
-- INTEGER holding -1 (yes) or 0 (no).

CREATE TABLE Person (
    Name      TEXT COLLATE NOCASE,
    Sex       TEXT COLLATE NOCASE,
    Day       TEXT COLLATE NOCASE,
    Month     TEXT COLLATE NOCASE,
    Year      TEXT COLLATE NOCASE,
    Hour      TEXT COLLATE NOCASE,
    Minutes   TEXT COLLATE NOCASE,
    seconds   TEXT COLLATE NOCASE,
    AMPM      TEXT COLLATE NOCASE,
    Country   TEXT COLLATE NOCASE,
    City      TEXT COLLATE NOCASE,
    LatDeg    TEXT COLLATE NOCASE,
    LatMT     TEXT COLLATE NOCASE,
    TextNS    TEXT COLLATE NOCASE,
    LongDeg   TEXT COLLATE NOCASE,
    LongMT    TEXT COLLATE NOCASE,
    TextEW    TEXT COLLATE NOCASE,
    GMTDIFF   TEXT COLLATE NOCASE,
    TCorrVal  TEXT COLLATE NOCASE,
    Tcorrinde TEXT COLLATE NOCASE
);
CREATE INDEX Person_Name ON Person (Name);

-- The person browser walks this query. It stays a plain select of the one
-- table so that a recordset over it can still edit and add rows.
CREATE VIEW qryPersonName AS SELECT * FROM Person ORDER BY Name;

CREATE TABLE Country (
    Name   TEXT COLLATE NOCASE,
    GMTDIF TEXT COLLATE NOCASE
);

-- No index on the name columns of the place tables: the type-ahead boxes
-- search them with LIKE, and an index would hand those rows back in name
-- order instead of the order they were stored in.
CREATE TABLE City (
    City    TEXT COLLATE NOCASE,
    Country TEXT COLLATE NOCASE,
    Lat     TEXT COLLATE NOCASE,
    NOSO    TEXT COLLATE NOCASE,
    Longy   TEXT COLLATE NOCASE,
    EaWe    TEXT COLLATE NOCASE,
    GMTDIFF TEXT COLLATE NOCASE,
    -- The city's zone in the time zone database, for the offset in force
    -- at a date; the place fields take GMTDIFF.
    Zone    TEXT COLLATE NOCASE
);
CREATE INDEX City_Country ON City (Country);

CREATE TABLE DisplayThemes (
    ThemeName    TEXT COLLATE NOCASE,
    Themesection TEXT COLLATE NOCASE
);

CREATE TABLE PrintMods (
    Name     TEXT COLLATE NOCASE,
    HoroMode TEXT COLLATE NOCASE,
    file     TEXT COLLATE NOCASE
);
