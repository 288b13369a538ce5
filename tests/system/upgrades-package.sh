#!/bin/bash
# The package is upgraded under a client that asks for a floor without pause: when the helper's program is replaced, no
# helper runs and the fan is with the firmware; then the new program serves.
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/package.sh"

plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1

# note_in SCRIPT WHEN: a maintainer script of the unpacked package says what is so when it runs, before all else.
note_in() {
    local script=$unpacked/DEBIAN/$1 rest=
    [[ ! -e $script ]] || rest=$(tail --lines +2 "$script")
    cat >"$script" <<END
#!/bin/sh
[ "\$1" != upgrade ] || echo "$2 mode=\$(cat /sys/class/hwmon/hwmon0/pwm1_enable)" \\
    "pid=\$(systemctl show --property MainPID --value $unit)" "program=\$(tail -c 6 $program | tr -c a-z .)" >>/run/notes
$rest
END
    chmod 755 "$script"
}

# The scripts that run right before and right after dpkg replaces the files.
unpack_package
note_in postrm after
pack_package
dpkg_does --install /tmp/corvane.deb
make_later_package
note_in preinst before
pack_package

insist() {
    while [[ -e $BOX_ROOT/run/insist ]]; do
        call setFanFloorWithPercentWithReply d 60 || true
    done
}
touch "$BOX_ROOT/run/insist"
insist >"$BOX_ROOT/run/answers" 2>&1 &
client=$!
wait_until 10 "the fan is driven" fan_is_in hwmon0 1
old=$(helper_pid)

install_package
expect_in_log "Corvane daemon: received termination signal — releasing to Apple"
expect_in_log "Corvane daemon: released to Apple-auto (verified, attempt 1)"
notes=$(cat "$BOX_ROOT/run/notes")
[[ $notes =~ ^"before mode=5 pid=0 program="([^$'\n']*)$'\n'"after mode=5 pid=0 program="([^$'\n']*)$ ]] ||
    fail "the fan was not the firmware's while the program was replaced: $notes"
expect_equal "the program after it" "${BASH_REMATCH[2]}" later.
[[ ${BASH_REMATCH[1]} != later. ]] || fail "the program was replaced before the fan was handed back"

wait_until 10 "the new helper drives the fan" fan_is_in hwmon0 1
rm "$BOX_ROOT/run/insist"
wait "$client"
! grep --invert-match 'floor set to 60%' "$BOX_ROOT/run/answers" || fail "a call was refused"
[[ $(helper_pid) != "$old" ]] || fail "the old helper still runs"
is_live || fail "the new program does not run"
wait_until 12 "silence released the fan" fan_is_in hwmon0 5
