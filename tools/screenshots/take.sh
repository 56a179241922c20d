#!/usr/bin/env bash
# Takes every panel picture of the documentation again, in the lab against emulated units,
# and the search window's from the default lab.
#
#   tools/screenshots/take.sh [--build-dir DIR] [--out DIR] [--only NAME]... [--scale F]
#                             [--clock "YYYY-MM-DD hh:mm:ss"]
#
# Builds the `screenshots` target in DIR (default build/), runs each program as the command
# of lab/lab.sh on a virtual display with the unit it needs, and writes the pictures to the
# --out folder (default: a new folder under /tmp, printed at the end; `--out docs` renews
# the README's pictures). --only takes a program's name (rvx3210_shots, rvx5370_screenshot,
# ..., or search) and may be repeated. --scale runs the programs with Qt's QT_SCALE_FACTOR
# (as on a high-DPI screen) and names the pictures NAME-Fx.png. --clock runs each program with
# the wall clock stopped at that time (libfaketime, package faketime; Qt's timers keep the
# monotonic clock), so a picture showing the time (the RVX5350's SET clock) is the same in every
# run; not with a sanitizer build. Needs root for the namespaces, as the lab does.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
build_dir="$root/build"
out=""
only=()
scale=""
clock=""

while [ "$#" -gt 0 ]; do
    case "$1" in
    --build-dir) build_dir=${2:?}; shift 2 ;;
    --out) out=${2:?}; shift 2 ;;
    --only) only+=("${2:?}"); shift 2 ;;
    --scale) scale=${2:?}; shift 2 ;;
    --clock) clock=${2:?}; shift 2 ;;
    *) sed -n '5,18p' "${BASH_SOURCE[0]}" | sed 's/^# \{0,1\}//' >&2; exit 2 ;;
    esac
done
[ -n "$out" ] || out=$(mktemp -d /tmp/kova-screenshots.XXXXXX)
mkdir -p "$out"
out=$(cd "$out" && pwd)
final_out=$out
if [ -n "$scale" ]; then
    export QT_SCALE_FACTOR=$scale
    # Room for the largest panel at the scale on the virtual display.
    export LAB_XVFB_SCREEN=3840x2160x24
    out=$(mktemp -d /tmp/kova-screenshots-scaled.XXXXXX)
fi
build_dir=$(cd "$build_dir" && pwd)

# Program, then the unit it opens. Each program's head says what it sets up.
shots=(
    "rvx3210_shots type=0x21,name=Desk,his=auto"
    "rvx3410_screenshot type=0x27,name=Cam"
    "rvx3220_screenshot type=0x22,name=Desk"
    "rvx5310_screenshot type=0x4f,name=Control"
    "rvx5370_screenshot type=0x51,name=Stage"
    "rvx5350_screenshot type=0x55,name=Hall"
    "rvx5120_screenshot type=0x21,name=Desk"
    "live_screenshot type=0x4f,name=Control"
)

wanted() {
    [ "${#only[@]}" = 0 ] && return 0
    local name
    for name in "${only[@]}"; do
        [ "$name" = "$1" ] && return 0
    done
    return 1
}

cmake --build "$build_dir" --target screenshots kova kova-emulator -j"$(nproc)" >/dev/null

wrap=()
if [ -n "$clock" ]; then
    faketime_lib=$(ls /usr/lib/*/faketime/libfaketime.so.1 2>/dev/null | head -n 1)
    if [ -z "$faketime_lib" ]; then
        echo "take.sh: --clock needs libfaketime (apt install faketime)" >&2
        exit 2
    fi
    wrap=(env FAKETIME="$clock" FAKETIME_DONT_FAKE_MONOTONIC=1 LD_PRELOAD="$faketime_lib")
fi

# The pictures are for reading, not for finding leaks in Qt's platform plugins.
export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=0}
failed=0
for entry in "${shots[@]}"; do
    read -r program unit <<<"$entry"
    wanted "$program" || continue
    echo "== $program"
    if ! "$root/lab/lab.sh" --emulator "$build_dir/emulator/kova-emulator" --xvfb --unit "$unit" \
        -- "${wrap[@]}" "$build_dir/tools/screenshots/$program" "$out"; then
        echo "take.sh: $program failed" >&2
        failed=1
    fi
done
if wanted search; then
    echo "== search"
    "$root/scripts/kova-lab.sh" --no-build --build-dir "$build_dir" --headless \
        --screenshot "$out/search-window.png" || failed=1
fi

if [ -n "$scale" ]; then
    for picture in "$out"/*.png; do
        [ -e "$picture" ] || continue
        name=$(basename "$picture" .png)
        mv "$picture" "$final_out/$name-${scale}x.png"
    done
    rmdir "$out" 2>/dev/null || true
    out=$final_out
fi
echo "pictures in $out"
exit "$failed"
