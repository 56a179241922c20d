#!/bin/sh
# Installs what is missing, builds KOVA and opens it in the lab: a private network with
# emulated switchers of several models, so KOVA can be tried with no hardware and without
# sending anything onto a real network. Needs root for the network namespaces.
#
# With a desktop session (DISPLAY set) the window opens there; without one it runs under a
# virtual display and a screenshot of the search window is written to docs/.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/install-deps.sh"
# Only what the lab needs: the program and the emulator.
cmake -S "$root" -B "$root/build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$root/build" -j"$(nproc)" --target kova kova-emulator

set -- \
    --emulator "$root/build/emulator/kova-emulator" \
    --unit "type=0x21,name=Studio A" \
    --unit "type=0x24,name=Studio B" \
    --unit "type=0x26,name=OB Van" \
    --unit "type=0x25,name=Newsroom" \
    --unit "type=0x27,name=Stream Desk" \
    --unit "type=0x22,name=Chapel" \
    --unit "type=0x55,name=Foyer"

if [ -n "${DISPLAY:-}" ] && [ -z "${KOVA_HEADLESS:-}" ]; then
    exec "$root/lab/lab.sh" "$@" -- "$root/build/src/kova"
fi
shot="$root/docs/search-window.png"
"$root/lab/lab.sh" "$@" --xvfb --screenshot "$shot" --after 3 --stop-after 4 -- "$root/build/src/kova"
# The virtual display is larger than the window: keep only the window.
convert "$shot" -fuzz 2% -trim +repage "$shot"
echo "KOVA ran on a virtual display; its search window is in $shot"
