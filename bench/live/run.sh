#!/bin/sh
# Runs the live benchmarks on a release build, in a private network namespace (loopback only):
# the tally's costs, then the OSC remote and the live coordinator with one panel open.
# Usage: bench/live/run.sh [build-dir]   (root, like the tests)
set -eu
root=$(cd "$(dirname "$0")/../.." && pwd)
dir=${1:-"$root/build-rel"}
cmake -S "$root" -B "$dir" -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$dir" -j"$(nproc)" --target bench_tsltally bench_live >/dev/null
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
"$root/tests/netns-run.sh" "$dir/bench/live/bench_tsltally"
echo
echo "## OSC remote and the live coordinator, $(date -u +%H:%M:%S) UTC, load $(cut -d' ' -f1-3 /proc/loadavg)"
"$root/tests/netns-run.sh" "$dir/bench/live/bench_live"
