#!/bin/bash
# A user's whole time with the package: it is installed, introduces itself on a desktop, drives the fans, is upgraded while
# it does, and is removed from its settings window behind polkit's prompt, which is dismissed the first time. Then the
# disk is as it was before.
. "$(dirname "$0")/removal.sh"
. "$tests/package.sh"
. "$tests/boxed-desktop.sh"

set_desk /tmp/desk
on_desktop() { as_operator env "${desktop_variables[@]}" "$@"; }

start_desktop() {
    as_operator mkdir --mode 700 "$desk"
    # What a desktop keeps for itself is no matter of the application's.
    on_desktop env HOME="$desk" Xvfb $desk_display -screen 0 1280x1024x24 >/dev/null 2>&1 &
    on_desktop env HOME="$desk" dbus-daemon --session --nofork --address=unix:path="$desk/bus" >/dev/null 2>&1 &
    wait_until 20 "there is a display" display_is_there
    wait_until 20 "there is a bus" inside test -S "$desk/bus"
    on_desktop env HOME="$desk" xfwm4 --compositor=off >/dev/null 2>&1 &
}

# start_corvane ANSWER: with somebody who answers its prompts. Sets `application` to its process.
start_corvane() {
    on_desktop scripted-agent "$1" corvane 2>"$BOX_ROOT/tmp/corvane.log" &
    application=$!
    wait_until 20 "the application runs" says "the fan helper is installed" 1
}

application_has_ended() { ! kill -0 "$application" 2>/dev/null; }

# open_settings NAME: by the panel's button of that name.
open_settings() {
    open_panel
    click_on "push button" "$1"
}

# --- its time ----------------------------------------------------------------------------------------------------

plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1
forget_notification_servers
as_operator mkdir --parents "$home/.config/autostart" "$home/.cache"
start_desktop
disk=$(changes_on_disk)
install_package >/dev/null
wait_until 10 "polkit knows the prompt" inside pkaction --action-id de.tavrin.corvane.uninstall

# It introduces itself, and opens its panel then.
start_corvane cancel
for _ in 1 2 3 4 5; do
    click_on "push button" "Next"
done
click_on "push button" "Let's go!"
click_on "push button" "Fans"
click_on "check box" "Fans"
click_on "radio button" "Manual"
wait_until 10 "the fan is driven" fan_is_in hwmon0 1
settings=$(inside cat "$home/.config/de.tavrin.corvane/settings.json")

# An upgrade hands the fan back, and keeps what was set.
make_later_package
install_package >/dev/null
fan_is_in hwmon0 5 || fail "the upgrade left the fan in mode $(fan_mode hwmon0)"
expect_equal "the settings after the upgrade" "$(inside cat "$home/.config/de.tavrin.corvane/settings.json")" "$settings"
wait_until 10 "the new helper runs" is_live
click_on slider "Fixed strength" 60
wait_until 10 "the new helper drives the fan" fan_is_in hwmon0 1

# Whoever dismisses the prompt keeps everything.
open_settings "Settings"
click_on "check box" "Launch automatically at login"
wait_until 5 "it starts at login" inside test -s "$home/.config/autostart/de.tavrin.corvane.desktop"
installed=$(changes_on_disk)
click_on "push button" "Uninstall Corvane…"
wait_until 15 "it asks first" shows "Really uninstall Corvane?"
click_on "push button" "Uninstall"
wait_until 15 "the prompt was dismissed" says "prompt: de.tavrin.corvane.uninstall" 1
wait_until 15 "the window can be used again" accessible where "push button" "Uninstall Corvane…"
expect_same_disk "a dismissed prompt" "$installed"
fan_is_in hwmon0 1 || fail "a dismissed prompt handed the fan back"

# In another language it starts anew. Closing its window does not end it.
click_on "radio button" "Deutsch"
click_on "push button" "Jetzt neu starten"
wait_until 20 "the application has ended" application_has_ended
wait_until 20 "it runs again" says "the fan helper is installed" 2
open_settings "Einstellungen"
wait_until 15 "its settings are German" accessible where "push button" "Einführung erneut zeigen"
on_desktop xdotool key ctrl+w
wait_until 15 "its window is closed" eval '! shows "Einführung erneut zeigen"'
open_settings "Corvane beenden"
wait_until 15 "it has ended" eval '! inside pgrep --exact corvane'

# Whoever agrees keeps nothing.
start_corvane "password=$password"
open_settings "Einstellungen"
click_on "push button" "Corvane entfernen…"
wait_until 15 "it asks first" shows "Corvane wirklich entfernen?"
click_on "push button" "Entfernen"
wait_until 60 "it says goodbye" shows "Corvane wurde entfernt"
fan_is_in hwmon0 5 || fail "the removal left the fan in mode $(fan_mode hwmon0)"
click_on "push button" "Beenden"
wait_until 15 "the application has ended" application_has_ended
expect_no_helper "after the removal"
expect_same_disk "the time with Corvane" "$disk"
