#pragma once

#include <string>

#include "platform/Lifetime.h"
#include "platform/NotificationCenter.h"

namespace corvane {

/// Posts the application's notifications. It owns no texts: callers hand it a title and a body in the user's
/// language. Never fails loudly. Main loop.
class Notifier {
public:
    /// `center` outlives the notifier.
    explicit Notifier(NotificationCenter& center) : center_(center) {}

    /// Asks for permission when the user has not been asked yet.
    void requestAuthorizationIfNeeded();

    /// Posts one notification now, if the user allows it. It never replaces an earlier one.
    void notify(std::string title, std::string body);

private:
    NotificationCenter& center_;
    bool didSetDelegate_ = false;
    Lifetime lifetime_;
};

}  // namespace corvane
