#!/usr/bin/python3
"""Makes the program's ten display fonts from freely licensed fonts that
Debian ships, and writes them as <out>/<BASE>.IFT beside a
FONTS-LICENCES.txt that names each font's source and carries its licence.

Each source is renamed as its licence asks (the OFL reserves a font's
names to the unchanged original; the DejaVu/Bitstream Vera terms forbid
"Bitstream" and "Vera" in the name of a changed copy), and "Ranvel Astro"
gains the program's mark at U+00B2, which the printed pages set at 36 pt.

The output is byte-for-byte the same at every run, and a file whose bytes
would not change is left alone, so an incremental build does not churn.

  makefonts.py --out DIR      write the fonts and the licence listing
  makefonts.py --list-inputs  print the files the output is made from
"""

import argparse
import io
import math
import os
import sys

try:
    from fontTools.ttLib import TTFont
    from fontTools.pens.ttGlyphPen import TTGlyphPen
except ImportError:
    sys.exit("makefonts: fontTools is missing; install the Debian package python3-fonttools")

TRUETYPE = "/usr/share/fonts/truetype"


class Source:
    def __init__(self, path, package):
        self.path = os.path.join(TRUETYPE, path)
        self.package = package

    @property
    def copyright_file(self):
        return os.path.join("/usr/share/doc", self.package, "copyright")


DEJAVU_SANS = Source("dejavu/DejaVuSans.ttf", "fonts-dejavu-core")
DEJAVU_SANS_CONDENSED = Source("dejavu/DejaVuSansCondensed.ttf", "fonts-dejavu-core")
DEJAVU_SANS_BOLD = Source("dejavu/DejaVuSans-Bold.ttf", "fonts-dejavu-core")
LOHIT_BENGALI = Source("lohit-bengali/Lohit-Bengali.ttf", "fonts-lohit-beng-bengali")
LOHIT_DEVANAGARI = Source("lohit-devanagari/Lohit-Devanagari.ttf", "fonts-lohit-deva")
LOHIT_GUJARATI = Source("lohit-gujarati/Lohit-Gujarati.ttf", "fonts-lohit-gujr")
LOHIT_TAMIL = Source("lohit-tamil/Lohit-Tamil.ttf", "fonts-lohit-taml")
LOHIT_KANNADA = Source("lohit-kannada/Lohit-Kannada.ttf", "fonts-lohit-knda")

# (family, file base, source). The three Devanagari faces share one source:
# Lohit Devanagari comes in a single weight, and the heading face is drawn
# bold by the program where it needs weight, which reads better than a
# heavier face of another design beside the text.
# Astro 570 and 571 set the planet and sign symbols in the tight cells of
# the chart wheels and in printed headings, so both must carry ☉☽ and
# ♈…♓, which the DejaVu serif faces lack: 570 is the condensed sans, to
# fit the narrow cells, and 571 the bold sans, to stand out in print.
FONTS = [
    ("Ranvel Astro", "RNVASTRO", DEJAVU_SANS),
    ("Ranvel Bangla", "RNVBANG", LOHIT_BENGALI),
    ("Ranvel Hindi Astro", "HINASTRO", LOHIT_DEVANAGARI),
    ("Ranvel Dev Head", "RVDVHEAD", LOHIT_DEVANAGARI),
    ("Ranvel Gujarati", "RVGUJ", LOHIT_GUJARATI),
    ("Ranvel Tamil Astro", "TMLASTRO", LOHIT_TAMIL),
    ("Ranvel Kannada Astro", "KANASTRO", LOHIT_KANNADA),
    ("Ranvel Marathi Astro", "RVMTAST", LOHIT_DEVANAGARI),
    ("Astro 570", "ASTRO570", DEJAVU_SANS_CONDENSED),
    ("Astro 571", "ASTRO571", DEJAVU_SANS_BOLD),
]

LOGO_FAMILY = "Ranvel Astro"
LOGO_CHAR = 0x00B2
LOGO_GLYPH = "ranvel.mark"

# 2024-01-01 00:00:00 UTC in the font clock (seconds since 1904-01-01), so
# that the same sources always give the same bytes.
FIXED_TIMESTAMP = 3786825600

LICENCES_FILE = "FONTS-LICENCES.txt"

# Names that say what the font is called; the rest of the name table
# (copyright, trademark, designer, licence, URLs, version) stays as the
# source has it. 16/17 and the WWS names would only repeat 1/2 here.
NAME_IDS_REPLACED = {1, 2, 3, 4, 6, 10, 16, 17, 18, 21, 22}


def fail(message):
    sys.exit("makefonts: " + message)


def check_sources():
    missing = {}
    for _, _, src in FONTS:
        if not os.path.isfile(src.path):
            missing.setdefault(src.package, []).append(src.path)
    if missing:
        lines = ["source fonts are missing:"]
        for package, paths in sorted(missing.items()):
            for p in sorted(set(paths)):
                lines.append(f"  {p} (install the Debian package {package})")
        fail("\n".join(lines))


# --- the mark ---------------------------------------------------------------
#
# A sun that opens like a lotus: a solid centre, a ring around it, and eight
# pointed petals, the four on the axes longer than the four between them.
# It stands on the baseline and is as tall as a capital, so that at 36 pt
# it sits level with the text set beside it.
#
# TrueType fills what lies to the right of a contour's direction: solid
# parts run clockwise, the ring's hole counter-clockwise. Nothing overlaps,
# so every renderer fills it alike.

def _point(cx, cy, r, angle):
    return (round(cx + r * math.cos(angle)), round(cy + r * math.sin(angle)))


def _circle(pen, cx, cy, r, clockwise):
    # Sixteen quadratic arcs: each control point lies on the arc's bisector
    # at r / cos(half the arc), and with arcs this short the joins between
    # them do not show as corners even at display sizes.
    steps = 16
    sign = -1 if clockwise else 1
    ctrl_r = r / math.cos(math.pi / steps)
    pen.moveTo(_point(cx, cy, r, 0))
    for i in range(steps):
        a0 = sign * 2 * math.pi * i / steps
        a1 = sign * 2 * math.pi * (i + 1) / steps
        pen.qCurveTo(_point(cx, cy, ctrl_r, (a0 + a1) / 2), _point(cx, cy, r, a1))
    pen.closePath()


def _petal(pen, cx, cy, inner, outer, half_width, angle):
    # A petal on the ray at `angle`: a rounded base hugging the ring, full
    # flanks, and a sharp tip outward. With u along the ray and v across
    # it, going base-left -> tip -> base-right -> back along the base runs
    # clockwise.
    ux, uy = math.cos(angle), math.sin(angle)
    vx, vy = -uy, ux

    def at(r, side):
        return (round(cx + r * ux + side * vx), round(cy + r * uy + side * vy))

    # The base follows a circle about the centre, so each petal sits at
    # an even distance from the ring.
    spread = half_width / inner
    flank = inner + 0.30 * (outer - inner)
    pen.moveTo(at(inner * math.cos(spread), inner * math.sin(spread)))
    pen.qCurveTo(at(flank, 1.30 * half_width), at(outer, 0))
    pen.qCurveTo(at(flank, -1.30 * half_width), at(inner * math.cos(spread), -inner * math.sin(spread)))
    pen.qCurveTo(at(inner / math.cos(spread), 0),
                 at(inner * math.cos(spread), inner * math.sin(spread)))
    pen.closePath()


def draw_mark(glyph_set, cap_height):
    """Returns (glyph, advance width) for the mark at the given cap height."""
    size = cap_height
    bearing = round(size * 0.08)
    advance = size + 2 * bearing
    cx, cy = advance / 2, size / 2
    R = size / 2

    pen = TTGlyphPen(glyph_set)
    _circle(pen, cx, cy, 0.22 * R, clockwise=True)
    _circle(pen, cx, cy, 0.54 * R, clockwise=True)
    _circle(pen, cx, cy, 0.35 * R, clockwise=False)
    for i in range(8):
        long_ray = i % 2 == 0
        _petal(pen, cx, cy,
               inner=0.67 * R,
               outer=(1.00 if long_ray else 0.89) * R,
               half_width=(0.17 if long_ray else 0.13) * R,
               angle=math.pi / 2 - i * math.pi / 4)
    return pen.glyph(), advance


def _contour_areas(glyph, glyf):
    areas = []
    coords, end_pts, _ = glyph.getCoordinates(glyf)
    start = 0
    for end in end_pts:
        # The polygon through on- and off-curve points turns as the
        # contour does: negative area for clockwise.
        pts = coords[start:end + 1]
        areas.append(sum(x0 * y1 - x1 * y0
                         for (x0, y0), (x1, y1) in zip(pts, pts[1:] + pts[:1])) / 2)
        start = end + 1
    return areas


def add_mark(font):
    glyf = font["glyf"]
    hmtx = font["hmtx"]
    cap_height = getattr(font["OS/2"], "sCapHeight", 0) or glyf["H"].yMax
    glyph, advance = draw_mark(font.getGlyphSet(), cap_height)

    areas = _contour_areas(glyph, glyf)
    # Clockwise (negative) for the centre, the ring and the petals; the
    # ring's hole, third, counter-clockwise.
    expected = [-1, -1, 1] + [-1] * 8
    if [math.copysign(1, a) for a in areas] != expected:
        fail("the mark's contours turn the wrong way")

    # A glyph of its own rather than a new outline for the superscript two:
    # ½, ⅔ and the subscript two are built from that glyph, and must keep it.
    order = list(font.getGlyphOrder())
    if LOGO_GLYPH not in order:
        order.append(LOGO_GLYPH)
    glyf[LOGO_GLYPH] = glyph
    glyph.recalcBounds(glyf)
    hmtx[LOGO_GLYPH] = (advance, glyph.xMin)
    font.setGlyphOrder(order)
    glyf.setGlyphOrder(order)

    for table in font["cmap"].tables:
        if table.isUnicode() and LOGO_CHAR in table.cmap:
            table.cmap[LOGO_CHAR] = LOGO_GLYPH


# --- names ------------------------------------------------------------------

def ps_name(family, subfamily):
    base = "".join(ch for ch in family if ch.isalnum())
    return base if subfamily == "Regular" else f"{base}-{subfamily.replace(' ', '')}"


def rename(font, family, source_path):
    name = font["name"]
    source_full = name.getDebugName(4) or name.getDebugName(1)
    source_style = name.getDebugName(2) or "Regular"
    version = (name.getDebugName(5) or "").strip()
    if version.lower().startswith("version "):
        version = version[len("version "):]
    # Readers pair ID 2 with the four styles Regular, Italic, Bold and Bold
    # Italic; DejaVu calls its regular weight "Book".
    subfamily = "Regular" if source_style in ("Book", "Normal") else source_style
    full = family if subfamily == "Regular" else f"{family} {subfamily}"
    description = (f"{full} is a renamed copy of {source_full} version {version}, "
                   f"file {os.path.basename(source_path)}"
                   + (", with the Ranvel mark at U+00B2." if family == LOGO_FAMILY else "."))

    # Write the new names on every platform/encoding/language the source
    # names its family in, so no reader finds the old name anywhere.
    slots = sorted({(r.platformID, r.platEncID, r.langID) for r in name.names if r.nameID == 1})
    name.names = [r for r in name.names if r.nameID not in NAME_IDS_REPLACED]
    values = {
        1: family,
        2: subfamily,
        3: f"{full}: version {version}",
        4: full,
        6: ps_name(family, subfamily),
        10: description,
    }
    for platform, encoding, lang in slots:
        for name_id, text in values.items():
            name.setName(text, name_id, platform, encoding, lang)


def build(family, source):
    font = TTFont(source.path, recalcTimestamp=False)
    rename(font, family, source.path)
    if family == LOGO_FAMILY:
        add_mark(font)
    head = font["head"]
    head.created = FIXED_TIMESTAMP
    head.modified = FIXED_TIMESTAMP
    out = io.BytesIO()
    font.save(out)
    return out.getvalue()


# --- licences ---------------------------------------------------------------

def licence_text(source):
    try:
        with open(source.copyright_file, encoding="utf-8") as f:
            return f.read()
    except OSError:
        # Systems that leave out /usr/share/doc still have the font's own
        # copyright and licence entries.
        print(f"makefonts: warning: {source.copyright_file} is missing; "
              f"using the licence entries inside {source.path}", file=sys.stderr)
        name = TTFont(source.path, lazy=True)["name"]
        parts = [name.getDebugName(i) for i in (0, 13, 14)]
        return "\n\n".join(p for p in parts if p) + "\n"


def licences():
    out = ["The display fonts of Ranvel are renamed copies of freely licensed",
           "fonts. Each keeps its source's copyright and licence entries; the",
           "source, and the copyright and licence text of the Debian package",
           "that ships it, follow.", ""]
    for family, base, src in FONTS:
        out.append(f"{base}.IFT  \"{family}\"  from {src.path} (Debian package {src.package})")
    out.append("")
    for package in sorted({src.package for _, _, src in FONTS}):
        src = next(s for _, _, s in FONTS if s.package == package)
        out.append("=" * 78)
        out.append(f"{package}: {src.copyright_file}")
        out.append("=" * 78)
        out.append(licence_text(src).rstrip("\n"))
        out.append("")
    return ("\n".join(out) + "\n").encode("utf-8")


# --- output -----------------------------------------------------------------

def write_if_changed(path, data):
    try:
        with open(path, "rb") as f:
            if f.read() == data:
                return False
    except OSError:
        pass
    tmp = f"{path}.tmp{os.getpid()}"
    try:
        with open(tmp, "wb") as f:
            f.write(data)
        os.replace(tmp, path)
    except BaseException:
        if os.path.exists(tmp):
            os.remove(tmp)
        raise
    return True


def main():
    parser = argparse.ArgumentParser(description="Make Ranvel's display fonts.")
    group = parser.add_mutually_exclusive_group(required=True)
    group.add_argument("--out", help="folder for the .IFT files (EPHE/Fonti of the installation)")
    group.add_argument("--list-inputs", action="store_true",
                       help="print the files the fonts are made from, one a line")
    args = parser.parse_args()

    check_sources()
    if args.list_inputs:
        inputs = {src.path for _, _, src in FONTS}
        inputs |= {src.copyright_file for _, _, src in FONTS if os.path.isfile(src.copyright_file)}
        print("\n".join(sorted(inputs)))
        return

    os.makedirs(args.out, exist_ok=True)
    written = 0
    for family, base, src in FONTS:
        written += write_if_changed(os.path.join(args.out, base + ".IFT"), build(family, src))
    written += write_if_changed(os.path.join(args.out, LICENCES_FILE), licences())
    print(f"makefonts: {written} of {len(FONTS) + 1} files written to {args.out}")


if __name__ == "__main__":
    main()
