# shellcheck shell=bash
# For tests of the application: runs its models, without a window, as an ordinary user of the system under test.
# Sourced after lib.sh; MODEL_DRIVER is the test program.

application_folder=$(mktemp -d)
application_output=$application_folder/output

# start_application PREFIX [RUNNER...]: from below PREFIX, where it finds its own helper, by a command that runs others,
# as_visitor if none is given. Its standard error goes to the test's.
start_application() {
    local prefix=$1 runner=("${@:2}")
    ((${#runner[@]})) || runner=(as_visitor)
    inside mkdir --parents "$prefix/bin"
    inside install -m 755 /dev/stdin "$prefix/bin/corvane-models" <"${MODEL_DRIVER:?not given}"
    : >"$application_output"
    exec {commands}> >("${runner[@]}" env HOME=/tmp "$prefix/bin/corvane-models" >>"$application_output")
    application=$!
    wait_until 5 "the application runs" shows fan.fansEnabled false
}

# tell COMMAND...: one line for the application.
tell() {
    echo "$*" >&"$commands"
}

# Ends it as a closed session would: without a word to the helper.
quit_application() {
    exec {commands}>&-
    wait "$application" || fail "the application ended with $?"
}

# Ends it where it stands.
kill_application() {
    inside pkill --signal KILL --exact corvane-models
    wait "$application" || true
}

# shows PROPERTY VALUE: what the application published last.
shows() {
    [[ $(grep "^$1 " "$application_output" | tail --lines 1) == "$1 $2" ]]
}

# has_shown PROPERTY VALUE: at any time.
has_shown() {
    grep --quiet --fixed-strings --line-regexp "$1 $2" "$application_output"
}
