# shellcheck shell=bash
# A desktop in the box, with Corvane on it: seen as a screen reader sees it, moved by a hand on mouse and keyboard.
# Sourced after removal.sh. Who sources this starts a session bus at $desk/bus and defines `on_desktop COMMAND...`, which
# runs a command as the operator's desktop would, with what $desktop_variables holds.

: "${tests:?}" "${home:?}"
desk_display=:77

for needed in /usr/bin/Xvfb /usr/bin/xfwm4 /usr/bin/xdotool /usr/bin/python3 /usr/bin/dbus-daemon; do
    inside test -x "$needed" || {
        echo "SKIPPED: $needed is not installed" >&2
        exit 77
    }
done
inside /usr/bin/python3 -c 'import gi; gi.require_version("Atspi", "2.0")' 2>/dev/null || {
    echo "SKIPPED: gir1.2-atspi-2.0 is not installed" >&2
    exit 77
}

# set_desk FOLDER: the runtime folder of the desktop, and with it all variables.
set_desk() {
    desk=$1
    # shellcheck disable=SC2034 # for who sources this
    desktop_variables=(HOME="$home" XDG_RUNTIME_DIR="$desk" DISPLAY="$desk_display"
        DBUS_SESSION_BUS_ADDRESS="unix:path=$desk/bus" QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 LANG=C.UTF-8)
}

# Notifications are nobody's until the test starts a server, and a service that waits for somebody would hold them up.
forget_notification_servers() {
    inside sh -c 'grep --files-with-matches org.freedesktop.Notifications /usr/share/dbus-1/services/* | xargs -r rm'
}

display_is_there() { inside test -S "/tmp/.X11-unix/X${desk_display#:}"; }

# says TEXT TIMES: in so many lines of the application's log, a restart's included.
says() { [[ $(grep --count --fixed-strings -- "$1" "$BOX_ROOT/tmp/corvane.log") == "$2" ]]; }

# From a place that anybody in the box can read, wherever this checkout is.
install --mode=755 "$tests/accessible" "$BOX_ROOT/run/accessible"
accessible() { on_desktop /run/accessible Corvane "$@"; }
shows() { grep --quiet --fixed-strings -- "$1" <<<"$(accessible list)"; }

# Sets `place` to x, y, width and height of something that does not move any more.
# has_come_to_rest ROLE NAME
has_come_to_rest() {
    local before=${place[*]-}
    read -ra place <<<"$(accessible where "$1" "$2")"
    ((${#place[@]} == 4)) && [[ ${place[*]} == "$before" ]]
}

# click_on ROLE NAME [PERCENT]: in its middle, or at that part of its width.
click_on() {
    local place=()
    wait_until 15 "there is a $1 called $2" has_come_to_rest "$1" "$2"
    on_desktop xdotool mousemove $((place[0] + place[2] * ${3:-50} / 100)) $((place[1] + place[3] / 2)) click 1
}

# A second start opens the panel of the first.
open_panel() {
    on_desktop timeout 20 corvane || fail "a second start ended with $?"
}
