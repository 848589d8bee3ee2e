#!/usr/bin/env bash
# How long a full data set takes to be written as GPX and read again, held against the standard file in one run. Builds
# nothing. Exits 1 when the bound is broken.
#   bench/gpx.sh [BUILD_DIR]
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${1:-$top/build/everyday}
bound=1.5

measured=$("$build/bench/formats/walrim_formats_bench" gpx)
echo "$measured"
awk -v bound="$bound" '/^GPX \/ standard file: / { seen = 1; broken = $NF > bound } END { exit !seen || broken }' \
  <<<"$measured"
