#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>

#import <Foundation/Foundation.h>
#include <sys/types.h>

#include "platform/simulated/VirtualTime.h"

namespace corvane {

class FakeXpcEnd;

/// A message that awaits its reply. Those who are to reply share it; once they have all thrown it away, the
/// sender is told that none will come.
class FakeXpcCall {
public:
    using ErrorHandler = void (^)(NSError* error);

    FakeXpcCall(const std::shared_ptr<FakeXpcEnd>& sender, ErrorHandler handler);
    FakeXpcCall(const FakeXpcCall&) = delete;
    FakeXpcCall& operator=(const FakeXpcCall&) = delete;
    ~FakeXpcCall();

    /// `deliver` runs on the sender's queue, unless the call is over. A second reply fails the test.
    void reply(std::function<void()> deliver);
    /// The error handler runs on the sender's queue, unless the call is over.
    void fail(NSInteger code);

private:
    /// On the sender's queue, unless the call is over by then.
    void endWith(std::function<void()> work);

    std::weak_ptr<FakeXpcEnd> sender_;
    ErrorHandler handler_;
    bool isReplied_ = false;
    std::shared_ptr<bool> isOver_ = std::make_shared<bool>(false);
};

/// What a connection is to one of the processes that it joins.
class FakeXpcEnd : public std::enable_shared_from_this<FakeXpcEnd> {
public:
    explicit FakeXpcEnd(std::string serviceName);

    /// Runs `work` on the connection's queue.
    void async(std::function<void()> work);

    /// The other process has gone: tells the calls under way and the interruption's handler.
    void interrupt();
    /// Tells the calls under way and the invalidation's handler. Once.
    void invalidate();
    /// As the process goes: tells nobody.
    void die();

    std::string service;
    /// Whose end this is, and whose the other; 0 for what nobody asks.
    pid_t process = 0;
    pid_t peerProcess = 0;
    bool isPrivileged = false;
    bool isResumed = false;
    bool isInvalid = false;
    NSXPCInterface* exportedInterface = nil;
    id exportedObject = nil;
    NSXPCInterface* remoteInterface = nil;
    void (^interruptionHandler)(void) = nil;
    void (^invalidationHandler)(void) = nil;
    std::weak_ptr<FakeXpcEnd> peer;
    /// Under way from here.
    std::set<FakeXpcCall*> calls;

private:
    void failCalls(NSInteger code);
    void forgetAll();

    VirtualQueue& queue_;
};

}  // namespace corvane
