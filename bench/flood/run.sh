#!/bin/sh
# Runs the flood benchmark on a release build, in a private network namespace (loopback only):
# 50,000 datagrams a second for 10 s at an open RVX3210 panel (well-formed, then hostile) and
# at the search window.  Usage: bench/flood/run.sh [build-dir]   (root, like the tests)
set -eu
root=$(cd "$(dirname "$0")/../.." && pwd)
dir=${1:-"$root/build-rel"}
cmake -S "$root" -B "$dir" -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$dir" -j"$(nproc)" --target bench_flood >/dev/null
export QT_LOGGING_RULES="kova.*.debug=false" QT_QPA_PLATFORM=offscreen
bench="$dir/bench/flood/bench_flood"
for profile in valid hostile; do
    "$root/tests/netns-run.sh" "$bench" panel 50000 10 "$profile"
    echo
done
"$root/tests/netns-run.sh" "$bench" search 50000 10
