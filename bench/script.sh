#!/usr/bin/env bash
# How long the map-server script of a full data set takes, held against its WPT+ text in one run: both are written straight
# from the records, and a script is three times as long. Builds nothing. Exits 1 when the bound is broken.
#   bench/script.sh [BUILD_DIR]
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${1:-$top/build/everyday}
bound=6.0

ratios=$("$build/bench/formats/walrim_formats_bench" compare)
echo "$ratios"
awk -v bound="$bound" '{ seen = 1; if ($NF > bound) broken = 1 } END { exit !seen || broken }' <<<"$ratios"
