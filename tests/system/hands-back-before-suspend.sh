#!/bin/bash
# The fans are with the firmware before the machine sleeps, each time, and can be driven again afterwards.
. "$(dirname "$0")/lib.sh"

plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1

# systemd runs this right before it writes the sleep state, and right after the machine woke.
hook=$BOX_ROOT/usr/lib/systemd/system-sleep/observer
cat >"$hook" <<'END'
#!/bin/sh
grep -qx mem /sys/power/state && slept=yes || slept=no
echo "$1: fan mode $(cat /sys/class/hwmon/hwmon0/pwm1_enable), slept $slept" >>/run/observed
END
chmod +x "$hook"
observed=$BOX_ROOT/run/observed
woke() { [[ -f $observed ]] && grep --quiet '^post' "$observed"; }

for round in first second; do
    echo "freeze mem disk" >"$BOX_ROOT/sys/power/state"
    rm -f "$observed"
    call setFanFloorWithPercentWithReply d 60 >/dev/null
    wait_until 2 "the fan is forced ($round time)" fan_is_in hwmon0 1
    inside systemctl suspend
    wait_until 20 "the machine slept and woke ($round time)" woke
    expect_equal "the $round sleep" "$(cat "$observed")" $'pre: fan mode 5, slept no\npost: fan mode 5, slept yes'
done
