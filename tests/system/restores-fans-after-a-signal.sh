#!/bin/bash
# A write test of `corvane --diag` that a signal cuts short hands the fan back before it ends, and says so in its status.
. "$(dirname "$0")/lib.sh"

plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1
output=$BOX_ROOT/run/output

# cut_short SIGNAL [TEST]: a second after its start.
cut_short() {
    local signal=$1 status=0
    shift
    inside timeout --preserve-status --signal "$signal" 1 corvane --diag "$@" >"$output" 2>&1 &
    wait_until 1 "the fan is forced (${*:-default}, $signal)" fan_is_in hwmon0 1
    wait $! || status=$?
    expect_equal "the status (${*:-default}, $signal)" "$status" 130
    expect_equal "the fan's mode (${*:-default}, $signal)" "$(fan_mode hwmon0)" 5
    expect_equal "the fan journal (${*:-default}, $signal)" "$(inside cat /run/corvane/fans)" ""
    [[ $(<"$output") != *"could not be restored"* ]] || fail "it was not restored: $(<"$output")"
}

for signal in INT TERM HUP; do
    cut_short $signal
    cut_short $signal loop
done
