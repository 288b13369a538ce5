#!/bin/bash
# An ordinary user's first call starts the helper through the bus; nothing starts it before.
. "$(dirname "$0")/lib.sh"

plug_in_board hwmon0 nct6798 5
plug_in_processor hwmon1

helper_is inactive || fail "the helper runs before anybody called it"
expect_equal "the first reply" "$(call pingWithReply)" 'bs true "Corvane daemon alive, fans=1"'
helper_is active || fail "the helper is not a running unit"
expect_equal "the unit's state at boot" "$(inside systemctl is-enabled "$unit" || true)" "static"
fan_is_in hwmon0 5 || fail "a mere ping changed a fan"
