#!/usr/bin/env bash
# Takes the panel pictures twice, before and after, and compares them pixel for pixel: before
# from a git revision's build, after from the working tree's build, at each scale asked for.
#
#   tools/screenshots/compare.sh [--rev REV | --before-build DIR] [--after-build DIR]
#                                [--scales "1 2"] [--out DIR]
#
# REV (default main) is exported with git archive and built in DIR/before-tree with the
# `screenshots`, kova and kova-emulator targets; --before-build takes such a build instead.
# The after build defaults to build/. Every program of take.sh but the search window's is run
# (take.sh --only ...), with the wall clock stopped (take.sh --clock), at QT_SCALE_FACTOR 1
# and 2 unless --scales says otherwise; the pictures land in DIR/before-xS and DIR/after-xS
# (default DIR: a new folder under /tmp). Prints, per picture, the number of pixels that differ
# (ImageMagick's compare -metric AE, no fuzz); exits 1 when any differs or is missing on one
# side. Needs root, as the lab does; release builds (a sanitizer build cannot take --clock).
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
rev=main
before_build=""
after_build="$root/build"
scales="1 2"
out=""
while [ "$#" -gt 0 ]; do
    case "$1" in
    --rev) rev=${2:?}; shift 2 ;;
    --before-build) before_build=${2:?}; shift 2 ;;
    --after-build) after_build=${2:?}; shift 2 ;;
    --scales) scales=${2:?}; shift 2 ;;
    --out) out=${2:?}; shift 2 ;;
    *) sed -n '5,16p' "${BASH_SOURCE[0]}" | sed 's/^# \{0,1\}//' >&2; exit 2 ;;
    esac
done
[ -n "$out" ] || out=$(mktemp -d /tmp/kova-compare.XXXXXX)
mkdir -p "$out"
out=$(cd "$out" && pwd)

if [ -z "$before_build" ]; then
    tree="$out/before-tree"
    rm -rf "$tree"
    mkdir -p "$tree/src"
    git -C "$root" archive "$rev" | tar -x -C "$tree/src"
    echo "== building $rev in $tree/build"
    cmake -S "$tree/src" -B "$tree/build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
    cmake --build "$tree/build" --target screenshots kova kova-emulator -j"$(nproc)" >/dev/null
    before_build="$tree/build"
fi

programs=(rvx3210_shots rvx3410_screenshot rvx3220_screenshot rvx5310_screenshot rvx5370_screenshot
          rvx5350_screenshot rvx5120_screenshot live_screenshot)
only=()
for program in "${programs[@]}"; do
    only+=(--only "$program")
done
clock="2025-06-02 10:30:00"

for scale in $scales; do
    for side in before after; do
        build=$before_build
        [ "$side" = after ] && build=$after_build
        dir="$out/$side-x$scale"
        rm -rf "$dir"
        scale_args=()
        [ "$scale" = 1 ] || scale_args=(--scale "$scale")
        echo "== $side, scale $scale"
        "$root/tools/screenshots/take.sh" --build-dir "$build" --out "$dir" --clock "$clock" \
            "${scale_args[@]}" "${only[@]}" >"$dir.log" 2>&1 || {
            echo "compare.sh: take.sh failed, see $dir.log" >&2
            exit 1
        }
    done
done

echo
echo "| Scale | Picture | Pixels that differ |"
echo "|---|---|---|"
failed=0
for scale in $scales; do
    for picture in "$out/before-x$scale"/*.png "$out/after-x$scale"/*.png; do
        [ -e "$picture" ] || continue
        name=$(basename "$picture")
        case "$picture" in "$out/after-x$scale"/*) [ -e "$out/before-x$scale/$name" ] || {
            echo "| $scale | $name | only after |"; failed=1; }; continue ;; esac
        if [ ! -e "$out/after-x$scale/$name" ]; then
            echo "| $scale | $name | only before |"
            failed=1
            continue
        fi
        # AE prints the count on stderr; a size mismatch is an error of its own.
        if ! diff=$(compare -metric AE "$picture" "$out/after-x$scale/$name" null: 2>&1); then
            [ "$diff" = 0 ] || failed=1
        fi
        echo "| $scale | $name | $diff |"
        [ "$diff" = 0 ] || failed=1
    done
done
echo
echo "pictures in $out"
exit "$failed"
