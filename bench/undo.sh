#!/usr/bin/env bash
# How long it takes to undo deletions of 30000 track points, held against reading them in one run. Builds nothing. Exits
# 1 where one takes more than half as long as the reading, or more than 50 ms.
#   bench/undo.sh [BUILD_DIR]
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${1:-$top/build/everyday}

measured=$("$build/bench/data/walrim_undo_times")
echo "$measured"
awk -v most_ms=50 -v most_ratio=0.5 '
  /^undo of / { ++seen; ms = $0; sub(/ ms;.*/, "", ms); sub(/.*: /, "", ms); if (ms > most_ms || $NF > most_ratio) broken = 1 }
  END { exit seen != 4 || broken }' <<<"$measured"
