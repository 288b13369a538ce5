#!/bin/bash
# What was never installed or is gone already holds up no removal, and nothing goes that the list of installed files
# does not name: no file of others, and nothing outside the prefix.
. "$(dirname "$0")/removal.sh"

disk=$(changes_on_disk)
forget_prompt() { inside rm --force "$actions/de.tavrin.corvane.policy"; }

# --- a helper that was never installed, or is only there in part ---------------------------------------------------

install_application
expect_equal "the removal without a helper" "$(remove_corvane)" success
forget_prompt
expect_same_disk "the removal without a helper" "$disk"

for missing in /usr/local/libexec/corvane/corvane-helper "$activation" "$installed_unit" "$policy"; do
    install_application
    install_helper
    inside rm "$missing"
    expect_equal "the removal without $missing" "$(remove_corvane)" success
    expect_no_helper "the removal without $missing"
    forget_prompt
    expect_same_disk "the removal without $missing" "$disk"
done

install_application
install_helper
inside rm --recursive "$prefix/lib" "$folder/corvane-helper" "$prefix/bin"
inside systemctl stop dbus.service dbus.socket
expect_equal "the removal without a bus, and of what is left of an application" "$(run_script)" ""
inside systemctl start dbus.socket
forget_prompt
expect_no_helper "the removal without a bus"
expect_same_disk "the removal of what is left of an application" "$disk"

# --- what others have there --------------------------------------------------------------------------------------

install_application
install_helper
for theirs in "$prefix/bin/other" "$folder/notes" "$prefix/share/corvane-notes" "/usr/local/libexec/other" \
    "$(dirname "$activation")/org.example.service" "$policy.1.orig" "$installed_unit.2024-11-01.bak"; do
    inside touch "$theirs"
done
inside mkdir "$prefix/empty"
# A folder that was moved elsewhere, whatever its files are called.
inside mkdir /opt/elsewhere
inside mv "$prefix/share/polkit-1" /opt/elsewhere/polkit-1
inside ln --symbolic /opt/elsewhere/polkit-1 "$prefix/share/polkit-1"
# A folder that was moved within the prefix.
inside mv "$prefix/lib" "$prefix/lib64"
inside ln --symbolic lib64 "$prefix/lib"
inside touch /opt/victim "$prefix/victim"
inside sh -c "cat >>\"\$1/installed-files\"" -- "$folder" <<END
../victim
bin/../victim
./victim
/opt/victim
share/polkit-1/../../../victim
empty/
empty

*
share/polkit-1/.
END
elsewhere=$(inside find /opt/elsewhere | sort)
expect_equal "the removal among files of others" "$(remove_corvane)" success
expect_equal "what is left below the prefix" "$(inside find "$prefix" | sort)" "$(sort <<END
$prefix
$prefix/bin
$prefix/bin/other
$prefix/empty
$prefix/lib
$prefix/lib64
$prefix/libexec
$folder
$folder/notes
$prefix/share
$prefix/share/corvane-notes
$prefix/share/polkit-1
$prefix/victim
END
)"
expect_equal "what is left elsewhere" "$(inside find /opt/elsewhere | sort)" "$elsewhere"
for theirs in /opt/victim /usr/local/libexec/other "$(dirname "$activation")/org.example.service" "$policy.1.orig" \
    "$installed_unit.2024-11-01.bak"; do
    inside test -e "$theirs" || fail "$theirs is gone"
done
expect_no_helper "the removal among files of others"
inside rm --recursive "$prefix" /opt/elsewhere /opt/victim /usr/local/libexec /usr/local/share/dbus-1 "$policy.1.orig" \
    "$installed_unit.2024-11-01.bak"
forget_prompt
expect_same_disk "the removal among files of others" "$disk"

# --- below /usr/local, whose own folders are empty --------------------------------------------------------------------

inside mkdir --parents /usr/local/bin /usr/local/lib /usr/local/share/man
with_folders=$(changes_on_disk)
install_application
inside cp --recursive "$prefix/." /usr/local
inside rm --recursive "$prefix"
forget_prompt
inside /usr/local/libexec/corvane/install-helper
expect_equal "the removal below /usr/local" "$(inside /usr/local/libexec/corvane/uninstall 2>&1)" ""
expect_no_helper "the removal below /usr/local"
expect_same_disk "the removal below /usr/local" "$with_folders"

# --- an application that nothing tells the files of -----------------------------------------------------------------

stays="the application stays: there is no list of its files; a helper that it had installed is removed"
# expect_to_stay WHAT: the application does, its user is told so, and nothing is left of the helper.
expect_to_stay() {
    local before
    install_helper
    before=$(inside find "$prefix" | sort)
    expect_equal "the removal with $1" "$(remove_corvane)" "failure: $stays"
    expect_equal "the application with $1" "$(inside find "$prefix" | sort)" "$before"
    expect_no_helper "$1"
}
install_application
list="$folder/installed-files"
inside mv "$list" "$prefix/list"
expect_to_stay "no list"
inside ln --symbolic "$prefix/list" "$list"
expect_to_stay "a link in the list's place"
inside rm "$list"
inside mkfifo "$list"
expect_to_stay "a pipe in the list's place"
inside rm "$list"
inside truncate --size 65537 "$list"
expect_to_stay "a list that is too large"
echo "bin/corvane" >"$BOX_ROOT$list"
expect_to_stay "a list of something else"
echo "other/libexec/corvane/uninstall" >"$BOX_ROOT$list"
expect_to_stay "a list of another prefix"

# --- by a link to the script ----------------------------------------------------------------------------------------

inside mv "$prefix/list" "$list"
inside mkdir --parents /opt/far/libexec/corvane
inside touch /opt/far/libexec/corvane/installed-files
inside ln --symbolic "$folder/uninstall" /opt/far/libexec/corvane/uninstall
inside /opt/far/libexec/corvane/uninstall || fail "the script does not run by a link"
inside test -L /opt/far/libexec/corvane/uninstall -a -e /opt/far/libexec/corvane/installed-files ||
    fail "the folder of the link was taken for the application's"
inside rm --recursive /opt/far
forget_prompt
expect_same_disk "the removal by a link" "$disk"
