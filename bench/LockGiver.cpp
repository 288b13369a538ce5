#include "bench/LockGiver.h"

#include <sys/eventfd.h>

#include "platform/linux/HelperBus.h"
#include "platform/linux/LogindLock.h"

namespace corvane {

LockGiver::LockGiver(const std::string& address)
    : connection_(HelperBus{address}.connect()),
      object_(sdbus::createObject(*connection_, Logind::objectPath)) {
    object_->registerMethod("Inhibit")
        .onInterface(Logind::interface)
        .implementedAs([](const std::string& /*what*/, const std::string& /*who*/, const std::string& /*why*/,
                          const std::string& /*mode*/) {
            return sdbus::UnixFd(::eventfd(0, EFD_CLOEXEC), sdbus::adopt_fd);
        });
    object_->finishRegistration();
    connection_->requestName(Logind::busName);
    connection_->enterEventLoopAsync();
}

}  // namespace corvane
