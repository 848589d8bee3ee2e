#!/usr/bin/env bash
# The longest time that the window stands still during a transfer. Takes some seconds and builds nothing. Exits 1 when
# the bound is broken.
#   bench/stall.sh [BUILD_DIR]
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${1:-$top/build/everyday}
bound_ms=33
if [[ -z ${DISPLAY:-}${WAYLAND_DISPLAY:-} ]]; then export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}; fi

longest_ms=$("$build/bench/window/walrim_stall" 2>/dev/null)
echo "longest gap between two turns of the event loop: $longest_ms ms (bound $bound_ms ms)"
awk -v longest="$longest_ms" -v bound="$bound_ms" 'BEGIN { exit longest > bound }'
