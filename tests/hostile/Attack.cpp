#include "tests/hostile/Attack.h"

#include "platform/linux/HelperBus.h"

namespace corvane {

namespace {

constexpr std::size_t flooders = 8;
constexpr int callsAtOnce = 200;
/// A bus allows a user 256 connections, some of which are others'.
constexpr std::size_t connectionsAtOnce = 150;

}  // namespace

RawCaller Attack::newCaller() {
    ++connections_;
    return RawCaller(bus_);
}

bool Attack::send(RawCaller& caller, sd_bus_message* message) {
    const bool isSent = caller.send(message, contents_.oneIn(2));
    messages_ += isSent ? 1 : 0;
    return isSent;
}

/// What would let go of the fans has an argument that the helper cannot understand.
BusMessage Attack::wrongCall(RawCaller& caller) {
    const std::string member = contents_.member();
    BusMessage message =
        caller.methodCall(contents_.path().c_str(), contents_.interface().c_str(), member.c_str());
    if (member == "stopBoostWithReply" || member == "setFanFloorWithPercentWithReply") {
        sd_bus_message_append(message.get(), "s", "60");
    }
    contents_.fill(message.get());
    return message;
}

BusMessage Attack::rightCall(RawCaller& caller) {
    const bool isPing = contents_.oneIn(2);
    return caller.methodCall(HelperAddress::objectPath, HelperAddress::interface,
                             isPing ? "pingWithReply" : "getStatusWithReply");
}

BusMessage Attack::lidCall(RawCaller& caller) {
    isLidHeld_ = !isLidHeld_;
    BusMessage message =
        caller.methodCall(HelperAddress::objectPath, HelperAddress::interface, "setLidStayAwakeWithReply");
    sd_bus_message_append(message.get(), "b", isLidHeld_ ? 1 : 0);
    return message;
}

BusMessage Attack::anything(RawCaller& caller) {
    switch (contents_.pick(4)) {
        case 0: {
            BusMessage signal = caller.signal(contents_.path().c_str(), contents_.interface().c_str(),
                                              contents_.member().c_str());
            contents_.fill(signal.get());
            return signal;
        }
        case 1:
            return rightCall(caller);
        default:
            return wrongCall(caller);
    }
}

void Attack::sendNonsense(Duration duration) {
    const Clock::time_point end = Clock::now() + duration;
    while (Clock::now() < end) {
        RawCaller caller = newCaller();
        for (int i = 0; i < callsAtOnce && send(caller, anything(caller).get()); ++i) {
            caller.drain();
        }
        caller.flush();
    }
}

void Attack::floodWith(Call call, Duration duration) {
    const Clock::time_point end = Clock::now() + duration;
    std::vector<RawCaller> callers;
    while (callers.size() < flooders) {
        callers.push_back(newCaller());
    }
    while (Clock::now() < end) {
        for (RawCaller& caller : callers) {
            for (int i = 0; i < callsAtOnce; ++i) {
                if (!send(caller, (this->*call)(caller).get())) {
                    caller = newCaller();
                }
            }
        }
        callers.at(contents_.pick(flooders)).drain();
    }
}

void Attack::vanish(Duration duration) {
    const Clock::time_point end = Clock::now() + duration;
    while (Clock::now() < end) {
        RawCaller caller = newCaller();
        for (std::uint64_t i = 0, calls = 1 + contents_.pick(20); i < calls; ++i) {
            send(caller, rightCall(caller).get());
        }
        caller.flush();
    }
}

void Attack::connect(int count) {
    std::vector<RawCaller> callers;
    for (int i = 0; i < count; ++i) {
        if (callers.size() == connectionsAtOnce) {
            callers.clear();
        }
        callers.push_back(newCaller());
        answers_ += callers.back().call(rightCall(callers.back()).get()) ? 1 : 0;
    }
}

}  // namespace corvane
