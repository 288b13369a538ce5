#!/bin/bash
# An installation that fails or is killed midway leaves the installed helper as it was, working, and nothing behind.
. "$(dirname "$0")/installation.sh"

plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1

[[ $(install_helper) == *success* ]] || fail "the first installation failed"
call pingWithReply >/dev/null
served_by=$(helper_pid)
rebuild_helper "a newer build"
inside cp --archive "$folder" /root/good
traces=$(installation_traces)

# expect_failure WHAT MESSAGE: of an installation, which changes nothing.
expect_failure() {
    local output
    output=$(install_helper)
    [[ $output == *"
failure: $2
after: installed=true update="* ]] || fail "$1 ended otherwise: $output"
    expect_unchanged "$1" "$traces"
    expect_equal "the process that serves after $1" "$(call pingWithReply >/dev/null && helper_pid)" "$served_by"
}

# with_file FILE COMMAND...: the application's folder with another file in a place, made by COMMAND.
with_file() {
    inside rm -rf "$folder"
    inside cp --archive /root/good "$folder"
    inside rm "$folder/$1"
    shift
    "$@"
    traces=$(installation_traces)
}

# --- a target that cannot be written: the last one but one, so that others are staged before it -----------------

inside mount --bind /etc/dbus-1/system.d /etc/dbus-1/system.d
inside mount -o remount,bind,ro /etc/dbus-1/system.d
expect_failure "a read-only folder" "cannot copy helper.policy: Read-only file system"
inside umount /etc/dbus-1/system.d

services=/usr/local/share/dbus-1/system-services
inside mount -t tmpfs -o size=64K,mode=755 tmpfs "$services"
inside cp "$folder/helper.activation" "$services/$unit"
inside dd if=/dev/zero of="$services/filler" bs=4K status=none 2>/dev/null || true
traces=$(installation_traces)
expect_failure "a full disk" "cannot copy helper.activation: No space left on device"
inside umount "$services"

# --- files that are not what they should be -----------------------------------------------------------------------

with_file helper.unit inside true
expect_failure "a missing file" "helper.unit is missing or no ordinary file"
with_file helper.policy inside ln -s /etc/shadow "$folder/helper.policy"
expect_failure "a link to a secret" "helper.policy is missing or no ordinary file"
with_file helper.activation inside mkfifo "$folder/helper.activation"
expect_failure "a pipe" "helper.activation is missing or no ordinary file"
with_file helper.unit inside touch "$folder/helper.unit"
expect_failure "an empty file" "helper.unit is empty or too large"
with_file helper.unit inside truncate --size 65537 "$folder/helper.unit"
expect_failure "a file that is too large" "helper.unit is empty or too large"
with_file corvane-helper inside truncate --size 1T "$folder/corvane-helper"
expect_failure "a program that is too large" "corvane-helper is empty or too large"

# --- what changes while the script is at work: it finds this in dd's place ------------------------------------------

# instead_of_dd COMMANDS
instead_of_dd() {
    printf '#!/bin/sh\n%s\nexec /usr/bin/dd "$@"\n' "$1" >"$BOX_ROOT/usr/sbin/dd"
    chmod +x "$BOX_ROOT/usr/sbin/dd"
}

with_file helper.unit inside cp /root/good/helper.unit "$folder/helper.unit"
instead_of_dd 'case "$*" in *if=helper.unit*) ln -sf /etc/shadow helper.unit ;; esac'
output=$(install_helper)
[[ $output == *"failure: cannot copy helper.unit: Too many levels of symbolic links"* ]] ||
    fail "a link that took a file's place: $output"
instead_of_dd 'case "$*" in *if=helper.unit*) rm helper.unit; mkfifo helper.unit ;; esac'
with_file helper.unit inside cp /root/good/helper.unit "$folder/helper.unit"
output=$(install_helper)
[[ $output == *"failure: helper.unit is empty or too large"* ]] || fail "a pipe that took a file's place: $output"

instead_of_dd 'case "$*" in *if=helper.policy*) touch /run/midway; until [ -e /run/go ]; do sleep 0.02; done ;; esac'
for signal in KILL TERM; do
    rm -f "$BOX_ROOT/run/midway" "$BOX_ROOT/run/go"
    with_file helper.policy inside cp /root/good/helper.policy "$folder/helper.policy"
    install_helper >"$BOX_ROOT/run/output" &
    wait_until 20 "the script is midway" test -e "$BOX_ROOT/run/midway"
    [[ $(installation_traces) != "$traces" ]] || fail "nothing was staged, so there is nothing to take away"
    inside pkill "-$signal" --oldest --full "^/bin/bash $folder/install-helper"
    touch "$BOX_ROOT/run/go"
    wait $!
    grep --quiet '^failure: ' "$BOX_ROOT/run/output" || fail "SIG$signal: $(cat "$BOX_ROOT/run/output")"
    is_as_before() { [[ $(installation_traces) == "$traces" ]]; }
    wait_until 10 "what was staged is gone after SIG$signal" is_as_before
    expect_equal "the process that serves after SIG$signal" "$(call pingWithReply >/dev/null && helper_pid)" "$served_by"
done

# What was agreed to is installed, though the application that asked for it is gone.
rm -f "$BOX_ROOT/run/midway" "$BOX_ROOT/run/go"
install_helper >"$BOX_ROOT/run/output" &
wait_until 20 "the script is midway" test -e "$BOX_ROOT/run/midway"
inside pkill -KILL --full '^installation-driver '
wait $! && fail "the application was not killed"
touch "$BOX_ROOT/run/go"
wait_until 20 "the helper is installed without the application" is_live

# Nothing of all that is in the way of the next one.
rm "$BOX_ROOT/usr/sbin/dd"
rebuild_helper "an even newer build"
[[ $(install_helper) == *success* ]] || fail "no helper can be installed any more"
is_live || fail "the new program does not run"
