#!/bin/bash
# A running application sees an upgrade of the package as an interruption: its settings stay, the firmware has the fans,
# and its next wish is the new helper's.
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/package.sh"
. "$(dirname "$0")/application.sh"

plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1

install_package
start_application /opt/corvane
wait_until 5 "the first status has come" shows fan.cpuTemp 45
tell mode manual
tell fans on
tell slider 60
wait_until 5 "the application shows the boost" shows fan.isBoosted true
settings=/tmp/.config/de.tavrin.corvane/settings.json
stored=$(inside cat "$settings")

make_later_package
install_package
expect_equal "the fan's mode after the upgrade" "$(fan_mode hwmon0)" 5
expect_equal "the settings after the upgrade" "$(inside cat "$settings")" "$stored"
wait_until 5 "the application noticed the interruption" has_shown fan.statusMessage "Helper unterbrochen — verbinde neu"
wait_until 10 "the application shows that nothing is held" shows fan.isBoosted false
wait_until 10 "its poll has started the new helper" is_live
! grep '^fan.statusMessage .*\(verloren\|XPC-Fehler\)' "$application_output" || fail "the connection was lost"

tell slider 70
wait_until 5 "the fan is driven again" fan_is_in hwmon0 1
wait_until 5 "the application shows it" shows fan.isBoosted true

stored=$(inside cat "$settings")
purge_package
expect_equal "the fan's mode after the removal" "$(fan_mode hwmon0)" 5
expect_equal "the settings after the removal" "$(inside cat "$settings")" "$stored"
wait_until 10 "the application knows that there is no helper" has_shown fan.statusMessage "Helper-Verbindung verloren"
quit_application
