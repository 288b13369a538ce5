#include "platform/linux/desktop/QtDescriptor.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include <unistd.h>

namespace corvane {

namespace {

int checked(int descriptor) {
    if (descriptor < 0) {
        throw std::system_error(errno, std::system_category(), "no main loop");
    }
    return descriptor;
}

}  // namespace

QtDescriptor::QtDescriptor(int descriptor, std::function<void()> onReadable)
    : descriptor_(checked(descriptor)), notifier_(descriptor, QSocketNotifier::Read) {
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, std::move(onReadable));
}

QtDescriptor::~QtDescriptor() {
    // Watched no more before the number may become another descriptor's.
    notifier_.setEnabled(false);
    close(descriptor_);
}

}  // namespace corvane
