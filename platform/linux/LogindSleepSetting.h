#pragma once

#include <memory>
#include <mutex>

#include <sdbus-c++/IConnection.h>
#include <sdbus-c++/Types.h>

#include "platform/SystemSleepSetting.h"

namespace corvane {

/// The lid setting as a block lock of the login manager on sleep and on the lid switch. Held by root it stops
/// every user's desktop from suspending, and it ends with the process. Any thread.
class LogindSleepSetting final : public SystemSleepSetting {
public:
    std::optional<std::string> setSleepDisabled(bool disabled) override;

    /// Takes the lock again if it is held: the login manager has been restarted.
    void takeAgain();

private:
    std::optional<std::string> take();

    std::mutex mutex_;
    /// Connected at the first need: most helpers never get there.
    std::unique_ptr<sdbus::IConnection> connection_;
    sdbus::UnixFd lock_;
};

}  // namespace corvane
