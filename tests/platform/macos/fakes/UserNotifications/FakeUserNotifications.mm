#include "tests/platform/macos/fakes/UserNotifications/FakeUserNotifications.h"

#include <functional>
#include <utility>

#import <UserNotifications/UserNotifications.h>

#include "platform/macos/NSStringText.h"
#include "tests/platform/macos/fakes/Foundation/FakeQueue.h"
#include "tests/platform/macos/fakes/objc/Complaints.h"

@interface UNNotification : NSObject
@end

@implementation UNNotification
@end

@interface UNNotificationSettings ()
@property(readwrite) UNAuthorizationStatus authorizationStatus;
@end

@interface UNNotificationRequest ()
@property(readwrite, copy) NSString* identifier;
@property(readwrite, copy) UNNotificationContent* content;
@property(readwrite, copy) UNNotificationTrigger* trigger;
@end

namespace corvane {

class FakeUserNotifications::State {
public:
    static State& shared();

    State();
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State();

    void reply(std::function<void()> work) {
        if (isHanging) {
            waiting.push_back(std::move(work));
        } else {
            queue.async(std::move(work));
        }
    }

    UNUserNotificationCenter* centre = [[UNUserNotificationCenter alloc] init];
    int status = 0;
    bool isHanging = false;
    std::vector<std::function<void()>> waiting;
    FakeQueue queue;
    std::vector<unsigned> requests;
    std::vector<Posted> posted;
};

namespace {

FakeUserNotifications::State* currentNotifications = nullptr;

}  // namespace

FakeUserNotifications::State::State() {
    currentNotifications = this;
}

FakeUserNotifications::State::~State() {
    currentNotifications = nullptr;
}

FakeUserNotifications::State& FakeUserNotifications::State::shared() {
    if (currentNotifications == nullptr || NSBundle.mainBundle.bundleIdentifier == nil) {
        objc::fatal("the notification centre is there for programs in a bundle alone");
    }
    return *currentNotifications;
}

FakeUserNotifications::FakeUserNotifications() : state_(std::make_unique<State>()) {}

FakeUserNotifications::~FakeUserNotifications() = default;

void FakeUserNotifications::setStatus(int status) {
    state_->status = status;
}

void FakeUserNotifications::hang() {
    state_->isHanging = true;
}

void FakeUserNotifications::answer() {
    state_->isHanging = false;
    for (auto& work : std::exchange(state_->waiting, {})) {
        state_->queue.async(std::move(work));
    }
}

const std::vector<unsigned>& FakeUserNotifications::requests() const {
    return state_->requests;
}

const std::vector<FakeUserNotifications::Posted>& FakeUserNotifications::posted() const {
    return state_->posted;
}

std::optional<FakeUserNotifications::Presentation> FakeUserNotifications::presentationInFront() const {
    id<UNUserNotificationCenterDelegate> delegate = state_->centre.delegate;
    if (delegate == nil) {
        return std::nullopt;
    }
    __block std::vector<UNNotificationPresentationOptions> answers;
    [delegate userNotificationCenter:state_->centre
             willPresentNotification:[[UNNotification alloc] init]
               withCompletionHandler:^(UNNotificationPresentationOptions options) {
                 answers.push_back(options);
               }];
    if (answers.size() != 1) {
        objc::complain("the handler is to be called once");
        return std::nullopt;
    }
    return Presentation{.asBanner = (answers[0] & UNNotificationPresentationOptionBanner) != 0,
                        .withSound = (answers[0] & UNNotificationPresentationOptionSound) != 0};
}

}  // namespace corvane

using NotificationsState = corvane::FakeUserNotifications::State;

@implementation UNNotificationSettings
@end

@implementation UNNotificationSound

+ (UNNotificationSound*)defaultSound {
    return [[UNNotificationSound alloc] init];
}

- (id)copyWithZone:(NSZone*)zone {
    return self;
}

@end

@implementation UNNotificationContent

- (id)copyWithZone:(NSZone*)zone {
    return self;
}

@end

@implementation UNMutableNotificationContent
@synthesize title;
@synthesize body;
@synthesize sound;
@end

@implementation UNNotificationRequest

+ (instancetype)requestWithIdentifier:(NSString*)identifier
                              content:(UNNotificationContent*)content
                              trigger:(UNNotificationTrigger*)trigger {
    UNNotificationRequest* request = [[UNNotificationRequest alloc] init];
    request.identifier = identifier;
    request.content = content;
    request.trigger = trigger;
    return request;
}

@end

@implementation UNUserNotificationCenter

+ (UNUserNotificationCenter*)currentNotificationCenter {
    return NotificationsState::shared().centre;
}

- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(void (^)(BOOL granted, NSError* error))completionHandler {
    NotificationsState& state = NotificationsState::shared();
    state.requests.push_back(static_cast<unsigned>(options));
    state.reply([completionHandler] { completionHandler(YES, nil); });
}

- (void)getNotificationSettingsWithCompletionHandler:
    (void (^)(UNNotificationSettings* settings))completionHandler {
    NotificationsState& state = NotificationsState::shared();
    state.reply([completionHandler, status = state.status] {
        UNNotificationSettings* settings = [[UNNotificationSettings alloc] init];
        settings.authorizationStatus = static_cast<UNAuthorizationStatus>(status);
        completionHandler(settings);
    });
}

- (void)addNotificationRequest:(UNNotificationRequest*)request
         withCompletionHandler:(void (^)(NSError* error))completionHandler {
    NotificationsState& state = NotificationsState::shared();
    state.posted.push_back({.identifier = corvane::textOf(request.identifier),
                            .title = corvane::textOf(request.content.title),
                            .body = corvane::textOf(request.content.body),
                            .hasDefaultSound = request.content.sound != nil,
                            .hasTrigger = request.trigger != nil});
    if (completionHandler != nil) {
        state.reply([completionHandler] { completionHandler(nil); });
    }
}

@end
