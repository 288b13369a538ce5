#!/bin/bash
# An application without a helper installs one when its user says so, and its next poll finds it at work. When the
# application has become a newer build it sees that the helper is older, and replaces it in the same way.
. "$(dirname "$0")/installation.sh"
. "$(dirname "$0")/application.sh"

plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1
prefix=${folder%/libexec/corvane}

answering() {
    as_operator scripted-agent "password=$password" "$@"
}

start_application "$prefix" answering
shows fan.helperInstalled false || fail "the application believes in a helper that is not there"
wait_until 5 "the connection is found to lead nowhere" shows fan.statusMessage "Helper-Verbindung verloren"
tell fans on
tell install
wait_until 20 "the helper is installed" shows fan.helperInstalled true
has_shown fan.statusMessage "Helper installiert" || fail "the application did not say that the helper is installed"
shows fan.fansEnabled false || fail "fans were switched on without a helper"
wait_until 5 "the fresh connection brings the status" shows fan.cpuTemp 45

tell mode manual
tell fans on
wait_until 5 "the fan is driven" fan_is_in hwmon0 1
tell fans off
wait_until 5 "the fan is handed back" fan_is_in hwmon0 5
quit_application

rebuild_helper "a newer build"
start_application "$prefix" answering
shows fan.helperInstalled true || fail "the application does not see the helper"
shows fan.helperNeedsUpdate true || fail "the application does not see that its helper is newer"
tell install
wait_until 20 "the update is installed" shows fan.helperNeedsUpdate false
is_live || fail "the old helper still runs"
tell mode manual
tell fans on
wait_until 5 "the new helper drives the fan" fan_is_in hwmon0 1
wait_until 5 "the application shows it" shows fan.isBoosted true
quit_application

start_application "$prefix" as_operator
tell install
wait_until 20 "a prompt that nobody answers fails the installation" grep --quiet "^fan.statusMessage Fehler: " "$application_output"
shows fan.helperInstalled true || fail "a failed installation lost the helper"
quit_application
