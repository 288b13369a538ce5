#!/bin/bash
# Upgrades and removals when the helper has to be killed, and when a fan cannot be handed back: the package is not
# removed before every fan is with its firmware.
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/package.sh"
. "$(dirname "$0")/stuck-fan.sh"

plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1

drive_fan() {
    wait_until 5 "the helper takes a floor" call setFanFloorWithPercentWithReply d 60
    wait_until 2 "the fan is driven" fan_is_in hwmon0 1
}

make_helper_deaf
install_package
drive_fan
make_later_package
install_package
expect_equal "the fan's mode after the upgrade" "$(fan_mode hwmon0)" 5
[[ $(helper_log) != *"received termination signal"* ]] || fail "the helper was not killed"
drive_fan
is_live || fail "the new program does not run"

# The next helper finds a driver that takes no mode any more.
make_fan_stick hwmon0
if output=$(inside dpkg --purge corvane 2>&1); then
    fail "the helper was removed with a fan in its hands: $output"
fi
[[ $output == *"a fan cannot be handed back to the firmware"* ]] || fail "no reason was given: $output"
expect_equal "the fan's mode when nobody can change it" "$(fan_mode hwmon0)" 1
inside test -x "$program" || fail "the program is gone"
wait_until 5 "the helper serves" call pingWithReply

# And one that does.
let_fan_go hwmon0
drive_fan
purge_package
expect_equal "the fan's mode after the removal" "$(fan_mode hwmon0)" 5
inside test ! -e "$program" -a ! -e /run/corvane || fail "something is left"
