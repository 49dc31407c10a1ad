-- LANGS.Dat: the languages the program knows. Include is rewritten at each
-- start from whether the language's text database is present. Font sizes
-- are points; yes/no values are INTEGER holding -1 (yes) or 0 (no).

CREATE TABLE Language (
    Name         TEXT COLLATE NOCASE,
    directory    TEXT COLLATE NOCASE,
    Include      INTEGER NOT NULL DEFAULT 0,
    HeaderSize   INTEGER,
    NormalSize   INTEGER,
    HeadBold     INTEGER NOT NULL DEFAULT 0,
    SubHeadSize  INTEGER,
    SubHeadBold  INTEGER NOT NULL DEFAULT 0,
    KundliSize   INTEGER,
    EngSize      INTEGER,
    SmallSize    INTEGER,
    TextSize     INTEGER,
    TextHeadSize INTEGER,
    Extended     INTEGER NOT NULL DEFAULT 0
);
