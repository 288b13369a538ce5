#!/bin/bash
# Under GNOME it is the session manager that is asked: it lists each kind with its reason and its flag while it is held,
# and no longer than that.
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/application.sh"
. "$(dirname "$0")/user-session.sh"
needs /usr/bin/Xvfb /usr/libexec/gnome-session-binary

manager=org.gnome.SessionManager
# inhibitors: "APPLICATION REASON FLAGS" of each, sorted.
inhibitors() {
    local inhibitor
    for inhibitor in $(session_call "$manager" /org/gnome/SessionManager "$manager" GetInhibitors |
        grep --only-matching '/[^"]*'); do
        echo "$(inhibitor_says "$inhibitor" GetAppId) $(inhibitor_says "$inhibitor" GetReason)" \
            "$(inhibitor_says "$inhibitor" GetFlags)"
    done | sort
}
# inhibitor_says PATH MEMBER: without the type.
inhibitor_says() {
    session_call "$manager" "$1" "$manager.Inhibitor" "$2" | cut --delimiter ' ' --fields 2-
}
inhibitors_are() { [[ $(inhibitors) == "$1" ]]; }

display_held='"de.tavrin.corvane" "Wakewell: prevent display sleep" 8'
network_held='"de.tavrin.corvane" "Wakewell: keep network active" 4'
system_held='"de.tavrin.corvane" "Wakewell: prevent system sleep" 4'

log_in
start_display
inside install --directory /usr/share/gnome-session/sessions
printf '[GNOME Session]\nName=Plain\nRequiredComponents=\n' |
    inside install -m 644 /dev/stdin /usr/share/gnome-session/sessions/plain.session
in_session /usr/libexec/gnome-session-binary --session=plain --disable-acceleration-check --builtin \
    >/dev/null 2>&1 &
wait_until 20 "the session manager is there" is_on_session_bus "$manager"
start_application /opt/corvane in_session

tell awake system,display open
wait_until 10 "both kinds are listed" inhibitors_are "$display_held"$'\n'"$system_held"
idle_locks_are 0 || fail "the login manager was asked as well"
tell toggle network
wait_until 5 "network is listed" inhibitors_are "$network_held"$'\n'"$display_held"$'\n'"$system_held"
tell toggle display
wait_until 5 "display is gone" inhibitors_are "$network_held"$'\n'"$system_held"
tell awake - open
wait_until 5 "nothing is left" inhibitors_are ""

tell awake system,display open
wait_until 5 "both kinds are listed again" inhibitors_are "$display_held"$'\n'"$system_held"
kill_application
wait_until 5 "a killed application holds nothing" inhibitors_are ""
