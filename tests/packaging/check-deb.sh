#!/bin/bash
# Builds the Debian package from a build tree and checks it as a distribution would: its
# contents and dependencies, lintian, an install into a private root with dpkg, and the
# installed kova started in the lab, where its search must reach the emulated unit and its
# window carry the class the menu entry names.
#   check-deb.sh <build dir> <source root>
set -euo pipefail
build=$(cd "$1" && pwd)
src=$(cd "$2" && pwd)
work=$(mktemp -d /tmp/kova-deb.XXXXXX)
trap 'rm -rf "$work"' EXIT
failed=0
fail() {
    echo "FAIL: $*" >&2
    failed=1
}

(cd "$build" && cpack -G DEB -B "$work/out" >"$work/cpack.log" 2>&1) || { cat "$work/cpack.log" >&2; exit 1; }
deb=$(ls "$work"/out/kova_*.deb)
echo "package: $(basename "$deb")"

# Contents.
dpkg-deb -c "$deb" | awk '{print $6}' | sed 's|^\./|/|' >"$work/files"
for f in /usr/bin/kova /usr/bin/kovactl /usr/bin/kova-emulator /usr/share/applications/invalid.kova.Kova.desktop \
    /usr/share/metainfo/invalid.kova.Kova.metainfo.xml /usr/share/icons/hicolor/48x48/apps/invalid.kova.Kova.png \
    /usr/share/icons/hicolor/256x256/apps/invalid.kova.Kova.png /usr/share/man/man1/kova.1.gz \
    /usr/share/man/man1/kovactl.1.gz /usr/share/man/man1/kova-emulator.1.gz /usr/share/doc/kova/copyright \
    /usr/share/doc/kova/changelog.gz /usr/bin/kova-hub /usr/share/man/man1/kova-hub.1.gz \
    /lib/systemd/system/kova-hub.service /etc/kova/hub.conf; do
    grep -qx "$f" "$work/files" || fail "the package lacks $f"
done

# kova-hub's service is installed, not enabled: no maintainer script and no link under
# /etc/systemd; its example options are a conffile with every key commented.
dpkg-deb -e "$deb" "$work/control"
for script in preinst postinst prerm postrm; do
    [ -e "$work/control/$script" ] && fail "the package carries a $script script"
done
grep -q '^/etc/systemd' "$work/files" && fail "the package enables a service"
grep -qx /etc/kova/hub.conf "$work/control/conffiles" || fail "/etc/kova/hub.conf is no conffile"
dpkg-deb --fsys-tarfile "$deb" | tar -xOf - ./etc/kova/hub.conf | grep -v '^#' | grep -q . &&
    fail "hub.conf sets a key"

# Dependencies: the libraries of the Qt major the tree was built with (and none of the other's),
# the panels' font, each satisfied by what this (Debian 12) machine has installed.
depends=$(dpkg-deb -f "$deb" Depends)
echo "Depends: $depends"
major=$(sed -n 's/^KOVA_QT_MAJOR:[A-Z]*=//p' "$build/CMakeCache.txt")
case "$major" in
5) qt_libs="libqt5core5a libqt5gui5 libqt5widgets5 libqt5network5" other=libqt6 ;;
6) qt_libs="libqt6core6 libqt6gui6 libqt6widgets6 libqt6network6 qt6-qpa-plugins" other=libqt5 ;;
*) fail "no Qt major in $build/CMakeCache.txt" ;;
esac
echo "$depends" | grep -q "\b$other" && fail "Depends names the other Qt major ($other)"
for lib in $qt_libs libc6 libstdc++6 fonts-dejavu-core; do
    echo "$depends" | grep -q "\b$lib\b" || fail "Depends lacks $lib"
done
IFS=',' read -ra clauses <<<"$depends"
for clause in "${clauses[@]}"; do
    ok=0
    IFS='|' read -ra alternatives <<<"$clause"
    for alt in "${alternatives[@]}"; do
        name=$(echo "$alt" | sed 's/(.*//; s/:any//' | tr -d ' ')
        constraint=$(echo "$alt" | sed -n 's/.*(\(.*\)).*/\1/p')
        have=$(dpkg-query -W -f='${Status} ${Version}' "$name" 2>/dev/null | sed -n 's/^install ok installed //p')
        [ -n "$have" ] || continue
        if [ -n "$constraint" ]; then
            dpkg --compare-versions "$have" "${constraint%% *}" "${constraint##* }" || continue
        fi
        ok=1
    done
    [ "$ok" = 1 ] || fail "dependency not satisfiable here: $clause"
done

# A program linked with the MQTT library needs its package; dpkg-shlibdeps should have named it.
dpkg-deb -x "$deb" "$work/extract"
# kova-hub runs on a machine with no display: it needs neither Qt's GUI library nor its widgets.
objdump -p "$work/extract/usr/bin/kova-hub" | grep -Eq 'NEEDED *libQt[56](Gui|Widgets)' &&
    fail "kova-hub links Qt's GUI libraries"
for exe in "$work"/extract/usr/bin/*; do
    if objdump -p "$exe" | grep -q 'NEEDED *libmosquitto\.so'; then
        echo "$depends" | grep -q '\blibmosquitto1\b' || fail "$(basename "$exe") links libmosquitto, Depends lacks libmosquitto1"
    fi
done

# lintian: no errors (warnings are printed).
lintian --fail-on error --tag-display-limit 0 "$deb" || fail "lintian reports errors"

# A private root with a database of its own; the host's packages stay untouched.
root="$work/root"
mkdir -p "$root/var/lib/dpkg/info" "$root/var/lib/dpkg/updates"
: >"$root/var/lib/dpkg/status"
dpkg --root="$root" --force-depends --force-not-root -i "$deb" >"$work/dpkg.log" 2>&1 ||
    { cat "$work/dpkg.log" >&2; fail "dpkg -i into a private root"; }
dpkg --root="$root" -s kova | grep -q '^Status: install ok installed' || fail "kova is not installed in the root"

# The installed program in the lab, on a virtual display.
wm_class=$(sed -n 's/^StartupWMClass=//p' "$root/usr/share/applications/invalid.kova.Kova.desktop")
cat >"$work/start.sh" <<'SCRIPT'
#!/bin/sh
# Starts the installed kova, waits for its search to reach the unit, lists the window classes.
"$1" &
pid=$!
for _ in $(seq 100); do
    grep -q 'cmd=0xff' "$LAB_EMULATOR_LOG" && break
    sleep 0.1
done
grep -q 'cmd=0xff' "$LAB_EMULATOR_LOG" || { echo "no search from the installed kova"; exit 1; }
for _ in $(seq 50); do
    classes=$(for id in $(xwininfo -root -children | sed -n 's/^ *\(0x[0-9a-f]*\) .*/\1/p'); do
        xprop -id "$id" WM_CLASS 2>/dev/null; done | sed -n 's/^WM_CLASS(STRING) = //p')
    [ -n "$classes" ] && break
    sleep 0.1
done
echo "$classes" >"$2"
kill -0 "$pid" || { echo "the installed kova has ended"; exit 1; }
kill "$pid"
wait "$pid" 2>/dev/null
exit 0
SCRIPT
chmod +x "$work/start.sh"
if "$src/lab/lab.sh" --emulator "$build/emulator/kova-emulator" --unit "type=0x21,name=Desk" --xvfb \
    -- "$work/start.sh" "$root/usr/bin/kova" "$work/classes" >"$work/lab.log" 2>&1; then
    echo "window classes: $(tr '\n' ' ' <"$work/classes")"
    grep -q "\"$wm_class\"\$" "$work/classes" || fail "no window of class $wm_class"
else
    cat "$work/lab.log" >&2
    fail "the installed kova did not start in the lab"
fi

[ "$failed" = 0 ] && echo "package: ok"
exit "$failed"
