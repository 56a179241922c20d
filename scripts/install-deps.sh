#!/bin/sh
# Installs the Debian packages KOVA needs to build, test and run in the lab, when any is
# missing. Safe to run again: it does nothing when everything is there.
set -eu

PACKAGES="cmake g++ make ccache qtbase5-dev qtbase5-dev-tools libqt5network5 \
iproute2 util-linux xvfb xauth x11-apps imagemagick fonts-dejavu-core fonts-dejavu-extra \
clang libclang-rt-14-dev liblo-dev liblo-tools pkg-config \
dpkg-dev lintian desktop-file-utils appstream groff-base x11-utils"

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
