#!/usr/bin/env bash
# The installation as a user meets it: installed under a scratch prefix,
# everything in its place, ranvel-cli answering from there as it does from the
# build, and the desktop program starting with its own per-user folder,
# since an installation is not the user's to write.
# usage: check_install.sh BUILD_DIR SOURCE_DIR SCRATCH
set -euo pipefail
build=$(cd "$1" && pwd)
src=$(cd "$2" && pwd)
scratch=$3
id=example.ranvel.Ranvel

fail() { echo "FAIL: $*" >&2; exit 1; }

rm -rf "$scratch"
mkdir -p "$scratch"
scratch=$(cd "$scratch" && pwd)
chmod 755 "$scratch"
prefix=$scratch/prefix
cmake --install "$build" --prefix "$prefix" > "$scratch/install.log" || fail "cmake --install failed (see $scratch/install.log)"

app=$prefix/lib/ranvel
expected=(
  bin/ranvel bin/ranvel-cli lib/ranvel/ranvel lib/ranvel/ranvel-cli
  lib/ranvel/EPHE/COMMON/RECOS.Dat lib/ranvel/EPHE/COMMON/LANGS.Dat lib/ranvel/EPHE/COMMON/MUHU.DAT
  lib/ranvel/EPHE/ENGLISH/ENGLISH.DAT lib/ranvel/EPHE/Fonti/RNVASTRO.IFT lib/ranvel/EPHE/Fonti/FONTS-LICENCES.txt
  lib/ranvel/DATA/INIFILES/GENDAT.INI lib/ranvel/HELP/index.html
  share/applications/$id.desktop share/metainfo/$id.metainfo.xml
  share/icons/hicolor/scalable/apps/$id.svg
  share/man/man1/ranvel.1.gz share/man/man1/ranvel-cli.1.gz
  share/doc/ranvel/copyright share/doc/ranvel/changelog.gz
)
for size in 16 22 24 32 48 64 128 256 512; do
  expected+=("share/icons/hicolor/${size}x${size}/apps/$id.png")
done
for f in "${expected[@]}"; do
  [ -e "$prefix/$f" ] || fail "the installation lacks $f"
done
for exe in ranvel ranvel-cli; do
  [ "$(readlink "$prefix/bin/$exe")" = "../lib/ranvel/$exe" ] || fail "bin/$exe is not a link to lib/ranvel/$exe"
done
# Made from the resources, not copied from the build folder, whose stores
# carry what a developer's runs wrote (and their rotated copies).
[ -z "$(find "$app" -name '*.Dat.[0-9]' -o -name '*.damaged' -o -name '*.part')" ] || fail "the installation carries a store's copies from the build folder"
[ -z "$(find "$prefix" -name 'test_*' -o -name 'bench_*' -o -name 'ranvel-makedata' -o -name 'ranvel-screens')" ] || fail "the installation carries a build tool or test"

# A user who cannot write the installation: as root, the user nobody; as
# anybody else, the installation made read-only.
home=$scratch/home
mkdir -p "$home/.config/Ranvel"
printf '[Settings]\nDoneSetup=True\n' > "$home/.config/Ranvel/settings.ini"
as_user=()
if [ "$(id -u)" = 0 ]; then
  chown -R nobody "$home"
  as_user=(setpriv --reuid=nobody --regid=nogroup --clear-groups)
else
  chmod -R a-w "$prefix"
fi
user_env=(env -i PATH=/usr/bin:/bin HOME="$home" XDG_DATA_HOME="$home/.local/share"
          XDG_CONFIG_HOME="$home/.config" XDG_RUNTIME_DIR="$home/run" LANG=C.UTF-8)
mkdir -p "$home/run" && chmod 700 "$home/run"
[ "$(id -u)" = 0 ] && chown nobody "$home/run"

run_user() { "${user_env[@]}" "${as_user[@]}" "$@"; }

version=$(run_user "$prefix/bin/ranvel-cli" --version) || fail "the installed ranvel-cli --version failed"
echo "$version"
printf '%s\n' "$version" | head -1 | grep -q '^ranvel-cli [0-9]' || fail "--version does not start with the program's name and version"

# The sample search answers the same from the installation as from the build.
sample=$src/resources/samples/marriage-delhi.json
cp "$sample" "$scratch/sample.json" && chmod 644 "$scratch/sample.json"
run_user "$prefix/bin/ranvel-cli" muhurtha --request "$scratch/sample.json" > "$scratch/installed.txt" \
  || fail "the installed ranvel-cli could not answer the sample"
mkdir -p "$scratch/build-config"
env XDG_CONFIG_HOME="$scratch/build-config" "$build/bin/ranvel-cli" muhurtha --request "$sample" > "$scratch/built.txt"
cmp -s "$scratch/installed.txt" "$scratch/built.txt" || { diff "$scratch/built.txt" "$scratch/installed.txt" | head -20; fail "the installed program answers otherwise than the build"; }

# The desktop program starts, offscreen, and keeps the user's files in the
# user's own folder, copied once from the installation.
user_dir=$home/.local/share/ranvel
run_user env QT_QPA_PLATFORM=offscreen "$prefix/bin/ranvel" > "$scratch/desktop.log" 2>&1 &
pid=$!
started=
for _ in $(seq 1 60); do
  if [ -f "$user_dir/EPHE/COMMON/RECOS.Dat" ] && [ -f "$user_dir/EPHE/COMMON/LANGS.Dat" ] \
     && [ -f "$user_dir/DATA/INIFILES/GENDAT.INI" ]; then started=1; break; fi
  kill -0 "$pid" 2>/dev/null || break
  sleep 0.5
done
sleep 2
alive=
kill -0 "$pid" 2>/dev/null && alive=1
kill "$pid" 2>/dev/null || true
wait "$pid" 2>/dev/null || true
[ -n "$started" ] || { cat "$scratch/desktop.log"; fail "the installed desktop program made no per-user folder in $user_dir"; }
[ -n "$alive" ] || { cat "$scratch/desktop.log"; fail "the installed desktop program ended at start"; }
[ "$(head -1 "$user_dir/.installed-from")" = "$app" ] || fail "the per-user folder does not name the installation"
echo "installed under $prefix; the desktop program started with $user_dir"
