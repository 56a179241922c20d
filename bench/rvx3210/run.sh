#!/bin/sh
# Runs the RVX3210 panel benchmark in a private network namespace (loopback only).
# usage: bench/rvx3210/run.sh [build-dir]
set -eu
here=$(cd "$(dirname "$0")" && pwd)
build=${1:-$here/../../build}
QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen} exec "$here/../../tests/netns-run.sh" "$build/bench/rvx3210/bench_rvx3210"
