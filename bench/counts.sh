#!/usr/bin/env bash
# Counts the instructions of reading and of writing a full data set in every format, as callgrind sees them in walrim-cli
# convert, and prints them as a table in millions. A count does not depend on how busy the machine is. Builds nothing.
#   bench/counts.sh [BUILD_DIR]
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${1:-$top/build/everyday}
cli=$build/src/cli/walrim-cli
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

convert() { "$cli" convert --quiet --force "$@" 2>/dev/null; }

# Millions of instructions in a function and what it calls.
millions_in() {
  awk -v name="$1" 'index($0, name) { gsub(",", "", $1); printf "%.1f", $1 / 1e6; found = 1; exit }
                    END { if (!found) exit 1 }' "$work/costs"
}

# count LABEL INPUT ARGUMENTS...
count() {
  local label=$1 input=$2
  shift 2
  valgrind --tool=callgrind --callgrind-out-file="$work/profile" "$cli" convert --quiet --force "$@" "$input" \
    -o "$work/out" >/dev/null 2>&1
  callgrind_annotate --inclusive=yes --threshold=100 "$work/profile" >"$work/costs" 2>/dev/null
  echo "| $label | $(millions_in 'walrim::ImportCommands::ImportFile(') | $(millions_in 'walrim::ExportCommands::ExportTo(') |"
}

"$build/bench/data/walrim_data_bench" write-full "$work/set"
for type in grc txt mps; do
  convert --encoding utf8 --type $type "$work/set" -o "$work/utf8.$type"
  convert --encoding sjis --type $type "$work/set" -o "$work/sjis.$type"
  convert --encoding utf8 --type $type --datum Tokyo --degree DMS "$work/set" -o "$work/tokyo.$type"
done

echo "| convert | read | write |"
echo "|---|---|---|"
count "grc to grc, UTF-8" "$work/utf8.grc" --encoding utf8 --type grc
count "grc to grc, Shift-JIS" "$work/sjis.grc" --type grc
count "grc to grc, UTF-8, Tokyo and DMS" "$work/tokyo.grc" --encoding utf8 --type grc --datum Tokyo --degree DMS
count "txt to txt, UTF-8" "$work/utf8.txt" --encoding utf8 --type txt
count "txt to txt, Shift-JIS" "$work/sjis.txt" --type txt
count "txt to txt, UTF-8, Tokyo and DMS" "$work/tokyo.txt" --encoding utf8 --type txt --datum Tokyo --degree DMS
count "mps to mps, UTF-8" "$work/utf8.mps" --encoding utf8 --type mps
count "mps to mps, Shift-JIS" "$work/sjis.mps" --type mps
count "mps to mps, UTF-8, Tokyo" "$work/tokyo.mps" --encoding utf8 --type mps --datum Tokyo
