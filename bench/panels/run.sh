#!/bin/sh
# Runs the panel benchmark for each panel named (default: every panel with buses, back to back
# so their figures are comparable) in a private network namespace (loopback only), or with
# --lab across the lab's veth pair (lab/lab.sh, root), the stand-in unit in the unit namespace.
# --restyle runs only the paths that restyle keys (no CPU figures); compare.sh uses it.
# usage: bench/panels/run.sh [--lab | --restyle] [build-dir [panel...]]
set -eu
here=$(cd "$(dirname "$0")" && pwd)
lab=0
mode=
case "${1:-}" in
--lab) lab=1; shift ;;
--restyle) mode=restyle; shift ;;
esac
build=${1:-$here/../../build}
[ $# -gt 0 ] && shift
[ $# -gt 0 ] || set -- rvx3210 rvx3210s rvx3210p rvx3210-2021 rvx3410 rvx3220 rvx5310 rvx5370 rvx5350
bench=$build/bench/panels/bench_panels
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
for panel in "$@"; do
    if [ "$lab" = 1 ] && [ "$panel" = rvx3220 ]; then
        continue # it reports no state: loopback only
    fi
    echo "## $panel ($([ "$lab" = 1 ] && echo lab || echo loopback)), $(date -u +%H:%M:%S) UTC, load $(cut -d' ' -f1-3 /proc/loadavg)"
    echo
    if [ "$lab" = 1 ]; then
        # One emulated unit keeps the lab's usual shape; the bench's stand-in lives beside it on
        # addresses of its own, so the emulator never answers the panel. A lab of its own for
        # each panel: the stand-in's addresses are added afresh.
        "$here/../../lab/lab.sh" --emulator "$build/emulator/kova-emulator" \
            --unit "type=0x21,name=Bystander" -- "$bench" "$panel" lab
    else
        "$here/../../tests/netns-run.sh" "$bench" "$panel" $mode
    fi
    echo
done
