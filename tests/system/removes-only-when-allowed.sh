#!/bin/bash
# Whoever dismisses the prompt, does not know the password, or cannot be asked, removes nothing: the helper goes on
# driving the fan, and the settings are kept.
. "$(dirname "$0")/removal.sh"

plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1
install_application
install_helper
inside chown --recursive operator-with-sudo: "$home"
as_operator env HOME="$home" removal-driver leave-traces
call setFanFloorWithPercentWithReply d 60 >/dev/null
wait_until 2 "the fan is driven" fan_is_in hwmon0 1
disk=$(changes_on_disk)
served_by=$(helper_pid)

# expect_result WHAT OUTPUT RESULT
expect_result() {
    expect_equal "the result of $1" "$2" "$3"
    expect_same_disk "$1" "$disk"
    call pingWithReply >/dev/null
    expect_equal "the process that serves after $1" "$(helper_pid)" "$served_by"
    fan_is_in hwmon0 1 || fail "$1 handed the fan back"
}

expect_result "a dismissed prompt" "$(remove_answering cancel LANG=de_DE.UTF-8)" \
    "prompt: de.tavrin.corvane.uninstall: Corvane entfernt sein Hintergrund-Hilfswerkzeug und sich selbst vollständig.
cancelled"
expect_result "a wrong password" "$(remove_answering password=guess | tail --lines 1)" "failure: Not authorized"
expect_result "a prompt that nobody can show" "$(as_operator env HOME="$home" removal-driver "$folder" 2>&1)" \
    "failure: No authentication agent found."

# The script itself asks who runs it, and takes no orders.
expect_result "an ordinary user" "$(as_operator "$folder/uninstall" 2>&1)" "only root can remove Corvane"
expect_result "an argument" "$(inside "$folder/uninstall" /etc 2>&1)" "usage: uninstall, without an argument"
# shellcheck disable=SC2016 # it is for the inner shell, which stays to be the one that asks
expect_result "an argument behind the prompt" "$(as_operator scripted-agent "password=$password" \
    sh -c '"$@"; echo "status $?"' -- pkexec "$folder/uninstall" / 2>&1 | tail --lines 2)" \
    "usage: uninstall, without an argument
status 1"
