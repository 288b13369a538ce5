# shellcheck shell=bash
# For tests of what an administrator agrees to: polkit, and a user who may administer the system, with a password.
# Sourced after lib.sh. The tests bring along the program that CORVANE_AGENT names.

# shellcheck disable=SC2034 # for the tests
password="open sesame"

if ! inside test -x /usr/bin/pkexec -a -x /usr/lib/polkit-1/polkitd; then
    echo "SKIPPED: polkit or pkexec is not installed" >&2
    exit 77
fi

# make_operator PROGRAM...: who has these programs.
make_operator() {
    inside useradd --create-home --groups sudo --shell /bin/sh operator-with-sudo
    echo "operator-with-sudo:$password" | inside chpasswd
    local own
    for own in "$CORVANE_AGENT" "$@"; do
        install -m 755 "$own" "$BOX_ROOT/usr/local/bin/${own##*/}"
    done
}

as_operator() {
    inside setpriv --reuid operator-with-sudo --regid operator-with-sudo --init-groups "$@"
}
