#!/bin/bash
# Closed-lid mode is a lock that the helper holds as root, which stops a user's suspend as well, and one of the
# application's own against idling. When the application dies the helper lets go within 6 to 8 s.
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/application.sh"

cat >"$BOX_ROOT/etc/polkit-1/rules.d/10-visitor.rules" <<'END'
polkit.addRule(function(action, subject) {
    if (action.id == "org.freedesktop.login1.suspend" && subject.user == "visitor") return polkit.Result.YES;
});
END
plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1

state=$BOX_ROOT/sys/power/state
has_slept() { grep --quiet --line-regexp mem "$state"; }
suspend() {
    as_visitor busctl --system call org.freedesktop.login1 /org/freedesktop/login1 \
        org.freedesktop.login1.Manager Suspend b false
}

# lock_count UID WHAT
lock_count() {
    inside busctl --system call org.freedesktop.login1 /org/freedesktop/login1 org.freedesktop.login1.Manager \
        ListInhibitors | grep --only-matching "\"$2\" \"[^\"]*\" \"[^\"]*\" \"block\" $1 " | wc --lines
}
lid_locks_are() { [[ $(lock_count 0 sleep:handle-lid-switch) == "$1" ]]; }
own_locks_are() { [[ $(lock_count 4242 idle) == "$1" ]]; }

start_application /opt/corvane
wait_until 5 "the helper answers" shows fan.cpuTemp 45
tell lid on
wait_until 5 "the root-held lock is there" lid_locks_are 1
wait_until 5 "the application holds the system as well" own_locks_are 1
fan_is_in hwmon0 5 || fail "the fan was forced while the machine was cool"
heat hwmon1 75000
wait_until 20 "the fans cool what a closed lid traps" fan_is_in hwmon0 1
if suspend; then
    fail "a user's suspend went through while the lid lock was held"
fi
! has_slept || fail "the machine slept while the lid lock was held"

tell lid off
wait_until 5 "the root-held lock is gone" lid_locks_are 0
wait_until 5 "the application's own is gone" own_locks_are 0
wait_until 10 "the fan is the firmware's again" fan_is_in hwmon0 5
heat hwmon1 45000
suspend
wait_until 10 "the user's suspend goes through again" has_slept

tell lid on
wait_until 10 "the root-held lock is there again" lid_locks_are 1
inside systemctl restart systemd-logind
wait_until 5 "it is taken again after a restart of the login manager" lid_locks_are 1
inside kill -KILL "$(helper_pid)"
wait_until 30 "it is there again after the helper was killed" lid_locks_are 1

# The application asks once a second, so the last call was made at most one second before.
kill_application
killed=$(now)
wait_until 1 "the application's own lock went with it" own_locks_are 0
lid_locks_are 1 || fail "the lid lock did not outlive the application by a moment"
wait_until 12 "silence released the lid lock" lid_locks_are 0
expect_between "milliseconds from the application's end to the release" $(($(now) - killed)) 5000 8500
