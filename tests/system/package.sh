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

# What the box has on its disk that this machine has not, and what it lacks: names alone. dpkg's own books and the
# caches that its triggers write for all packages are exempt; so is what the journal and systemd write.
changes_on_disk() {
    local kind file
    while read -r kind file; do
        [[ $kind == d && -d /$file ]] || echo "/$file ($kind)"
    done < <(inside find /run/changes -mindepth 1 \( -path '*/var/lib/dpkg' -o -path '*/var/log/dpkg.log' \
        -o -path '*/var/cache/man' -o -path '*/var/log/journal' -o -path '*/var/lib/systemd' \
        -o -name mimeinfo.cache -o -name icon-theme.cache \) -prune -o -printf '%y %P\n') | sort
    inside find /run/corvane "/run/systemd/system/${unit:?source lib.sh first}.d" 2>/dev/null || true
}

# expect_same_disk WHAT CHANGES
expect_same_disk() {
    local difference
    difference=$(diff <(echo "$2") <(changes_on_disk)) || fail "$1 left the system changed: $difference"
}

# The running helper executes just the bytes of the installed program.
is_live() {
    inside cmp --silent "/proc/$(helper_pid)/exe" "$program"
}
