# shellcheck shell=bash disable=SC2034,SC2154
# A night's machine: a notebook with a fan chip, a processor's sensor and a battery that the test moves; applications,
# sleep and lid are real. Sourced by spends-a-night.sh.

machine_variables=()
supplies=$BOX_ROOT/sys/class/power_supply

prepare_machine() {
    plug_in_board hwmon0 nct6798 5
    plug_in_processor hwmon1
    mkdir "$supplies/BAT0" "$supplies/AC"
    echo Mains >"$supplies/AC/type"
    echo Battery >"$supplies/BAT0/type"
    battery 80 mains
}

# In the system: says in which mode the fan is.
tell_mode="cat /sys/class/hwmon/hwmon0/pwm1_enable"
fan_driven_by_firmware=5

fans_are_firmwares() { fan_is_in hwmon0 5; }
fans_are_driven() { fan_is_in hwmon0 1; }

prepare_silence() { :; }
silence_has_handed_back() { fans_are_firmwares; }

heat_to() { heat hwmon1 "${1}000"; }

# battery PERCENT mains|battery
battery() {
    local online=0 status=Discharging
    [[ $2 != mains ]] || online=1 status=Charging
    echo "$1" >"$supplies/BAT0/capacity"
    echo "$status" >"$supplies/BAT0/status"
    echo "$online" >"$supplies/AC/online"
}

# As desktops start applications.
start_render() {
    start_in_session app-org.example.Render@night.service sleep 100000
}
