#!/bin/bash
# Installs a build below a folder, for the boxes to boot with, and checks that all of it came to its place.
#
#   installs.sh CMAKE BUILD STAGE
set -euo pipefail
umask 022
cmake=$1 build=$2 stage=$3

rm -rf "$stage"
DESTDIR=$stage "$cmake" --install "$build" --prefix /usr >/dev/null

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

helper=/usr/libexec/corvane/corvane-helper
unit=/usr/lib/systemd/system/de.tavrin.corvane.smchelper.service
for program in /usr/bin/corvane $helper; do
    [[ -x $stage$program ]] || fail "$program is missing, or cannot be executed"
done
cmp "$stage/usr/bin/corvane" "$stage$helper" || fail "the helper is no copy of corvane"
for file in $unit /usr/share/dbus-1/system-services/de.tavrin.corvane.smchelper.service \
    /usr/share/dbus-1/system.d/de.tavrin.corvane.smchelper.conf; do
    [[ -f $stage$file ]] || fail "$file is missing"
done
[[ -f $stage/usr/lib/corvane/libcorvane-app.so ]] || fail "the application's module is missing"
for file in corvane-helper install-helper helper.unit helper.activation helper.policy uninstall; do
    [[ -f $stage/usr/libexec/corvane/$file ]] || fail "the application has no $file to install"
done
for script in install-helper uninstall; do
    grep --quiet --fixed-strings ">/usr/libexec/corvane/$script<" \
        "$stage/usr/share/polkit-1/actions/de.tavrin.corvane.policy" || fail "polkit's action names another script"
done
grep --quiet --fixed-strings --line-regexp "ExecStart=\"$helper\" --daemon" "$stage$unit" ||
    fail "the unit does not start the installed helper"
[[ ! -e $stage/usr/libexec/corvane/installed-files ]] ||
    fail "there is a list of files below /usr, which is the package manager's"
