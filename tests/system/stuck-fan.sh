# shellcheck shell=bash
# For tests of a fan that nobody can hand back. Sourced after lib.sh.

deaf=/etc/systemd/system/${unit:?not given}.d/deaf.conf

# From its next start on, the helper does not hear that it shall stop, and is killed a second later.
make_helper_deaf() {
    inside mkdir --parents "${deaf%/*}"
    printf '[Service]\nKillSignal=SIGWINCH\nTimeoutStopSec=1\n' >"$BOX_ROOT$deaf"
    inside systemctl daemon-reload
}

make_helper_hear() {
    inside rm --recursive "${deaf%/*}"
    inside systemctl daemon-reload
}

# make_fan_stick hwmonN: its driver takes no mode any more.
make_fan_stick() {
    local mode=/sys/class/hwmon/$1/pwm1_enable
    inside mount --bind "$mode" "$mode"
    inside mount -o remount,bind,ro "$mode"
}

# let_fan_go hwmonN: it takes them again, the next helper hands the fan back, and the firmware sets its duty.
let_fan_go() {
    inside umount "/sys/class/hwmon/$1/pwm1_enable"
    inside kill -KILL "$(helper_pid)"
    wait_until 5 "the fan is back" fan_is_in "$1" 5
    echo 77 >"${hwmon:?not given}/$1/pwm1"
}
