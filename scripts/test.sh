#!/bin/sh
# Installs what is missing, builds KOVA with AddressSanitizer and UndefinedBehaviorSanitizer
# and runs every test, on both Qt majors. Socket tests run in private network namespaces (root
# needed, as for the lab); nothing reaches a real network.
#
#   scripts/test.sh               what CI runs: the whole suite and the fuzz smoke run on Qt 5
#                                 (the default major on Debian 12), then the whole suite on Qt 6
#   scripts/test.sh CTEST-ARGS    Qt 5 only, ctest with these arguments
#   KOVA_TEST_MAJORS="6" scripts/test.sh [CTEST-ARGS]
#                                 the majors to test, in order; the first also gets the fuzz
#                                 smoke run
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
if [ -n "${KOVA_TEST_MAJORS:-}" ]; then
    majors=$KOVA_TEST_MAJORS
elif [ "$#" -eq 0 ]; then
    majors="5 6"
else
    majors=5
fi
# shellcheck disable=SC2086
"$root/scripts/install-deps.sh" $majors

# Sanitizer reports end the run, leaks included; tests/lsan.supp names the third-party code
# whose leaks are not ours to fix.
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=0"
export LSAN_OPTIONS="suppressions=$root/tests/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"

first=1
for major in $majors; do
    start=$(date +%s)
    # The Qt 5 tree keeps its old name, so existing trees and ccache stay warm.
    dir="$root/build-sanitize"
    [ "$major" = 5 ] || dir="$root/build-sanitize-qt$major"
    "$root/scripts/build.sh" "$dir" -DKOVA_SANITIZE=ON -DKOVA_QT_MAJOR="$major"
    built=$(date +%s)
    (cd "$dir" && ctest --output-on-failure -j"$(nproc)" "$@")
    tested=$(date +%s)
    echo "Qt $major: built in $((built - start)) s, tested in $((tested - built)) s"
    # The whole suite (no ctest arguments, as CI runs it) ends with a short run of every fuzz
    # target, on the first major.
    if [ "$first" = 1 ] && [ "$#" -eq 0 ]; then
        "$root/fuzz/run.sh" --smoke
    fi
    first=0
done
