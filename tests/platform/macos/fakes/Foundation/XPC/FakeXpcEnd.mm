#include "tests/platform/macos/fakes/Foundation/XPC/FakeXpcEnd.h"

#include <utility>

#include <gtest/gtest.h>

#include "tests/platform/macos/fakes/dispatch/FakeDispatch.h"

namespace corvane {

FakeXpcCall::FakeXpcCall(const std::shared_ptr<FakeXpcEnd>& sender, ErrorHandler handler)
    : sender_(sender), handler_([handler copy]) {
    sender->calls.insert(this);
}

FakeXpcCall::~FakeXpcCall() {
    fail(NSXPCConnectionReplyInvalid);
    if (const auto sender = sender_.lock()) {
        sender->calls.erase(this);
    }
}

void FakeXpcCall::endWith(std::function<void()> work) {
    const auto sender = sender_.lock();
    if (!sender || *isOver_) {
        return;
    }
    sender->async([isOver = isOver_, work = std::move(work)] {
        if (!std::exchange(*isOver, true)) {
            work();
        }
    });
}

void FakeXpcCall::reply(std::function<void()> deliver) {
    EXPECT_FALSE(std::exchange(isReplied_, true)) << "a reply block was called twice";
    endWith(std::move(deliver));
}

void FakeXpcCall::fail(NSInteger code) {
    if (isReplied_ && code == NSXPCConnectionReplyInvalid) {
        return;
    }
    endWith([handler = handler_, code] {
        handler([NSError errorWithDomain:NSCocoaErrorDomain code:code userInfo:nil]);
    });
}

FakeXpcEnd::FakeXpcEnd(std::string serviceName)
    : service(std::move(serviceName)), queue_(FakeDispatch::current().makeQueue()) {}

void FakeXpcEnd::async(std::function<void()> work) {
    FakeDispatch::current().async(queue_, [work = std::move(work)] {
        @autoreleasepool {
            work();
        }
    });
}

void FakeXpcEnd::failCalls(NSInteger code) {
    for (FakeXpcCall* call : calls) {
        call->fail(code);
    }
}

void FakeXpcEnd::interrupt() {
    peer.reset();
    failCalls(NSXPCConnectionInterrupted);
    if (interruptionHandler != nil) {
        void (^handler)(void) = interruptionHandler;
        async([self = shared_from_this(), handler] {
            if (!self->isInvalid) {
                handler();
            }
        });
    }
}

void FakeXpcEnd::invalidate() {
    if (std::exchange(isInvalid, true)) {
        return;
    }
    failCalls(NSXPCConnectionInvalid);
    if (invalidationHandler != nil) {
        void (^handler)(void) = invalidationHandler;
        async([handler] { handler(); });
    }
    forgetAll();
}

void FakeXpcEnd::die() {
    isInvalid = true;
    forgetAll();
}

/// As the real ones let go of all they hold when they become invalid.
void FakeXpcEnd::forgetAll() {
    interruptionHandler = nil;
    invalidationHandler = nil;
    exportedObject = nil;
}

}  // namespace corvane
