#include "app/shell/Notifier.h"

#include <QUuid>
#include <utility>

namespace corvane {

void Notifier::requestAuthorizationIfNeeded() {
    if (!center_.isAvailable()) {
        return;
    }
    if (!didSetDelegate_) {
        center_.presentInForeground();
        didSetDelegate_ = true;
    }
    center_.getAuthorization(
        [self = std::weak_ptr(self_), &center = center_](NotificationAuthorization authorization) {
            if (!self.expired() && authorization == NotificationAuthorization::notDetermined) {
                center.requestAuthorization();
            }
        });
}

void Notifier::notify(std::string title, std::string body) {
    if (!center_.isAvailable()) {
        return;
    }
    center_.getAuthorization([self = std::weak_ptr(self_), &center = center_, title = std::move(title),
                              body = std::move(body)](NotificationAuthorization authorization) {
        const bool isAllowed = authorization == NotificationAuthorization::authorized ||
                               authorization == NotificationAuthorization::provisional;
        if (!self.expired() && isAllowed) {
            center.add({QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString(), title, body});
        }
    });
}

}  // namespace corvane
