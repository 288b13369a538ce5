# shellcheck shell=bash
# What the system tests share. Sourced by scripts that `box` runs, so BOX_PID and BOX_ROOT are set.
set -euo pipefail

tests=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
name=de.tavrin.corvane.smchelper
unit=$name.service
path=/de/tavrin/corvane/smchelper
interface=de.tavrin.corvane.FanHelperProtocol
hwmon=${BOX_ROOT:?run this through box}/sys/class/hwmon

# --- in the system under test ---------------------------------------------------------------------------------

inside() {
    "$tests/inside" "$@"
}

as_visitor() {
    inside setpriv --reuid visitor --regid visitor --clear-groups "$@"
}

# call MEMBER [SIGNATURE ARGUMENT...]: what an ordinary user's application does. Prints signature and values.
call() {
    as_visitor busctl --system call -- "$name" "$path" "$interface" "$@"
}

helper_log() {
    inside journalctl --unit "$unit" --output cat --no-pager
}

helper_pid() {
    inside systemctl show --property MainPID --value "$unit"
}

helper_is() {
    [[ $(inside systemctl is-active "$unit") == "$1" ]]
}

# --- devices --------------------------------------------------------------------------------------------------

# attribute hwmonN NAME VALUE: a number that can be read and written like an attribute of a driver, where what is
# written replaces what was there. An ordinary file would keep the rest of a longer value, so each attribute is a
# file of the kernel's that holds any whole number and does nothing with it: the depth limit of an empty control group.
attribute() {
    inside mkdir "/sys/fs/cgroup/$1.$2"
    touch "$hwmon/$1/$2"
    inside mount --bind "/sys/fs/cgroup/$1.$2/cgroup.max.depth" "/sys/class/hwmon/$1/$2"
    echo "$3" >"$hwmon/$1/$2"
}

# plug_in_board hwmonN CHIP MODE: one fan at 900 RPM that the chip's firmware holds at a duty of 77 in MODE.
plug_in_board() {
    mkdir "$hwmon/$1"
    echo "$2" >"$hwmon/$1/name"
    echo 900 >"$hwmon/$1/fan1_input"
    attribute "$1" pwm1 77
    attribute "$1" pwm1_enable "$3"
}

# plug_in_processor hwmonN: a sensor at 45 °C.
plug_in_processor() {
    mkdir "$hwmon/$1"
    echo coretemp >"$hwmon/$1/name"
    echo "Package id 0" >"$hwmon/$1/temp1_label"
    attribute "$1" temp1_input 45000
}

# heat hwmonN MILLIDEGREES
heat() {
    echo "$2" >"$hwmon/$1/temp1_input"
}

fan_mode() {
    cat "$hwmon/$1/pwm1_enable"
}

fan_duty() {
    cat "$hwmon/$1/pwm1"
}

# fan_is_in hwmonN MODE
fan_is_in() {
    [[ $(fan_mode "$1") == "$2" ]]
}

# --- its disk --------------------------------------------------------------------------------------------------

# What the box has on its disk that this machine has not, and what it lacks: names alone. dpkg's own books and the
# caches that its triggers write for all packages are exempt; so is what the journal, systemd and UDisks keep for
# themselves, which a Debian that has just been installed has not done yet.
changes_on_disk() {
    local kind file
    while read -r kind file; do
        [[ $kind == d && -d /$file ]] || echo "/$file ($kind)"
    done < <(inside find /run/changes -mindepth 1 \( -path '*/var/lib/dpkg' -o -path '*/var/log/dpkg.log' \
        -o -path '*/var/cache/man' -o -path '*/var/log/journal' -o -path '*/var/lib/systemd' -o -path '*/var/lib/udisks2' \
        -o -path '*/var/tmp/systemd-private-*' \
        -o -name mimeinfo.cache -o -name icon-theme.cache \) -prune -o -printf '%y %P\n') | sort
    inside find /run/corvane "/run/systemd/system/$unit.d" 2>/dev/null || true
}

# expect_same_disk WHAT CHANGES: they are the same as before.
expect_same_disk() {
    local difference
    difference=$(diff <(echo "$2") <(changes_on_disk)) || fail "$1 left the system changed: $difference"
}

# --- expectations ---------------------------------------------------------------------------------------------

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

expect_equal() {
    [[ $2 == "$3" ]] || fail "$1: got '$2', expected '$3'"
}

# expect_between WHAT VALUE LOW HIGH: whole numbers, bounds included.
expect_between() {
    (($2 >= $3 && $2 <= $4)) || fail "$1: $2 is not in $3...$4"
}

# expect_in_log TEXT
expect_in_log() {
    [[ $(helper_log) == *"$1"* ]] || fail "the helper never logged '$1'"
}

# wait_until SECONDS WHAT CONDITION...: the condition may be a call that fails until its time has come.
wait_until() {
    local deadline=$((SECONDS + $1)) what=$2
    shift 2
    until "$@" >/dev/null 2>&1; do
        ((SECONDS <= deadline)) || fail "waited in vain until $what"
        sleep 0.02
    done
}

# Milliseconds on the wall clock.
now() {
    local microseconds=${EPOCHREALTIME//[!0-9]/}
    echo $((microseconds / 1000))
}

explain_failure() {
    local status=$?
    ((status == 0)) && return
    echo "--- the helper's log ---" >&2
    helper_log | tail --lines 50 >&2 || true
}
trap explain_failure EXIT
