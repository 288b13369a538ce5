#!/bin/bash
# Staying awake with a closed lid is one lock of logind's that root holds: while asked for, and no longer.
. "$(dirname "$0")/lib.sh"

lid_locks() {
    inside busctl --system call org.freedesktop.login1 /org/freedesktop/login1 org.freedesktop.login1.Manager \
        ListInhibitors | grep --only-matching '"sleep:handle-lid-switch" "[^"]*" "[^"]*" "block" 0 ' | wc --lines
}
lid_locks_are() { [[ $(lid_locks) == "$1" ]]; }
heard_and_locked() { call getStatusWithReply >/dev/null && lid_locks_are 1; }

expect_equal "the reply to on" "$(call setLidStayAwakeWithReply b true)" 'bs true "lid-stay-awake on"'
expect_equal "locks while on" "$(lid_locks)" 1
call setLidStayAwakeWithReply b true >/dev/null
expect_equal "locks when asked for twice" "$(lid_locks)" 1

expect_equal "the reply to off" "$(call setLidStayAwakeWithReply b false)" 'bs true "lid-stay-awake off"'
wait_until 2 "the lock is gone after off" lid_locks_are 0

call setLidStayAwakeWithReply b true >/dev/null
inside systemctl restart systemd-logind
wait_until 5 "the lock is there after a restart of logind" heard_and_locked
call setLidStayAwakeWithReply b false >/dev/null
wait_until 2 "that lock, too, is gone after off" lid_locks_are 0

before=$(now)
call setLidStayAwakeWithReply b true >/dev/null
after=$(now)
expect_equal "locks while on again" "$(lid_locks)" 1
wait_until 12 "silence released the lock" lid_locks_are 0
released=$(now)
expect_between "milliseconds since the last call was made" $((released - before)) 6000 20000
expect_between "milliseconds since the last reply" $((released - after)) 0 8500
expect_in_log "Corvane daemon: WATCHDOG — app silent, clearing lid-stay-awake"
