#!/usr/bin/env bash
# How long walrim takes to its first frame, and to the frame with all its contents, held against an empty Qt window on
# the same desktop. The first frame is the window itself, which its contents fill in the next turn of the event loop; each
# has its bound. All start in turn, and the quickest of many starts are compared: what else the machine does only ever
# slows one down. Builds nothing. Exits 1 when a bound is broken.
#   bench/startup.sh [BUILD_DIR]
# Without a display both start on one of their own (Xvfb); QT_QPA_PLATFORM chooses another platform.
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${1:-$top/build/everyday}
empty=$build/bench/window/empty_window
walrim=$build/bench/window/walrim_start
starts=15
bound=1.3
complete_bound=2.0

for program in "$empty" "$walrim"; do
  [[ -x $program ]] || { echo "startup.sh: $program is not there" >&2; exit 1; }
done
if [[ -z ${DISPLAY:-}${WAYLAND_DISPLAY:-}${QT_QPA_PLATFORM:-} ]]; then
  exec xvfb-run --auto-servernum --server-args="-screen 0 1280x900x24" "$0" "$build"
fi
export LC_ALL=C.UTF-8 TIMEFORMAT=%3R
XDG_CONFIG_HOME=$(mktemp -d)
XDG_STATE_HOME=$XDG_CONFIG_HOME/state
export XDG_CONFIG_HOME XDG_STATE_HOME
trap 'rm -rf "$XDG_CONFIG_HOME"' EXIT

seconds_of() { { time "$@" >/dev/null 2>&1; } 2>&1; }
quickest() { sort -n | head -n 1; }

empty_times=() walrim_times=() complete_times=()
seconds_of "$empty" >/dev/null
seconds_of "$walrim" >/dev/null
for ((i = 0; i < starts; ++i)); do
  empty_times+=("$(seconds_of "$empty")")
  walrim_times+=("$(seconds_of "$walrim")")
  complete_times+=("$(seconds_of "$walrim" --complete)")
done
empty_best=$(printf '%s\n' "${empty_times[@]}" | quickest)
walrim_best=$(printf '%s\n' "${walrim_times[@]}" | quickest)
complete_best=$(printf '%s\n' "${complete_times[@]}" | quickest)
awk -v empty="$empty_best" -v walrim="$walrim_best" -v complete="$complete_best" -v bound="$bound" \
    -v complete_bound="$complete_bound" 'BEGIN {
  ratio = walrim / empty
  printf "empty window %.3f s, walrim %.3f s, ratio %.2f (bound %.2f)\n", empty, walrim, ratio, bound
  printf "walrim with all contents %.3f s, ratio %.2f (bound %.2f)\n", complete, complete / empty, complete_bound
  exit ratio > bound || complete / empty > complete_bound
}'
