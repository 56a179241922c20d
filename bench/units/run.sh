#!/bin/sh
# Runs the several-units benchmark in a private network namespace (loopback only).
# usage: bench/units/run.sh [build-dir [seconds]]
set -eu
here=$(cd "$(dirname "$0")" && pwd)
build=${1:-$here/../../build}
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
echo "## bench_units, $(date -u +%H:%M:%S) UTC, load $(cut -d' ' -f1-3 /proc/loadavg)"
exec "$here/../../tests/netns-run.sh" sh -c '
    for i in $(seq 10 17) $(seq 100 107) 99; do ip addr add 127.0.0.$i/8 dev lo 2>/dev/null || true; done
    exec "$@"' bench "$build/bench/units/bench_units" ${2:-5}
