#!/bin/bash
# SIGTERM, as from `systemctl stop`, hands the fans back and proves it before the helper exits.
. "$(dirname "$0")/lib.sh"

plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1

call setFanFloorWithPercentWithReply d 60 >/dev/null
wait_until 2 "the fan is forced" fan_is_in hwmon0 1
inside systemctl stop "$unit"

expect_equal "the fan's mode after the stop" "$(fan_mode hwmon0)" 5
expect_in_log "Corvane daemon: received termination signal — releasing to Apple"
expect_in_log "Corvane daemon: released to Apple-auto (verified, attempt 1)"
expect_equal "the unit's state" "$(inside systemctl is-active "$unit" || true)" inactive
expect_equal "the result" "$(inside systemctl show --property Result --value "$unit")" success
expect_equal "the exit status" "$(inside systemctl show --property ExecMainStatus --value "$unit")" 0
