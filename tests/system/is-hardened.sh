#!/bin/bash
# The installed unit is sound, and stays as closed as docs/helper-service.md says.
. "$(dirname "$0")/lib.sh"

complaints=$(inside systemd-analyze verify "$unit" 2>&1) || fail "the unit is unsound: $complaints"
expect_equal "complaints about the unit" "$complaints" ""
# In tenths; 0.7 of 10 is what root, /sys and the bus cost.
rating=$(inside systemd-analyze security --threshold=7 --no-pager "$unit") || fail "the unit is too open: $rating"
tail --lines 1 <<<"$rating"
