#!/bin/bash
# A bus that goes down takes every caller with it: no fan stays forced, and the helper serves on the next bus.
. "$(dirname "$0")/lib.sh"

plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1

call setFanFloorWithPercentWithReply d 60 >/dev/null
wait_until 2 "the fan is forced" fan_is_in hwmon0 1
restarted=$(now)
inside systemctl restart dbus.service
wait_until 10 "the fan is back" fan_is_in hwmon0 5
echo "fan back $(($(now) - restarted)) ms after the bus was restarted"

wait_until 10 "the helper serves again" call pingWithReply
