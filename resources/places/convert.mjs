#!/usr/bin/env node
// Builds the place lists (countries.csv, cities.csv) from the npm package
// `city-timezones`, written against version 1.3.4 of it.
//
// Usage:
//   node convert.mjs <city-timezones data file or module> <outdir>
//
// The first argument is either the package's data file
// (node_modules/city-timezones/data/cityMap.json) or the package itself
// (its folder or its index.js), whose export `cityMapping` holds the same rows.
//
// Rules:
// - A city row keeps the data set's `city` and `country` names as written.
//   Rows without a country or without a time zone are dropped; of rows with
//   the same (City, Country) pair only the first in the data set is kept.
// - Lat and Longy are unsigned degrees and minutes, "DDD.MM": three digits
//   of degrees, a point, two digits of minutes, the minutes rounded to the
//   nearest whole minute (a rounded 60 carries into the degrees). NOSO is
//   "N" for latitude >= 0 else "S"; EaWe is "E" for longitude >= 0 else "W".
// - A zone's time difference is its standard offset, daylight saving left
//   out: the smaller of its offsets on 15 January and 15 July of OFFSET_YEAR,
//   as this Node's time zone data gives them. Written as "+HH.MM", where MM
//   are minutes (India "+05.30", Nepal "+05.45").
// - A country's GMTDIF is the offset of its capital's zone for the countries
//   listed in CAPITALS (those whose cities span more than one standard
//   offset); for every other country it is the offset of the zone most of
//   its cities lie in (ties: the zone name first in byte order). A country
//   spanning several offsets that CAPITALS doesn't name is reported on
//   stderr and falls back to the most common zone.
// - A city row ends with its IANA zone name (Zone), as the data set gives
//   it, so that the program can find the offset in force at any date.
// - Both files: UTF-8, LF line ends, the field names on the first line,
//   fields quoted only when they hold a comma, a double quote or a line
//   break (quotes doubled inside). Countries are sorted by name, cities by
//   country then city, both by UTF-8 byte order.

import { readFileSync, writeFileSync, mkdirSync, statSync, existsSync } from 'node:fs';
import { createRequire } from 'node:module';
import path from 'node:path';

const WRITTEN_FOR_VERSION = '1.3.4';

// 2025 rather than an earlier year: Paraguay (2024) and Kazakhstan (2024)
// moved their standard time, and 2025 has the settled offsets.
const OFFSET_YEAR = 2025;

// Countries whose cities lie in zones of different standard offsets, and the
// city whose zone sets the country's own time difference.
export const CAPITALS = {
  'Argentina': 'Buenos Aires',
  'Australia': 'Canberra',
  'Bolivia': 'La Paz',
  'Brazil': 'Brasilia',
  'Canada': 'Ottawa',
  'China': 'Beijing',
  'Congo (Kinshasa)': 'Kinshasa',
  'Ecuador': 'Quito',
  'France': 'Paris',
  'Greenland': 'Nuuk',
  'Indonesia': 'Jakarta',
  'Mexico': 'Mexico City',
  'Mongolia': 'Ulaanbaatar',
  'Namibia': 'Windhoek',
  'Papua New Guinea': 'Port Moresby',
  'Portugal': 'Lisbon',
  'Russia': 'Moscow',
  'Spain': 'Madrid',
  'Tanzania': 'Dodoma',
  'Ukraine': 'Kyiv',
  'United States of America': 'Washington, D.C.',
};

function loadRows(input) {
  const st = statSync(input);
  if (st.isFile() && input.toLowerCase().endsWith('.json')) {
    return { rows: JSON.parse(readFileSync(input, 'utf8')), pkgDir: path.dirname(path.dirname(path.resolve(input))) };
  }
  const require = createRequire(import.meta.url);
  const mod = require(path.resolve(input));
  if (!Array.isArray(mod.cityMapping)) throw new Error(`${input}: no cityMapping array exported`);
  const pkgDir = st.isDirectory() ? path.resolve(input) : path.dirname(path.resolve(input));
  return { rows: mod.cityMapping, pkgDir };
}

function packageVersion(pkgDir) {
  const p = path.join(pkgDir, 'package.json');
  if (!existsSync(p)) return null;
  try { return JSON.parse(readFileSync(p, 'utf8')).version ?? null; } catch { return null; }
}

// Offset in minutes east of Greenwich of `zone` at the given instant.
function offsetAt(zone, date) {
  const part = new Intl.DateTimeFormat('en-US', { timeZone: zone, timeZoneName: 'longOffset' })
    .formatToParts(date).find((p) => p.type === 'timeZoneName');
  const text = part ? part.value : '';
  if (text === 'GMT') return 0;
  const m = /^GMT([+-])(\d{1,2}):(\d{2})$/.exec(text);
  if (!m) throw new Error(`zone ${zone}: unreadable offset "${text}"`);
  return (m[1] === '-' ? -1 : 1) * (Number(m[2]) * 60 + Number(m[3]));
}

const stdCache = new Map();
export function standardOffset(zone) {
  if (!stdCache.has(zone)) {
    const jan = offsetAt(zone, new Date(Date.UTC(OFFSET_YEAR, 0, 15, 12)));
    const jul = offsetAt(zone, new Date(Date.UTC(OFFSET_YEAR, 6, 15, 12)));
    stdCache.set(zone, Math.min(jan, jul));
  }
  return stdCache.get(zone);
}

export function formatOffset(minutes) {
  const sign = minutes < 0 ? '-' : '+';
  const a = Math.abs(minutes);
  return `${sign}${String(Math.floor(a / 60)).padStart(2, '0')}.${String(a % 60).padStart(2, '0')}`;
}

export function formatAngle(degrees) {
  const total = Math.round(Math.abs(degrees) * 60);
  return `${String(Math.floor(total / 60)).padStart(3, '0')}.${String(total % 60).padStart(2, '0')}`;
}

function csvField(s) {
  s = String(s);
  return /[",\r\n]/.test(s) ? `"${s.replace(/"/g, '""')}"` : s;
}

function csv(header, rows) {
  return [header, ...rows].map((r) => r.map(csvField).join(',')).join('\n') + '\n';
}

const byteCmp = (a, b) => Buffer.compare(Buffer.from(a, 'utf8'), Buffer.from(b, 'utf8'));

function main(argv) {
  if (argv.length !== 2) {
    console.error('usage: node convert.mjs <city-timezones data file or module> <outdir>');
    process.exit(2);
  }
  const [input, outdir] = argv;
  const { rows, pkgDir } = loadRows(input);
  const version = packageVersion(pkgDir);
  if (version && version !== WRITTEN_FOR_VERSION) {
    console.error(`note: city-timezones ${version}; this script was written against ${WRITTEN_FOR_VERSION}`);
  }

  const cities = [];
  const seen = new Set();
  let noZone = 0, dupes = 0;
  for (const r of rows) {
    const city = r.city ?? '';
    const country = r.country ?? '';
    if (!country || !r.timezone) { noZone++; continue; }
    if (typeof r.lat !== 'number' || typeof r.lng !== 'number') throw new Error(`${city}, ${country}: no coordinates`);
    const key = `${city}\u0000${country}`;
    if (seen.has(key)) { dupes++; continue; }
    seen.add(key);
    cities.push({ city, country, lat: r.lat, lng: r.lng, zone: r.timezone });
  }

  // Zone counts per country, for the most-common-zone rule and the check
  // that a country spanning several offsets has a capital named.
  const zonesOf = new Map();
  for (const c of cities) {
    if (!zonesOf.has(c.country)) zonesOf.set(c.country, new Map());
    const m = zonesOf.get(c.country);
    m.set(c.zone, (m.get(c.zone) ?? 0) + 1);
  }

  const countryRows = [];
  for (const [country, zones] of zonesOf) {
    const offsets = new Set([...zones.keys()].map(standardOffset));
    let zone = null;
    const capital = CAPITALS[country];
    if (capital) {
      const hit = cities.find((c) => c.country === country && c.city === capital);
      if (hit) zone = hit.zone;
      else console.error(`warning: capital ${capital} of ${country} not in the data; using its most common zone`);
    } else if (offsets.size > 1) {
      console.error(`warning: ${country} spans ${offsets.size} standard offsets and has no capital listed; using its most common zone`);
    }
    if (!zone) {
      zone = [...zones.entries()].sort((a, b) => b[1] - a[1] || byteCmp(a[0], b[0]))[0][0];
    }
    countryRows.push([country, formatOffset(standardOffset(zone))]);
  }
  for (const name of Object.keys(CAPITALS)) {
    if (!zonesOf.has(name)) console.error(`warning: listed country ${name} not in the data`);
  }
  countryRows.sort((a, b) => byteCmp(a[0], b[0]));

  cities.sort((a, b) => byteCmp(a.country, b.country) || byteCmp(a.city, b.city));
  const cityRows = cities.map((c) => [
    c.city, c.country,
    formatAngle(c.lat), c.lat < 0 ? 'S' : 'N',
    formatAngle(c.lng), c.lng < 0 ? 'W' : 'E',
    formatOffset(standardOffset(c.zone)),
    c.zone,
  ]);

  mkdirSync(outdir, { recursive: true });
  writeFileSync(path.join(outdir, 'countries.csv'), csv(['Name', 'GMTDIF'], countryRows));
  writeFileSync(path.join(outdir, 'cities.csv'),
    csv(['City', 'Country', 'Lat', 'NOSO', 'Longy', 'EaWe', 'GMTDIFF', 'Zone'], cityRows));

  console.error(`city-timezones ${version ?? '(version unknown)'}; tz data ${process.versions.tz ?? '?'}`);
  console.error(`${rows.length} rows read; ${noZone} without country or zone, ${dupes} repeated (City, Country) dropped`);
  console.error(`${countryRows.length} countries, ${cityRows.length} cities written to ${outdir}`);
}

if (import.meta.url === `file://${path.resolve(process.argv[1] ?? '')}`) main(process.argv.slice(2));
