#!/bin/bash
# An application below a prefix of its own installs the helper behind one prompt; from then on any user's call starts
# it.
. "$(dirname "$0")/installation.sh"

plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1
traces=$(installation_traces)
if call pingWithReply >/dev/null 2>&1; then
    fail "there is a helper before any was installed"
fi

expect_equal "what the installer says" "$(install_helper)" "before: installed=false update=false
prompt: de.tavrin.corvane.install-helper: Corvane is installing a small helper for fan control. After this, everything \
runs without further password prompts.
success
after: installed=true update=false"

for file in "$program" "/etc/systemd/system/$unit" "/etc/dbus-1/system.d/$name.conf" \
    "/usr/local/share/dbus-1/system-services/$unit"; do
    mode=644
    [[ $file != "$program" ]] || mode=755
    expect_equal "owner and mode of $file" "$(inside stat --format '%U:%G %a %F' "$file")" "root:root $mode regular file"
done
inside cmp "$folder/corvane-helper" "$program" || fail "another program was installed"
added=$(comm -13 <(paths_of "$traces") <(paths_of "$(installation_traces)"))
expect_equal "files and folders that were added" "$added" "$(sort <<END
/etc/dbus-1/system.d/$name.conf
/etc/systemd/system/$unit
/usr/local/libexec
/usr/local/libexec/corvane
$program
/usr/local/share/dbus-1
/usr/local/share/dbus-1/system-services
/usr/local/share/dbus-1/system-services/$unit
END
)"

wait_until 5 "the new helper is live" is_live
inside systemctl stop "$unit"
helper_is inactive || fail "the helper cannot be stopped"
expect_equal "the first reply" "$(call pingWithReply)" 'bs true "Corvane daemon alive, fans=1"'
is_live || fail "another program answers"
call setFanFloorWithPercentWithReply d 60 >/dev/null
wait_until 2 "the fan is driven" fan_is_in hwmon0 1

# It is no less closed off than a packaged one.
complaints=$(inside systemd-analyze verify "$unit" 2>&1) || fail "the unit is unsound: $complaints"
rating=$(inside systemd-analyze security --threshold=7 --no-pager "$unit") || fail "the unit is too open: $rating"

# The prompt is in the user's language. A dismissed one changes nothing of what is there.
traces=$(installation_traces)
german=$(install_answering cancel LANG=de_DE.UTF-8)
[[ $german == *": Corvane installiert ein Hilfswerkzeug zur Lüftersteuerung. Danach läuft alles ohne weitere \
Passwort-Abfragen."* ]] || fail "the German prompt is not the one: $german"
[[ $german == *"cancelled"* ]] || fail "the dismissed prompt was not told: $german"
expect_unchanged "a dismissed prompt" "$traces"
