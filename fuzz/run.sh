#!/bin/sh
# Builds the fuzz targets with clang (libFuzzer, ASan, UBSan), writes their seed corpus from the
# frames the tests write out, and runs them, each inside a private network namespace
# (tests/netns-run.sh: root, like the tests), since the link and panel targets bind port 7000 and the OSC target its own port.
#
#   fuzz/run.sh --smoke [SECONDS]          every target for SECONDS (12) on its seeds: the CI step
#   fuzz/run.sh [--time S] [--jobs N] [TARGET...]
#                                          long runs (S seconds each, 600 by default), growing a
#                                          kept corpus in BUILD/fuzz/corpus/TARGET
#   fuzz/run.sh --repro TARGET FILE...     runs TARGET once on each FILE (a finding) and stops
#
# BUILD is $KOVA_FUZZ_BUILD or build-fuzz beside the sources. Findings land in
# BUILD/fuzz/findings/TARGET/ (crash-*, leak-*, timeout-*); a run with a finding exits non-zero.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
build=${KOVA_FUZZ_BUILD:-"$root/build-fuzz"}
all="fuzz_discovery fuzz_rvx3210_link fuzz_rvx5all_link fuzz_rvx3220_link fuzz_panel_fanout fuzz_osc fuzz_hub fuzz_emulator"

mode=long
seconds=600
jobs=1
case "${1:-}" in
--smoke) mode=smoke; seconds=${2:-12}; [ "$#" -ge 2 ] && shift; shift ;;
--repro) mode=repro; shift ;;
esac
while [ "$mode" = long ] && [ "$#" -gt 0 ]; do
    case "$1" in
    --time) seconds=${2:?}; shift 2 ;;
    --jobs) jobs=${2:?}; shift 2 ;;
    *) break ;;
    esac
done

if [ "$mode" = repro ]; then
    target=${1:?usage: fuzz/run.sh --repro TARGET FILE...}
    shift
    [ "$#" -ge 1 ] || { echo "fuzz/run.sh: --repro needs at least one file" >&2; exit 2; }
    files=""
    for f in "$@"; do files="$files $(cd "$(dirname "$f")" && pwd)/$(basename "$f")"; done
    set -- $target
else
    files=""
    [ "$#" -gt 0 ] || set -- $all
fi

cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ \
    -DKOVA_SANITIZE=ON -DKOVA_FUZZ=ON -DKOVA_BUILD_TESTS=OFF >/dev/null
cmake --build "$build" -j"$(nproc)" --target fuzz_seeds "$@" >/dev/null

# Our code's reports end the run. Leaks are checked per input, where libFuzzer looks for an
# input that leaves memory behind; not at exit, since the targets keep their application and
# panels for the whole run and never tear them down.
export ASAN_OPTIONS="abort_on_error=0:detect_leaks=1:leak_check_at_exit=0"
export LSAN_OPTIONS="suppressions=$root/tests/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES="kova.*.debug=false"

out="$build/fuzz"
if [ "$mode" = repro ]; then
    exec "$root/tests/netns-run.sh" "$out/$1" -runs=1 $files
fi

seeds="$out/seeds"
rm -rf "$seeds"
"$out/fuzz_seeds" "$root/tests" "$seeds"

# libFuzzer writes the logs of its parallel jobs (fuzz-N.log) into the working directory.
cd "$out"
status=0
for target in "$@"; do
    findings="$out/findings/$target"
    mkdir -p "$findings"
    if [ "$mode" = smoke ]; then
        corpus=$(mktemp -d)
        flags="-max_total_time=$seconds"
    else
        corpus="$out/corpus/$target"
        mkdir -p "$corpus"
        flags="-max_total_time=$seconds"
        # Parallel jobs log to fuzz-N.log in $out, one file each.
        [ "$jobs" -gt 1 ] && flags="$flags -jobs=$jobs -workers=$jobs"
    fi
    echo "== $target: ${seconds}s"
    # -rss_limit_mb: the panel target holds a whole offscreen application under ASan.
    if ! "$root/tests/netns-run.sh" "$out/$target" $flags -rss_limit_mb=4096 -timeout=10 \
        -print_final_stats=1 -artifact_prefix="$findings/" "$corpus" "$seeds/$target" \
        >"$out/$target.log" 2>&1; then
        status=1
        echo "$target: FINDING (log: $out/$target.log, inputs: $findings/)"
        tail -n 40 "$out/$target.log"
    else
        grep -E '^stat::number_of_executed_units|^#[0-9]+ +DONE' "$out/$target.log" | sed "s/^/   /"
    fi
    [ "$mode" = smoke ] && rm -rf "$corpus"
done
[ "$status" = 0 ] && echo "fuzz: every target ran clean"
exit "$status"
