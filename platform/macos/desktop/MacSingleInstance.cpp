#include "platform/macos/desktop/MacSingleInstance.h"

#include <utility>

#include <poll.h>

namespace corvane {

namespace {

using namespace std::chrono_literals;
using SteadyClock = std::chrono::steady_clock;

/// Of one session's programs; begins with the application's identifier, as such names do.
CFStringRef portName() {
    return CFSTR("de.tavrin.corvane.open");
}

/// Nothing else runs while an answer is waited for.
CFStringRef answerMode() {
    return CFSTR("de.tavrin.corvane.answer");
}

/// Between two tries to reach a first one that is still starting, or ending.
constexpr auto pauseBetweenTries = 20ms;

CFDataRef openPanel(CFMessagePortRef /*port*/, SInt32 /*identifier*/, CFDataRef /*data*/,
                    void* openRequested) {
    (*static_cast<std::function<void()>*>(openRequested))();
    // Answers, with nothing to say.
    return nullptr;
}

}  // namespace

MacSingleInstance::~MacSingleInstance() {
    if (port_) {
        CFMessagePortInvalidate(port_.get());
    }
}

Start MacSingleInstance::claim(std::function<void()> openRequested) {
    openRequested_ = std::move(openRequested);
    const auto end = SteadyClock::now() + patience_;
    // Over again: the first one may be about to listen, or about to end.
    while (!listen()) {
        const Answer answer = ask();
        if (answer == Answer::yes) {
            return {.role = StartRole::second, .error = {}};
        }
        if (answer == Answer::none) {
            return {.role = StartRole::unanswered,
                    .error = "Corvane is already running but does not answer."};
        }
        if (SteadyClock::now() >= end) {
            log_.write("Other instances go unnoticed: the system gives no message port");
            return {};
        }
        poll(nullptr, 0, static_cast<int>(std::chrono::milliseconds(pauseBetweenTries).count()));
    }
    reopenRequests_ = std::make_unique<ReopenRequests>(mainLoop_, openRequested_);
    return {};
}

/// False when somebody else has the name.
bool MacSingleInstance::listen() {
    CFMessagePortContext context{.version = 0,
                                 .info = &openRequested_,
                                 .retain = nullptr,
                                 .release = nullptr,
                                 .copyDescription = nullptr};
    port_.reset(CFMessagePortCreateLocal(kCFAllocatorDefault, portName(), openPanel, &context, nullptr));
    if (!port_) {
        return false;
    }
    source_.reset(CFMessagePortCreateRunLoopSource(kCFAllocatorDefault, port_.get(), 0));
    CFRunLoopAddSource(CFRunLoopGetMain(), source_.get(), kCFRunLoopCommonModes);
    return true;
}

MacSingleInstance::Answer MacSingleInstance::ask() const {
    const CfRef<CFMessagePortRef> first(CFMessagePortCreateRemote(kCFAllocatorDefault, portName()));
    if (!first) {
        return Answer::nobody;
    }
    const std::chrono::duration<CFTimeInterval> patience = patience_;
    CFDataRef contents = nullptr;
    const SInt32 result = CFMessagePortSendRequest(first.get(), 0, nullptr, patience.count(),
                                                   patience.count(), answerMode(), &contents);
    const CfRef<CFDataRef> owned(contents);
    switch (result) {
        case kCFMessagePortSuccess:
            return Answer::yes;
        case kCFMessagePortSendTimeout:
        case kCFMessagePortReceiveTimeout:
            return Answer::none;
        default:
            // It has just ended.
            return Answer::nobody;
    }
}

}  // namespace corvane
