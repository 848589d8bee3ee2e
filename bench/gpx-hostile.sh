#!/usr/bin/env bash
# Converts GPX that is made to be costly, and prints what it takes. Builds nothing. Exits 1 where one is not refused, or
# takes more than a second or 100 MB until it is.
#   bench/gpx-hostile.sh [BUILD_DIR]
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${1:-$top/build/everyday}
most_seconds=1
most_bytes=100000000
cli=$build/src/cli/walrim-cli
peak=$build/bench/data/walrim_peak_memory
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# repeat COUNT TEXT
repeat() { awk -v count="$1" -v text="$2" 'BEGIN { while (count-- > 0) printf "%s", text }'; }
point='<wpt lat="35" lon="139"><name>A</name></wpt>'

laughs() {
  local i
  echo '<!DOCTYPE gpx [<!ENTITY a0 "ha">'
  for i in 1 2 3 4 5 6 7 8 9; do echo "<!ENTITY a$i \"$(repeat 10 "&a$((i - 1));")\">"; done
  echo "]><gpx>$point<wpt lat=\"35\" lon=\"139\"><name>&a9;</name></wpt></gpx>"
}
external() {
  echo "<!DOCTYPE gpx [<!ENTITY a SYSTEM \"file://$work/laughs\">]><gpx>$point<a>&a;</a></gpx>"
}
external_doctype() {
  echo "<!DOCTYPE gpx SYSTEM \"file://$work/laughs\"><gpx>$point<a>&a9;</a></gpx>"
}
levels() {
  echo "<gpx>$point"
  repeat 100000 '<a>'
  repeat 100000 '</a>'
  echo '</gpx>'
}
attribute() {
  echo "<gpx>$point<a b=\""
  repeat 81920 "$(repeat 64 x)"
  echo '"/></gpx>'
}
attributes() {
  echo "<gpx>$point<a"
  awk 'BEGIN { for (i = 0; i < 500000; ++i) printf " a%d=\"\"", i }'
  echo '/></gpx>'
}
references() {
  echo "<gpx>$point<a>"
  repeat 1000000 '&amp;'
  echo '&x;</a></gpx>'
}
tags() {
  echo "<gpx>$point"
  repeat 1000000 '<a>x</a>'
  echo '</b></gpx>'
}

broken=0
for name in laughs external external_doctype levels attribute attributes references tags; do
  "$name" >"$work/$name"
  start=$(date +%s%N)
  if "$cli" convert --quiet --force --type grc "$work/$name" -o "$work/out" 2>"$work/err"; then
    echo "$name: was not refused"
    broken=1
  fi
  end=$(date +%s%N)
  bytes=$("$peak" "$cli" convert --quiet --force --type grc "$work/$name" -o "$work/out" 2>/dev/null || true)
  awk -v name="$name" -v seconds="$(((end - start) / 1000))" -v bytes="$bytes" -v most_seconds=$most_seconds \
    -v most_bytes=$most_bytes 'BEGIN {
      seconds /= 1000000
      printf "%s: %.3f s, %.1f MB\n", name, seconds, bytes / 1e6
      exit !bytes || seconds > most_seconds || bytes > most_bytes }' || broken=1
  [[ ! -e $work/out ]] || { echo "$name: wrote a file"; broken=1; }
done
exit $broken
