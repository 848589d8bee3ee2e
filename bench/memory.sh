#!/usr/bin/env bash
# How much memory walrim-cli convert takes at its peak for a full data set in every format, over what it takes for a file
# of one waypoint, held against the size of the larger of the two files, the one read and the one written. Builds nothing.
# Exits 1 when the bound is broken.
#   bench/memory.sh [BUILD_DIR]
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${1:-$top/build/everyday}
bound=1.2
cli=$build/src/cli/walrim-cli
peak=$build/bench/data/walrim_peak_memory
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

convert() { "$cli" convert --quiet --force "$@" 2>/dev/null; }
# peak_of INPUT ARGUMENTS...: the most of three runs.
peak_of() {
  local input=$1 i
  shift
  for i in 1 2 3; do
    "$peak" "$cli" convert --quiet --force "$@" "$input" -o "$work/out" 2>/dev/null
  done | sort -n | tail -n 1
}

# The second time through, texts are as the program writes them.
"$build/bench/data/walrim_data_bench" write-full "$work/set"
printf 'WPT\tD\tWGS84\tTAKAO\t35.5\t139.25\t高尾山\r\n' >"$work/one.set"
for encoding in utf8 sjis; do
  for type in grc txt mps; do
    convert --encoding $encoding --type $type "$work/set" -o "$work/$encoding.$type"
    convert --encoding $encoding --type $type "$work/one.set" -o "$work/one.$encoding.$type"
  done
done

broken=0
# The full set's file of a format and encoding, read and written as another one.
ratio() {
  local from=$1 to=$2 encoding=$3 input=$work/$3.$1 one=$work/one.$3.$1
  local full_peak tiny_peak size
  full_peak=$(peak_of "$input" --encoding "$encoding" --type "$to")
  size=$(stat -c %s "$input")
  tiny_peak=$(peak_of "$one" --encoding "$encoding" --type "$to")
  awk -v label="$encoding $from to $to" -v full="$full_peak" -v tiny="$tiny_peak" -v in_size="$size" \
    -v out_size="$(stat -c %s "$work/$encoding.$to")" -v bound="$bound" 'BEGIN {
      size = in_size > out_size ? in_size : out_size
      ratio = (full - tiny) / size
      printf "%s: peak %.1f MB, of one waypoint %.1f MB, file %.1f MB, ratio %.2f\n", label, full / 1e6, tiny / 1e6,
             size / 1e6, ratio
      exit ratio > bound }' || broken=1
}
for encoding in utf8 sjis; do
  for from in grc txt mps; do
    for to in grc txt mps; do ratio $from $to $encoding; done
  done
done
exit $broken
