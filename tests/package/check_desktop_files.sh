#!/usr/bin/env bash
# The desktop entry, the AppStream metainfo and the manual pages as the
# desktop's and the package's tools read them: no error from
# desktop-file-validate or appstreamcli, no warning from man.
# usage: check_desktop_files.sh SOURCE_DIR
set -euo pipefail
src=$(cd "$1" && pwd)
id=example.ranvel.Ranvel
fail() { echo "FAIL: $*" >&2; exit 1; }
for tool in desktop-file-validate appstreamcli man; do
  command -v "$tool" > /dev/null || { echo "skipped: $tool is not installed"; exit 77; }
done

desktop-file-validate "$src/resources/desktop/$id.desktop" || fail "desktop-file-validate reports an error"
appstreamcli validate --no-net --pedantic "$src/resources/desktop/$id.metainfo.xml" || {
  # pedantic notes are shown; only errors and warnings fail
  appstreamcli validate --no-net "$src/resources/desktop/$id.metainfo.xml" || fail "appstreamcli reports an error"
}
# The metainfo names the desktop entry it launches and both programs.
grep -q "<launchable type=\"desktop-id\">$id.desktop</launchable>" "$src/resources/desktop/$id.metainfo.xml" \
  || fail "the metainfo does not launch $id.desktop"
for exe in ranvel ranvel-cli; do
  grep -q "<binary>$exe</binary>" "$src/resources/desktop/$id.metainfo.xml" || fail "the metainfo does not provide $exe"
done

for page in ranvel ranvel-cli; do
  warnings=$(LC_ALL=C.UTF-8 MANROFFSEQ='' MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$src/resources/man/$page.1" 2>&1 >/dev/null)
  [ -z "$warnings" ] || { echo "$warnings"; fail "man warns of $page.1"; }
done
echo "desktop entry, metainfo and manual pages: no error"
