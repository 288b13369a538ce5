# shellcheck shell=bash
# What the tests of the application's uninstaller share. Sourced in place of lib.sh.
#
# The box knows nothing of the product to begin with; an operator, who may administer it, has two programs that do what
# the application does: install the helper, and remove everything. The tests bring along what CORVANE_AGENT,
# CORVANE_INSTALLATION and CORVANE_REMOVAL name, and, in PREFIX_STAGE, an application as `cmake --install` puts it below
# a prefix that nobody has thought of.

. "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
. "$tests/operator.sh"

prefix="/opt/corvane's \"own\" place"
folder="$prefix/libexec/corvane"
actions=/usr/share/polkit-1/actions
activation=/usr/local/share/dbus-1/system-services/$unit
installed_unit=/etc/systemd/system/$unit
policy=/etc/dbus-1/system.d/$name.conf
home=/home/operator-with-sudo
# shellcheck disable=SC2034 # for the tests
stuck="a fan cannot be handed back to the firmware, and nothing but the helper could do it later: \
restart the computer, which puts every fan back, and remove Corvane then."

# An application below its prefix, whose prompts polkit knows.
install_application() {
    cp --recursive --preserve=mode,links "$PREFIX_STAGE/." "$BOX_ROOT"
    inside cp "$prefix/share/polkit-1/actions/de.tavrin.corvane.policy" "$actions"
    wait_until 10 "polkit knows the prompt" inside pkaction --action-id de.tavrin.corvane.uninstall
}

install_helper() {
    [[ $(as_operator scripted-agent "password=$password" installation-driver "$folder" 2>&1) == *success* ]] ||
        fail "the helper cannot be installed"
}

# remove_answering ANSWER [VARIABLE=VALUE...]: the uninstaller at work, and the operator at its prompt.
remove_answering() {
    local answer=$1
    shift
    as_operator env HOME="$home" "$@" scripted-agent "$answer" removal-driver "$folder" 2>&1
}

# Without the line of the prompt.
remove_corvane() {
    remove_answering "password=$password" | grep --invert-match '^prompt: '
}

# The script alone, as root.
run_script() {
    inside "$folder/uninstall" 2>&1
}

# The system knows nothing of a helper.
# expect_no_helper WHEN
expect_no_helper() {
    local file
    for file in /usr/local/libexec/corvane "$activation" "$installed_unit" "$policy" /run/corvane /var/log/corvane-smchelper.log; do
        ! inside test -e "$file" || fail "$1: $file is still there"
    done
    expect_equal "$1: what the service manager knows" "$(inside systemctl show --property LoadState --value "$unit")" \
        not-found
    ! call pingWithReply >/dev/null 2>&1 || fail "$1: a helper answers"
    [[ $(inside busctl --system --list --no-pager) != *"$name"* ]] || fail "$1: the bus knows the name"
}

# The application asks for the status all the time: the helper does not let go of the fans by itself, and is started
# again whenever it can be.
keep_calling() {
    while true; do
        call pingWithReply >/dev/null 2>&1 || true
        sleep 0.2
    done
}
keep_calling &
caller=$!
trap 'explain_failure; kill "$caller"' EXIT

make_operator "$CORVANE_INSTALLATION" "$CORVANE_REMOVAL"
