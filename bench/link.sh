#!/usr/bin/env bash
# How close transfers of track logs come to what the line allows, and what they cost the processor. A receiver made of
# software on a line of 9600 baud holds one track log of 1000 points. On the plain link the download's time is held
# against the time that its bytes take on the line plus the settle time of each burst; on the checked link download and
# upload are held against the time of the bytes alone. Takes about two and a half minutes and builds nothing. Exits 1
# when a bound is broken.
#   bench/link.sh [--upload] [BUILD_DIR]
# With --upload the log is sent over the plain link too, for another minute; that is told, not judged.
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
upload=no
if [[ ${1:-} == --upload ]]; then
  upload=yes
  shift
fi
build=${1:-$top/build/everyday}
cli=$build/src/cli/walrim-cli
receiver=$build/src/receiver/walrim-receiver
points=1000
baud=9600
ratio_bound=1.05
checked_bound=1.02
cpu_bound=5

fail() {
  echo "link.sh: $*" >&2
  exit 1
}
for program in "$cli" "$receiver"; do
  [[ -x $program ]] || fail "$program is not there; build walrim-cli and walrim-receiver first"
done

export LC_ALL=C
work=$(mktemp -d)
receiver_pid=
clean_up() {
  if [[ -n $receiver_pid ]]; then kill "$receiver_pid" 2>/dev/null || true; fi
  rm -rf "$work"
}
trap clean_up EXIT

# A walk whose positions change in every byte that a walk changes, a point each 30 seconds.
write_log() {
  awk -v points="$points" 'BEGIN {
    printf "TRH\t%d\tTRUE\t255\t=\"ACTIVE LOG\"\r\n", points
    for (i = 0; i < points; ++i) {
      second = i * 30
      printf "TRP\tD\tWGS84\t%.8f\t%.8f\t2002/11/15 %02d:%02d:%02d\t%s\t%.1f\t1E+25\t0\r\n",
             35.6 + i * 0.000137, 139.2 + i * 0.000219, 8 + second / 3600, second / 60 % 60, second % 60,
             (i == 0 ? "TRUE" : "FALSE"), 200 + i * 0.37
    }
  }'
}

# run_cli NAME ARGUMENT...: runs walrim-cli with its trace in NAME.trace; NAME.time gets its wall, user and system
# seconds.
run_cli() {
  local name=$1 TIMEFORMAT='%3R %3U %3S'
  shift
  { time "$cli" "$@" --quiet --trace "$work/$name.trace" 2>"$work/$name.errors"; } 2>"$work/$name.time" ||
    fail "walrim-cli $1 failed: $(cat "$work/$name.errors")"
}

# summarise NAME SETTLING FIRST_ID FIRST_DATA: reads NAME.trace from the sent frame with this id and these data bytes
# until the port is closed, and prints the sums; SETTLING (yes or no) tells whether bursts settle. Frames are traced as
# they went over the line, doubled bytes included.
summarise() {
  awk -F '\t' -v baud="$baud" -v settling="$2" -v first_id="$3" -v first_data="$4" '
    # The settle time of the burst that answered the last sent frame: 20 ms, or as long as the burst took to begin.
    function settle_of(sent_bytes, begin) {
      if (settling == "no") return 0
      begin = (sent_bytes + 1) * 10 / baud
      return begin > 0.020 ? begin : 0.020
    }
    # What is counted when the transfer is over is the last one that was begun so, not an identification before it.
    ended { next }
    $2 == "TX" && $3 == first_id && !begun && index(substr($5, 10), first_data) == 1 { begun = 1; start = $1 }
    !begun { next }
    $2 == "--" && $3 == "port closed" { ended = 1; finish = $1; next }
    $2 == "--" || $6 != "" { print "link.sh: the line was disturbed: " $0 >"/dev/stderr"; bad = 1; exit }
    { bytes = (length($5) + 1) / 3; line_bytes += bytes; frames++ }
    $2 == "TX" { sent_bytes = bytes; answered = 0 }
    $2 == "RX" && !answered {
      answered = 1
      bursts++
      settle = settle_of(sent_bytes)
      settles += settle
      if (settle > 0.020) longer++
    }
    END {
      if (bad || !ended) exit 1
      wire = line_bytes * 10 / baud
      printf "wire:      %8.3f s  %d frames, %d bytes, 10 bits a byte at %d baud\n", wire, frames, line_bytes, baud
      if (settling == "yes") {
        printf "settling:  %8.3f s  %d bursts, %s\n", settles, bursts,
               longer ? longer " of them longer than 20 ms" : "20 ms each"
      }
      printf "sum:       %8.3f s\n", wire + settles
      printf "measured:  %8.3f s\n", finish - start
      printf "ratio:     %8.4f\n", (finish - start) / (wire + settles)
    }' "$work/$1.trace" || fail "no whole transfer in the trace of the $1"
}

# cpu_share NAME: processor time of a walrim-cli in percent of its wall time, and the seconds.
cpu_share() { awk '{ printf "%.2f %.3f %.3f\n", 100 * ($2 + $3) / $1, $2 + $3, $1 }' "$work/$1.time"; }

# report NAME SETTLING FIRST_ID FIRST_DATA: prints a transfer's sums, its ratio and the processor's share.
report() {
  local name=$1 share cpu wall
  summarise "$@" | tee "$work/$name.sums"
  read -r share cpu wall < <(cpu_share "$name")
  echo "processor: $share % of one core ($cpu s in the $wall s that walrim-cli ran)"
}

ratio_of() { awk '/^ratio:/ { print $2 }' "$work/$1.sums"; }

# judge WHAT VALUE BOUND
judge() {
  if awk "BEGIN { exit !($2 <= $3) }"; then
    echo "ok: $1 $2, bound $3"
  else
    echo "BROKEN: $1 $2, bound $3"
    broken=yes
  fi
}

write_log >"$work/log.grc"
mkfifo "$work/path"
"$receiver" --model eTrex --baud "$baud" --memory "$work/log.grc" >"$work/path" &
receiver_pid=$!
read -r port <"$work/path" || fail "walrim-receiver did not start"

echo "Download of a track log of $points points"
echo "(assumed: the receiver answers at once, so that a burst begins when the frame before it and its own first byte"
echo "have passed the line; a burst settles for as long as it took to begin, 20 ms at least)"
run_cli download download --port "$port" --kinds track -o "$work/held.grc" --plain-link
held=$(grep -c '^TRP' "$work/held.grc" || true)
[[ $held -eq $points ]] || fail "$held points came instead of $points"
report download yes 10 "06 00"

broken=no
judge "measured / sum" "$(ratio_of download)" "$ratio_bound"
read -r share _ < <(cpu_share download)
judge "processor %" "$share" "$cpu_bound"

echo
echo "The same download as the receiver chooses, on the checked link, which knows no settling"
run_cli checked-download download --port "$port" --kinds track -o "$work/checked.grc"
cmp "$work/held.grc" "$work/checked.grc" || fail "the checked link brought something else"
report checked-download no 10 "06 00"
judge "measured / wire" "$(ratio_of checked-download)" "$checked_bound"
read -r share _ < <(cpu_share checked-download)
judge "processor %" "$share" "$cpu_bound"

echo
echo "Upload of the same log as the receiver chooses, on the checked link"
run_cli checked-upload upload --port "$port" "$work/log.grc"
report checked-upload no 27 ""
judge "measured / wire" "$(ratio_of checked-upload)" "$checked_bound"
read -r share _ < <(cpu_share checked-upload)
judge "processor %" "$share" "$cpu_bound"

if [[ $upload == yes ]]; then
  echo
  echo "Upload of the same log on the plain link, for information"
  run_cli upload upload --port "$port" "$work/log.grc" --plain-link
  report upload yes 27 ""
fi
[[ $broken == no ]]
