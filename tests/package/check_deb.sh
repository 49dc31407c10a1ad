#!/usr/bin/env bash
# The Debian package: built by cpack from the build folder, its dependencies
# taken from what the executables link plus the data they read, and checked by
# lintian with no error. Skipped, saying why, where the package tools are not
# installed (scripts/setup installs them).
# usage: check_deb.sh BUILD_DIR SCRATCH
set -euo pipefail
build=$(cd "$1" && pwd)
scratch=$2

fail() { echo "FAIL: $*" >&2; exit 1; }
for tool in cpack dpkg-deb dpkg-shlibdeps lintian; do
  command -v "$tool" > /dev/null || { echo "skipped: $tool is not installed"; exit 77; }
done

rm -rf "$scratch"
mkdir -p "$scratch"
cpack -G DEB --config "$build/CPackConfig.cmake" -B "$scratch" > "$scratch/cpack.log" 2>&1 \
  || { tail -30 "$scratch/cpack.log"; fail "cpack could not make the package"; }
debs=("$scratch"/ranvel_*.deb)
[ ${#debs[@]} = 1 ] && [ -f "${debs[0]}" ] || fail "cpack made no single ranvel_*.deb in $scratch"
deb=${debs[0]}
echo "made $(basename "$deb") ($(du -k "$deb" | cut -f1) KB)"

depends=$(dpkg-deb -f "$deb" Depends)
echo "Depends: $depends"
for need in libc6 libqt6widgets6 libsqlite3-0 swe-basic-data tzdata fonts-liberation2 qt6-qpa-plugins; do
  grep -Eq "(^|, )$need( |,|$)" <<< "$depends" || fail "the package does not depend on $need"
done
grep -Eq '(^|, )libswe' <<< "$depends" || fail "the package does not depend on the ephemeris library"

contents=$(dpkg-deb -c "$deb")
for path in ./usr/bin/ranvel ./usr/bin/ranvel-cli ./usr/lib/ranvel/ranvel ./usr/lib/ranvel/EPHE/COMMON/RECOS.Dat \
            ./usr/share/applications/example.ranvel.Ranvel.desktop ./usr/share/doc/ranvel/copyright \
            ./usr/share/doc/ranvel/changelog.gz ./usr/share/man/man1/ranvel-cli.1.gz; do
  grep -Fq " $path" <<< "$contents" || fail "the package lacks $path"
done
odd=$(grep -Ev '^(l[rwx]{9}|[-d]rw[-x]r-[-x]r-[-x]) root/root ' <<< "$contents" || true)
[ -z "$odd" ] || { head -5 <<< "$odd"; fail "the package holds files not owned by root or open to writing"; }

# lintian's own exit says whether it found an error; its whole report is kept.
lintian_args=(--fail-on error --tag-display-limit 0 --display-info)
[ "$(id -u)" = 0 ] && lintian_args+=(--allow-root)
if ! lintian "${lintian_args[@]}" "$deb" > "$scratch/lintian.txt" 2>&1; then
  cat "$scratch/lintian.txt"
  fail "lintian reports an error"
fi
cat "$scratch/lintian.txt"
# Built as Debian builds its packages: no hardening missing.
if grep -q 'hardening-no-' "$scratch/lintian.txt"; then
  fail "the executables lack hardening (configure with RANVEL_HARDEN=ON, as the default preset does)"
fi
echo "lintian: no error"
