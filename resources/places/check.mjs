#!/usr/bin/env node
// Checks countries.csv and cities.csv as convert.mjs writes them:
//   node check.mjs [dir]      (dir defaults to this script's folder)
// Exits 1 and lists the faults if any is found.

import { readFileSync } from 'node:fs';
import path from 'node:path';
import { fileURLToPath } from 'node:url';

const dir = process.argv[2] ?? path.dirname(fileURLToPath(import.meta.url));
const faults = [];
const fault = (s) => faults.push(s);

// Quoted fields may hold commas, doubled quotes and line breaks.
function parseCsv(text) {
  const rows = [];
  let row = [], field = '', i = 0, quoted = false;
  while (i < text.length) {
    const ch = text[i];
    if (quoted) {
      if (ch === '"' && text[i + 1] === '"') { field += '"'; i += 2; continue; }
      if (ch === '"') { quoted = false; i++; continue; }
      field += ch; i++; continue;
    }
    if (ch === '"' && field === '') { quoted = true; i++; continue; }
    if (ch === ',') { row.push(field); field = ''; i++; continue; }
    if (ch === '\n') { row.push(field); rows.push(row); row = []; field = ''; i++; continue; }
    field += ch; i++;
  }
  if (quoted) fault('unterminated quoted field');
  if (field !== '' || row.length) { row.push(field); rows.push(row); fault('last line has no line end'); }
  return rows;
}

const byteCmp = (a, b) => Buffer.compare(Buffer.from(a, 'utf8'), Buffer.from(b, 'utf8'));
const OFFSET = /^[+-]\d\d\.[0-5]\d$/;
const ANGLE = /^\d{3}\.[0-5]\d$/;

function load(name, header) {
  const rows = parseCsv(readFileSync(path.join(dir, name), 'utf8'));
  if (rows[0]?.join(',') !== header) fault(`${name}: header is "${rows[0]?.join(',')}"`);
  const body = rows.slice(1);
  body.forEach((r, i) => {
    if (r.length !== header.split(',').length) fault(`${name} line ${i + 2}: ${r.length} fields`);
  });
  return body;
}

const countries = load('countries.csv', 'Name,GMTDIF');
const cities = load('cities.csv', 'City,Country,Lat,NOSO,Longy,EaWe,GMTDIFF,Zone');

const countryOffset = new Map();
countries.forEach(([name, off], i) => {
  if (!name) fault(`countries.csv line ${i + 2}: empty name`);
  if (!OFFSET.test(off)) fault(`countries.csv: ${name} offset "${off}"`);
  if (countryOffset.has(name)) fault(`countries.csv: ${name} twice`);
  if (i > 0 && byteCmp(countries[i - 1][0], name) >= 0) fault(`countries.csv: ${name} out of order`);
  countryOffset.set(name, off);
});

const city = new Map();
cities.forEach((r, i) => {
  const [name, country, lat, ns, lng, ew, off] = r;
  const where = `cities.csv: ${name}, ${country}`;
  if (!name) fault(`cities.csv line ${i + 2}: empty city`);
  if (!countryOffset.has(country)) fault(`${where}: country not in countries.csv`);
  if (!ANGLE.test(lat) || Number(lat.slice(0, 3)) > 90) fault(`${where}: Lat "${lat}"`);
  if (!ANGLE.test(lng) || Number(lng.slice(0, 3)) > 180) fault(`${where}: Longy "${lng}"`);
  if (ns !== 'N' && ns !== 'S') fault(`${where}: NOSO "${ns}"`);
  if (ew !== 'E' && ew !== 'W') fault(`${where}: EaWe "${ew}"`);
  if (!OFFSET.test(off) || Number(off.slice(1, 3)) > 14) fault(`${where}: GMTDIFF "${off}"`);
  if (!/^[A-Za-z_]+(\/[A-Za-z0-9_+-]+)+$/.test(r[7])) fault(`${where}: Zone "${r[7]}"`);
  const key = `${name}\u0000${country}`;
  if (city.has(key)) fault(`${where}: twice`);
  city.set(key, r);
  if (i > 0) {
    const [pn, pc] = cities[i - 1];
    if ((byteCmp(pc, country) || byteCmp(pn, name)) >= 0) fault(`${where}: out of order`);
  }
});

// Places whose values are known independently of the conversion: the
// half- and three-quarter-hour zones, both southern and western hemispheres,
// a quoted name, and a country whose own offset comes from its capital.
const expect = [
  ['New Delhi', 'India', /^028\.3\d$/, 'N', /^077\.1\d$/, 'E', '+05.30'],
  ['Kathmandu', 'Nepal', /^027\.4\d$/, 'N', /^085\.\d\d$/, 'E', '+05.45'],
  ['Sydney', 'Australia', /^033\.5\d$/, 'S', /^151\.\d\d$/, 'E', '+10.00'],
  ['New York', 'United States of America', /^040\.4\d$/, 'N', /^07[34]\.\d\d$/, 'W', '-05.00'],
  ['Washington, D.C.', 'United States of America', /^038\.5\d$/, 'N', /^077\.0\d$/, 'W', '-05.00'],
  ['Buenos Aires', 'Argentina', /^034\.\d\d$/, 'S', /^058\.\d\d$/, 'W', '-03.00'],
  ['St. John\u2019s', 'Canada', /^047\.\d\d$/, 'N', /^052\.\d\d$/, 'W', '-03.30'],  // the data set writes a typographic apostrophe
];
for (const [name, country, lat, ns, lng, ew, off] of expect) {
  const r = city.get(`${name}\u0000${country}`);
  if (!r) { fault(`missing ${name}, ${country}`); continue; }
  if (!lat.test(r[2]) || r[3] !== ns || !lng.test(r[4]) || r[5] !== ew || r[6] !== off) {
    fault(`${name}, ${country}: ${r.slice(2).join(' ')}`);
  }
}
for (const [name, off] of [['India', '+05.30'], ['Nepal', '+05.45'], ['United States of America', '-05.00'],
  ['Russia', '+03.00'], ['China', '+08.00'], ['Australia', '+10.00'], ['Iran', '+03.30']]) {
  if (countryOffset.get(name) !== off) fault(`country ${name}: ${countryOffset.get(name)}, expected ${off}`);
}
const india = cities.filter((r) => r[1] === 'India');
if (india.length < 150 || india.some((r) => r[6] !== '+05.30')) fault('India: too few cities or one not at +05.30');

if (faults.length) {
  console.error(faults.join('\n'));
  process.exit(1);
}
console.log(`ok: ${countries.length} countries, ${cities.length} cities`);
