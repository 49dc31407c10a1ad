#!/usr/bin/env bash
# One bounded run of a fuzz target from its seeds, as the test suite runs
# it: run_target.sh FUZZER SEEDS WORK SECONDS. New inputs go to WORK/found
# (the seeds stay as committed), a crash to WORK/crash-*. The target writes
# only inside WORK/scratch: HOME, the temporary folder and the working
# folder are empty folders of WORK, and anything left in them fails the run.
set -euo pipefail
fuzzer=$(realpath "$1") seeds=$(realpath "$2") work=$(realpath -m "$3") seconds=$4

rm -rf "$work"
mkdir -p "$work/found" "$work/scratch" "$work/home" "$work/tmp" "$work/cwd"
cd "$work/cwd"
export HOME="$work/home" XDG_CONFIG_HOME="$work/home/.config" XDG_DATA_HOME="$work/home/.local/share"
export TMPDIR="$work/tmp" RANVEL_FUZZ_SCRATCH="$work/scratch"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"

status=0
"$fuzzer" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
  -artifact_prefix="$work/" "$work/found" "$seeds" || status=$?

if [ "$status" -ne 0 ]; then
  for found in "$work"/crash-* "$work"/leak-* "$work"/timeout-* "$work"/oom-* "$work"/slow-unit-*; do
    [ -e "$found" ] || continue
    echo "reproduce with: $fuzzer $found"
    if [ "$(stat -c %s "$found")" -le 8192 ]; then
      echo "the input, base64: $(base64 -w0 "$found")"
    fi
  done
  exit "$status"
fi

left=$(find "$work/home" "$work/tmp" "$work/cwd" -mindepth 1 | head -n 20)
if [ -n "$left" ]; then
  echo "written outside the scratch folder:"
  echo "$left"
  exit 1
fi
