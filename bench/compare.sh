#!/bin/sh
# Compares reading the standard file of a full data set with sorting the same bytes, measured alternately in one run.
# The read is from the file's bytes to the filled data set, in a process that was just started; the sort is the whole
# process. Builds nothing.
#   bench/compare.sh [BUILD_DIR] [ROUNDS]
set -eu

root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build/everyday}
rounds=${2:-15}
bench=$build/bench/data/walrim_data_bench
if [ ! -x "$bench" ]; then
  echo "compare.sh: $bench is not there; build walrim_data_bench first" >&2
  exit 1
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
file=$work/full.grc
"$bench" write-full "$file"

i=0
while [ "$i" -lt "$rounds" ]; do
  "$bench" read "$file" >>"$work/read"
  start=$(date +%s%N)
  LC_ALL=C.UTF-8 sort "$file" >/dev/null
  end=$(date +%s%N)
  awk "BEGIN { printf \"%.3f\\n\", ($end - $start) / 1000000 }" >>"$work/sort"
  i=$((i + 1))
done

read_ms=$(sort -n "$work/read" | head -n 1)
sort_ms=$(sort -n "$work/sort" | head -n 1)
echo "file: $(wc -c <"$file") bytes, $(wc -l <"$file") lines; best of $rounds rounds each"
echo "read: $read_ms ms"
echo "sort: $sort_ms ms"
awk "BEGIN { printf \"read / sort: %.2f\\n\", $read_ms / $sort_ms }"
