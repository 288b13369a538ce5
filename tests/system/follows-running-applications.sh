#!/bin/bash
# A rule holds while its application runs, from less than a second after it started until less than a second after it
# quit, where the user's service manager runs it; the rest is found within a poll.
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/application.sh"
. "$(dirname "$0")/user-session.sh"

# The rule says so within a second of a moment on the clock.
# expect_within_a_second WHAT MOMENT PROPERTY VALUE
expect_within_a_second() {
    wait_until 5 "$1" shows "$3" "$4"
    expect_between "milliseconds until $1" $(($(now) - $2)) 0 1000
}

log_in
start_application /opt/corvane in_session
tell app org.example.Render Render
tell automation on
wait_until 5 "the automation is on" shows automation.automationEnabled true
shows automation.active false || fail "the rule holds before its application runs"

# As desktops start applications: in a scope of its own, or as a service.
in_session systemd-run --user --scope --quiet --unit 'app-gnome-org.example.Render-4711.scope' sleep 1000 &
wait_until 5 "the scope is there" in_session systemctl --user is-active 'app-gnome-org.example.Render-4711.scope'
expect_within_a_second "the rule holds" "$(now)" automation.active true
shows automation.activeReason Render || fail "the rule is not named"
wait_until 5 "the rule's two kinds are held" idle_locks_are 2
quit=$(now)
in_session systemctl --user stop 'app-gnome-org.example.Render-4711.scope'
expect_within_a_second "the rule does not hold any more" "$quit" automation.active false
wait_until 5 "nothing is held" idle_locks_are 0

started=$(now)
in_session systemd-run --user --quiet --unit 'app-org.example.Render@f00d.service' sleep 1000
expect_within_a_second "the rule holds for a service" "$started" automation.active true
quit=$(now)
in_session systemctl --user kill --signal KILL 'app-org.example.Render@f00d.service'
expect_within_a_second "it does not once the service was killed" "$quit" automation.active false

started=$(now)
in_session systemd-run --user --quiet --unit 'app-org.example.Other@f00d.service' sleep 1000
in_session env GIO_LAUNCHED_DESKTOP_FILE=/usr/share/applications/org.example.Render.desktop \
    sh -c 'GIO_LAUNCHED_DESKTOP_FILE_PID=$$ exec sleep 1000' &
wait_until 8 "an application that the manager does not know is found by the poll" shows automation.active true
inside pkill --full --exact 'sleep 1000'
wait_until 8 "so is its end" shows automation.active false
