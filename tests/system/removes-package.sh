#!/bin/bash
# An application that the package brought is removed by the package manager, wholly or not at all: where that refuses,
# its reason is told and everything is as before, a fan that is driven included.
. "$(dirname "$0")/removal.sh"
. "$tests/package.sh"
. "$tests/stuck-fan.sh"

folder=/usr/libexec/corvane
plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1
disk=$(changes_on_disk)

drive_fan() {
    call setFanFloorWithPercentWithReply d 60 >/dev/null
    wait_until 5 "the fan is driven" fan_is_in hwmon0 1
}

# build_friend: of the package, without which it cannot be.
build_friend() {
    local root=$BOX_ROOT/tmp/friend
    mkdir --parents "$root/DEBIAN"
    printf '%s\n' "Package: friend" "Version: 1.0" "Architecture: all" "Depends: corvane" \
        "Maintainer: Nobody <nobody@example.org>" "Description: a friend of Corvane's" >"$root/DEBIAN/control"
    dpkg-deb --root-owner-group --build "$root" "$BOX_ROOT/tmp/friend.deb" >/dev/null
}

# expect_refusal WHAT REASON: the reason may be a pattern.
expect_refusal() {
    local output
    output=$(remove_corvane)
    # shellcheck disable=SC2053 # a pattern
    [[ $output == "failure: "$2 ]] || fail "$1: got '$output', expected '$2'"
    expect_same_disk "$1" "$installed"
    # shellcheck disable=SC2016 # for dpkg-query
    expect_equal "the state of the package after $1" \
        "$(inside dpkg-query --show --showformat '${db:Status-Abbrev}' corvane)" "ii "
    call pingWithReply >/dev/null || fail "no helper serves after $1"
    fan_is_in hwmon0 1 || fail "$1 handed the fan back"
}

install_package >/dev/null
wait_until 10 "polkit knows the prompt" inside pkaction --action-id de.tavrin.corvane.uninstall
build_friend
dpkg_does --install /tmp/friend.deb >/dev/null
drive_fan
installed=$(changes_on_disk)
expect_refusal "a package that needs it" \
    "dpkg: dependency problems prevent removal of corvane: friend depends on corvane."
dpkg_does --purge friend >/dev/null

# Another package manager is at work.
inside python3 -c '
import fcntl, time
lock = open("/var/lib/dpkg/lock-frontend", "w")
fcntl.lockf(lock, fcntl.LOCK_EX)
open("/run/locked", "w")
time.sleep(600)' &
wait_until 10 "the package manager is at work" inside test -e /run/locked
expect_refusal "a package manager at work" "dpkg: error: dpkg frontend lock was locked by another process with pid *"
inside pkill --full lock-frontend
wait $! 2>/dev/null || true

# The package's own script does not let go of a fan that nobody can hand back.
make_helper_deaf
inside systemctl restart "$unit"
drive_fan
installed=$(changes_on_disk)
make_fan_stick hwmon0
expect_refusal "a fan that cannot be handed back" "$stuck"
let_fan_go hwmon0
make_helper_hear

# A helper that was put ahead of the packaged one goes as well.
ahead=/usr/local/libexec/corvane/corvane-helper
inside install -D "$program" "$ahead"
inside cp "/usr/lib/systemd/system/$unit" "$installed_unit"
inside sed --in-place "s|$program|$ahead|" "$installed_unit"
inside install -D --mode 644 "/usr/share/dbus-1/system-services/$unit" "$activation"
inside systemctl daemon-reload
inside systemctl reload dbus.service
inside systemctl restart "$unit"
drive_fan
inside cmp --silent "/proc/$(helper_pid)/exe" "$ahead" || fail "another helper runs"
expect_equal "the removal of the package" "$(remove_corvane)" success
fan_is_in hwmon0 5 || fail "the fan was not handed back"
! inside dpkg-query --show corvane >/dev/null 2>&1 || fail "the package manager still knows the package"
expect_no_helper "the removal of the package"
expect_same_disk "the removal of the package" "$disk"
