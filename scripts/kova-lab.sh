#!/usr/bin/env bash
# Installs what is missing, builds KOVA and opens it in the lab: a private network with
# emulated switchers, one of every model KOVA has a panel for (lab/default-units.txt), so KOVA
# can be tried with no hardware and without sending anything onto a real network.
#
#   scripts/kova-lab.sh [--unit UNIT]... [--units FILE] [--logdir DIR] [--screenshot FILE]
#                       [--headless] [--build-dir DIR] [--no-build] [lab.sh options...]
#                       [-- command [args...]]
#
# With a desktop session (DISPLAY set) the window opens there; without one (or with
# --headless) KOVA runs on a virtual display for a few seconds and a screenshot of its search
# window is written to FILE, or to a new folder under /tmp. Nothing is written into the
# source tree except the build folder. The namespaces need root: run it as root, with sudo (the
# build and every file left behind then belong to the invoking user), or as a user with sudo
# rights (only the lab itself is run through sudo).
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

usage() {
    sed -n '6,8p' "${BASH_SOURCE[0]}" | sed 's/^# \{0,1\}//' >&2
    exit 2
}

units=()
units_file="$root/lab/default-units.txt"
logdir=""
shot=""
headless=0
[ -n "${KOVA_HEADLESS:-}" ] && headless=1
build_dir="$root/build"
build=1
lab_args=()
command=()
stop_given=0

while [ "$#" -gt 0 ]; do
    case "$1" in
    --unit) units+=("${2:?--unit needs a unit description}"); shift 2 ;;
    --units) units_file=${2:?}; shift 2 ;;
    --logdir) logdir=${2:?}; shift 2 ;;
    --screenshot) shot=${2:?}; shift 2 ;;
    --headless) headless=1; shift ;;
    --build-dir) build_dir=${2:?}; shift 2 ;;
    --no-build) build=0; shift ;;
    --stop-after) stop_given=1; lab_args+=("$1" "${2:?}"); shift 2 ;;
    # The lab's own options that take a value go through with it.
    --emulator|--count|--type|--emulator-arg|--after|--ready-timeout) lab_args+=("$1" "${2?}"); shift 2 ;;
    --help|-h) usage ;;
    --) shift; command=("$@"); break ;;
    *) lab_args+=("$1"); shift ;;
    esac
done

if [ "${#units[@]}" = 0 ]; then
    [ -r "$units_file" ] || { echo "kova-lab.sh: cannot read $units_file" >&2; exit 2; }
    while IFS= read -r line || [ -n "$line" ]; do
        line=${line%%#*}
        line=$(echo "$line" | tr -d '[:space:]')
        [ -n "$line" ] && units+=("$line")
    done <"$units_file"
fi

# Who the files left behind belong to: the user behind sudo, or the user running the script.
if [ "$(id -u)" = 0 ]; then
    as_root=()
    owner=${SUDO_USER:-}
    [ "$owner" = root ] && owner=""
else
    command -v sudo >/dev/null 2>&1 || { echo "kova-lab.sh: the lab needs root, and sudo is missing" >&2; exit 2; }
    as_root=(sudo --preserve-env=DISPLAY,XAUTHORITY,KOVA_HEADLESS)
    owner=$(id -un)
fi

# Runs a command as the owner (as is, when there is none or it is us already).
as_owner() {
    if [ -n "$owner" ] && [ "$(id -u)" = 0 ]; then
        local home
        home=$(getent passwd "$owner" | cut -d: -f6)
        runuser -u "$owner" -- env HOME="$home" "$@"
    else
        "$@"
    fi
}

# Gives what the lab wrote as root back to the owner.
give_back() {
    [ -n "$owner" ] || return 0
    local path
    for path in "$@"; do
        [ -e "$path" ] && "${as_root[@]}" chown -R "$owner:$(id -g "$owner")" "$path"
    done
    return 0
}

if [ "$build" = 1 ]; then
    "$root/scripts/install-deps.sh"
    # A build folder left to root by an earlier run is handed back before building as the owner.
    if [ -n "$owner" ] && [ -d "$build_dir" ] && [ -n "$(find "$build_dir" ! -user "$owner" -print -quit)" ]; then
        "${as_root[@]}" chown -R "$owner:$(id -g "$owner")" "$build_dir"
    fi
    # Only what the lab needs: the program and the emulator.
    as_owner cmake -S "$root" -B "$build_dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
    as_owner cmake --build "$build_dir" -j"$(nproc)" --target kova kova-emulator
fi
[ "${#command[@]}" -gt 0 ] || command=("$build_dir/src/kova")

args=(--emulator "$build_dir/emulator/kova-emulator")
for u in "${units[@]}"; do
    args+=(--unit "$u")
done
if [ -n "$logdir" ]; then
    as_owner mkdir -p "$logdir"
    args+=(--logdir "$logdir")
fi

if [ -n "${DISPLAY:-}" ] && [ "$headless" = 0 ]; then
    [ -n "$shot" ] && args+=(--screenshot "$shot")
    status=0
    "${as_root[@]}" "$root/lab/lab.sh" "${args[@]}" "${lab_args[@]}" -- "${command[@]}" || status=$?
    give_back "$logdir" "$shot"
    exit "$status"
fi

# Headless: a virtual display, a screenshot of the search window, then the program is ended.
if [ -z "$shot" ]; then
    shot_dir=$(as_owner mktemp -d /tmp/kova-lab-shot.XXXXXX)
    shot="$shot_dir/search-window.png"
fi
[ "$stop_given" = 1 ] || lab_args+=(--stop-after 4)
status=0
"${as_root[@]}" "$root/lab/lab.sh" "${args[@]}" --xvfb --screenshot "$shot" --after 3 "${lab_args[@]}" \
    -- "${command[@]}" || status=$?
if [ -e "$shot" ]; then
    # The virtual display is larger than the window: keep only the window.
    "${as_root[@]}" convert "$shot" -fuzz 2% -trim +repage "$shot"
fi
give_back "$logdir" "$shot"
[ "$status" = 0 ] && [ -e "$shot" ] && echo "KOVA ran on a virtual display; its search window is in $shot"
exit "$status"
