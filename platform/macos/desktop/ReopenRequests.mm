#include "platform/macos/desktop/ReopenRequests.h"

#include <utility>

#import <AppKit/NSApplication.h>
#import <Foundation/Foundation.h>

#include "platform/macos/desktop/MainLoopNotice.h"

/// Runs a block for each event. Main thread.
@interface CorvaneReopenHandler : NSObject
- (instancetype)initWithRequested:(std::function<void()>)requested;
- (void)reopen:(NSAppleEventDescriptor*)event withReply:(NSAppleEventDescriptor*)reply;
@end

@implementation CorvaneReopenHandler {
    std::function<void()> _requested;
}

- (instancetype)initWithRequested:(std::function<void()>)requested {
    self = [super init];
    if (self) {
        _requested = std::move(requested);
    }
    return self;
}

- (void)reopen:(NSAppleEventDescriptor*)event withReply:(NSAppleEventDescriptor*)reply {
    _requested();
}

@end

namespace corvane {

/// In place of AppKit's own handler, which AppKit sets while it launches the application.
class ReopenRequests::Handler {
public:
    Handler(SerialQueue& mainLoop, std::function<void()> requested)
        : object_([[CorvaneReopenHandler alloc] initWithRequested:std::move(requested)]),
          launched_(NSNotificationCenter.defaultCenter, NSApplicationDidFinishLaunchingNotification, mainLoop,
                    [this] { replaceAppKits(); }) {}
    Handler(const Handler&) = delete;
    Handler& operator=(const Handler&) = delete;
    ~Handler() {
        if (isSet_) {
            [NSAppleEventManager.sharedAppleEventManager
                removeEventHandlerForEventClass:kCoreEventClass
                                     andEventID:kAEReopenApplication];
        }
    }

private:
    void replaceAppKits() {
        isSet_ = true;
        [NSAppleEventManager.sharedAppleEventManager setEventHandler:object_
                                                         andSelector:@selector(reopen:withReply:)
                                                       forEventClass:kCoreEventClass
                                                          andEventID:kAEReopenApplication];
    }

    bool isSet_ = false;
    CorvaneReopenHandler* object_;
    MainLoopNotice launched_;
};

ReopenRequests::ReopenRequests(SerialQueue& mainLoop, std::function<void()> requested)
    : handler_(std::make_unique<Handler>(mainLoop, std::move(requested))) {}

ReopenRequests::~ReopenRequests() = default;

}  // namespace corvane
