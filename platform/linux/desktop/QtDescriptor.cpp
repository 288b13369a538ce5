#include "platform/linux/desktop/QtDescriptor.h"

#include <utility>

#include <unistd.h>

namespace corvane {

QtDescriptor::QtDescriptor(int descriptor, std::function<void()> onReadable)
    : descriptor_(descriptor), notifier_(descriptor, QSocketNotifier::Read) {
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, std::move(onReadable));
}

QtDescriptor::~QtDescriptor() {
    // Watched no more before the number may become another descriptor's.
    notifier_.setEnabled(false);
    close(descriptor_);
}

}  // namespace corvane
