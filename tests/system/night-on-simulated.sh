# shellcheck shell=bash disable=SC2034,SC2154
# A night's machine: the simulated Mac, its heat, its battery and its applications; sleep and lid are the system's own.
# Sourced by spends-a-night.sh.

mac=$BOX_ROOT/run/mac
machine_variables=(CORVANE_SMC=simulated CORVANE_SIMULATION=/run/mac)
celsius=45 charge=80 supply=mains render_is=stopped

# The whole of the Mac's world.
simulate() {
    printf '%s\n' "hold.T* = $celsius" "battery = $charge" "power = $supply" \
        "application.org.example.Render = $render_is" >"$mac.new"
    mv "$mac.new" "$mac"
}

prepare_machine() {
    simulate
    # For every service, the helper's among them.
    inside systemctl set-environment "${machine_variables[@]}"
}

# In the system: says in which mode the fan is.
tell_mode="busctl --system call $name $path $interface getStatusWithReply | grep --only-matching '\"mode\" i [0-9]*' |
    cut --delimiter ' ' --fields 3 | sort --unique | paste --serial --delimiters ' '"
fan_driven_by_firmware=0

# The Mac is the helper's, so it alone can be asked, which it takes for a sign of life.
fans_are_firmwares() { helper_says mode "i 0" && ! helper_says mode "i 1"; }
fans_are_driven() { helper_says mode "i 1" && ! helper_says mode "i 0"; }

silences() { helper_log | grep --count "WATCHDOG" || true; }
prepare_silence() { silences=$(silences); }
silence_has_handed_back() { (($(silences) > silences)) && fans_are_firmwares; }

heat_to() {
    celsius=$1
    simulate
}

# battery PERCENT mains|battery
battery() {
    charge=$1 supply=$2
    simulate
}

start_render() {
    render_is=running
    simulate
}
