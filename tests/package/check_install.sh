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

[ -f "$app/INSTALLED" ] || fail "the installation does not mark itself as installed for every user"

# The desktop program starts, offscreen, and keeps a user's files in that
# user's own folder, copied once from the installation.
start_desktop() {  # HOME, then the command that runs a program as the user
  local home=$1; shift
  local user_dir=$home/.local/share/ranvel log=$home/desktop.log
  "$@" env QT_QPA_PLATFORM=offscreen "$prefix/bin/ranvel" > "$log" 2>&1 &
  local pid=$! started= alive=
  for _ in $(seq 1 60); do
    if [ -f "$user_dir/EPHE/COMMON/RECOS.Dat" ] && [ -f "$user_dir/EPHE/COMMON/LANGS.Dat" ] \
       && [ -f "$user_dir/DATA/INIFILES/GENDAT.INI" ]; then started=1; break; fi
    kill -0 "$pid" 2>/dev/null || break
    sleep 0.5
  done
  sleep 2
  kill -0 "$pid" 2>/dev/null && alive=1
  kill "$pid" 2>/dev/null || true
  wait "$pid" 2>/dev/null || true
  [ -n "$started" ] || { cat "$log"; fail "the installed desktop program made no per-user folder in $user_dir"; }
  [ -n "$alive" ] || { cat "$log"; fail "the installed desktop program ended at start"; }
  [ "$(head -1 "$user_dir/.installed-from")" = "$app" ] || fail "the per-user folder does not name the installation"
  echo "the desktop program started with $user_dir"
}
new_home() {  # a fresh home whose settings say the first-run wizard is done
  mkdir -p "$1/.config/Ranvel" "$1/run"
  chmod 700 "$1/run"
  printf '[Settings]\nDoneSetup=True\n' > "$1/.config/Ranvel/settings.ini"
}
home_env() {  # sets henv: the bare environment of a user whose home is $1
  henv=(env -i PATH=/usr/bin:/bin HOME="$1" XDG_DATA_HOME="$1/.local/share" XDG_CONFIG_HOME="$1/.config"
        XDG_RUNTIME_DIR="$1/run" LANG=C.UTF-8)
}

# The one who installed it, who may write there (root, for a package): the
# installation stays as it was installed all the same.
touch "$scratch/installed.stamp"
sleep 1
new_home "$scratch/owner"
home_env "$scratch/owner"
start_desktop "$scratch/owner" "${henv[@]}"
changed=$(find "$prefix" -newer "$scratch/installed.stamp")
[ -z "$changed" ] || { echo "$changed" | head; fail "a run of the installed program wrote into the installation"; }

# A user who cannot write the installation: as root, the user nobody; as
# anybody else, the installation made read-only.
home=$scratch/home
new_home "$home"
as_user=()
if [ "$(id -u)" = 0 ]; then
  chown -R nobody "$home"
  as_user=(setpriv --reuid=nobody --regid=nogroup --clear-groups)
else
  chmod -R a-w "$prefix"
fi
home_env "$home"
run_user() { "${henv[@]}" "${as_user[@]}" "$@"; }

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

start_desktop "$home" "${henv[@]}" "${as_user[@]}"
echo "installed under $prefix"
