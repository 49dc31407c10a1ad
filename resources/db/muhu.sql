-- MUHU.DAT: the Muhurtha catalogue (one row a purpose, with its test list
-- and its element list), the points of each element, and the key of each
-- purpose's prediction texts. The engine reads the rows in table order.

CREATE TABLE Muhu (
    MCode    TEXT COLLATE NOCASE,
    mname    TEXT COLLATE NOCASE,
    Category TEXT COLLATE NOCASE,
    val      TEXT COLLATE NOCASE,
    Elements TEXT COLLATE NOCASE
);
CREATE INDEX Muhu_MCode ON Muhu (MCode);

-- Presence is the signed number of points; maxeffect is -1 (yes) or 0.
CREATE TABLE Score (
    element   TEXT COLLATE NOCASE,
    Presence  INTEGER,
    maxeffect INTEGER NOT NULL DEFAULT 0
);
CREATE INDEX Score_element ON Score (element);

CREATE TABLE MuhuConvert (
    Muhuname     TEXT COLLATE NOCASE,
    MuhuPredcode TEXT COLLATE NOCASE
);
CREATE INDEX MuhuConvert_Muhuname ON MuhuConvert (Muhuname);
