# shellcheck shell=bash
# shellcheck disable=SC2034 # what is set for who sources this
# Corvane at work on a simulated Mac, with a virtual display and a bus of its own. Sourced from the project's folder by
# what measures the application.

# build_corvane FOLDER TARGET...: what is shipped.
build_corvane() {
    local build=$1
    shift
    scripts/lib/install-packages build test
    cmake --preset release -B "$build" -DCORVANE_UNITY=ON >/dev/null
    cmake --build "$build" --target corvane corvane-app "$@" >/dev/null
}

# Until the end of the script, or `end_desktop`. Sets `folder`, which everything lies in, the processes `bus` and
# `display`, and what the environment tells of them.
make_desktop() {
    folder=$(mktemp --directory)
    trap end_desktop EXIT
    dbus-daemon --session --nofork --address="unix:path=$folder/bus" 2>/dev/null &
    bus=$!
    Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp -noreset 3>"$folder/display" >/dev/null 2>&1 &
    display=$!
    until [[ -S $folder/bus && -s $folder/display ]]; do
        kill -0 "$bus" "$display" || exit 1
        sleep 0.05
    done
    DISPLAY=:$(<"$folder/display")
    export DISPLAY LANG=C.UTF-8
    unset WAYLAND_DISPLAY QT_QPA_PLATFORM QT_QUICK_BACKEND
    export CORVANE_SMC=simulated CORVANE_SIMULATION=$folder/mac CORVANE_HELPER_BUS=unix:path=$folder/bus
    export DBUS_SESSION_BUS_ADDRESS=$CORVANE_HELPER_BUS XDG_CONFIG_HOME=$folder XDG_RUNTIME_DIR=$folder
}

end_desktop() {
    # shellcheck disable=SC2046 # one word each
    kill $(jobs -p) 2>/dev/null || true
    wait || true
    rm --recursive --force "$folder"
}

# start_corvane BUILD [SETTINGS]: sets the processes `helper` and `application`. As after its first start: neither
# introduction nor panel opens by itself. SETTINGS are further ones, as JSON has them.
start_corvane() {
    local version
    version=$(sed --quiet 's/^project(corvane VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
    mkdir "$folder/de.tavrin.corvane"
    echo "{\"lastLaunchedBuild\": \"1\", \"onboardingSeenVersion\": \"$version\"${2:+, $2}}" \
        >"$folder/de.tavrin.corvane/settings.json"
    "$1/corvane" --daemon 2>"$folder/helper.log" &
    helper=$!
    "$1/corvane" 2>"$folder/application.log" &
    application=$!
    # What is started before this one listens would be the first itself.
    until [[ -S $folder/corvane/open ]]; do
        kill -0 "$application" || {
            cat "$folder/application.log" >&2
            exit 1
        }
        sleep 0.05
    done
}
