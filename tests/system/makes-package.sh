#!/bin/bash
# Makes the Debian package of a build for the boxes to install, and checks that all of it is in there.
#
#   makes-package.sh CPACK BUILD FOLDER
set -euo pipefail
umask 022
cpack=$1 build=$2 folder=$3

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

rm -rf "$folder"
output=$("$cpack" --config "$build/CPackConfig.cmake" -B "$folder" 2>&1) || fail "$output"
rm -rf "$folder/_CPack_Packages"
packages=("$folder"/*.deb)
package=${packages[0]}
expected=$folder/corvane_$(dpkg-deb --field "$package" Version)_$(dpkg --print-architecture).deb
[[ ${packages[*]} == "$expected" ]] || fail "got ${packages[*]}, expected $expected"

contents=$(dpkg-deb --contents "$package")
name=de.tavrin.corvane
for file in bin/corvane lib/corvane/libcorvane-app.so libexec/corvane/corvane-helper libexec/corvane/uninstall \
    "lib/systemd/system/$name.smchelper.service" \
    "share/dbus-1/system-services/$name.smchelper.service" "share/dbus-1/system.d/$name.smchelper.conf" \
    "share/polkit-1/actions/$name.policy" share/lintian/overrides/corvane \
    "share/applications/$name.desktop" "share/metainfo/$name.metainfo.xml" \
    "share/icons/hicolor/scalable/apps/$name.svg" "share/icons/hicolor/16x16/apps/$name.svg" \
    share/man/man1/corvane.1.gz share/doc/corvane/copyright share/doc/corvane/changelog.Debian.gz; do
    grep --quiet " \./usr/$file$" <<<"$contents" || fail "/usr/$file is not in the package"
done
for file in install-helper helper.unit helper.activation helper.policy installed-files; do
    ! grep --quiet "/$file$" <<<"$contents" || fail "$file is in the package, which has no use for it"
done
# Not through a pipe: grep ends at what it looks for, and tar would fail for want of a reader.
unit=$(dpkg-deb --fsys-tarfile "$package" | tar --extract --to-stdout "./usr/lib/systemd/system/$name.smchelper.service")
grep --quiet --fixed-strings --line-regexp 'ExecStart="/usr/libexec/corvane/corvane-helper" --daemon' <<<"$unit" ||
    fail "the unit does not start the package's helper"
