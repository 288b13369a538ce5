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
    center_.getAuthorization(lifetime_.bound([this](NotificationAuthorization authorization) {
        if (authorization == NotificationAuthorization::notDetermined) {
            center_.requestAuthorization();
        }
    }));
}

void Notifier::notify(std::string title, std::string body) {
    if (!center_.isAvailable()) {
        return;
    }
    center_.getAuthorization(lifetime_.bound(
        [this, title = std::move(title), body = std::move(body)](NotificationAuthorization authorization) {
            const bool isAllowed = authorization == NotificationAuthorization::authorized ||
                                   authorization == NotificationAuthorization::provisional;
            if (isAllowed) {
                center_.add({QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString(), title, body});
            }
        }));
}

}  // namespace corvane
