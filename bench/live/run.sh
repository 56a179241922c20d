#!/bin/sh
# Runs the tally benchmark on a release build, in a private network namespace (loopback only).
# Usage: bench/live/run.sh [build-dir]   (root, like the tests)
set -eu
root=$(cd "$(dirname "$0")/../.." && pwd)
dir=${1:-"$root/build-rel"}
cmake -S "$root" -B "$dir" -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$dir" -j"$(nproc)" --target bench_tsltally >/dev/null
"$root/tests/netns-run.sh" "$dir/bench/live/bench_tsltally"
