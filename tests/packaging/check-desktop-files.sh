#!/bin/sh
# Checks the files that make KOVA a desktop application, as a distribution would: the menu
# entry, the AppStream metainfo, the manual pages and the painted icons.
#   check-desktop-files.sh <packaging build dir> <kovactl> <packaging source dir>
set -eu
build=$1
kovactl=$2
src=$3
failed=0
fail() {
    echo "FAIL: $*" >&2
    failed=1
}

desktop-file-validate "$build/invalid.kova.Kova.desktop" || fail "desktop-file-validate"
# The window class the menu entry waits for is the program's name, which is what Qt gives
# its windows when the program does not name itself otherwise.
grep -qx 'StartupWMClass=kova' "$build/invalid.kova.Kova.desktop" || fail "StartupWMClass is not the program's name"
grep -qx 'Exec=kova' "$build/invalid.kova.Kova.desktop" || fail "Exec"

appstreamcli validate --no-net --pedantic "$build/invalid.kova.Kova.metainfo.xml" || fail "appstreamcli validate"
# Every caption names a screenshot that is in the tree.
for shot in $(sed -n 's|.*<image>.*/\([^/<]*\.png\)</image>.*|\1|p' "$build/invalid.kova.Kova.metainfo.xml"); do
    [ -f "$src/../docs/$shot" ] || fail "screenshot $shot is not in docs/"
done

for page in kova kovactl kova-emulator; do
    gz="$build/man/$page.1.gz"
    [ -f "$gz" ] || { fail "no manual page $gz"; continue; }
    # groff's own warnings, as lintian reads them.
    warnings=$(zcat "$gz" | LC_ALL=C.UTF-8 groff -man -ww -z -Tutf8 2>&1) || fail "groff failed on $page.1"
    [ -z "$warnings" ] || fail "$page.1: $warnings"
    zcat "$gz" | grep -q '^\.SH NAME' || fail "$page.1 has no NAME section"
done

# The manual lists every command kovactl has, and the exit codes it documents.
zcat "$build/man/kovactl.1.gz" | sed 's/\\-/-/g; s/\\f[BIRP]//g' >"${TMPDIR:-/tmp}/kovactl.1.$$"
for command in $("$kovactl" --help | sed -n 's/^      \([a-z0-9-]*\).*/\1/p'); do
    grep -qw -- "$command" "${TMPDIR:-/tmp}/kovactl.1.$$" || fail "kovactl.1 does not describe '$command'"
done
for code in $("$kovactl" --help | sed -n 's/^  \([0-9]\)  .*/\1/p'); do
    grep -qx "\.B $code" "${TMPDIR:-/tmp}/kovactl.1.$$" || fail "kovactl.1 does not list exit code $code"
done
rm -f "${TMPDIR:-/tmp}/kovactl.1.$$"

# One icon per hicolor size, square and of that size, painted with something on it.
n=0
for png in "$build"/icons/*_hicolor_*_apps_kova.png; do
    size=$(echo "$png" | sed 's/.*_hicolor_\([0-9]*x[0-9]*\)_apps.*/\1/')
    got=$(identify -format '%wx%h' "$png") || fail "identify $png"
    [ "$got" = "$size" ] || fail "$png is $got, not $size"
    colours=$(identify -format '%k' "$png")
    [ "$colours" -gt 2 ] || fail "$png is blank"
    n=$((n + 1))
done
[ "$n" -ge 6 ] || fail "only $n icons painted"

[ "$failed" = 0 ] && echo "desktop files: ok"
exit "$failed"
