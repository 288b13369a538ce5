#!/bin/bash
# Callers that mean no good attack the helper on the system's bus while somebody else's floor is held: nonsense, floods,
# callers that vanish, and thousands of connections. The helper stays the same process within its memory, its control loop
# goes on, it answers, and hands the fans back when nobody calls any more.
. "$(dirname "$0")/lib.sh"

seed=${CORVANE_SEED:-$RANDOM}
echo "seed $seed (CORVANE_SEED=$seed repeats it)"
plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1
install -m 755 "${ATTACK:?not given}" "$BOX_ROOT/usr/local/bin/attack"

memory_of_helper() { awk '/^VmRSS:/ { print $2 }' "$BOX_ROOT/proc/$(helper_pid)/status"; }
# files_of_helper_are NUMBER
files_of_helper_are() { [[ $(files_of_helper) == "$1" ]]; }
files_of_helper() { inside find "/proc/$(helper_pid)/fd" -type l -printf '%l\n' | sed 's/:\[[0-9]*\]//' | sort; }

# The honest client's floor is above what the firmware does.
call setFanFloorWithPercentWithReply d 60 >/dev/null
wait_until 5 "the fan is driven" fan_is_in hwmon0 1
# Its way to the login manager is open from the first use on.
call setLidStayAwakeWithReply b true >/dev/null
call setLidStayAwakeWithReply b false >/dev/null
pid=$(helper_pid)
files=$(files_of_helper)
memory=$(memory_of_helper)

# Somebody stands the fan still again and again, which only the next control tick puts right.
fan_is_driven() { [[ $(fan_duty hwmon0) != 0 ]]; }
as_visitor attack system "${CORVANE_SECONDS:-5}" "$seed" "${CORVANE_CONNECTIONS:-10000}" &
attack=$!
ticks=0
while kill -0 "$attack" 2>/dev/null; do
    echo 0 >"$hwmon/hwmon0/pwm1"
    wait_until 10 "the control loop drives the fan again" fan_is_driven
    ((++ticks))
done
wait "$attack" || fail "the attack did not go through"
echo "the control loop put the fan right $ticks times meanwhile"
((ticks > 10)) || fail "the control loop was hardly looked at"

expect_equal "the helper's process" "$(helper_pid)" "$pid"
fan_is_in hwmon0 1 || fail "an attack let the fan go"
# Anybody may keep the lid's lock, which is a file that is open.
wait_until 5 "the helper answers" call setLidStayAwakeWithReply b false
wait_until 5 "the helper has closed what it had opened" files_of_helper_are "$files"
echo "memory: $memory KiB before, $(memory_of_helper) KiB after"
expect_between "KiB of the helper's memory" "$(memory_of_helper)" 1 32768
wait_until 12 "silence hands the fan back" fan_is_in hwmon0 5
