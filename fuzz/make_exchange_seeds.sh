#!/usr/bin/env bash
# Writes the seeds of the exchange-file target (corpus/exchange) with the
# sqlite3 shell: small pages, so that each seed stays about a kilobyte.
# Run it again after a change of resources/db/exptemp.sql.
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
out="$here/corpus/exchange"
schema="$here/../resources/db/exptemp.sql"
mkdir -p "$out"
rm -f "$out"/*

# make NAME SQL...: a database of 512-byte pages made by the SQL given.
make() {
  local name=$1
  shift
  local file="$out/$name"
  { echo "PRAGMA page_size = 512;"; printf '%s\n' "$@"; echo "VACUUM;"; } | sqlite3 "$file"
}

fields="Name, Sex, Day, Month, Year, Hour, Minutes, seconds, AMPM, Country, City, LatDeg, LatMT, TextNS, LongDeg, LongMT, TextEW, GMTDIFF"
# person NAME: the values of a person the store can load back.
person() { echo "'$1','1','05','06','1985','07','45','00','1','India','Mumbai','019','04','N','072','52','E','+05.30'"; }

make one-person.JKP "$(cat "$schema")" \
  "INSERT INTO Person ($fields) VALUES ('Arjun','1','14','08','1994','09','20','00','1','India','New Delhi','028','36','N','077','12','E','+05.30');"
make three-persons.JKD "$(cat "$schema")" \
  "INSERT INTO Person ($fields) VALUES ('Meera','2','03','02','1996','17','45','00','2','India','Pune','018','31','N','073','51','E','+05.30');" \
  "INSERT INTO Person ($fields) VALUES ('Rio','1','29','02','2000','23','59','59','2','Brazil','Rio','022','54','S','043','12','W','-03.00');" \
  "INSERT INTO Person ($fields) VALUES ($(person 'Meera'));"
# One row the store can't load back refuses the whole file: an apostrophe,
# no name, no date.
make one-refused.JKD "$(cat "$schema")" \
  "INSERT INTO Person ($fields) VALUES ($(person 'Asha'));" \
  "INSERT INTO Person ($fields) VALUES ($(person "O''Neil"));"
make nameless.JKD "$(cat "$schema")" "INSERT INTO Person (Name, Day) VALUES ('   ', '01');" "INSERT INTO Person (Sex) VALUES ('2');"
make empty.JKD "$(cat "$schema")"
# Columns without a type keep numbers and blobs as they are.
make typed-values.JKD "CREATE TABLE Person ($fields);" \
  "INSERT INTO Person ($fields) VALUES (X'4B72697368', 2, 5, 6.0, 1985, '07', 45.4, NULL, 1, 'India', NULL, 19, 4.0, 'N', 72, 52, 'E', 5.5);"
make odd-values.JKD "$(cat "$schema")" \
  "INSERT INTO Person ($fields) VALUES (X'00FF41', 1, 14.5, -8, 1e300, 9223372036854775807, NULL, 0.1, X'', 'Ind\\ia', 'Ü', -0.0, 2147483648, 'NS', 999, -1, 'EW', '+05.30');"
make extra-fields.JKD \
  "CREATE TABLE Person (Tcorrinde TEXT, TCorrVal TEXT, $fields, Extra BLOB);" \
  "INSERT INTO Person VALUES ('1','+01.00','Kiran','1','01','01','2001','00','00','00','1','India','Chennai','013','05','N','080','17','E','+05.30',X'01');"
make missing-field.JKP \
  "CREATE TABLE Person (Name TEXT, Sex TEXT, Day TEXT, Month TEXT, Year TEXT);" \
  "INSERT INTO Person VALUES ('Short','1','01','01','2001');"
make person-view.JKD \
  "CREATE TABLE People ($fields);" \
  "INSERT INTO People ($fields) VALUES ($(person 'In a view'));" \
  "CREATE VIEW Person AS SELECT * FROM People;"
make no-person.JKD "CREATE TABLE Country (Name TEXT, GMTDIF TEXT);" "INSERT INTO Country VALUES ('India','+05.30');"
make without-rowid.JKD \
  "CREATE TABLE Person (Name TEXT PRIMARY KEY, Sex, Day, Month, Year, Hour, Minutes, seconds, AMPM, Country, City, LatDeg, LatMT, TextNS, LongDeg, LongMT, TextEW, GMTDIFF) WITHOUT ROWID;" \
  "INSERT INTO Person ($fields) VALUES ($(person 'Keyed'));"
make wal-mode.JKD "$(cat "$schema")" "INSERT INTO Person ($fields) VALUES ($(person 'Logged'));" "PRAGMA journal_mode = WAL;" >/dev/null
printf 'Name,Sex\nArjun,1\n' > "$out/not-a-database.JKP"
: > "$out/empty-file.JKP"
