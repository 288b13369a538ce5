#!/bin/bash
# What somebody else makes the helper hold, fans or lid, the application releases within seconds when nobody who uses
# it wants that; and what an earlier run left behind it releases when it starts.
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/application.sh"

plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1

has_lid_lock() { grep --quiet handle-lid-switch <<<"$(inside systemd-inhibit --list --no-legend)"; }
has_no_lid_lock() { ! has_lid_lock; }

call setFanFloorWithPercentWithReply d 80 >/dev/null
call setLidStayAwakeWithReply b true >/dev/null
wait_until 3 "the fan is forced by somebody else" fan_is_in hwmon0 1
wait_until 3 "the lid is locked by somebody else" has_lid_lock
start_application /opt/corvane
wait_until 4 "what an earlier run may have left is released at start" fan_is_in hwmon0 5
wait_until 3 "the lid lock of an earlier run is gone, too" has_no_lid_lock

wait_until 5 "the application polls" shows fan.isBoosted false
call setFanFloorWithPercentWithReply d 80 >/dev/null
call setLidStayAwakeWithReply b true >/dev/null
wait_until 3 "the fan is forced behind the application's back" fan_is_in hwmon0 1
started=$(now)
wait_until 12 "the fan is released again" fan_is_in hwmon0 5
expect_between "milliseconds until the application let go" $(($(now) - started)) 2500 9000
wait_until 3 "the lid is released, too" has_no_lid_lock

tell lid-lock on
wait_until 3 "the application's own lid lock is there" has_lid_lock
call setFanFloorWithPercentWithReply d 80 >/dev/null
wait_until 12 "the fan is released again" fan_is_in hwmon0 5
has_lid_lock || fail "the application's own lid lock was released with the fans"
quit_application
