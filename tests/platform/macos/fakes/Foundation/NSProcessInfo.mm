#include "tests/platform/macos/fakes/Foundation/FakeActivities.h"
#include "tests/platform/macos/fakes/Foundation/FakeThermalState.h"
#import "tests/platform/macos/fakes/Foundation/Notices.h"
#include "tests/platform/macos/fakes/objc/Complaints.h"

NSNotificationName const NSProcessInfoThermalStateDidChangeNotification =
    @"NSProcessInfoThermalStateDidChangeNotification";

namespace corvane {

void FakeThermalState::set(int state) {
    state_ = state;
    if (isAskedFor_) {
        queue_.async([] {
            [NSNotificationCenter.defaultCenter
                postNotificationName:NSProcessInfoThermalStateDidChangeNotification
                              object:NSProcessInfo.processInfo];
        });
    }
}

int FakeThermalState::read() {
    isAskedFor_ = true;
    return state_;
}

}  // namespace corvane

@implementation NSProcessInfo

+ (NSProcessInfo*)processInfo {
    return [[NSProcessInfo alloc] init];
}

- (NSString*)processName {
    return @"corvane";
}

- (NSProcessInfoThermalState)thermalState {
    auto* const fake = corvane::Current<corvane::FakeThermalState>::get();
    return fake == nullptr ? NSProcessInfoThermalStateNominal
                           : static_cast<NSProcessInfoThermalState>(fake->read());
}

- (id<NSObject>)beginActivityWithOptions:(NSActivityOptions)options reason:(NSString*)reason {
    if (reason.length == 0) {
        corvane::objc::complain("an activity needs a reason: the real class raises an exception");
    }
    if (auto* fake = corvane::Current<corvane::FakeActivities>::get()) {
        fake->begin(options);
    }
    return [[NSObject alloc] init];
}

- (void)endActivity:(id<NSObject>)activity {
    if (activity == nil) {
        corvane::objc::complain("there is no activity to end");
    }
    if (auto* fake = corvane::Current<corvane::FakeActivities>::get()) {
        fake->end();
    }
}

@end
