#!/bin/sh
# Before and after, side by side from one run: for each panel (default: every panel with
# buses) the restyle paths of bench_panels from the BEFORE build, then at once from the AFTER
# build, each in its own private network namespace (run.sh --restyle), `rounds` times over
# (default 1; the table takes each figure's median over the rounds). Prints the table of
# medians in microseconds, then the runs' own tables. Both builds must have the benchmark
# built (cmake --build DIR --target bench_panels); release builds, for figures worth keeping.
# usage: bench/panels/compare.sh [--rounds N] BEFORE-BUILD AFTER-BUILD [panel...]
set -eu
here=$(cd "$(dirname "$0")" && pwd)
rounds=1
if [ "${1:-}" = --rounds ]; then
    rounds=$2
    shift 2
fi
if [ $# -lt 2 ]; then
    sed -n '2,8p' "$0" | sed 's/^# \{0,1\}//' >&2
    exit 2
fi
before=$1
after=$2
shift 2
[ $# -gt 0 ] || set -- rvx3210 rvx3210s rvx3210p rvx3210-2021 rvx3410 rvx3220 rvx5310 rvx5370 rvx5350
log=$(mktemp /tmp/kova-bench-compare.XXXXXX)
trap 'rm -f "$log" "$log.err"' EXIT
start="$(date -u +%Y-%m-%d\ %H:%M) UTC, load $(cut -d' ' -f1-3 /proc/loadavg)"
round=1
while [ "$round" -le "$rounds" ]; do
    for panel in "$@"; do
        for side in before after; do
            build=$before
            [ "$side" = after ] && build=$after
            echo "### $panel, $side, round $round, $(date -u +%H:%M:%S) UTC, load $(cut -d' ' -f1-3 /proc/loadavg)" >>"$log"
            "$here/run.sh" --restyle "$build" "$panel" 2>>"$log.err" | sed -n '/^|/p' | sed "s/^/$panel|$side|/" >>"$log"
        done
    done
    round=$((round + 1))
done
echo "Started $start; $rounds round(s); medians in us (worst in the runs' own tables below)."
echo
awk -F'|' '
    # Lines: panel|side||path|median|worst|
    /^[a-z0-9-]+\|(before|after)\|\| / {
        path = $4; sub(/^ /, "", path); sub(/ $/, "", path)
        if (path == "Path" || path ~ /^-+$/) next
        key = $1 SUBSEP path
        if (!(key in seen)) { seen[key] = 1; order[++n] = key }
        v[key, $2, ++c[key, $2]] = $5 + 0
    }
    function median(key, side,   k, i, j, t, a) {
        k = c[key, side]
        if (k == 0) return "-"
        for (i = 1; i <= k; i++) a[i] = v[key, side, i]
        for (i = 1; i <= k; i++) for (j = i + 1; j <= k; j++) if (a[j] < a[i]) { t = a[i]; a[i] = a[j]; a[j] = t }
        return (k % 2) ? a[(k + 1) / 2] : (a[k / 2] + a[k / 2 + 1]) / 2
    }
    END {
        print "| Panel | Path | Before (us) | After (us) |"
        print "|---|---|---|---|"
        for (i = 1; i <= n; i++) {
            split(order[i], kp, SUBSEP)
            if (kp[2] ~ /written/) continue
            printf "| %s | %s | %s | %s |\n", kp[1], kp[2], median(order[i], "before"), median(order[i], "after")
        }
    }' "$log"
echo
sed 's/^\([a-z0-9-]*\)|\([a-z]*\)|/\1 \2 /' "$log"
