#include "platform/macos/MacCommandPlatform.h"

#include <unistd.h>

#include "platform/macos/FanLimitGuard.h"
#include "platform/macos/IoKitSmc.h"

namespace corvane {

bool MacCommandPlatform::isRoot() const {
    return geteuid() == 0;
}

std::unique_ptr<SmcConnection> MacCommandPlatform::makeSmcConnection() {
    return std::make_unique<FanLimitGuard>(std::make_unique<IoKitSmc>());
}

}  // namespace corvane
