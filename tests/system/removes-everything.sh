#!/bin/bash
# An application below a prefix of its own, whose helper drives a fan, is removed behind one prompt: the fan is handed
# back, and of files, services and settings only that is left which was there before. Where the fan cannot be handed
# back, everything stays.
. "$(dirname "$0")/removal.sh"
. "$tests/stuck-fan.sh"

plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1
inside mkdir --parents "$home/.config/autostart" "$home/.cache"
inside chown --recursive operator-with-sudo: "$home"
disk=$(changes_on_disk)

install_application
install_helper
call setFanFloorWithPercentWithReply d 60 >/dev/null
wait_until 2 "the fan is driven" fan_is_in hwmon0 1
# What else the application and its helper have left by then.
as_operator env HOME="$home" removal-driver leave-traces
inside touch /var/log/corvane-smchelper.log /usr/local/libexec/corvane/corvane-helper.4711
inside test -s /run/corvane/fans || fail "the helper has no journal"
inside test -f "$home/.config/de.tavrin.corvane/settings.json" || fail "there are no settings"
inside test -f "$home/.config/autostart/de.tavrin.corvane.desktop" || fail "there is no login item"

# A helper that has to be killed, and a fan that the next one cannot hand back either.
make_helper_deaf
inside systemctl restart "$unit"
call setFanFloorWithPercentWithReply d 60 >/dev/null
wait_until 2 "the fan is driven" fan_is_in hwmon0 1
make_fan_stick hwmon0
held=$(changes_on_disk)
expect_equal "what the uninstaller says of a fan that sticks" "$(remove_corvane)" "failure: $stuck"
expect_same_disk "the removal with a fan that sticks" "$held"
fan_is_in hwmon0 1 || fail "the fan does not stick"
wait_until 5 "the helper serves" call pingWithReply
let_fan_go hwmon0
make_helper_hear

# Somebody asks for the fan as soon as the helper has stopped, and waits a second for the answer.
call setFanFloorWithPercentWithReply d 60 >/dev/null
wait_until 2 "the fan is driven" fan_is_in hwmon0 1
cat >"$BOX_ROOT/usr/sbin/systemctl" <<END
#!/bin/sh
/usr/bin/systemctl "\$@"
status=\$?
[ "\$1" != stop ] || busctl --system --timeout=1 call -- $name $path $interface setFanFloorWithPercentWithReply d 60
exit \$status
END
chmod 755 "$BOX_ROOT/usr/sbin/systemctl"
before=$(helper_log)
expect_equal "what the uninstaller says" "$(remove_answering "password=$password")" "prompt: de.tavrin.corvane.uninstall: \
Corvane will remove its background helper and itself completely.
success"
inside rm /usr/sbin/systemctl
fan_is_in hwmon0 5 || fail "the fan was not handed back"
expect_equal "the fan's duty" "$(fan_duty hwmon0)" 77
log=$(helper_log)
log=${log#"$before"}
[[ $log == *"received termination signal"*"released to Apple-auto (verified, attempt 1)"* ]] || fail "nothing was verified"
expect_no_helper "after the removal"
inside rm "$actions/de.tavrin.corvane.policy"
expect_same_disk "the removal" "$disk"

# The same again, with a helper that died while it held the fan, and that nobody has started since.
install_application
install_helper
inside mkdir --parents "/run/systemd/system/$unit.d"
printf '[Service]\nRestart=no\n' >"$BOX_ROOT/run/systemd/system/$unit.d/stays-dead.conf"
inside systemctl daemon-reload
kill "$caller"
wait "$caller" 2>/dev/null || true
trap explain_failure EXIT
call setFanFloorWithPercentWithReply d 60 >/dev/null
wait_until 2 "the fan is driven" fan_is_in hwmon0 1
inside kill -KILL "$(helper_pid)"
wait_until 5 "the helper is dead" helper_is failed
fan_is_in hwmon0 1 || fail "somebody has handed the fan back"
expect_equal "what the uninstaller says with a dead helper" "$(remove_corvane)" success
fan_is_in hwmon0 5 || fail "the fan of a dead helper was not handed back"
inside rm --recursive "/run/systemd/system/$unit.d"
inside systemctl daemon-reload
expect_no_helper "after the removal of a dead helper"
inside rm "$actions/de.tavrin.corvane.policy"
expect_same_disk "the removal of a dead helper" "$disk"
