#!/bin/sh
# Runs one test inside a fresh, private network namespace that has nothing but loopback,
# so no datagram a test sends (the search broadcast included) can reach a real network.
# The limited broadcast is routed onto loopback there, so a test can catch the search
# frame on the wire. Fails instead of running the test when no namespace can be made.
set -eu
if [ "$#" -lt 1 ]; then
    echo "usage: $0 command [args...]" >&2
    exit 2
fi
exec unshare --net -- sh -c '
    set -e
    ip link set lo up
    ip route add 255.255.255.255/32 dev lo 2>/dev/null || true
    exec "$@"
' netns-run "$@"
