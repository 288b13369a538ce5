#!/bin/bash
# On a machine without fans and sensors the helper refuses to boost, and keeps answering.
. "$(dirname "$0")/lib.sh"

expect_equal "ping" "$(call pingWithReply)" 'bs true "Corvane daemon alive, fans=0"'
served_by=$(helper_pid)
expect_equal "the reply" "$(call setFanFloorWithPercentWithReply d 50)" 'bs true "floor set to 50%"'
status=$(call getStatusWithReply)
[[ $status == *'"isBoosted" b false'* ]] || fail "it claims to boost without sensors: $status"
[[ $status == *'"fans" aa{sv} 0'* ]] || fail "it claims to have fans: $status"
expect_in_log "Corvane daemon: no temp sensors — refusing manual control for safety"
expect_equal "the process that served all this" "$(helper_pid)" "$served_by"
