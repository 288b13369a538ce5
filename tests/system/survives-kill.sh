#!/bin/bash
# A helper killed while it holds the fans is replaced by one that puts every fan back exactly as it was, within a
# second, however often.
. "$(dirname "$0")/lib.sh"

plug_in_board hwmon0 nct6798 5
plug_in_board hwmon1 nct6687 99
plug_in_processor hwmon2

fans_are_forced() { fan_is_in hwmon0 1 && fan_is_in hwmon1 1; }
fans_are_back() { fan_is_in hwmon0 5 && fan_is_in hwmon1 99; }

for round in 1 2 3 4 5 6; do
    call setFanFloorWithPercentWithReply d 60 >/dev/null
    wait_until 2 "the fans are forced (round $round)" fans_are_forced
    inside kill -KILL "$(helper_pid)"
    killed=$(now)
    wait_until 5 "the fans are back (round $round)" fans_are_back
    took=$(($(now) - killed))
    echo "round $round: fans back $took ms after SIGKILL"
    expect_between "milliseconds until the fans were back (round $round)" "$took" 0 1000
done
wait_until 5 "the helper serves again" call pingWithReply
