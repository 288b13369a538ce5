#include "platform/posix/HeldSignals.h"
#include "platform/select/prepareDesktop.h"

namespace corvane {

std::variant<QtPlatform, std::string> prepareDesktop() {
    blockTerminationSignals();
    return QtPlatform{"cocoa", nullptr};
}

}  // namespace corvane
