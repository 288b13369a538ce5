#!/bin/bash
# A real drive that UDisks has mounted is offered, touched at its interval, passed over while it is not mounted, and
# touched again afterwards. The drive is a file behind a loop device.
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/application.sh"

mount_point=/media/visitor/Backup

skip() {
    echo "SKIPPED: $1" >&2
    exit 77
}
inside test -x /usr/libexec/udisks2/udisksd || skip "UDisks is not installed"
inside test -x /lib/systemd/systemd-udevd || skip "udev is not installed"
losetup --find >/dev/null 2>&1 || skip "there is no free loop device"

# Loop devices are the machine's, whatever lies in the box.
detach_drive() {
    local status=$?
    [[ -z ${drive:-} ]] || losetup --detach "$drive" 2>/dev/null || true
    return "$status"
}
trap 'detach_drive; explain_failure' EXIT

# The box shows no block devices by itself: the loop devices, and udev, which tells UDisks of them.
lay_out_drives() {
    inside mknod /dev/loop-control c 10 237
    inside mkdir /sys/class/block
    local number
    for number in 0 1 2 3 4 5 6 7; do
        [[ -b /dev/loop$number ]] || continue
        inside mknod "/dev/loop$number" b 7 "$number"
        inside ln --symbolic "/sys/devices/virtual/block/loop$number" /sys/class/block/
    done
    inside /lib/systemd/systemd-udevd --daemon
    cat >"$BOX_ROOT/etc/polkit-1/rules.d/10-visitor.rules" <<'END'
polkit.addRule(function(action, subject) {
    if (action.id.indexOf("org.freedesktop.udisks2.") == 0 && subject.user == "visitor") return polkit.Result.YES;
});
END
}

plug_in_drive() {
    inside truncate --size 16M /tmp/drive
    inside mkfs.ext4 -q -L Backup /tmp/drive
    inside chmod 666 /tmp/drive
    drive=$(as_visitor udisksctl loop-setup --file /tmp/drive --no-user-interaction |
        grep --only-matching '/dev/loop[0-9]*') || skip "no loop device can be set up here"
}
mount_drive() { as_visitor udisksctl mount --block-device "$drive" --no-user-interaction; }
unmount_drive() { as_visitor udisksctl unmount --block-device "$drive" --no-user-interaction; }
# Every read of the directory counts, not just the first of a day.
mind_reads() { inside mount --options remount,strictatime "$mount_point"; }
last_read() { inside stat --format %.9X "$mount_point"; }
was_read_since() { [[ $(last_read) != "$1" ]]; }

# Milliseconds from one touch to the next.
interval() {
    local before from
    before=$(last_read)
    wait_until 10 "the drive is touched" was_read_since "$before"
    before=$(last_read)
    from=$(now)
    wait_until 10 "the drive is touched once more" was_read_since "$before"
    echo $(($(now) - from))
}

lay_out_drives
plug_in_drive
mount_drive
mind_reads
start_application /opt/corvane
is_offered() {
    tell list-drives
    has_shown available "$mount_point Backup"
}
wait_until 10 "the drive is offered" is_offered
before=$(last_read)
tell interval 2
tell drive "$mount_point" Backup
tell drives on
wait_until 1 "the drive is touched at once" was_read_since "$before"
expect_between "milliseconds between touches" "$(interval)" 1500 2500
tell interval 3
expect_between "milliseconds between touches at another interval" "$(interval)" 2500 3500

unmount_drive
# What lies where the drive was mounted is none of the application's business.
inside mkdir --parents "$mount_point"
inside touch --date 2001-01-01 "$mount_point"
before=$(last_read)
inside ls "$mount_point"
was_read_since "$before" || fail "reads of a folder cannot be told here"
inside touch --date 2001-01-01 "$mount_point"
before=$(last_read)
wait_until 1 "the application still runs" shows drives.enabled true
deadline=$((SECONDS + 7))
while ((SECONDS < deadline)); do
    ! was_read_since "$before" || fail "an unmounted drive was touched"
    sleep 0.1
done
inside rmdir "$mount_point"

mount_drive
mind_reads
before=$(last_read)
wait_until 5 "the drive is touched again once it is mounted" was_read_since "$before"
tell drives off
unmount_drive
as_visitor udisksctl loop-delete --block-device "$drive" --no-user-interaction
drive=
