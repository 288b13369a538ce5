#!/bin/bash
# On a Wayland compositor without a tray, the panel opens by itself after a new build, takes the keyboard from whoever
# had it, and stays; Escape closes it, and so does another window that is given the keyboard. A second start opens it
# again, also where there is no X server. Run by sway itself, which says where it is.
. "$(dirname "$0")/desktop.sh"

# The compositor has no keyboard of its own. One that comes and goes with each key takes the focus along.
wtype -s 100000 x &

# --- a window on Wayland, which has the keyboard
foot --app-id=terminal sleep 100 2>"$folder/foot.log" &
terminal_has_keyboard() {
    grep --quiet '"focused":true,.*"app_id":"terminal"' <<<"$(swaymsg --raw --type get_tree | tr --delete ' \n')"
}
wait_until 20 "the terminal has the keyboard" terminal_has_keyboard

simulate "load = 20"
start_helper
skip_introduction ""
start_corvane
wait_until 20 "the panel opens by itself" panel_is_shown
expect_panel_stays
eval "$(xdotool getwindowgeometry --shell "$(panel_window)")"
((X >= 0 && Y >= 0 && X + WIDTH <= 1280 && Y + HEIGHT <= 720)) ||
    fail "the panel is not whole on the screen: $X $Y $WIDTH $HEIGHT"
wtype -k Escape
wait_until 5 "Escape closes it" panel_is_closed

# --- a second start
"$PROGRAM" || fail "a second start ended with $?"
wait_until 20 "a second start opens the panel of the first" panel_is_shown
expect_panel_stays
grim "$folder/sway.png"
eval "$(xdotool getwindowgeometry --shell "$(panel_window)")"
(($(convert "$folder/sway.png" -crop "${WIDTH}x$HEIGHT+$X+$Y" +repage -format '%k' info:) > 50)) ||
    fail "the compositor does not show the panel"
swaymsg --quiet '[app_id="terminal"] focus'
wait_until 5 "another window that is given the keyboard closes it" panel_is_closed
kill "$application"
wait "$application" || fail "the application ended with $?"

# --- without an X server
unset DISPLAY
rm --force "$XDG_RUNTIME_DIR/corvane/open"
start_corvane
wait_until 20 "it runs" test -S "$XDG_RUNTIME_DIR/corvane/open"
compositor_shows_panel() { grep --quiet 'app_id": *"de.tavrin.corvane"' <<<"$(swaymsg --raw --type get_tree)"; }
compositor_shows_panel && fail "the panel is open already"
"$PROGRAM" || fail "a second start without an X server ended with $?"
wait_until 5 "the compositor shows the panel" compositor_shows_panel
wtype -k Escape
wait_until 5 "Escape closes it there, too" eval '! compositor_shows_panel'
kill "$application"
wait "$application" || fail "without an X server the application ended with $?"
