#!/bin/bash
# Where the package meets something else: a helper that the application installed by its prompt makes way for it, a unit
# of the administrator's own stays, and on a system that systemd does not run it comes and goes as well.
#
#   package-takes-over.sh STAGE
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/package.sh"

plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1

before=$(changes_on_disk)

# --- a helper from the prompt ---------------------------------------------------------------------------------------

cp -r "$1/usr/libexec/corvane" "$BOX_ROOT/opt/corvane"
inside /opt/corvane/install-helper
call setFanFloorWithPercentWithReply d 60 >/dev/null
wait_until 2 "the fan is driven" fan_is_in hwmon0 1
expect_equal "the program at work" "$(inside readlink "/proc/$(helper_pid)/exe")" /usr/local/libexec/corvane/corvane-helper

# Somebody calls as soon as the helper has stopped.
cat >"$BOX_ROOT/usr/local/bin/systemctl" <<END
#!/bin/sh
/usr/bin/systemctl "\$@"
status=\$?
[ "\$1" != stop ] || busctl --system call -- $name $path $interface pingWithReply
exit \$status
END
chmod 755 "$BOX_ROOT/usr/local/bin/systemctl"
output=$(install_package)
inside rm /usr/local/bin/systemctl
[[ $output == *"makes way for the package's"* ]] || fail "nothing was said: $output"
[[ $output == *'bs true "Corvane daemon alive'* ]] || fail "nobody has called meanwhile: $output"
expect_equal "the fan's mode after the package came" "$(fan_mode hwmon0)" 5
call setFanFloorWithPercentWithReply d 60 >/dev/null
wait_until 2 "the package's helper drives the fan" fan_is_in hwmon0 1
is_live || fail "the helper of the prompt still runs"
purge_package
expect_equal "the fan's mode after the removal" "$(fan_mode hwmon0)" 5
inside rm -r /opt/corvane
expect_same_disk "the removal" "$before"

# --- an administrator's own unit ------------------------------------------------------------------------------------

own=/etc/systemd/system/$unit
install_package
inside sh -c "sed 's/^MemoryMax=.*/MemoryMax=32M/' /usr/lib/systemd/system/$unit >$own"
install_package
inside grep --quiet MemoryMax=32M "$own" || fail "the administrator's unit is gone"
expect_equal "the helper's limit" "$(call pingWithReply >/dev/null && inside systemctl show --property MemoryMax --value "$unit")" $((32 << 20))
purge_package
inside test -e "$own" || fail "the administrator's unit was removed"
inside rm -r "$own"
inside systemctl daemon-reload
inside rm -rf /run/corvane

# --- no systemd -----------------------------------------------------------------------------------------------------

log=$(inside unshare --mount sh -ec '
    mount -t tmpfs tmpfs /run
    dpkg --install /tmp/corvane.deb
    dpkg --install /tmp/corvane.deb
    mkdir /run/corvane && touch /run/corvane/fans
    dpkg --purge corvane
    test ! -e /run/corvane' 2>&1) || fail "without systemd: $log"
expect_same_disk "the removal without systemd" "$before"
