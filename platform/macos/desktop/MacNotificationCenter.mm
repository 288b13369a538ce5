#include "platform/macos/desktop/MacNotificationCenter.h"

#include <utility>

#import <UserNotifications/UserNotifications.h>

#include "platform/macos/NSStringText.h"
#include "platform/macos/desktop/MainBundle.h"

@interface CorvaneForegroundPresenter : NSObject <UNUserNotificationCenterDelegate>
@end

@implementation CorvaneForegroundPresenter
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions options))completionHandler {
    completionHandler(UNNotificationPresentationOptionBanner | UNNotificationPresentationOptionSound);
}
@end

namespace corvane {

namespace {

UNUserNotificationCenter* centre() {
    return [UNUserNotificationCenter currentNotificationCenter];
}

NotificationAuthorization authorizationOf(UNNotificationSettings* settings) {
    switch (settings.authorizationStatus) {
        case UNAuthorizationStatusNotDetermined:
            return NotificationAuthorization::notDetermined;
        case UNAuthorizationStatusAuthorized:
            return NotificationAuthorization::authorized;
        case UNAuthorizationStatusProvisional:
            return NotificationAuthorization::provisional;
        case UNAuthorizationStatusDenied:
        default:
            return NotificationAuthorization::denied;
    }
}

}  // namespace

struct MacNotificationCenter::Delegate {
    CorvaneForegroundPresenter* object = [[CorvaneForegroundPresenter alloc] init];
};

MacNotificationCenter::MacNotificationCenter(SerialQueue& mainLoop) : replies_(mainLoop) {}

MacNotificationCenter::~MacNotificationCenter() = default;

bool MacNotificationCenter::isAvailable() const {
    return MainBundle::identifier().has_value();
}

void MacNotificationCenter::presentInForeground() {
    delegate_ = std::make_unique<Delegate>();
    centre().delegate = delegate_->object;
}

void MacNotificationCenter::getAuthorization(std::function<void(NotificationAuthorization)> reply) {
    const auto tell = replies_.await(std::move(reply));
    [centre() getNotificationSettingsWithCompletionHandler:^(UNNotificationSettings* settings) {
      tell(authorizationOf(settings));
    }];
}

void MacNotificationCenter::requestAuthorization() {
    [centre() requestAuthorizationWithOptions:UNAuthorizationOptionAlert | UNAuthorizationOptionSound
                            completionHandler:^(BOOL /*granted*/, NSError* /*error*/){
                                // Asked for again before each notification.
                            }];
}

void MacNotificationCenter::add(const UserNotification& notification) {
    UNMutableNotificationContent* content = [[UNMutableNotificationContent alloc] init];
    content.title = stringOf(notification.title);
    content.body = stringOf(notification.body);
    content.sound = UNNotificationSound.defaultSound;
    UNNotificationRequest* request =
        [UNNotificationRequest requestWithIdentifier:stringOf(notification.identifier)
                                             content:content
                                             trigger:nil];
    [centre() addNotificationRequest:request withCompletionHandler:nil];
}

}  // namespace corvane
