#!/usr/bin/env bash
# A private two-namespace lab: an operator namespace and a unit namespace joined by one veth
# pair and nothing else. The emulator plays the units on the unit side; the given command runs
# on the operator side. Nothing here touches the host's own interfaces or routes, and
# everything is torn down on exit, whatever happens.
#
#   lab/lab.sh [--emulator PATH] [--unit UNIT]... [--count N --type T] [--emulator-arg ARG]...
#              [--xvfb] [--screenshot FILE --after SECONDS] [--stop-after SECONDS]
#              [--logdir DIR] [--ready-timeout SECONDS] [--office-link] -- command [args...]
#
# --office-link gives the operator a second link, to an office network with the default route
# and no unit on it, as on an operator PC with two network cards.
#
# Exit code: the command's own, 0 when --stop-after ended it, 2 for a usage error or a refusal,
# 125 when the lab could not be set up.
set -euo pipefail

readonly LAB_DIR=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
readonly OPERATOR_ADDR=10.77.0.1
readonly UNIT_SIDE_ADDR=10.77.0.2
readonly PREFIX=16
readonly OP_IF=kova0
readonly UNIT_IF=kova1
readonly OFFICE_ADDR=10.78.0.1
readonly OFFICE_GATEWAY=10.78.0.254
readonly OFFICE_IF=kova2
readonly OFFICE_PEER_IF=kova3

die() {
    echo "lab.sh: $*" >&2
    exit "${2:-2}"
}

usage() {
    sed -n '6,13p' "${BASH_SOURCE[0]}" | sed 's/^# \{0,1\}//' >&2
    exit 2
}

emulator="$LAB_DIR/../build/emulator/kova-emulator"
emulator_args=()
use_xvfb=0
screenshot=""
after=""
stop_after=""
logdir=""
ready_timeout=30
office_link=0

while [ "$#" -gt 0 ]; do
    case "$1" in
    --emulator) emulator=${2:?}; shift 2 ;;
    --unit) emulator_args+=(--unit "${2:?}"); shift 2 ;;
    --count) emulator_args+=(--count "${2:?}"); shift 2 ;;
    --type) emulator_args+=(--type "${2:?}"); shift 2 ;;
    --emulator-arg) emulator_args+=("${2?}"); shift 2 ;;
    --xvfb) use_xvfb=1; shift ;;
    --screenshot) screenshot=${2:?}; shift 2 ;;
    --after) after=${2:?}; shift 2 ;;
    --stop-after) stop_after=${2:?}; shift 2 ;;
    --logdir) logdir=${2:?}; shift 2 ;;
    --ready-timeout) ready_timeout=${2:?}; shift 2 ;;
    --office-link) office_link=1; shift ;;
    --help|-h) usage ;;
    --) shift; break ;;
    *) echo "lab.sh: unknown option $1" >&2; usage ;;
    esac
done
[ "$#" -ge 1 ] || usage
[ -n "$screenshot" ] && [ -z "$after" ] && after=2
if [ -n "$screenshot" ] && [ "$use_xvfb" = 0 ] && [ -z "${DISPLAY:-}" ]; then
    die "--screenshot needs --xvfb or a DISPLAY"
fi

# Refuse early and clearly: without root there are no namespaces, and without them nothing runs.
[ "$(id -u)" = 0 ] || die "must run as root (e.g. sudo $0 ...); see lab/README.md"
command -v ip >/dev/null 2>&1 || die "the 'ip' command (iproute2) is not installed"
ip netns list >/dev/null 2>&1 || die "'ip netns' is not available on this system"
[ -x "$emulator" ] || die "no emulator at $emulator (build the kova-emulator target or pass --emulator)"
emulator=$(cd "$(dirname "$emulator")" && pwd)/$(basename "$emulator")

# A lab killed outright (SIGKILL, say a test runner's time-out) cannot clean up after itself;
# the next lab removes namespaces of ours whose script is gone.
for ns in $(ip netns list | awk '{print $1}' | grep -E '^kova-(op|un|of)-[0-9]+-[0-9]+$' || true); do
    owner=${ns#kova-??-}
    owner=${owner%%-*}
    if ! kill -0 "$owner" 2>/dev/null; then
        for pid in $(ip netns pids "$ns" 2>/dev/null); do
            kill -KILL "$pid" 2>/dev/null || true
        done
        ip netns del "$ns" 2>/dev/null || true
    fi
done

run_id="$$-$RANDOM"
op_ns="kova-op-$run_id"
unit_ns="kova-un-$run_id"
office_ns="kova-of-$run_id"
while ip netns list | grep -qE "^($op_ns|$unit_ns|$office_ns)( |$)"; do
    run_id="$$-$RANDOM"
    op_ns="kova-op-$run_id"
    unit_ns="kova-un-$run_id"
    office_ns="kova-of-$run_id"
done

own_logdir=0
if [ -z "$logdir" ]; then
    logdir=$(mktemp -d /tmp/kova-lab.XXXXXX)
    own_logdir=1
fi
mkdir -p "$logdir"
logdir=$(cd "$logdir" && pwd)
state_dir="$logdir/state"
emulator_log="$logdir/emulator.log"
ready_file="$logdir/emulator.ready"
rm -rf "$state_dir" "$ready_file"
mkdir -p "$state_dir"

emulator_pid=""
xvfb_pid=""
command_pid=""
watcher_pid=""
namespaces_made=0
command_started=0
result=125

stop_pid() {
    local pid=$1
    [ -n "$pid" ] || return 0
    kill -TERM "$pid" 2>/dev/null || return 0
    for _ in $(seq 50); do
        kill -0 "$pid" 2>/dev/null || { wait "$pid" 2>/dev/null || true; return 0; }
        sleep 0.1
    done
    kill -KILL "$pid" 2>/dev/null || true
    wait "$pid" 2>/dev/null || true
}

cleanup() {
    local code=$?
    trap - EXIT INT TERM
    set +e
    stop_pid "$watcher_pid"
    stop_pid "$command_pid"
    stop_pid "$emulator_pid"
    stop_pid "$xvfb_pid"
    if [ "$namespaces_made" = 1 ]; then
        # Whatever the command left running in our own namespaces goes too, by pid.
        for ns in "$op_ns" "$unit_ns" "$office_ns"; do
            for pid in $(ip netns pids "$ns" 2>/dev/null); do
                kill -KILL "$pid" 2>/dev/null
            done
        done
    fi
    ip netns del "$op_ns" 2>/dev/null
    ip netns del "$unit_ns" 2>/dev/null
    ip netns del "$office_ns" 2>/dev/null
    if [ "$own_logdir" = 1 ]; then
        if [ "$result" = 0 ]; then
            rm -rf "$logdir"
        else
            echo "lab.sh: logs kept in $logdir" >&2
        fi
    fi
    # Anything that stops the script before the command runs is a set-up failure.
    if [ "$command_started" = 0 ] && [ "$code" != 0 ] && [ "$code" != 130 ] && [ "$code" != 143 ]; then
        code=125
    fi
    exit "$code"
}
trap cleanup EXIT
trap 'result=130; exit 130' INT
trap 'result=143; exit 143' TERM

setup_fail() {
    echo "lab.sh: $*" >&2
    result=125
    exit 125
}

# --- namespaces and the veth pair ------------------------------------------------------------
ip netns add "$op_ns" || setup_fail "cannot create namespace $op_ns"
namespaces_made=1
ip netns add "$unit_ns" || setup_fail "cannot create namespace $unit_ns"
# The pair is born inside the operator namespace and its peer moved straight to the unit
# namespace, so it never exists among the host's interfaces.
ip -n "$op_ns" link add "$OP_IF" type veth peer name "$UNIT_IF" netns "$unit_ns" ||
    setup_fail "cannot create the veth pair"

ip -n "$op_ns" link set lo up
ip -n "$op_ns" addr add "$OPERATOR_ADDR/$PREFIX" dev "$OP_IF"
ip -n "$op_ns" link set "$OP_IF" up
if [ "$office_link" = 1 ]; then
    # The office side: a namespace of its own holding the gateway address, so whatever the
    # routing table sends there (the limited broadcast included) never meets a unit.
    ip netns add "$office_ns" || setup_fail "cannot create namespace $office_ns"
    ip -n "$op_ns" link add "$OFFICE_IF" type veth peer name "$OFFICE_PEER_IF" netns "$office_ns" ||
        setup_fail "cannot create the office veth pair"
    ip -n "$office_ns" link set lo up
    ip -n "$office_ns" addr add "$OFFICE_GATEWAY/16" dev "$OFFICE_PEER_IF"
    ip -n "$office_ns" link set "$OFFICE_PEER_IF" up
    ip -n "$op_ns" addr add "$OFFICE_ADDR/16" dev "$OFFICE_IF"
    ip -n "$op_ns" link set "$OFFICE_IF" up
    ip -n "$op_ns" route add default via "$OFFICE_GATEWAY" dev "$OFFICE_IF"
else
    # The /16 comes with the address; the limited broadcast must leave through the veth too.
    ip -n "$op_ns" route add 255.255.255.255/32 dev "$OP_IF"
fi

ip -n "$unit_ns" link set lo up
ip -n "$unit_ns" addr add "$UNIT_SIDE_ADDR/$PREFIX" dev "$UNIT_IF"

plan=$(ip netns exec "$unit_ns" "$emulator" --print-plan "${emulator_args[@]}" 2>"$logdir/plan.err") ||
    setup_fail "the emulator rejected its arguments: $(cat "$logdir/plan.err")"
units=()
his=()
batch="$logdir/addresses.batch"
: >"$batch"
while read -r main board2; do
    [ -n "$main" ] || continue
    units+=("$main")
    his+=("$board2")
    echo "addr add $main/32 dev $UNIT_IF" >>"$batch"
    [ "$board2" != "-" ] && echo "addr add $board2/32 dev $UNIT_IF" >>"$batch"
done <<<"$plan"
ip -n "$unit_ns" -batch "$batch" || setup_fail "cannot add the unit addresses"
ip -n "$unit_ns" link set "$UNIT_IF" up

# --- emulator ------------------------------------------------------------------------------
ip netns exec "$unit_ns" "$emulator" "${emulator_args[@]}" --log "$emulator_log" --state-dir "$state_dir" \
    --ready-file "$ready_file" >"$logdir/emulator.out" 2>"$logdir/emulator.err" &
emulator_pid=$!
deadline=$((SECONDS + ready_timeout))
until [ -e "$ready_file" ]; do
    kill -0 "$emulator_pid" 2>/dev/null ||
        setup_fail "the emulator exited before it was ready: $(tail -n 5 "$logdir/emulator.err")"
    [ "$SECONDS" -lt "$deadline" ] || setup_fail "the emulator was not ready within ${ready_timeout}s"
    sleep 0.05
done

# --- display --------------------------------------------------------------------------------
if [ "$use_xvfb" = 1 ]; then
    command -v Xvfb >/dev/null 2>&1 || setup_fail "Xvfb is not installed (apt-get install xvfb)"
    display_file="$logdir/xvfb.display"
    : >"$display_file"
    ip netns exec "$op_ns" Xvfb -displayfd 3 -screen 0 "${LAB_XVFB_SCREEN:-1920x1080x24}" -nolisten tcp \
        3>"$display_file" >"$logdir/xvfb.log" 2>&1 &
    xvfb_pid=$!
    deadline=$((SECONDS + 20))
    until [ -s "$display_file" ]; do
        kill -0 "$xvfb_pid" 2>/dev/null || setup_fail "Xvfb exited: $(tail -n 3 "$logdir/xvfb.log")"
        [ "$SECONDS" -lt "$deadline" ] || setup_fail "Xvfb did not start"
        sleep 0.05
    done
    export DISPLAY=":$(head -n 1 "$display_file" | tr -d '[:space:]')"
    unset XAUTHORITY
fi

# --- the command ----------------------------------------------------------------------------
export LAB_EMULATOR_LOG="$emulator_log"
export LAB_STATE_DIR="$state_dir"
export LAB_UNITS="${units[*]}"
export LAB_HIS="${his[*]}"
export LAB_OPERATOR="$OPERATOR_ADDR"
export LAB_LOGDIR="$logdir"
export LAB_OPERATOR_NS="$op_ns"
export LAB_UNIT_NS="$unit_ns"
if [ "$office_link" = 1 ]; then
    export LAB_OFFICE_NS="$office_ns"
fi

stopped_marker="$logdir/command.stopped"
rm -f "$stopped_marker"
ip netns exec "$op_ns" "$@" &
command_pid=$!
command_started=1

take_screenshot() {
    if command -v import >/dev/null 2>&1; then
        ip netns exec "$op_ns" import -display "$DISPLAY" -window root "png:$screenshot"
    else
        ip netns exec "$op_ns" sh -c 'xwd -root -silent -display "$1" | convert xwd:- "png:$2"' sh "$DISPLAY" "$screenshot"
    fi
}

if [ -n "$screenshot" ] || [ -n "$stop_after" ]; then
    (
        nap=""
        trap '[ -n "$nap" ] && kill "$nap" 2>/dev/null; exit 0' TERM
        trap - EXIT INT
        pause() {
            sleep "$1" &
            nap=$!
            wait "$nap"
            nap=""
        }
        waited=0
        if [ -n "$screenshot" ]; then
            pause "$after"
            waited=$after
            if kill -0 "$command_pid" 2>/dev/null; then
                take_screenshot && echo "lab.sh: screenshot $screenshot" >&2 ||
                    echo "lab.sh: screenshot failed" >&2
            else
                echo "lab.sh: the command ended before the screenshot" >&2
            fi
        fi
        if [ -n "$stop_after" ]; then
            rest=$(awk -v a="$stop_after" -v b="$waited" 'BEGIN { r = a - b; print (r > 0 ? r : 0) }')
            pause "$rest"
            if kill -0 "$command_pid" 2>/dev/null; then
                : >"$stopped_marker"
                kill -TERM "$command_pid" 2>/dev/null
            fi
        fi
    ) &
    watcher_pid=$!
fi

set +e
wait "$command_pid"
result=$?
set -e
command_pid=""
if [ -e "$stopped_marker" ]; then
    result=0
fi
exit "$result"
