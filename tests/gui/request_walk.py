"""The request form driven from outside, as a user does it: real keys and
clicks on the real program under a virtual display. Each walk ends with the
program still running.

    /usr/bin/python3 tests/gui/request_walk.py BUILD_BIN_DIR SHOTS_DIR
"""
import datetime
import os
import re
import shutil
import sqlite3
import sys
import tempfile
import time

here = os.path.dirname(os.path.abspath(__file__))
driver = os.path.join(here, "..", "..", "..", "shared", "gui-driver")
sys.path.insert(0, os.environ.get("GUI_DRIVER_DIR", driver))
import harness as h  # noqa: E402

bin_dir = os.path.abspath(sys.argv[1])
shots = os.path.abspath(sys.argv[2] if len(sys.argv) > 2 else tempfile.mkdtemp())
os.makedirs(shots, exist_ok=True)

# A copy of the installation and a home of its own, the setup done.
work = tempfile.mkdtemp(prefix="ranvel-walk-")
app_dir = os.path.join(work, "app")
for d in ("EPHE/COMMON", "EPHE/ENGLISH", "DATA/INIFILES", "HELP"):
    src = os.path.join(bin_dir, d)
    if os.path.isdir(src):
        shutil.copytree(src, os.path.join(app_dir, d))
os.symlink(os.path.join(bin_dir, "EPHE", "Fonti"), os.path.join(app_dir, "EPHE", "Fonti"))
home = os.path.join(work, "home")
os.makedirs(os.path.join(home, ".config", "Ranvel"))
with open(os.path.join(home, ".config", "Ranvel", "settings.ini"), "w") as f:
    f.write("[Settings]\nDoneSetup=True\n")

# A person whose name breaks the store's queries, beside a plain one.
db = sqlite3.connect(os.path.join(app_dir, "EPHE", "COMMON", "RECOS.Dat"))
for name, day in (("Asha", 12), ("Sean O'Brien", 21)):
    db.execute("INSERT INTO Person (Name, Sex, Day, Month, Year, Hour, Minutes, seconds, AMPM, Country, City,"
               " LatDeg, LatMT, TextNS, LongDeg, LongMT, TextEW, GMTDIFF) VALUES"
               " (?, 1, ?, 3, 1990, 6, 45, 0, 1, 'India', 'Pune', 18, 31, 'N', 73, 51, 'E', '+05.30')",
               (name, day))
db.commit()
db.close()

failures = []


def check(what, got, want):
    if got != want:
        failures.append(f"{what}: {got!r}, wanted {want!r}")
        print("FAIL", what, repr(got), "wanted", repr(want))
    else:
        print("ok  ", what)


env = {"HOME": home, "XDG_CONFIG_HOME": os.path.join(home, ".config"),
       "XDG_DATA_HOME": os.path.join(home, ".local", "share")}
app = h.start_app([os.path.join(bin_dir, "ranvel"), "--app-dir", app_dir], window=None, env=env,
                  expose_object_names=True, timeout=60)
app.wait_window(name_re=r"^Ranvel-", timeout=60)
try:
    def field(name, role="text"):
        return app.find(role, object_name=name)

    def combo_text(name):
        return h.text_of(app.find("combo box", object_name=name).find("text"))

    h.click(app.find("push button", object_name="CmdGenerate"))
    # The country's first letters and Enter: India, not what was typed.
    country = app.find("combo box", object_name="cmbMuhuCountry").find("text")
    h.type(country, "Ind")
    h.key("Return")
    check("country after Ind + Enter", combo_text("cmbMuhuCountry"), "India")
    check("zone of India", h.text_of(field("txtMuhuGMT")), "+05.30")
    city = app.find("combo box", object_name="cmbMuhuCity").find("text")
    h.type(city, "Pun")
    h.screenshot(os.path.join(shots, "typeahead-pun.png"))
    h.key("Return")
    check("city after Pun + Enter", combo_text("cmbMuhuCity"), "Pune")
    check("Pune's latitude", h.text_of(field("txtMuhuLati")), "018:32")
    check("Pune's country", combo_text("cmbMuhuCountry"), "India")
    # Another country: no city of India stays under it.
    h.type(country, "Argentina")
    h.key("Return")
    check("city after Argentina", combo_text("cmbMuhuCity"), "")
    check("latitude after Argentina", h.text_of(field("txtMuhuLati")), "000:00")
    h.type(country, "India")
    h.key("Return")
    h.type(city, "Pune")
    h.key("Return")

    # The person page; O'Brien picked from the list, then Back and Next.
    h.click(app.find("push button", object_name="CmdGenerate"))
    name_box = app.find("combo box", object_name="cmbPerson")
    h.click(name_box.find("text"))
    h.key("alt+Down")
    h.key("Down")
    h.key("Return")
    fault = h.wait_window(role="alert")
    h.screenshot(os.path.join(shots, "apostrophe-fault.png"))
    h.key("Return")
    app.wait_window_gone(fault)
    check("birth date after the fault", h.text_of(field("txtBDate")), "00/00/0000")
    h.click(app.find("push button", object_name="flpBack"))
    h.click(app.find("push button", object_name="CmdGenerate"))
    fault = h.wait_window(role="alert")
    h.key("Return")
    app.wait_window_gone(fault)
    check("still running after Back and Next", app.returncode, None)

    # Born at 17.45 on page 3: PM follows.
    h.type(field("txtBTime"), "1745", verify=False)
    check("birth time typed", h.text_of(field("txtBTime")), "17.45")
    check("PM after 17.45", app.find("radio button", object_name="optAMPM(1)").checked, True)
    h.screenshot(os.path.join(shots, "person-page.png"))

    # Born in London on a July day, chosen as a user does it: the place
    # fills with the standard +00.00 and the note beside it tells of summer
    # time; Tab reaches the note, Space puts its offset in.
    h.type(field("txtBDate"), "14071990", verify=False)
    h.type(app.find("combo box", object_name="cmbCountry").find("text"), "United Kingdom")
    h.key("Return")
    h.type(app.find("combo box", object_name="cmbCity").find("text"), "London")
    h.key("Return")
    check("London's standard offset", h.text_of(field("txtGMT")), "+00.00")
    # The note speaks its whole sentence as its description.
    note = app.find("push button", name="Summer time: +01.00")
    check("the note's sentence", note.description, "Summer time was in force in London on 14/07/1990: +01.00")
    h.screenshot(os.path.join(shots, "zone-note.png"))
    h.click(field("txtGMT"))
    h.key("Tab")
    h.key("space")
    check("the offset put in by the note", h.text_of(field("txtGMT")), "+01.00")

    # Which ephemeris the program runs on, as the about box and the status
    # bar tell it: the sentence ranvel-cli --version gives.
    import subprocess
    version = subprocess.run([os.path.join(bin_dir, "ranvel-cli"), "--version"], capture_output=True, text=True,
                             env=dict(os.environ, **env)).stdout.splitlines()
    h.menu("Help", "About Ranvel...")
    about = app.wait_window(role="dialog", timeout=30)
    check("the about box's ephemeris", h.text_of(about.find("label", object_name="lblEphemeris")),
          version[1] if len(version) > 1 else version)
    h.screenshot(os.path.join(shots, "about.png"))
    h.key("Return")
    app.wait_window_gone(about)
    # Its tip, the whole sentence, is what it tells a screen reader.
    status = app.find("label", name="Swiss Ephemeris files")
    check("the status bar's ephemeris", status.description, version[1] if len(version) > 1 else version)

    # The manual opens in the program's own window, on a machine without a
    # web browser.
    h.menu("Help", "Manual...")
    time.sleep(2)
    h.screenshot(os.path.join(shots, "manual.png"))
    check("still running after the manual", app.returncode, None)

finally:
    check("running at the end", app.returncode, None)
    if app.returncode is not None:
        print(app.log_tail())
    h.stop(session_too=False)

# The Muhurtha calendar, in the program started afresh: a marriage searched
# over a month from today, the calendar opened from the View menu, a day
# chosen in the list and moved with the keys in the grid, and that day's
# pages shown as the calendar shows it.
app = h.start_app([os.path.join(bin_dir, "ranvel"), "--app-dir", app_dir], window=None, env=env,
                  expose_object_names=True, timeout=60)
app.wait_window(name_re=r"^Ranvel-", timeout=60)
try:
    def fill(name, text):
        h.type(app.find("text", object_name=name), text, verify=False)

    def place(country_box, city_box, country, city):
        h.type(app.find("combo box", object_name=country_box).find("text"), country)
        h.key("Return")
        h.type(app.find("combo box", object_name=city_box).find("text"), city)
        h.key("Return")

    def reading(w):
        # A read-only text box is a label to AT-SPI, named by its caption;
        # what it shows comes through its text.
        ti = w.acc.get_text_iface()
        return ti.get_text(0, -1) if ti else w.name

    def day_of(detail):
        return datetime.datetime.strptime(reading(detail).split("\n")[0].split(", ")[1], "%d/%m/%Y").date()

    def figures(detail):
        m = re.search(r"lagna from (.+?) to (.+?)\s+Score .+?, ([0-9.]+) percent", reading(detail))
        return m.groups() if m else None

    def cover():
        return tuple(h.text_of(app.find("label", object_name=n)) for n in ("lblBMFrom", "lblBMTo", "lblBMScore"))

    # The day sheet asked for before any place is chosen: the box says the
    # place is blank, and the program goes on.
    h.menu("View", "Day Sheet...")
    refusal = h.wait_window(role="alert")
    check("a blank place is refused", "blank" in " ".join(w.name for w in refusal.find_all("label")), True)
    h.key("Return")
    app.wait_window_gone(refusal)

    h.click(app.find("check box", name="Marriage"))
    h.select(app.find("tree", object_name="tvMuhuList"), "Marriage ceremony (Vivaha)")
    h.click(app.find("push button", object_name="CmdGenerate"))
    h.click(app.find("radio button", object_name="optMuhuRange"))
    # Until a month on: the month's part of the date stepped up by its key.
    until = app.find("spin button", object_name="dtMuhuTo")
    app.focus_window_of(until)
    x, y, _, height = until.extents
    app.session.move_pointer(x + 30, y + height // 2)
    app.session.xdotool("click", "1")
    h.key("Up")
    fill("txtMuhDTFrom", "0600")
    fill("txtMuhDTTo", "2200")
    place("cmbMuhuCountry", "cmbMuhuCity", "India", "New Delhi")
    h.click(app.find("push button", object_name="CmdGenerate"))
    h.type(app.find("combo box", object_name="cmbBoyName").find("text"), "Arjun")
    fill("txtBoyDate", "14081994")
    fill("txtBoyTime", "0920")
    place("cmbBoyCountry", "cmbBoyPlace", "India", "New Delhi")
    h.type(app.find("combo box", object_name="cmbGalName").find("text"), "Meera")
    fill("txtGalDate", "03021996")
    fill("txtGalTime", "1745")
    place("cmbGalCountry", "cmbGalPlace", "India", "Pune")
    h.click(app.find("push button", object_name="CmdGenerate"))
    app.wait_window(name_re=r"^Ranvel-Muhurtha Score", timeout=120)
    best_on_cover = cover()

    h.menu("View", "Muhurtha Calendar...")
    app.wait_window(name="Muhurtha Calendar", timeout=60)
    h.screenshot(os.path.join(shots, "calendar.png"))
    ranked = app.find("tree", object_name="lvwRanked")
    detail = app.find(None, object_name="txtDayDetail")
    rows = app.table(ranked)
    check("calendar opens on the cover's day", figures(detail), best_on_cover)
    h.select(ranked, rows[2][1])
    chosen = day_of(detail)
    check("list chooses its third day", chosen.strftime("%d/%m/%Y"), rows[2][1])

    # From the list back to the grid (the list's choices stand between).
    spin = app.find(None, object_name="spnTop")
    for _ in range(4):
        h.key("shift+Tab")
        if spin.has("focused"):
            break
    h.key("shift+Tab")
    # A step that would leave the range searched is not taken.
    first, last = (datetime.datetime.strptime(d, "%d/%m/%Y").date() for d in re.findall(
        r"\d\d/\d\d/\d{4}", h.text_of(app.find("label", object_name="lblCalendarTitle"))))
    for key_name, days in (("Right", 1), ("Down", 7), ("Left", -1), ("Up", -7)):
        want = day_of(detail) + datetime.timedelta(days=days)
        if not first <= want <= last:
            want = day_of(detail)
        h.key(key_name)
        check(f"{key_name} in the grid", day_of(detail), want)
    h.screenshot(os.path.join(shots, "calendar-keys.png"))

    shown = figures(detail)
    h.click(app.find("push button", object_name="cmdShowDayPages"))
    check("the cover shows the calendar's day", cover(), shown)
    h.screenshot(os.path.join(shots, "calendar-day-cover.png"))

    # Back to the calendar, and the chosen day's sheet: its sunrise is the
    # one ranvel-cli gives for that day at New Delhi.
    h.menu("View", "Muhurtha Calendar...")
    app.wait_window(name="Muhurtha Calendar", timeout=60)
    sheet_day = day_of(app.find(None, object_name="txtDayDetail"))
    h.click(app.find("push button", object_name="cmdDaySheet"))
    sheet = app.wait_window(name_re=r"^Day Sheet - ", timeout=60)
    check("the sheet is the calendar's day", sheet_day.strftime("%d/%m/%Y") in sheet.name, True)
    h.screenshot(os.path.join(shots, "day-sheet.png"))
    import json
    import subprocess
    cli = subprocess.run([os.path.join(bin_dir, "ranvel-cli"), "--app-dir", app_dir, "day", "--date",
                          sheet_day.strftime("%d/%m/%Y"), "--lati", "028:36", "--longi", "077:12", "--gmt", "+05.30",
                          "--json"], capture_output=True, text=True, env=dict(os.environ, **env))
    rise = json.loads(cli.stdout)["Sunrise"]["Time"].replace(".", ":") if cli.returncode == 0 else cli.stderr
    check("the sheet's sunrise is the command's", h.text_of(sheet.find("label", object_name="lblSunriseVal")), rise)
    h.click(sheet.find("push button", object_name="cmdClose"))
    app.wait_window_gone(sheet)
finally:
    check("running after the calendar", app.returncode, None)
    if app.returncode is not None:
        print(app.log_tail())
    h.stop()
    shutil.rmtree(work, ignore_errors=True)

print(f"{len(failures)} failed" if failures else "all walks passed")
sys.exit(1 if failures else 0)
