#!/bin/bash
# Whatever the application is about when its buses end, it goes on, drives the fans again when they are back, and looks for
# the login manager again.
. "$(dirname "$0")/desktop.sh"

restarts=20
bus=
trap 'kill "$bus" 2>/dev/null || true' EXIT
start_bus() {
    rm --force "$folder/bus"
    dbus-daemon --session --nofork --nopidfile --address="unix:path=$folder/bus" 2>/dev/null &
    bus=$!
    wait_until 10 "the bus is there" test -S "$folder/bus"
}
end_bus() {
    kill -KILL "$bus"
    wait "$bus" 2>/dev/null || true
}
# The helper ends with its bus; this is its service manager.
start_helper_again() {
    rm "$folder/helper.log"
    start_helper
}

# The key switches, so it is given time before it is pressed again.
drives_fans() { helper_says effectivePercent "d 100"; }
key_drives_fans() {
    local tries
    xdotool key super+alt+l
    for ((tries = 0; tries < 40; ++tries)); do
        ! drives_fans || return 0
        sleep 0.05
    done
    return 1
}

export DBUS_SESSION_BUS_ADDRESS=unix:path=$folder/bus DBUS_SYSTEM_BUS_ADDRESS=unix:path=$folder/bus
start_bus
simulate "load = 20"
start_helper
skip_introduction '"fan.coolingMode": "manual"'
start_corvane
wait_until 10 "the panel opens by itself" panel_is_shown

for ((restart = 1; restart <= restarts; ++restart)); do
    wait_until 30 "a key switches the fans on before restart $restart" key_drives_fans
    # With a call under way, as likely as not.
    xdotool key super+alt+l
    end_bus
    start_bus
    start_helper_again
    kill -0 "$application" || fail "the application ended with restart $restart"
done
wait_until 30 "a key switches the fans on" key_drives_fans
# None is on this bus, which the application says when it has asked.
asks_login_manager_again() { (($(grep --count "no login manager" "$folder/application.log") >= 2)); }
wait_until 20 "it asks for a login manager again" asks_login_manager_again
kill "$application"
wait "$application" || fail "the application ended with $?"
