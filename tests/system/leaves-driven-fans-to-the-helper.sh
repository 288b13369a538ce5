#!/bin/bash
# `corvane --smc-write` takes no fan that the helper drives; it may hand one back, and the helper then lets it be.
. "$(dirname "$0")/lib.sh"

plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1

drive() {
    call setFanFloorWithPercentWithReply d 60 >/dev/null
}

# smc_write SPECIFICATION VALUE...: what it says, then its exit status.
smc_write() {
    local status=0
    inside corvane --smc-write "$@" 2>&1 || status=$?
    echo "status $status"
}

drive
wait_until 2 "the fan is forced" fan_is_in hwmon0 1
duty=$(fan_duty hwmon0)
said=$(smc_write F0Md:u8 1 F0Tg 16000)
for expected in "write F0Md=1 failed: rc=134" "write F0Tg=16000 failed: rc=134" "status 1"; do
    [[ $said == *"$expected"* ]] || fail "no '$expected' when the fan was to be taken from the helper: $said"
done
drive
expect_equal "the mode of the fan that was to be taken from the helper" "$(fan_mode hwmon0)" 1
expect_equal "its duty" "$(fan_duty hwmon0)" "$duty"
inside grep --quiet "^fan.helper" /run/corvane/fans || fail "the fan is no longer the helper's"

expect_equal "what handing it back says" "$(smc_write F0Md:u8 0)" "status 0"
expect_equal "the mode of the fan that was handed back" "$(fan_mode hwmon0)" 5
gave_way() { [[ $(helper_log) == *"given back by another process"* ]]; }
wait_until 3 "the helper noticed" gave_way
drive
call stopBoostWithReply >/dev/null
expect_equal "the mode of the fan that was handed back, later" "$(fan_mode hwmon0)" 5
expect_equal "the fan journal" "$(inside cat /run/corvane/fans)" ""
