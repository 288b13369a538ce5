# shellcheck shell=bash
# What the tests of the application's installer share. Sourced in place of lib.sh.
#
# Turns the box into a system without a packaged helper, where an application lies below a prefix of its own that
# nobody has thought of, and makes a user who may administer the system, with a password. The tests bring along the
# two programs that CORVANE_AGENT and CORVANE_INSTALLATION name.

. "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
. "$tests/operator.sh"

folder="/opt/corvane's \"own\" place/libexec/corvane"
action=/usr/share/polkit-1/actions/de.tavrin.corvane.policy

program=/usr/local/libexec/corvane/corvane-helper

move_product_to_prefix() {
    inside mkdir --parents "${folder%/*}"
    inside mv /usr/libexec/corvane "$folder"
    inside sed --in-place "s|/usr/libexec/corvane/install-helper|$folder/install-helper|" "$action"
    inside rm "/usr/lib/systemd/system/$unit" "/usr/share/dbus-1/system-services/$unit" \
        "/usr/share/dbus-1/system.d/$name.conf"
    inside systemctl daemon-reload
    inside systemctl reload dbus.service
}

# install_answering ANSWER [VARIABLE=VALUE...]: the installer at work, and the operator at its prompt.
install_answering() {
    local answer=$1
    shift
    as_operator env "$@" scripted-agent "$answer" installation-driver "$folder" 2>&1
}

install_helper() {
    install_answering "password=$password"
}

# rebuild_helper TEXT: the application's program becomes another one, which runs like the one before.
rebuild_helper() {
    echo "$1" >>"$BOX_ROOT$folder/corvane-helper"
}

# Everything that an installation could leave behind, with owners and modes.
installation_traces() {
    inside find /usr/local /etc/systemd /etc/dbus-1 /usr/libexec /usr/share/dbus-1 /usr/lib/systemd/system \
        /opt /tmp /var/tmp \
        -not -path '*/systemd-private-*' \( -type d -printf '%p|%u:%g %m\n' -or -printf '%p|%u:%g %m %s %T@\n' \) | sort
}

# paths_of TRACES
paths_of() {
    cut --delimiter '|' --fields 1 <<<"$1" | sort
}

# expect_unchanged WHAT TRACES
expect_unchanged() {
    local changes
    changes=$(diff <(echo "$2") <(installation_traces)) || fail "$1 changed the system: $changes"
}

# The running helper executes just the bytes of the installed program.
is_live() {
    inside cmp --silent "/proc/$(helper_pid)/exe" "$program"
}

move_product_to_prefix
make_operator "$CORVANE_INSTALLATION"
