#!/bin/bash
# Every user may call the five members, and that is all anybody may do.
. "$(dirname "$0")/lib.sh"

# expect_refused WHAT COMMAND...: the bus itself must refuse, not the helper.
expect_refused() {
    local what=$1 answer
    shift
    if answer=$("$@" 2>&1); then
        fail "$what was allowed: $answer"
    fi
    [[ $answer == *"Access denied"* ]] || fail "$what failed, but not for lack of permission: $answer"
}

# call_as WHO OBJECT INTERFACE MEMBER [SIGNATURE ARGUMENT...]: WHO is as_visitor, or inside for root.
call_as() {
    local who=$1
    shift
    "$who" busctl --system call "$name" "$@"
}

expect_equal "ping" "$(call pingWithReply)" 'bs true "Corvane daemon alive, fans=0"'
[[ $(call getStatusWithReply) == 'a{sv} '* ]] || fail "the status is no record"
expect_equal "floor" "$(call setFanFloorWithPercentWithReply d -3)" 'bs true "boost off"'
expect_equal "stop" "$(call stopBoostWithReply)" 'bs true "boost stopped"'
expect_equal "lid" "$(call setLidStayAwakeWithReply b false)" 'bs true "lid-stay-awake off"'
served_by=$(helper_pid)

for who in as_visitor inside; do
    expect_refused "introspection ($who)" call_as $who "$path" org.freedesktop.DBus.Introspectable Introspect
    expect_refused "reading properties ($who)" call_as $who "$path" org.freedesktop.DBus.Properties GetAll s "$interface"
    expect_refused "reading one ($who)" call_as $who "$path" org.freedesktop.DBus.Properties Get ss "$interface" Version
    expect_refused "the peer interface ($who)" call_as $who "$path" org.freedesktop.DBus.Peer Ping
    expect_refused "another member ($who)" call_as $who "$path" "$interface" shutDown
    expect_refused "another object ($who)" call_as $who / "$interface" pingWithReply
done
expect_refused "posing as the helper" as_visitor busctl --system call \
    org.freedesktop.DBus /org/freedesktop/DBus org.freedesktop.DBus RequestName su "$name" 0

if answer=$(call setFanFloorWithPercentWithReply s full 2>&1); then
    fail "a floor that is a text was accepted: $answer"
fi
if answer=$(call pingWithReply s surplus 2>&1); then
    fail "an argument too many was accepted: $answer"
fi
expect_equal "ping after the wrong calls" "$(call pingWithReply)" 'bs true "Corvane daemon alive, fans=0"'
expect_equal "the process that served all this" "$(helper_pid)" "$served_by"
