#!/bin/sh
# Installs what is missing, builds KOVA with AddressSanitizer and UndefinedBehaviorSanitizer,
# and runs every test. Socket tests run in private network namespaces (root needed, as for
# the lab); nothing reaches a real network.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/install-deps.sh"

# Sanitizer reports end the run, leaks included; tests/lsan.supp names the third-party code
# whose leaks are not ours to fix.
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=0"
export LSAN_OPTIONS="suppressions=$root/tests/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"

dir="$root/build-sanitize"
"$root/scripts/build.sh" "$dir" -DKOVA_SANITIZE=ON
cd "$dir"
ctest --output-on-failure -j"$(nproc)" "$@"

# The whole suite (no ctest arguments, as CI runs it) ends with a short run of every fuzz target.
if [ "$#" -eq 0 ]; then
    "$root/fuzz/run.sh" --smoke
fi
