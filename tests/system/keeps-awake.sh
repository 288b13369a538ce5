#!/bin/bash
# A session keeps the machine from going to sleep for want of a user, just as long as it is held and no longer; it does
# not keep the user from putting the machine to sleep. Without a desktop's own service the login manager is asked.
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/application.sh"

# An idle machine suspends every second; the file tells, and nothing really sleeps.
state=$BOX_ROOT/sys/power/state
mkdir --parents "$BOX_ROOT/run/systemd/logind.conf.d"
printf '[Login]\nIdleAction=suspend\nIdleActionSec=1s\n' >"$BOX_ROOT/run/systemd/logind.conf.d/idle.conf"
# The visitor may suspend, as a user at the machine may.
cat >"$BOX_ROOT/etc/polkit-1/rules.d/10-visitor.rules" <<'END'
polkit.addRule(function(action, subject) {
    if (action.id == "org.freedesktop.login1.suspend" && subject.user == "visitor") return polkit.Result.YES;
});
END
inside systemctl restart systemd-logind

forget_sleep() { echo "freeze mem disk" >"$state"; }
has_slept() { grep --quiet --line-regexp mem "$state"; }
# The login manager lets the moment to act pass by up to half a minute; when it has something else to do it acts at once.
has_slept_of_itself() {
    inside busctl --system get-property org.freedesktop.login1 /org/freedesktop/login1 \
        org.freedesktop.login1.Manager IdleHint
    has_slept
}
sleeps_by_itself() { wait_until 20 "$1" has_slept_of_itself; }
# Four times what it takes an idle machine.
stays_awake() {
    forget_sleep
    local deadline=$((SECONDS + 5))
    while ((SECONDS < deadline)); do
        ! has_slept_of_itself >/dev/null || fail "the machine slept $1"
    done
}
awaits_no_job() { [[ -z $(inside systemctl list-jobs --no-legend suspend.target) ]]; }

# Why the application holds locks against idling, one a line.
locks() {
    inside busctl --system call org.freedesktop.login1 /org/freedesktop/login1 org.freedesktop.login1.Manager \
        ListInhibitors | grep --only-matching '"idle" "Corvane" "[^"]*" "block" 4242 ' | cut --delimiter '"' --fields 6 |
        sort
}
locks_are() { [[ $(locks) == "$1" ]]; }
display="Wakewell: prevent display sleep"
network="Wakewell: keep network active"
system="Wakewell: prevent system sleep"

forget_sleep
sleeps_by_itself "the idle machine slept of its own accord"

start_application /opt/corvane
expect_equal "locks of an application that nobody has asked for anything" "$(locks)" ""
tell awake system,display open
wait_until 5 "both kinds are locked" locks_are "$display"$'\n'"$system"
wait_until 10 "the sleep under way is over" awaits_no_job
stays_awake "while a session was held"

as_visitor busctl --system call org.freedesktop.login1 /org/freedesktop/login1 org.freedesktop.login1.Manager \
    Suspend b false
wait_until 10 "the user puts the machine to sleep while a session is held" has_slept

tell toggle network
tell toggle display
wait_until 5 "display is let go of, network taken" locks_are "$network"$'\n'"$system"
inside systemctl restart systemd-logind
wait_until 5 "both locks are there after a restart of the login manager" locks_are "$network"$'\n'"$system"
wait_until 10 "the sleep under way is over" awaits_no_job
stays_awake "while a session was held after the restart"

tell awake - open
wait_until 5 "everything is let go of" locks_are ""
forget_sleep
sleeps_by_itself "the machine sleeps again after the session"

tell awake system 2
wait_until 5 "the timed session is held" locks_are "$system"
wait_until 5 "the time is up" locks_are ""
wait_until 5 "the application shows it" shows session.activeKinds ""

tell awake system,display,network open
wait_until 5 "all kinds are locked" locks_are "$network"$'\n'"$display"$'\n'"$system"
kill_application
wait_until 2 "a killed application holds nothing" locks_are ""
forget_sleep
sleeps_by_itself "the machine sleeps after the application was killed"
