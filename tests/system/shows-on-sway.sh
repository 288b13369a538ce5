#!/bin/bash
# On a Wayland compositor without a tray, the panel opens by itself after a new build and closes with Escape; a second
# start opens it again. Run by sway itself, which says where it is.
. "$(dirname "$0")/desktop.sh"

simulate "load = 20"
start_helper
start_corvane
wait_until 20 "the panel opens by itself" panel_is_shown
eval "$(xdotool getwindowgeometry --shell "$(panel_window)")"
((X >= 0 && Y >= 0 && X + WIDTH <= 1280 && Y + HEIGHT <= 720)) ||
    fail "the panel is not whole on the screen: $X $Y $WIDTH $HEIGHT"
xdotool key Escape
wait_until 5 "Escape closes it" panel_is_closed
"$PROGRAM" || fail "a second start ended with $?"
wait_until 5 "a second start opens the panel of the first" panel_is_shown
grim "$folder/sway.png"
(($(convert "$folder/sway.png" -crop "${WIDTH}x$HEIGHT+$X+$Y" +repage -format '%k' info:) > 50)) ||
    fail "the compositor does not show the panel"
xdotool key Escape
wait_until 5 "and Escape closes it again" panel_is_closed
kill "$application"
wait "$application" || fail "the application ended with $?"
