#!/bin/bash
# When the X server dies, the application ends without a crash and says why. What it held is let go of, and the next
# start, on another display, is the first again.
. "$(dirname "$0")/desktop.sh"

Xvfb -displayfd 4 -screen 0 1280x1024x24 -nolisten tcp -noreset 4>"$folder/other-display" >/dev/null 2>&1 &
server=$!
trap '[[ -z $server ]] || kill "$server"' EXIT
wait_until 10 "another X server is there" test -s "$folder/other-display"
other_display=:$(<"$folder/other-display")
there() { DISPLAY=$other_display "$@"; }

simulate "load = 20"
start_helper
skip_introduction '"fan.coolingMode": "manual"'
there start_corvane
wait_until 10 "the panel opens by itself" there panel_is_shown
there xdotool key super+alt+l
wait_until 5 "a key switches the fans on" helper_says effectivePercent "d 100"

# --- the display dies
kill -KILL "$server"
wait "$server" 2>/dev/null || true
server=
status=0
wait "$application" || status=$?
((status == 1)) || fail "the application ended with $status"
grep --quiet --fixed-strings "X11 connection broke" "$folder/application.log" || fail "it does not say why it ended"
# To ask the helper would be a sign of life.
heard_nothing() { grep --quiet "WATCHDOG" "$folder/helper.log"; }
wait_until 10 "silence is noticed" heard_nothing
helper_says mode "i 0" || fail "the helper has not let go"

# --- the next start
start_corvane
knows_its_helper_again() { (($(grep --count "the fan helper is installed" "$folder/application.log") == 2)); }
wait_until 10 "the next start is at work" knows_its_helper_again
panel_is_closed || fail "the next start opened the panel by itself"
"$PROGRAM" || fail "the start after it ended with $?"
wait_until 5 "it opened the panel of the one before" panel_is_shown
kill "$application"
wait "$application" || fail "the next start ended with $?"
