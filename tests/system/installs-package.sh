#!/bin/bash
# The package is installed, installed once more and purged, each while the fans are driven: the helper answers, hands
# the fans back every time, and nothing is left of it in the end.
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/package.sh"

plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1

drive_fan() {
    expect_equal "the reply" "$(call setFanFloorWithPercentWithReply d 60)" 'bs true "floor set to 60%"'
    wait_until 2 "the fan is driven" fan_is_in hwmon0 1
}

before=$(changes_on_disk)
install_package
[[ $(changes_on_disk) != "$before" ]] || fail "the package has changed nothing"
helper_is inactive || fail "the helper was started before anybody asked"
drive_fan
is_live || fail "another program runs than was installed"

install_package
expect_equal "the fan's mode after the same package" "$(fan_mode hwmon0)" 5
expect_in_log "Corvane daemon: released to Apple-auto (verified, attempt 1)"
drive_fan

purge_package
expect_equal "the fan's mode after the removal" "$(fan_mode hwmon0)" 5
expect_same_disk "the removal" "$before"
answer=$(call pingWithReply 2>&1) && fail "somebody answers: $answer"
[[ $answer == *"not provided by any"* || $answer == *"not activatable"* ]] || fail "not unknown: $answer"
expect_equal "the unit" "$(inside systemctl show --property LoadState --value "$unit")" not-found

# What an administrator might do next.
install_package
drive_fan
dpkg_does --remove corvane
expect_equal "the fan's mode after the removal that keeps settings" "$(fan_mode hwmon0)" 5
purge_package
expect_same_disk "the removal in two steps" "$before"
