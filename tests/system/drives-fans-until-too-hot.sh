#!/bin/bash
# A floor takes the fans over; critical heat gives them back to the firmware.
. "$(dirname "$0")/lib.sh"

plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1

expect_equal "the reply" "$(call setFanFloorWithPercentWithReply d 100)" 'bs true "floor set to 100%"'
wait_until 2 "the fan is driven by hand" fan_is_in hwmon0 1
duty_is() { [[ $(fan_duty hwmon0) == "$1" ]]; }
wait_until 2 "the fan has full duty" duty_is 255

call setFanFloorWithPercentWithReply d 1 >/dev/null
less_than_full() { (($(fan_duty hwmon0) < 255)); }
wait_until 2 "the duty follows a lower floor" less_than_full
expect_between "the duty at the lowest floor; the firmware held 77" "$(fan_duty hwmon0)" 77 120

heat hwmon1 100000
wait_until 5 "critical heat handed the fan back" fan_is_in hwmon0 5
expect_in_log "CRITICAL temp 100"
