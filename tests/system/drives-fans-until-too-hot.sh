#!/bin/bash
# A floor takes the fans over; critical heat gives them back to the firmware.
. "$(dirname "$0")/lib.sh"

plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1

duty_is() { fan_is_in hwmon0 1 && [[ $(fan_duty hwmon0) == "$1" ]]; }

# A chip that tells no maximum counts as reaching 3000 RPM at a duty of 255, and as standing still at 0.
expect_equal "the reply" "$(call setFanFloorWithPercentWithReply d 60)" 'bs true "floor set to 60%"'
wait_until 2 "the fan is driven at 1800 RPM" duty_is 153
call setFanFloorWithPercentWithReply d 100 >/dev/null
wait_until 2 "the fan is driven at 3000 RPM" duty_is 255
call setFanFloorWithPercentWithReply d 1 >/dev/null
wait_until 2 "the fan has the duty its firmware held, which is more than 1 %" duty_is 77

heat hwmon1 100000
wait_until 5 "critical heat handed the fan back" fan_is_in hwmon0 5
expect_in_log "CRITICAL temp 100"
