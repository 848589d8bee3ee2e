#!/usr/bin/env bash
# Reads texts that are made to be slow, each in two sizes, and prints how many times the instructions of the one the double
# size takes, as callgrind counts them. Builds nothing. Exits 1 when one takes more than 2.5 times: then reading is not
# linear.
#   bench/hostile.sh [BUILD_DIR] [KILOBYTES]
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${1:-$top/build/everyday}
kilobytes=${2:-128}
bound=2.5
cli=$build/src/cli/walrim-cli
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The beginning of a text, then a piece repeated up to a size, then an end.
make_text() { # FILE BYTES BEGINNING PIECE END
  printf '%b' "$3" >"$1"
  LC_ALL=C awk -v bytes="$2" -v piece="$4" 'BEGIN { for (; bytes > 0; bytes -= length(piece)) printf "%s", piece }' >>"$1"
  printf '%b' "$5" >>"$1"
}

instructions() { # FILE
  valgrind --tool=callgrind --callgrind-out-file="$work/profile" "$cli" convert --quiet --force "$1" -o "$work/out" \
    >/dev/null 2>&1 || true
  callgrind_annotate --inclusive=yes --threshold=100 "$work/profile" >"$work/costs" 2>/dev/null
  awk 'index($0, "walrim::ImportCommands::ImportFile(") { gsub(",", "", $1); print $1; exit }' "$work/costs"
}

broken=0
hostile() { # LABEL EXTENSION BEGINNING PIECE END
  local once twice
  make_text "$work/text.$2" $((kilobytes * 1024)) "$3" "$4" "${5-}"
  once=$(instructions "$work/text.$2")
  make_text "$work/text.$2" $((kilobytes * 2048)) "$3" "$4" "${5-}"
  twice=$(instructions "$work/text.$2")
  awk -v label="$2: $1" -v once="$once" -v twice="$twice" -v bound="$bound" 'BEGIN {
    if (!once || !twice) { print label ": not counted"; exit 1 }
    printf "%s: %.1f and %.1f million, %.2f times\n", label, once / 1e6, twice / 1e6, twice / once
    exit twice / once > bound }' || broken=1
}

grc='WPT\tD\tWGS84\tA\t35\t139\r\n'
txt='Datum,WGS84\r\n'
mps='//Header:Prog:\r\n\t\ttheme\tWGS84;\r\n'
for format in grc txt mps; do
  begin=${!format}
  hostile "one line of letters" $format "$begin" "aaaaaaaaaaaaaaaa"
  hostile "line feeds" $format "$begin" "\n"
  hostile "carriage returns and one line feed" $format "$begin" "x\r" '\n'
  hostile "TABs" $format "$begin" "\t"
  hostile "short lines of TABs" $format "$begin" "\t\t\t\t\t\t\t\t\t\t\t\t\n"
  hostile "quotes" $format "$begin" '"'
  hostile "lines of quotes and equals signs" $format "$begin" '=""="""\n'
  hostile "commas" $format "$begin" ","
  hostile "blanks" $format "$begin" " "
  hostile "bytes that are no UTF-8" $format "$begin\xff" "~"
done
hostile "one column of quotes" grc "${grc}WPT\tD\tWGS84\t" '"' '\t35\t139\r\n'
hostile "a number of digits" grc "${grc}WPT\tD\tWGS84\tA\t" '1' '\t139\r\n'
hostile "one route" grc 'RTH\t1\tA\t1\r\n' "RTP\tD\tWGS84\tA\t35\t139\n"
hostile "headers of routes" grc 'RTH\t1\tA\t1\r\n' "RTH\t1\tA\t99\n"
hostile "headers of logs" grc 'TRH\t1\r\n' "TRH\t30000\n"
hostile "one log" grc 'TRH\t1\r\n' "TRP\tD\tWGS84\t35\t139\n"
hostile "one route" txt "${txt}RN,1,A\r\n" "RP,D,A,35,139,1/1/2000,00:00:00,\n"
hostile "routes" txt "$txt" "RN,1,A\n"
hostile "one log" txt "$txt" "TP,D,35,139,1/1/2000,00:00:00,0\n"
hostile "logs" txt "$txt" "TP,D,35,139,1/1/2000,00:00:00,1\n"
hostile "datums" txt "$txt" "Datum,Tokyo\n"
hostile "one log" mps "${mps}\t\tline\toid=1\r\n\t\t\t\tgid=5134\r\n\t\t\t\tstr=[TR]#1\r\n\t\t\t\tpos=" "35/1/1,139/1/1," ';\r\n'
hostile "a statement without end" mps "${mps}\t\tpoint\toid=1" ",gid=1"
hostile "a statement of keys" mps "$mps" "point oid=1,gid=\n"
hostile "statements" mps "$mps" "point oid=1,pos=35/1/1,139/1/1;\n"
hostile "remarks" mps "$mps" "//\n"
hostile "route labels" mps "$mps" "line oid=1,str=RtNo:1 RpNum:,gid=5132;\n"
exit $broken
