"""The request form driven from outside, as a user does it: real keys and
clicks on the real program under a virtual display. Each walk ends with the
program still running.

    /usr/bin/python3 tests/gui/request_walk.py BUILD_BIN_DIR SHOTS_DIR
"""
import os
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
    h.stop()
    shutil.rmtree(work, ignore_errors=True)

print(f"{len(failures)} failed" if failures else "all walks passed")
sys.exit(1 if failures else 0)
