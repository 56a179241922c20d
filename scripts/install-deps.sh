#!/bin/sh
# Installs the Debian packages KOVA needs to build, test and run in the lab, when any is
# missing. Safe to run again: it does nothing when everything is there.
#
#   scripts/install-deps.sh [MAJOR...]   the Qt majors to build with: 5 (the default), 6, or both
set -eu

PACKAGES="cmake g++ make ccache \
iproute2 util-linux xvfb xauth x11-apps imagemagick fonts-dejavu-core fonts-dejavu-extra \
clang libclang-rt-14-dev liblo-dev liblo-tools pkg-config \
libmosquitto-dev mosquitto mosquitto-clients openssl \
dpkg-dev lintian desktop-file-utils appstream groff-base x11-utils faketime"

[ "$#" -eq 0 ] && set -- 5
for major in "$@"; do
    case "$major" in
    5) PACKAGES="$PACKAGES qtbase5-dev qtbase5-dev-tools libqt5network5" ;;
    # The platform plugins are only recommended by Qt 6's GUI library; the tests need them.
    6) PACKAGES="$PACKAGES qt6-base-dev qt6-base-dev-tools qt6-qpa-plugins" ;;
    *) echo "install-deps.sh: no Qt major '$major' (5 or 6)" >&2; exit 2 ;;
    esac
done

missing=""
for p in $PACKAGES; do
    if ! dpkg-query -W -f='${Status}\n' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing="$missing $p"
    fi
done

if [ -z "$missing" ]; then
    exit 0
fi

SUDO=""
if [ "$(id -u)" -ne 0 ]; then
    SUDO="sudo"
fi
echo "Installing:$missing"
$SUDO apt-get update -q
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -q --no-install-recommends $missing
