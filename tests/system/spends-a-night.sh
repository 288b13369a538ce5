#!/bin/bash
# A night with Corvane, as its user has it: installed, introduced, set to work by hand and by a rule, with the lid closed
# and the fans up; then everything happens that can: heat, a battery that runs low, a killed helper, a restarted bus, a
# killed application, a sleep, the end of the session; and at last it is removed. Each step asserts what the user sees
# and what the machine was told.
#
#   spends-a-night.sh MACHINE       which night-on-MACHINE.sh describes
. "$(dirname "$0")/removal.sh"
. "$tests/package.sh"
. "$tests/boxed-desktop.sh"
# shellcheck source=night-on-hwmon.sh
. "$tests/night-on-$1.sh"

# Nobody but the application keeps the helper company this night.
kill "$caller"

# --- the session -------------------------------------------------------------------------------------------------

# Everything of it belongs to the user's service manager and ends with it.
operator=$(inside id --user operator-with-sudo)
set_desk "/run/user/$operator"
on_desktop() { as_operator env "${desktop_variables[@]}" "$@"; }

# start_in_session UNIT COMMAND...
start_in_session() {
    local unit=$1 variable variables=()
    for variable in "${desktop_variables[@]}" "${machine_variables[@]}"; do
        variables+=(--setenv "$variable")
    done
    on_desktop systemd-run --user --quiet --collect --unit "$unit" "${variables[@]}" \
        --property StandardOutput=null --property "StandardError=append:/tmp/${unit%%.*}.log" "${@:2}"
}

log_in() {
    inside systemctl start "user@$operator.service"
    wait_until 20 "there is a bus" inside test -S "$desk/bus"
    start_in_session display Xvfb $desk_display -screen 0 1280x1024x24
    wait_until 20 "there is a display" display_is_there
    start_in_session windows xfwm4 --compositor=off
    # What it has shown, for a second, goes to its history.
    printf '[urgency_%s]\ntimeout = 1\n' low normal critical >"$BOX_ROOT/tmp/dunstrc"
    start_in_session notifications dunst -config /tmp/dunstrc
    wait_until 20 "somebody shows notifications" on_desktop busctl --user status org.freedesktop.Notifications
}

log_out() {
    inside systemctl stop "user@$operator.service"
}

# start_corvane [COMMAND...]: by a command that runs others.
start_corvane() {
    inside install --owner operator-with-sudo --mode 644 /dev/null /tmp/corvane.log
    start_in_session corvane "$@" corvane
    wait_until 20 "the application runs" says "the fan helper is installed" 1
}

# --- what the user sees ------------------------------------------------------------------------------------------

# has_been_told TITLE: by a notification, any number of times.
has_been_told() {
    local history
    history=$(on_desktop busctl --user --json=short call org.freedesktop.Notifications /org/freedesktop/Notifications \
        org.dunstproject.cmd0 NotificationListHistory) || return 1
    grep --quiet --fixed-strings -- "$1" <<<"$history"
}

# look: opens the panel if it is not open.
look() { shows "Quit Corvane" || open_panel; }

# sees SECONDS TEXT: somewhere in the panel.
sees() {
    look
    wait_until "$1" "the panel shows \"$2\"" shows "$2"
}

# sees_switch SECONDS NAME yes|no
switch_is() { [[ $(accessible checked "check box" "$1") == "$2" ]]; }
sees_switch() {
    look
    wait_until "$1" "the switch \"$2\" says $3" switch_is "$2" "$3"
}

press() {
    look
    click_on "$@"
}

# helper_says KEY VALUE: in the status that any caller can ask for, as busctl spells it.
helper_says() { grep --quiet --fixed-strings "\"$1\" $2" <<<"$(call getStatusWithReply)"; }

# --- what the machine was told -----------------------------------------------------------------------------------

# locks_of UID WHAT: how many the login manager counts.
locks_of() {
    inside busctl --system call org.freedesktop.login1 /org/freedesktop/login1 org.freedesktop.login1.Manager \
        ListInhibitors | grep --only-matching "\"$2\" \"[^\"]*\" \"[^\"]*\" \"block\" $1 " | wc --lines
}
holds_are() { [[ $(locks_of "$operator" idle) == "$1" ]]; }
lid_lock_is() { [[ $(locks_of 0 sleep:handle-lid-switch) == "$1" ]]; }
# another_helper_runs PID: than that one.
another_helper_runs() { [[ $(helper_pid) != 0 && $(helper_pid) != "$1" ]]; }
lid_is_held() { lid_lock_is 1; }
lid_is_free() { lid_lock_is 0; }
expect_firmware() { fans_are_firmwares || fail "$1 a fan is forced"; }

# --- what there is besides ---------------------------------------------------------------------------------------

render=$home/.local/share/applications/org.example.Render.desktop
sleep_hook=/usr/lib/systemd/system-sleep/observer
sleep_rule=/etc/polkit-1/rules.d/10-operator.rules
observed=$BOX_ROOT/run/observed

prepare_system() {
    inside install --mode 644 /dev/stdin "$render" <<'END'
[Desktop Entry]
Type=Application
Name=Render
Exec=sleep 100000
END
    # systemd runs this right before it writes the sleep state, and right after the machine woke.
    inside install --mode 755 /dev/stdin $sleep_hook <<END
#!/bin/sh
echo "\$1 \$($tell_mode)" >>/run/observed
END
    # The user may suspend, as a user at the machine may.
    inside install --mode 644 /dev/stdin $sleep_rule <<'END'
polkit.addRule(function(action, subject) {
    if (action.id == "org.freedesktop.login1.suspend" && subject.user == "operator-with-sudo") return polkit.Result.YES;
});
END
}

# What the window manager keeps for itself is no matter of the application's.
forget_system() {
    inside rm "$render" $sleep_hook $sleep_rule
    inside rm --recursive --force "$home/.config/xfce4" "$home/.cache/sessions"
}

has_woken() { grep --quiet '^post' "$observed"; }
sleep_and_wake() {
    on_desktop busctl --system call org.freedesktop.login1 /org/freedesktop/login1 org.freedesktop.login1.Manager \
        Suspend b false
    wait_until 20 "the machine slept and woke" has_woken
    expect_equal "the fan right before the sleep" "$(head --lines 1 "$observed")" "pre $fan_driven_by_firmware"
}

explain_night() {
    local status=$?
    ((status != 0)) || return
    echo "--- what the panel shows ---" >&2
    accessible list | cut --fields 1,2 >&2 || true
    echo "--- what is held ---" >&2
    inside systemd-inhibit --list --no-legend >&2 || true
    echo "--- the application's log ---" >&2
    cat "$BOX_ROOT/tmp/corvane.log" >&2 || true
    (exit "$status")
    explain_failure
}
trap explain_night EXIT

# --- the evening -------------------------------------------------------------------------------------------------

as_operator mkdir --parents "$home/.config/autostart" "$home/.cache" "$home/.local/share/applications"
forget_notification_servers
disk=$(changes_on_disk)
prepare_system
prepare_machine
echo "== it is installed"
install_package >/dev/null
wait_until 10 "polkit knows the prompt" inside pkaction --action-id de.tavrin.corvane.uninstall
log_in

echo "== it introduces itself"
start_corvane
for _ in 1 2 3 4 5; do
    click_on "push button" "Next"
done
click_on "push button" "Let's go!"
wait_until 10 "the introduction opens the panel" shows "Quit Corvane"
expect_equal "what is held by an application that nobody has asked" "$(locks_of "$operator" idle)" 0
expect_firmware "before anybody asked"

echo "== a rule for an application that renders"
press "push button" "Automation"
press "push button" "Choose app…"
click_on "list item" "Render"
click_on "push button" "Choose"
press "check box" "Automation"
sees_switch 5 "Automation" yes
holds_are 0 || fail "the rule holds before its application runs"
start_render
sees 10 "active: Render"
wait_until 5 "the rule's two kinds are held" holds_are 2

echo "== a session, the closed lid and a boost"
press "push button" "Automation"
press "check box" "Stay awake"
wait_until 5 "the session's two kinds are held too" holds_are 4
press "check box" "Awake, lid closed"
press "push button" "Enable"
wait_until 10 "the lid is held by root" lid_is_held
wait_until 5 "the mode holds the system too" holds_are 5
press "push button" "Fans"
press "check box" "Fans"
press "radio button" "Manual"
press slider "Fixed strength" 60
press "radio button" "5 m"
sees 5 "⏱ Boost: 4:"
wait_until 10 "the fans are driven" fans_are_driven
wait_until 5 "the helper holds the floor" helper_says floorPercent "d 60"

echo "== heat to 100 °C and back"
heat_to 97
wait_until 20 "the safety curve overrides the floor" helper_says effectivePercent "d 100"
wait_until 5 "it says so" helper_says thermalOverride "b true"
heat_to 100
wait_until 10 "the fans are with the firmware" fans_are_firmwares
wait_until 10 "nothing is held any more" helper_says isBoosted "b false"
wait_until 10 "the user is told" has_been_told "CPU running very hot"
lid_is_held || fail "heat that the system does not call serious ended the closed-lid mode"
heat_to 45
for _ in 1 2 3 4 5 6; do
    expect_firmware "after the heat, until somebody asks again"
    sleep 0.5
done
press slider "Fixed strength" 60
wait_until 10 "the fans are driven again" fans_are_driven

echo "== the battery to 15 % and 12 %"
battery 15 battery
wait_until 45 "the user is told that the session ended" has_been_told "Battery low"
wait_until 30 "the user is told that the closed-lid mode ended" has_been_told "Closed-lid stopped"
wait_until 10 "the lid is not held" lid_is_free
sees_switch 5 "Stay awake" no
sees_switch 5 "Awake, lid closed" no
wait_until 5 "the rule holds on" holds_are 2
battery 12 battery
wait_until 15 "the rule stands down" holds_are 0
battery 60 mains
wait_until 15 "the rule holds again" holds_are 2

echo "== the helper is killed"
press "check box" "Awake, lid closed"
wait_until 10 "the lid is held again" lid_is_held
press slider "Fixed strength" 70
wait_until 10 "the fans are driven" fans_are_driven
killed=$(helper_pid)
inside kill -KILL "$killed"
wait_until 5 "another helper runs" another_helper_runs "$killed"
wait_until 5 "the fans are with the firmware" fans_are_firmwares
wait_until 40 "the lid is held once more" lid_is_held
press slider "Fixed strength" 60
wait_until 10 "the fans are driven once more" fans_are_driven

echo "== the system's bus is restarted"
inside systemctl restart dbus.service
wait_until 15 "the fans are with the firmware" fans_are_firmwares
wait_until 20 "the rule's kinds and the mode's are held again" holds_are 3
wait_until 40 "the lid is held again" lid_is_held
press slider "Fixed strength" 70
wait_until 15 "the fans are driven again" fans_are_driven

echo "== the application is killed"
prepare_silence
inside pkill --signal KILL --exact corvane
killed=$(now)
wait_until 2 "what it held went with it" holds_are 0
wait_until 12 "silence hands the fans back" silence_has_handed_back
expect_between "milliseconds until the fans were handed back" $(($(now) - killed)) 4500 12500
wait_until 5 "silence lets go of the lid" lid_is_free
start_corvane
sees_switch 10 "Stay awake" no
sees_switch 5 "Awake, lid closed" no
wait_until 10 "the rule holds again" holds_are 2

echo "== sleep and waking"
press "check box" "Stay awake"
# So that what follows is in sight.
press "push button" "Automation"
press "push button" "Stay awake"
press "push button" "Fans"
press "check box" "Fans"
press slider "Fixed strength" 60
wait_until 10 "the fans are driven" fans_are_driven
wait_until 5 "the helper holds what the panel says" helper_says floorPercent "d 60"
wait_until 5 "session and rule hold" holds_are 4
sleep_and_wake
wait_until 15 "the floor is held again" fans_are_driven
wait_until 5 "the helper still holds what the panel says" helper_says floorPercent "d 60"
wait_until 5 "session and rule hold on" holds_are 4
sees_switch 5 "Stay awake" yes

echo "== the user logs out"
prepare_silence
log_out
left=$(now)
wait_until 2 "nothing is held" holds_are 0
wait_until 12 "the fans are with the firmware" silence_has_handed_back
expect_between "milliseconds until the fans were handed back" $(($(now) - left)) 0 12500

echo "== it is removed"
log_in
start_corvane scripted-agent "password=$password"
press "push button" "Settings"
click_on "push button" "Uninstall Corvane…"
wait_until 15 "it asks first" shows "Really uninstall Corvane?"
click_on "push button" "Uninstall"
wait_until 60 "it says goodbye" shows "Corvane has been removed"
click_on "push button" "Quit"
wait_until 15 "it has ended" eval '! inside pgrep --exact corvane'
expect_no_helper "after the removal"
log_out
forget_system
expect_same_disk "the night" "$disk"
