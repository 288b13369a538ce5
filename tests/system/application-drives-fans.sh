#!/bin/bash
# The application starts the helper by asking how the fans are, drives them through it over the real bus, and is back
# in step by itself when the helper is killed in the middle of a boost.
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/application.sh"

plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1

helper_is inactive || fail "the helper ran before anybody asked"
start_application /opt/corvane
wait_until 5 "the first status has come" shows fan.cpuTemp 45
helper_is active || fail "the helper was not started by the application's poll"
expect_equal "mode of a fan that nobody asked for" "$(fan_mode hwmon0)" 5

tell mode manual
tell fans on
tell slider 60
wait_until 5 "the fan is forced" fan_is_in hwmon0 1
wait_until 5 "the application shows the boost" shows fan.isBoosted true
wait_until 5 "the application shows the floor" shows fan.targetPercent 60
wait_until 5 "the helper's own figure is shown" shows fan.effectivePercent 60
expect_between "duty of the forced fan" "$(fan_duty hwmon0)" 153 255

inside kill -KILL "$(helper_pid)"
wait_until 5 "the fan is the firmware's again" fan_is_in hwmon0 5
wait_until 5 "the application noticed the interruption" has_shown fan.statusMessage "Helper unterbrochen — verbinde neu"
wait_until 10 "the application shows that nothing is held" shows fan.isBoosted false
wait_until 5 "the application shows what the new helper applies" shows fan.effectivePercent 0

tell slider 70
wait_until 5 "the fan is forced again" fan_is_in hwmon0 1
wait_until 5 "the application shows the new boost" shows fan.isBoosted true
tell fans off
wait_until 10 "the fan is handed back" fan_is_in hwmon0 5
wait_until 5 "the application shows the release" shows fan.isBoosted false

tell request max
wait_until 5 "the automation's request turns the fan" fan_is_in hwmon0 1
quit_application
wait_until 15 "the helper noticed that the application is gone" fan_is_in hwmon0 5
