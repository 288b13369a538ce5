#!/bin/bash
# The fans are with the firmware before the machine sleeps, each time, even while a client goes on asking for more,
# and can be driven again afterwards.
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

# sleep_once WHICH
sleep_once() {
    echo "freeze mem disk" >"$BOX_ROOT/sys/power/state"
    rm -f "$observed"
    wait_until 2 "the fan is forced before the $1" fan_is_in hwmon0 1
    inside systemctl suspend
    wait_until 20 "the machine slept and woke ($1)" woke
    expect_equal "the fan's mode right before the $1" \
        "$(head --lines 1 "$observed")" "pre: fan mode 5, slept no"
    expect_equal "whether it slept ($1)" "$(sed 's/.*, //' "$observed" | tail --lines 1)" "slept yes"
}

for which in "first sleep" "second sleep"; do
    call setFanFloorWithPercentWithReply d 60 >/dev/null
    sleep_once "$which"
done

while call setFanFloorWithPercentWithReply d 60; do :; done >/dev/null 2>&1 &
insisting=$!
sleep_once "sleep that a client will not hear of"
wait_until 5 "the fan is driven again after it" fan_is_in hwmon0 1
kill "$insisting"
