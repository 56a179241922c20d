#!/bin/sh
# Runs the panel benchmark for each panel named (default: rvx3210 then rvx5310, back to back so
# their figures are comparable) in a private network namespace (loopback only), or with --lab
# across the lab's veth pair (lab/lab.sh, root), the stand-in unit in the unit namespace.
# usage: bench/panels/run.sh [--lab] [build-dir [panel...]]
set -eu
here=$(cd "$(dirname "$0")" && pwd)
lab=0
if [ "${1:-}" = --lab ]; then
    lab=1
    shift
fi
build=${1:-$here/../../build}
[ $# -gt 0 ] && shift
[ $# -gt 0 ] || set -- rvx3210 rvx5310
bench=$build/bench/panels/bench_panels
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
for panel in "$@"; do
    echo "## $panel ($([ "$lab" = 1 ] && echo lab || echo loopback)), $(date -u +%H:%M:%S) UTC, load $(cut -d' ' -f1-3 /proc/loadavg)"
    echo
    if [ "$lab" = 1 ]; then
        # One emulated unit keeps the lab's usual shape; the bench's stand-in lives beside it on
        # addresses of its own, so the emulator never answers the panel. A lab of its own for
        # each panel: the stand-in's addresses are added afresh.
        "$here/../../lab/lab.sh" --emulator "$build/emulator/kova-emulator" \
            --unit "type=0x21,name=Bystander" -- "$bench" "$panel" lab
    else
        "$here/../../tests/netns-run.sh" "$bench" "$panel"
    fi
    echo
done
