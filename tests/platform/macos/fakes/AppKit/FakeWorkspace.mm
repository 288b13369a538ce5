#include "tests/platform/macos/fakes/AppKit/FakeWorkspace.h"

#include <algorithm>
#include <utility>

#import <AppKit/NSWorkspace.h>

#include "platform/macos/NSStringText.h"
#import "tests/platform/macos/fakes/Foundation/Notices.h"
#include "tests/platform/macos/fakes/MainThread.h"
#include "tests/platform/macos/fakes/dispatch/FakeDispatch.h"
#include "tests/platform/macos/fakes/objc/Complaints.h"

NSNotificationName const NSWorkspaceDidLaunchApplicationNotification =
    @"NSWorkspaceDidLaunchApplicationNotification";
NSNotificationName const NSWorkspaceDidTerminateApplicationNotification =
    @"NSWorkspaceDidTerminateApplicationNotification";

namespace corvane {

class FakeWorkspace::State {
public:
    static State& shared();

    State();
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State();

    void post(NSNotificationName name) const {
        FakeDispatch::current().mainQueue().async([centre = centre, name] {
            [centre postNotificationName:name object:NSWorkspace.sharedWorkspace];
        });
    }

    NSNotificationCenter* centre = [[NSNotificationCenter alloc] init];
    std::vector<std::optional<std::string>> running;
    std::vector<std::string> opened;
};

namespace {

FakeWorkspace::State* currentWorkspace = nullptr;

}  // namespace

FakeWorkspace::State::State() {
    currentWorkspace = this;
}

FakeWorkspace::State::~State() {
    currentWorkspace = nullptr;
}

FakeWorkspace::State& FakeWorkspace::State::shared() {
    if (currentWorkspace == nullptr) {
        objc::fatal("the workspace is used without a FakeWorkspace");
    }
    return *currentWorkspace;
}

FakeWorkspace::FakeWorkspace() : state_(std::make_unique<State>()) {}

FakeWorkspace::~FakeWorkspace() = default;

void FakeWorkspace::launch(const std::optional<std::string>& identifier) {
    state_->running.push_back(identifier);
    state_->post(NSWorkspaceDidLaunchApplicationNotification);
}

void FakeWorkspace::quit(const std::optional<std::string>& identifier) {
    const auto found = std::ranges::find(state_->running, identifier);
    if (found == state_->running.end()) {
        objc::fatal("no such application runs");
    }
    state_->running.erase(found);
    state_->post(NSWorkspaceDidTerminateApplicationNotification);
}

const std::vector<std::string>& FakeWorkspace::opened() const {
    return state_->opened;
}

}  // namespace corvane

using WorkspaceState = corvane::FakeWorkspace::State;

@implementation NSRunningApplication {
    std::optional<std::string> _identifier;
}

- (instancetype)initWithIdentifier:(std::optional<std::string>)identifier {
    self = [super init];
    if (self) {
        _identifier = std::move(identifier);
    }
    return self;
}

- (NSString*)bundleIdentifier {
    return _identifier ? corvane::stringOf(*_identifier) : nil;
}

@end

@implementation NSWorkspace

+ (NSWorkspace*)sharedWorkspace {
    return [[NSWorkspace alloc] init];
}

- (NSNotificationCenter*)notificationCenter {
    return WorkspaceState::shared().centre;
}

- (NSArray<NSRunningApplication*>*)runningApplications {
    corvane::expectMainThread("runningApplications");
    NSMutableArray<NSRunningApplication*>* applications = [NSMutableArray array];
    for (const auto& identifier : WorkspaceState::shared().running) {
        [applications addObject:[[NSRunningApplication alloc] initWithIdentifier:identifier]];
    }
    return applications;
}

- (BOOL)openURL:(NSURL*)url {
    WorkspaceState::shared().opened.push_back(corvane::textOf(url.absoluteString));
    return YES;
}

@end
