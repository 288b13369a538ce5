#include "tests/platform/macos/fakes/Foundation/FakeAppleEvents.h"

#include <map>
#include <utility>

#import <AppKit/NSApplication.h>

#import "tests/platform/macos/fakes/Foundation/Notices.h"
#include "tests/platform/macos/fakes/MainThread.h"
#include "tests/platform/macos/fakes/objc/Complaints.h"
#include "tests/platform/macos/fakes/objc/Runtime.h"

NSNotificationName const NSApplicationDidFinishLaunchingNotification =
    @"NSApplicationDidFinishLaunchingNotification";

namespace corvane {

class FakeAppleEvents::State {
public:
    struct EventHandler {
        __unsafe_unretained id object;
        SEL selector;
    };

    static State& shared();

    State();
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State();

    std::map<std::pair<AEEventClass, AEEventID>, EventHandler> handlers;
};

namespace {

FakeAppleEvents::State* currentEvents = nullptr;

}  // namespace

FakeAppleEvents::State::State() {
    currentEvents = this;
}

FakeAppleEvents::State::~State() {
    if (!handlers.empty()) {
        objc::complain("somebody is still to be told of events");
    }
    currentEvents = nullptr;
}

FakeAppleEvents::State& FakeAppleEvents::State::shared() {
    if (currentEvents == nullptr) {
        objc::fatal("events are handled without FakeAppleEvents");
    }
    return *currentEvents;
}

FakeAppleEvents::FakeAppleEvents() : state_(std::make_unique<State>()) {}

FakeAppleEvents::~FakeAppleEvents() = default;

void FakeAppleEvents::finishLaunching() {
    [NSNotificationCenter.defaultCenter postNotificationName:NSApplicationDidFinishLaunchingNotification
                                                      object:nil];
}

bool FakeAppleEvents::reopen() {
    const auto found = state_->handlers.find({kCoreEventClass, kAEReopenApplication});
    if (found == state_->handlers.end()) {
        return false;
    }
    using Handle = void (*)(id, SEL, id, id);
    const auto [object, selector] = found->second;
    const IMP method = class_getMethodImplementation(object_getClass(object), selector);
    reinterpret_cast<Handle>(method)(object, selector, nil, nil);
    return true;
}

}  // namespace corvane

using EventsState = corvane::FakeAppleEvents::State;

@implementation NSAppleEventManager

+ (NSAppleEventManager*)sharedAppleEventManager {
    corvane::expectMainThread("NSAppleEventManager");
    return [[NSAppleEventManager alloc] init];
}

- (void)setEventHandler:(id)handler
            andSelector:(SEL)handleEventSelector
          forEventClass:(AEEventClass)eventClass
             andEventID:(AEEventID)eventID {
    if (![handler respondsToSelector:handleEventSelector]) {
        corvane::objc::complain("the handler does not know the selector");
    }
    EventsState::shared().handlers[{eventClass, eventID}] = {handler, handleEventSelector};
}

- (void)removeEventHandlerForEventClass:(AEEventClass)eventClass andEventID:(AEEventID)eventID {
    EventsState::shared().handlers.erase({eventClass, eventID});
}

@end
