# shellcheck shell=bash
# For tests of the application on a real desktop: an X server, a session bus, XFCE's panel and a notification server of
# the test's own, and a helper on a simulated Mac. Nothing in it needs rights. Sourced by scripts that
# `on-desktop` runs; PROGRAM is the executable.
set -euo pipefail

tests=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$tests/xfce-panel.sh"
folder=${DESKTOP_FOLDER:?run this through on-desktop}
mac=$folder/mac
panel_height=32

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

# wait_until SECONDS WHAT CONDITION...
wait_until() {
    local deadline=$((SECONDS + $1)) what=$2
    shift 2
    until "$@" >/dev/null 2>&1; do
        ((SECONDS <= deadline)) || fail "waited in vain until $what"
        sleep 0.05
    done
}

# --- the helper and the application ----------------------------------------------------------------------------

helper_listens() { grep --quiet "listening on" "$folder/helper.log"; }
start_helper() {
    export CORVANE_SMC=simulated CORVANE_SIMULATION="$mac" CORVANE_HELPER_BUS=session
    "${PROGRAM:?not given}" --daemon 2>"$folder/helper.log" &
    wait_until 10 "the helper listens" helper_listens
}

# skip_introduction SETTINGS: the user has read the introduction of this version, so the panel opens by itself after a
# new build. SETTINGS are further ones, as JSON has them, if any.
skip_introduction() {
    local version
    version=$(sed --quiet 's/^project(corvane VERSION \([0-9.]*\).*/\1/p' "$tests/../../CMakeLists.txt")
    mkdir -p "$XDG_CONFIG_HOME/de.tavrin.corvane"
    echo "{\"onboardingSeenVersion\": \"${version:?}\"${1:+, $1}}" >"$XDG_CONFIG_HOME/de.tavrin.corvane/settings.json"
}

# Sets `application` to its process.
start_corvane() {
    QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 "$PROGRAM" 2>>"$folder/application.log" &
    # shellcheck disable=SC2034 # for who sources this
    application=$!
}

# The Mac's world: the whole of the control file.
simulate() {
    printf '%s\n' "$@" >"$mac.new"
    mv "$mac.new" "$mac"
}

# helper_says KEY VALUE: in the status that any caller can ask for, as busctl spells it.
helper_says() {
    local status
    status=$(busctl --user call de.tavrin.corvane.smchelper /de/tavrin/corvane/smchelper \
        de.tavrin.corvane.FanHelperProtocol getStatusWithReply) || return 1
    grep --quiet --fixed-strings "\"$1\" $2" <<<"$status"
}

# --- the status item -------------------------------------------------------------------------------------------

item_name() {
    busctl --user get-property org.kde.StatusNotifierWatcher /StatusNotifierWatcher org.kde.StatusNotifierWatcher \
        RegisteredStatusNotifierItems | grep --only-matching 'org.kde.StatusNotifierItem-[0-9-]*'
}

item_says() {
    busctl --user get-property "$(item_name)" /StatusNotifierItem org.kde.StatusNotifierItem ToolTip |
        grep --quiet --fixed-strings "\"$1\""
}

picture() {
    import -silent -window root "$1"
}

# Two pictures, one right after the other, are the same, and not empty.
stands_still() {
    picture "$folder/one.png"
    picture "$folder/other.png"
    [[ $(identify -format '%k' "$folder/one.png") -gt 1 ]] && cmp --quiet "$folder/one.png" "$folder/other.png"
}

# The middle of what the panel shows now and did not show in the picture that is given: "x y".
place_of_item() {
    local box
    picture "$folder/with-item.png"
    box=$(convert "$1" "$folder/with-item.png" -crop "x$panel_height+0+0" +repage -compose difference -composite \
        -threshold 10% -trim -format '%w %h %X %Y' info:)
    # shellcheck disable=SC2086 # four numbers
    set -- $box
    (($1 > 4 && $2 > 4)) || return 1
    echo $(($3 + $1 / 2)) $(($4 + $2 / 2))
}

click_at() {
    xdotool mousemove "$1" "$2" click 1
}

# --- the panel -------------------------------------------------------------------------------------------------

panel_window() {
    xdotool search --onlyvisible --name '^Corvane$'
}
panel_is_shown() { [[ -n $(panel_window) ]]; }
panel_is_closed() { [[ -z $(panel_window) ]]; }

# expect_panel_stays: for a second, in which whatever takes the keyboard from it has done so.
expect_panel_stays() {
    local end=$((${EPOCHREALTIME//[!0-9]/} + 1000000))
    while ((${EPOCHREALTIME//[!0-9]/} < end)); do
        panel_is_shown || fail "the panel has closed by itself"
        sleep 0.02
    done
}

accessible() {
    "$tests/accessible" Corvane "$@"
}

# click_on ROLE NAME: at its middle, or with a third argument at that many percent of its width.
click_on() {
    local place
    wait_until 5 "the panel shows a $1 called $2" accessible where "$1" "$2"
    read -ra place <<<"$(accessible where "$1" "$2")"
    click_at $((place[0] + place[2] * ${3:-50} / 100)) $((place[1] + place[3] / 2))
}
