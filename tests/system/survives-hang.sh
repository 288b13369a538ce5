#!/bin/bash
# A helper that hangs while it holds the fans is killed by its watchdog, and the next one puts them back.
. "$(dirname "$0")/lib.sh"

plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1

call setFanFloorWithPercentWithReply d 60 >/dev/null
wait_until 2 "the fan is forced" fan_is_in hwmon0 1
hung=$(helper_pid)
inside kill -STOP "$hung"
stopped=$(now)
wait_until 12 "the fan is back" fan_is_in hwmon0 5
echo "fan back $(($(now) - stopped)) ms after the helper hung"

wait_until 5 "the helper serves again" call pingWithReply
[[ $(helper_pid) != "$hung" ]] || fail "the hung process still serves"
