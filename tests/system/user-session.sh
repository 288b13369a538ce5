# shellcheck shell=bash
# For tests of what the application asks of a user's desktop: the visitor logs in, with a service manager and a message
# bus of their own and, if the desktop draws, an X server. Sourced after application.sh.

display=:77

# in_session COMMAND...: as the visitor's desktop would start it.
in_session() {
    inside env XDG_RUNTIME_DIR=/run/user/4242 DBUS_SESSION_BUS_ADDRESS=unix:path=/run/user/4242/bus \
        DISPLAY="$display" HOME=/home/visitor setpriv --reuid visitor --regid visitor --init-groups "$@"
}

log_in() {
    if ! inside test -e /usr/lib/systemd/user/dbus.socket; then
        echo "SKIPPED: user sessions have no message bus here (dbus-user-session)" >&2
        exit 77
    fi
    inside install --directory --owner visitor --group visitor /home/visitor
    # A notification server that is started where nothing is drawn keeps those waiting who have something to notify.
    inside sh -c 'grep --files-with-matches org.freedesktop.Notifications /usr/share/dbus-1/services/* | xargs -r rm'
    inside systemctl start user@4242.service
    wait_until 20 "the visitor's bus is there" in_session busctl --user list
}

# needs PROGRAM...: what the desktop is made of, by full paths.
needs() {
    local program
    for program in "$@"; do
        if ! inside test -x "$program"; then
            echo "SKIPPED: $program is not installed" >&2
            exit 77
        fi
    done
}

has_display() { inside test -S "/tmp/.X11-unix/X${display#:}"; }

start_display() {
    in_session Xvfb "$display" -screen 0 640x480x24 >/dev/null 2>&1 &
    wait_until 20 "the X server is there" has_display
}

# is_on_session_bus NAME
is_on_session_bus() {
    in_session busctl --user --no-pager status "$1"
}

# session_call NAME PATH INTERFACE MEMBER [SIGNATURE ARGUMENT...]
session_call() {
    in_session busctl --user call "$@"
}

# idle_locks: how many locks against idling the visitor holds with the login manager.
idle_locks() {
    inside busctl --system call org.freedesktop.login1 /org/freedesktop/login1 org.freedesktop.login1.Manager \
        ListInhibitors | grep --only-matching '"idle" "Corvane" "[^"]*" "block" 4242 ' | wc --lines
}
idle_locks_are() { [[ $(idle_locks) == "$1" ]]; }
