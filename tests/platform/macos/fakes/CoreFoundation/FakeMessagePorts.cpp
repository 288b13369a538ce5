#include "tests/platform/macos/fakes/CoreFoundation/FakeMessagePorts.h"

#include <algorithm>
#include <utility>

#include <gtest/gtest.h>

#include "tests/platform/macos/fakes/MainThread.h"

namespace corvane {

class FakeMessagePorts::LocalPort final : public CfState {
public:
    LocalPort(std::string name, CFMessagePortCallBack answer, void* info)
        : name_(std::move(name)), answer_(answer), info_(info) {}

    [[nodiscard]] const std::string& name() const { return name_; }

    void handle(CFMessagePortRef port) const {
        constexpr SInt32 anyIdentifier = 0;
        const CfReference contents(answer_(port, anyIdentifier, nullptr, info_));
    }

private:
    std::string name_;
    CFMessagePortCallBack answer_;
    void* info_;
};

class FakeMessagePorts::RemotePort final : public CfState {
public:
    explicit RemotePort(std::string name) : name_(std::move(name)) {}

    [[nodiscard]] const std::string& name() const { return name_; }

private:
    std::string name_;
};

/// Holds its port.
class FakeMessagePorts::Source final : public CfState {
public:
    explicit Source(CFTypeRef port) : port_(retainedCf(port)) {}

    [[nodiscard]] CFTypeRef port() const { return port_.get(); }

private:
    CfReference port_;
};

namespace {

template <typename State, typename... Arguments>
CfReference makeCfState(Arguments&&... arguments) {
    return makeCfObject(
        std::shared_ptr<CfState>(std::make_shared<State>(std::forward<Arguments>(arguments)...)));
}

/// Ports and sources may be changed by who has them.
void* changeable(CFTypeRef object) {
    return const_cast<void*>(object);
}

}  // namespace

FakeMessagePorts::~FakeMessagePorts() {
    EXPECT_TRUE(ports_.empty()) << "a message port was not invalidated";
}

CFMessagePortRef FakeMessagePorts::create(const std::string& name, CFMessagePortCallBack answer, void* info) {
    if (isBroken_ || others_.contains(name)) {
        return nullptr;
    }
    EXPECT_FALSE(ports_.contains(name)) << "a second port of one name in one process is the first one";
    const auto port =
        static_cast<CFMessagePortRef>(changeable(makeCfState<LocalPort>(name, answer, info).release()));
    ports_[name] = port;
    return port;
}

CFMessagePortRef FakeMessagePorts::find(const std::string& name) const {
    if (isBroken_ || !others_.contains(name)) {
        return nullptr;
    }
    return static_cast<CFMessagePortRef>(changeable(makeCfState<RemotePort>(name).release()));
}

SInt32 FakeMessagePorts::send(const std::string& name) {
    const auto other = others_.find(name);
    if (other == others_.end()) {
        return kCFMessagePortIsInvalid;
    }
    switch (other->second) {
        case Other::answers:
            ++sent_;
            return kCFMessagePortSuccess;
        case Other::hangs:
            return kCFMessagePortReceiveTimeout;
        case Other::ends:
            break;
    }
    others_.erase(other);
    return kCFMessagePortIsInvalid;
}

bool FakeMessagePorts::request(const std::string& name) {
    const auto port = ports_.find(name);
    const bool isHeard =
        port != ports_.end() && std::ranges::any_of(sources_, [&](const CfReference& source) {
            return stateOfCf<Source>(source.get()).port() == port->second;
        });
    if (isHeard) {
        stateOfCf<LocalPort>(port->second).handle(port->second);
    }
    return isHeard;
}

void FakeMessagePorts::invalidate(CFMessagePortRef port) {
    ports_.erase(stateOfCf<LocalPort>(port).name());
    std::erase_if(sources_,
                  [&](const CfReference& source) { return stateOfCf<Source>(source.get()).port() == port; });
}

}  // namespace corvane

using corvane::FakeMessagePorts;
using CurrentPorts = corvane::Current<FakeMessagePorts>;

const CFRunLoopMode kCFRunLoopCommonModes = CFSTR("kCFRunLoopCommonModes");

CFMessagePortRef CFMessagePortCreateLocal(CFAllocatorRef /*allocator*/, CFStringRef name,
                                          CFMessagePortCallBack callout, CFMessagePortContext* context,
                                          Boolean* /*shouldFreeInfo*/) {
    corvane::expectMainThread("CFMessagePortCreateLocal");
    return CurrentPorts::get() == nullptr
               ? nullptr
               : CurrentPorts::get()->create(corvane::heldByCf<std::string>(name), callout, context->info);
}

CFMessagePortRef CFMessagePortCreateRemote(CFAllocatorRef /*allocator*/, CFStringRef name) {
    return CurrentPorts::get() == nullptr ? nullptr
                                          : CurrentPorts::get()->find(corvane::heldByCf<std::string>(name));
}

void CFMessagePortInvalidate(CFMessagePortRef port) {
    corvane::expectMainThread("CFMessagePortInvalidate");
    if (CurrentPorts::get() != nullptr) {
        CurrentPorts::get()->invalidate(port);
    }
}

SInt32 CFMessagePortSendRequest(CFMessagePortRef remote, SInt32 /*identifier*/, CFDataRef /*data*/,
                                CFTimeInterval /*sendTimeout*/, CFTimeInterval /*receiveTimeout*/,
                                CFStringRef /*replyMode*/, CFDataRef* returnData) {
    *returnData = nullptr;
    return CurrentPorts::get() == nullptr
               ? SInt32{kCFMessagePortIsInvalid}
               : CurrentPorts::get()->send(corvane::stateOfCf<FakeMessagePorts::RemotePort>(remote).name());
}

CFRunLoopSourceRef CFMessagePortCreateRunLoopSource(CFAllocatorRef /*allocator*/, CFMessagePortRef local,
                                                    CFIndex /*order*/) {
    return static_cast<CFRunLoopSourceRef>(
        corvane::changeable(corvane::makeCfState<FakeMessagePorts::Source>(local).release()));
}

void CFRunLoopAddSource(CFRunLoopRef loop, CFRunLoopSourceRef source, CFRunLoopMode mode) {
    EXPECT_EQ(loop, CFRunLoopGetMain());
    EXPECT_EQ(mode, kCFRunLoopCommonModes) << "in other modes it would not be heard while a menu is open";
    if (CurrentPorts::get() != nullptr) {
        CurrentPorts::get()->listen(source);
    }
}
