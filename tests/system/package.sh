# shellcheck shell=bash
# For tests of the Debian package. Sourced after lib.sh; PACKAGE_FOLDER holds the one that the tests' build makes.

packages=("${PACKAGE_FOLDER:?not given}"/*.deb)
package=$BOX_ROOT/tmp/corvane.deb
unpacked=$BOX_ROOT/tmp/unpacked
program=/usr/libexec/corvane/corvane-helper
cp "${packages[0]}" "$package"
# The index of all manuals takes its time, and is none of this package's.
rm -f "$BOX_ROOT/var/lib/man-db/auto-update"

# dpkg_does ARGUMENT...: with its triggers, as everybody's.
dpkg_does() {
    local output
    output=$(inside env DEBIAN_FRONTEND=noninteractive dpkg --force-unsafe-io "$@" 2>&1) || fail "dpkg $*: $output"
    echo "$output"
}

install_package() {
    dpkg_does --install /tmp/corvane.deb
}

purge_package() {
    dpkg_does --purge corvane
}

# unpack_package, then change what is in $unpacked, then pack_package.
unpack_package() {
    rm -rf "$unpacked"
    dpkg-deb --raw-extract "$package" "$unpacked"
}

pack_package() {
    dpkg-deb --root-owner-group --build -Znone "$unpacked" "$package" >/dev/null
}

# Becomes a later package, with another program that runs alike.
make_later_package() {
    unpack_package
    sed --in-place 's/^Version: .*/&+later/' "$unpacked/DEBIAN/control"
    echo "later" >>"$unpacked$program"
    pack_package
}

# The running helper executes just the bytes of the installed program.
is_live() {
    inside cmp --silent "/proc/$(helper_pid)/exe" "$program"
}
