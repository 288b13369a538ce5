#include "platform/linux/LogindLock.h"

#include <chrono>

#include <sdbus-c++/sdbus-c++.h>

namespace corvane::Logind {

sdbus::UnixFd takeLock(sdbus::IProxy& manager, const std::string& what, const std::string& why,
                       const std::string& mode) {
    sdbus::UnixFd lock;
    manager.callMethod("Inhibit")
        .onInterface(interface)
        .withTimeout(std::chrono::seconds(1))
        .withArguments(what, "Corvane", why, mode)
        .storeResultsTo(lock);
    return lock;
}

}  // namespace corvane::Logind
