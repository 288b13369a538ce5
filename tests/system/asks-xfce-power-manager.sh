#!/bin/bash
# Under XFCE it is the desktop's power manager that is asked not to go to sleep: it lists what is held, and no longer
# than that; it is asked again after it was restarted, and the login manager in its place while it is away.
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/application.sh"
. "$(dirname "$0")/user-session.sh"
needs /usr/bin/Xvfb /usr/bin/xfce4-power-manager

start_power_manager() {
    in_session xfce4-power-manager --no-daemon >/dev/null 2>&1 &
    wait_until 20 "the power manager is there" is_on_session_bus org.freedesktop.PowerManagement
}
# Who holds something, one word for each hold.
holders() {
    session_call org.freedesktop.PowerManagement /org/freedesktop/PowerManagement/Inhibit \
        org.freedesktop.PowerManagement.Inhibit GetInhibitors | cut --delimiter ' ' --fields 3-
}
holders_are() { [[ $(holders) == "$1" ]]; }
is_inhibited() {
    [[ $(session_call org.freedesktop.PowerManagement /org/freedesktop/PowerManagement/Inhibit \
        org.freedesktop.PowerManagement.Inhibit HasInhibit) == "b $1" ]]
}

log_in
start_display
start_power_manager
is_inhibited false || fail "somebody holds something before the application runs"
start_application /opt/corvane in_session

tell awake system open
wait_until 10 "the power manager lists the session" holders_are '"Corvane"'
idle_locks_are 0 || fail "the login manager was asked as well"
tell toggle display
wait_until 5 "it lists the second kind" holders_are '"Corvane" "Corvane"'
tell toggle network
wait_until 5 "it lists the third kind" holders_are '"Corvane" "Corvane" "Corvane"'
tell toggle system
tell toggle network
wait_until 5 "one kind is left" holders_are '"Corvane"'
tell awake - open
wait_until 5 "nothing is left" is_inhibited false

tell awake system,display open
wait_until 5 "both kinds are listed" holders_are '"Corvane" "Corvane"'
inside pkill --signal KILL --exact xfce4-power-man
wait_until 10 "the login manager is asked while the power manager is away" idle_locks_are 2
start_power_manager
wait_until 10 "the power manager is asked again after its restart" holders_are '"Corvane" "Corvane"'
wait_until 5 "the login manager no more" idle_locks_are 0

kill_application
wait_until 5 "a killed application holds nothing" holders_are ""
