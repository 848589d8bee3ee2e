#!/usr/bin/env bash
# What a frame of the map costs while a log of 30000 points is moved and zoomed. Builds nothing. Exits 1 when the slowest
# frame takes longer than half a screen's refresh.
#   bench/map.sh [BUILD_DIR]
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${1:-$top/build/everyday}
bound_ms=8

measured=$("$build/bench/window/walrim_map" 2>/dev/null)
echo "$measured (bound $bound_ms ms)"
awk -v bound="$bound_ms" '/^slowest / { seen = 1; broken = $2 > bound } END { exit !seen || broken }' <<<"$measured"
