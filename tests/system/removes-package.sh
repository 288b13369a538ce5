#!/bin/bash
# An application that a package brought is removed by the package manager, wholly or not at all: where that refuses, its
# reason is told and everything is as before.
. "$(dirname "$0")/removal.sh"

folder=/usr/libexec/corvane
plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1

# build_package NAME [FIELD]: of what lies in $package_root; prints where it is in the box.
package_root=$BOX_ROOT/root/package
build_package() {
    mkdir --parents "$package_root/DEBIAN"
    printf 'Package: %s\nVersion: 1.0\nArchitecture: all\nMaintainer: Nobody <nobody@example.org>\nDescription: x\n%s' \
        "$1" "${2:+$2$'\n'}" >"$package_root/DEBIAN/control"
    inside dpkg-deb --root-owner-group --build /root/package "/root/$1.deb" >/dev/null
    rm -r "$package_root"
}
mkdir --parents "$package_root"
cp --recursive --preserve=mode "$PACKAGE_STAGE/." "$package_root"
build_package corvane
build_package corvane-friend "Depends: corvane"
install_package() {
    inside dpkg --install /root/corvane.deb >/dev/null 2>&1 || fail "the package cannot be installed"
    inside systemctl daemon-reload
    inside systemctl reload dbus.service
    wait_until 10 "polkit knows the prompt" inside pkaction --action-id de.tavrin.corvane.uninstall
}
disk=$(changes_on_disk)
install_package
call setFanFloorWithPercentWithReply d 60 >/dev/null
wait_until 2 "the fan is driven" fan_is_in hwmon0 1
# expect_refusal WHAT REASON
expect_refusal() {
    expect_equal "the result of $1" "$(remove_corvane)" "failure: $2"
    expect_same_disk "$1" "$installed"
    # shellcheck disable=SC2016 # for dpkg-query
    [[ $(inside dpkg-query --show --showformat '${db:Status-Abbrev}' corvane) == "ii " ]] ||
        fail "$1 left the package in another state"
    call pingWithReply >/dev/null || fail "no helper serves after $1"
}
inside dpkg --install /root/corvane-friend.deb >/dev/null
call pingWithReply >/dev/null
installed=$(changes_on_disk)
expect_refusal "a package that needs it" "dpkg: dependency problems prevent removal of corvane: corvane-friend depends \
on corvane."
inside dpkg --purge corvane-friend >/dev/null
fan_is_in hwmon0 5 || fail "the fan was not handed back"

# Another package manager at work.
inside python3 -c '
import fcntl, time
lock = open("/var/lib/dpkg/lock-frontend", "w")
fcntl.lockf(lock, fcntl.LOCK_EX)
open("/run/locked", "w")
time.sleep(60)' &
holder=$!
wait_until 10 "the package manager is at work" inside test -e /run/locked
output=$(remove_corvane)
[[ $output == "failure: dpkg: error: dpkg frontend lock was locked by another process with pid "* ]] ||
    fail "the lock is not the reason: $output"
inside pkill --full 'lock-frontend'
wait "$holder" 2>/dev/null || true
inside rm /run/locked

# Nobody is in the way. A helper that was put ahead of the packaged one goes as well.
inside install -D "$folder/corvane-helper" "$program"
inside cp /usr/lib/systemd/system/"$unit" "$installed_unit"
inside sed --in-place "s|$folder/corvane-helper|$program|" "$installed_unit"
inside install -D --mode 644 "/usr/share/dbus-1/system-services/$unit" "$activation"
inside systemctl daemon-reload
inside systemctl reload dbus.service
inside systemctl restart "$unit"
call setFanFloorWithPercentWithReply d 60 >/dev/null
wait_until 2 "the fan is driven" fan_is_in hwmon0 1
inside cmp --silent "/proc/$(helper_pid)/exe" "$program" || fail "the packaged helper runs"
expect_equal "the removal of a package" "$(remove_corvane)" success
fan_is_in hwmon0 5 || fail "the fan was not handed back"
! inside dpkg-query --show corvane >/dev/null 2>&1 || fail "the package manager still knows the package"
expect_no_helper "the removal of a package"
expect_same_disk "the removal of a package" "$disk"
