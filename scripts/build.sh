#!/bin/sh
# Configures and builds KOVA. Usage: scripts/build.sh [build-dir] [extra cmake args...]
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
dir=${1:-"$root/build"}
[ "$#" -gt 0 ] && shift
cmake -S "$root" -B "$dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@" >/dev/null
cmake --build "$dir" -j"$(nproc)"
