#!/bin/bash
# A client that falls silent loses its hold: the fans are back 6 to 8 s after its last call.
. "$(dirname "$0")/lib.sh"

plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1

call setFanFloorWithPercentWithReply d 60 >/dev/null
wait_until 2 "the fan is forced" fan_is_in hwmon0 1

# Status calls alone keep the hold.
end=$((SECONDS + 9))
while ((SECONDS < end)); do
    before=$(now)
    call getStatusWithReply >/dev/null
    after=$(now)
    expect_equal "the fan's mode while the client is heard" "$(fan_mode hwmon0)" 1
done

wait_until 12 "silence released the fan" fan_is_in hwmon0 5
released=$(now)
echo "released $((released - after)) ms after the last reply"
expect_between "milliseconds since the last call was made" $((released - before)) 6000 20000
expect_between "milliseconds since the last reply" $((released - after)) 0 8500
expect_in_log "Corvane daemon: WATCHDOG — app silent, releasing fans to Apple"
