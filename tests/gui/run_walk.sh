#!/usr/bin/env bash
# Runs one walk of the desktop from outside: BUILD_DIR SCRIPT. The driver
# lives beside the project (shared/gui-driver) or where RANVEL_GUI_DRIVER
# says; without it, or without the packages it needs, the walk is skipped.
set -euo pipefail
build=$(cd "$1" && pwd)
script=$2
here=$(cd "$(dirname "$0")" && pwd)
driver=${RANVEL_GUI_DRIVER:-$here/../../../shared/gui-driver}
if [ ! -f "$driver/harness.py" ]; then
  echo "skipped: no desktop driver at $driver"
  exit 77
fi
if ! /usr/bin/python3 -c 'import gi; gi.require_version("Atspi", "2.0")' 2>/dev/null || ! command -v xdotool >/dev/null; then
  echo "skipped: the desktop driver's packages are not installed (scripts/setup installs them)"
  exit 77
fi
# The driver's small library, built once into the build folder.
export GUI_DRIVER_BUILD=$build/gui-driver-shim
if [ ! -f "$GUI_DRIVER_BUILD/libqtobjname.so" ]; then
  cmake -S "$driver/shim" -B "$GUI_DRIVER_BUILD" -DCMAKE_BUILD_TYPE=Release >/dev/null
  cmake --build "$GUI_DRIVER_BUILD" -j2 >/dev/null
fi
export GUI_DRIVER_DIR=$driver
exec /usr/bin/python3 "$here/$script" "$build/bin" "$build/test-tmp/gui-shots"
