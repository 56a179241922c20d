#!/bin/sh
# Runs the kova-hub benchmark on a release build in a private network namespace (loopback only):
# the bench starts mosquitto and kova-hub there and plays the 32 units itself on 127.0.0.10-41.
# usage: bench/hub/run.sh [build-dir [quiet-s [changes-s [command-s [rate]]]]]   (root, like the tests)
# The build dir defaults to build-rel, configured RelWithDebInfo if it does not exist yet.
set -eu
root=$(cd "$(dirname "$0")/../.." && pwd)
dir=${1:-"$root/build-rel"}
[ $# -gt 0 ] && shift
if [ ! -f "$dir/CMakeCache.txt" ]; then
    cmake -S "$root" -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
fi
cmake --build "$dir" -j2 --target kova-hub bench_hub >/dev/null
echo "## bench_hub, $(date -u +%Y-%m-%d\ %H:%M:%S) UTC, load $(cut -d' ' -f1-3 /proc/loadavg)," \
    "$(grep -c ^processor /proc/cpuinfo) cores, $(sed -n 's/^model name\t: //p' /proc/cpuinfo | head -1)"
exec "$root/tests/netns-run.sh" sh -c '
    for i in $(seq 10 41); do ip addr add 127.0.0.$i/8 dev lo; done
    exec "$@"' bench "$dir/bench/hub/bench_hub" "$dir/src/hub/kova-hub" "$@"
