#!/bin/bash
# Installing over a helper that is driving fans: it hands them back, and the new program takes its place at once.
. "$(dirname "$0")/installation.sh"

plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1

[[ $(install_helper) == *success* ]] || fail "the first installation failed"
call setFanFloorWithPercentWithReply d 60 >/dev/null
wait_until 2 "the fan is driven" fan_is_in hwmon0 1
old=$(helper_pid)
is_live || fail "another program runs than was installed"

rebuild_helper "a newer build"
output=$(install_helper)
[[ $output == "before: installed=true update=true"* ]] || fail "the update was not noticed: $output"
[[ $output == *"success
after: installed=true update=false" ]] || fail "the update failed: $output"

fan_is_in hwmon0 5 || fail "the fan was not handed back"
expect_in_log "Corvane daemon: received termination signal — releasing to Apple"
expect_in_log "Corvane daemon: released to Apple-auto (verified, attempt 1)"
inside cmp "$folder/corvane-helper" "$program" || fail "the old program is still installed"
[[ $(helper_pid) != "$old" ]] || fail "the old program still runs"
is_live || fail "the new program does not run"
expect_equal "a call to the new one" "$(call setFanFloorWithPercentWithReply d 60)" 'bs true "floor set to 60%"'
wait_until 2 "the new one drives the fan" fan_is_in hwmon0 1

# An old helper that hangs is replaced as well, and its fan is not left forced.
rebuild_helper "an even newer build"
inside kill -STOP "$(helper_pid)"
[[ $(install_helper) == *success* ]] || fail "a hung helper cannot be replaced"
is_live || fail "the program after the hung one does not run"
wait_until 5 "the hung one's fan is back" fan_is_in hwmon0 5

# A bus or a service manager that does not do as it is told does not undo an installation.
inside systemctl stop "$unit"
inside mount --bind /bin/false /usr/bin/systemctl
rebuild_helper "the newest build"
[[ $(install_helper) == *success* ]] || fail "a failing systemctl failed the installation"
inside umount /usr/bin/systemctl
expect_equal "the first reply after it" "$(call pingWithReply)" 'bs true "Corvane daemon alive, fans=1"'
inside cmp "$folder/corvane-helper" "$program" || fail "the newest program was not installed"
is_live || fail "the newest program does not run"
