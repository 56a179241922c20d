#!/bin/sh
# Installs what is missing, builds KOVA with AddressSanitizer and UndefinedBehaviorSanitizer,
# and runs every test. Socket tests run in private network namespaces (root needed, as for
# the lab); nothing reaches a real network.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/install-deps.sh"

# Sanitizer reports end the run; leaks are not checked (Qt keeps process-wide caches).
export ASAN_OPTIONS="detect_leaks=0:abort_on_error=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"

dir="$root/build-sanitize"
"$root/scripts/build.sh" "$dir" -DKOVA_SANITIZE=ON
cd "$dir"
ctest --output-on-failure -j"$(nproc)" "$@"
