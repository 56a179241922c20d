#!/bin/sh
# Runs the RVX3210 panel benchmark in a private network namespace (loopback only), or with
# --lab across the lab's veth pair (lab/lab.sh, root), the stand-in unit in the unit namespace.
# usage: bench/rvx3210/run.sh [--lab] [build-dir]
set -eu
here=$(cd "$(dirname "$0")" && pwd)
lab=0
if [ "${1:-}" = --lab ]; then
    lab=1
    shift
fi
build=${1:-$here/../../build}
bench=$build/bench/rvx3210/bench_rvx3210
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
if [ "$lab" = 1 ]; then
    # One emulated unit keeps the lab's usual shape; the bench's stand-in lives beside it on
    # addresses of its own, so the emulator never answers the panel.
    exec "$here/../../lab/lab.sh" --emulator "$build/emulator/kova-emulator" \
        --unit "type=0x21,name=Bystander" -- "$bench" lab
fi
exec "$here/../../tests/netns-run.sh" "$bench"
