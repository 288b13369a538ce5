#!/bin/bash
# On XFCE's panel the status item appears, and a click opens the panel at it: the fans follow its slider, a chip begins
# a boost, a click elsewhere closes it, also over a question, which waits for its answer. The hot keys work, another start
# opens the panel, and a notification is drawn.
. "$(dirname "$0")/desktop.sh"

start_xfce_panel "$folder/xfce"
dunst >"$folder/dunst.log" 2>&1 &
wait_until 20 "the tray is there" busctl --user status org.kde.StatusNotifierWatcher
wait_until 20 "the tray is drawn" stands_still
picture "$folder/empty.png"
simulate "load = 20"
start_helper

# --- the item, and the panel that opens by itself after a new build
skip_introduction ""
start_corvane
wait_until 10 "the item is registered" item_name
wait_until 10 "the panel opens by itself" panel_is_shown
expect_panel_stays
xdotool key Escape
wait_until 5 "Escape closes it" panel_is_closed
wait_until 5 "the item is drawn" place_of_item "$folder/empty.png"
read -ra item <<<"$(place_of_item "$folder/empty.png")"

# --- a click on it opens the panel there
click_at "${item[@]}"
wait_until 5 "a click opens the panel" panel_is_shown
expect_panel_stays
eval "$(xdotool getwindowgeometry --shell "$(panel_window)")"
((Y >= panel_height && Y < panel_height + 24)) || fail "the panel begins at $Y, not below the bar"
((X <= item[0] && X + WIDTH >= item[0])) || fail "the panel spans $X to $((X + WIDTH)), the item is at ${item[0]}"
click_at 100 900
wait_until 5 "a click elsewhere closes it" panel_is_closed
click_at "${item[@]}"
wait_until 5 "the next click opens it again" panel_is_shown
click_at "${item[@]}"
wait_until 5 "a click on the item closes it" panel_is_closed
wait_until 5 "the desktop is at rest" stands_still
panel_is_closed || fail "the click that closed the panel opened it again"
click_at "${item[@]}"
wait_until 5 "the next click opens it" panel_is_shown

# --- a click elsewhere closes it whatever lies over it; a question is there again with it
leave_and_come_back() {
    click_at 100 900
    wait_until 5 "a click elsewhere closes the panel with $1" panel_is_closed
    click_at "${item[@]}"
    wait_until 5 "the panel is open again" panel_is_shown
}
asks() { accessible where "push button" "$1" >/dev/null 2>&1; }
click_on "push button" "Automation" # its title, to open the section
click_on "push button" "Choose app…"
wait_until 5 "the applications are offered" asks "Choose"
leave_and_come_back "the applications"
wait_until 5 "the panel is read" asks "Automation"
! asks "Choose" || fail "the applications are offered still"
click_on "check box" "Awake, lid closed"
wait_until 5 "it asks about the closed lid" asks "Enable"
leave_and_come_back "the question"
wait_until 5 "it asks again" asks "Enable"
click_on "push button" "Cancel"
wait_until 5 "the question is gone" eval '! asks "Enable"'
item_says "Inactive" || fail "the closed-lid mode is on though nobody wanted it"
click_on "check box" "Awake, lid closed"
wait_until 5 "it asks the next time" asks "Enable"
leave_and_come_back "the question of the next time"
click_on "push button" "Enable"
wait_until 5 "the closed-lid mode is on" item_says "Awake, lid closed"
click_on "check box" "Awake, lid closed"
wait_until 5 "it is off again" item_says "Inactive"

# --- the fans follow
click_on "push button" "Fans" # its title, to open the section
click_on "check box" "Fans"
wait_until 5 "the fans are watched" item_says "Cooling on watch"
click_on "radio button" "Manual"
wait_until 5 "manual mode begins with full strength" helper_says floorPercent "d 100"
click_on slider "Fixed strength" 60
wait_until 5 "the helper holds what the slider says" helper_says floorPercent "d 60"
wait_until 30 "a fan turns faster than it did at rest" helper_says effectivePercent "d 60"
click_on "radio button" "5 m"
boost_runs() { accessible list | grep '⏱ Boost: [45]:[0-9][0-9] left' >/dev/null; }
wait_until 5 "a chip begins a boost" boost_runs
picture "${CORVANE_SCREENSHOTS:-$folder}/desktop.png"
click_on "push button" "Stop everything"
wait_until 10 "the helper has let go" helper_says floorPercent "d 0"
xdotool key Escape
wait_until 5 "the panel is closed" panel_is_closed

# --- the keys that work everywhere
xdotool key super+alt+k
wait_until 5 "a key begins a session" item_says "Keep-awake active"
xdotool key super+alt+k
wait_until 5 "the same key ends it" item_says "Inactive"
xdotool key super+alt+l
wait_until 5 "another key switches the fans on" helper_says floorPercent "d 60"
xdotool key super+alt+l
wait_until 5 "and off" helper_says floorPercent "d 0"

# --- a second start
"$PROGRAM" || fail "a second start ended with $?"
wait_until 5 "a second start opens the panel of the first" panel_is_shown
expect_panel_stays
kill -0 "$application" || fail "the first start has ended"

# --- a notification
notification_is_drawn() { [[ -n $(xdotool search --onlyvisible --class '^[Dd]unst$') ]]; }
notification_is_drawn && fail "there is a notification already"
simulate "load = 20" "thermal = serious"
wait_until 20 "the notification of throttling is drawn" notification_is_drawn

# --- the end
kill "$application"
wait "$application" || fail "the application ended with $?"
wait_until 5 "the item is gone" eval '! item_name'
