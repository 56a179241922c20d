#!/bin/sh
# Runs the search benchmarks on a release build: start-up to the search frame on the wire
# (private namespace, loopback), and 1024 emulated units answering at once (lab), with this
# machine's socket limit and with the limit capped at Debian's default and below it.
# Usage: bench/search/run.sh [build-dir]   (root, like the lab)
set -eu
root=$(cd "$(dirname "$0")/../.." && pwd)
dir=${1:-"$root/build-rel"}
cmake -S "$root" -B "$dir" -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$dir" -j"$(nproc)" --target kova bench_search rmemcap kova-emulator >/dev/null
export QT_LOGGING_RULES="kova.*.debug=false" QT_QPA_PLATFORM=offscreen
bench="$dir/bench/search/bench_search"
"$root/tests/netns-run.sh" "$bench" startup 30
for mode in burst burst burst burst burst burst-per-reply; do
    "$root/lab/lab.sh" --emulator "$dir/emulator/kova-emulator" --count 1024 --type 0x21 -- "$bench" "$mode" 1024
done
for cap in 212992 212992 212992 212992 212992 65536 65536 65536; do
    "$root/lab/lab.sh" --emulator "$dir/emulator/kova-emulator" --count 1024 --type 0x21 -- \
        env LD_PRELOAD="$dir/bench/search/librmemcap.so" KOVA_RMEM_MAX="$cap" "$bench" burst 1024 || true
done
