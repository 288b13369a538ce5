#include <algorithm>
#include <vector>

#include "platform/macos/NSStringText.h"
#import "tests/platform/macos/fakes/AppKit/AppKitObjects.h"
#include "tests/platform/macos/fakes/AppKit/FakeApplication.h"

NSAppearanceName const NSAppearanceNameAqua = @"NSAppearanceNameAqua";
NSAppearanceName const NSAppearanceNameDarkAqua = @"NSAppearanceNameDarkAqua";

@interface NSAppearance ()
@property BOOL dark;
@end

@implementation NSAppearance

- (NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray<NSAppearanceName>*)appearances {
    NSAppearanceName best = nil;
    for (NSAppearanceName name in appearances) {
        const BOOL isDark = [name isEqualToString:NSAppearanceNameDarkAqua];
        if (!best || isDark == self.dark) {
            best = name;
        }
    }
    return best;
}

@end

namespace corvane {

/// The one application object.
class FakeApplication::State {
public:
    struct Observer {
        __unsafe_unretained NSObject* object;
        NSKeyValueObservingOptions options;
        void* context;
    };

    State();
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State();

    static State& shared();

    NSApplication* application;
    NSApplicationActivationPolicy policy = NSApplicationActivationPolicyRegular;
    int activations = 0;
    bool isDark = false;
    std::vector<Observer> observers;
};

namespace {

FakeApplication::State* sharedApplicationState = nullptr;

}  // namespace

FakeApplication::State::State() : application([[NSApplication alloc] init]) {
    if (sharedApplicationState != nullptr) {
        corvane::objc::complain("there is one application object");
    }
    sharedApplicationState = this;
}

FakeApplication::State::~State() {
    if (!observers.empty()) {
        corvane::objc::complain("the appearance is still observed");
    }
    sharedApplicationState = nullptr;
}

FakeApplication::State& FakeApplication::State::shared() {
    if (sharedApplicationState == nullptr) {
        objc::fatal("AppKit is used without a FakeApplication");
    }
    return *sharedApplicationState;
}

FakeApplication::FakeApplication() : state_(std::make_unique<State>()) {}

FakeApplication::~FakeApplication() = default;

FakeApplication::Presence FakeApplication::presence() const {
    switch (state_->policy) {
        case NSApplicationActivationPolicyRegular:
            return Presence::regular;
        case NSApplicationActivationPolicyAccessory:
            return Presence::accessory;
        case NSApplicationActivationPolicyProhibited:
            break;
    }
    return Presence::prohibited;
}

int FakeApplication::activations() const {
    return state_->activations;
}

int FakeApplication::observers() const {
    return static_cast<int>(state_->observers.size());
}

void FakeApplication::setDark(bool isDark) {
    @autoreleasepool {
        state_->isDark = isDark;
        for (const State::Observer& observer : std::vector(state_->observers)) {
            NSDictionary* const change =
                (observer.options & NSKeyValueObservingOptionNew) != 0
                    ? @{@"kind" : @1,
                        @"new" : state_->application.effectiveAppearance}
                    : @{@"kind" : @1};
            [observer.object observeValueForKeyPath:@"effectiveAppearance"
                                           ofObject:state_->application
                                             change:change
                                            context:observer.context];
        }
    }
}

}  // namespace corvane

using corvane::expectMainThread;
using ApplicationState = corvane::FakeApplication::State;

@implementation NSResponder
@end

@implementation NSApplication

+ (NSApplication*)sharedApplication {
    expectMainThread("NSApplication");
    return ApplicationState::shared().application;
}

- (NSAppearance*)effectiveAppearance {
    NSAppearance* const appearance = [[NSAppearance alloc] init];
    appearance.dark = ApplicationState::shared().isDark;
    return appearance;
}

- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy {
    ApplicationState::shared().policy = activationPolicy;
    return YES;
}

- (void)activateIgnoringOtherApps:(BOOL)flag {
    if (!flag) {
        corvane::objc::complain("an accessory stays behind others so");
    }
    ++ApplicationState::shared().activations;
}

- (void)addObserver:(NSObject*)observer
         forKeyPath:(NSString*)keyPath
            options:(NSKeyValueObservingOptions)options
            context:(void*)context {
    if (corvane::textOf(keyPath) != "effectiveAppearance") {
        corvane::objc::complain("nothing else is announced");
    }
    ApplicationState::shared().observers.push_back({observer, options, context});
}

- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)keyPath context:(void*)context {
    const auto removed = std::erase_if(ApplicationState::shared().observers, [&](const auto& known) {
        return known.object == observer && known.context == context;
    });
    if (removed != 1U) {
        corvane::objc::complain("not observed: AppKit raises an exception");
    }
}

@end
