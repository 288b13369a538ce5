#pragma once

#include <QSocketNotifier>
#include <functional>

namespace corvane {

/// A descriptor that is watched by the event loop of the thread that made this, and closed at the end.
class QtDescriptor {
public:
    /// Takes `descriptor` over, just as the system call returned it: -1 throws std::system_error with the
    /// reason that is in `errno`. `onReadable` runs on the thread's event loop for as long as there is
    /// something to read; it may not destroy this.
    QtDescriptor(int descriptor, std::function<void()> onReadable);
    QtDescriptor(const QtDescriptor&) = delete;
    QtDescriptor& operator=(const QtDescriptor&) = delete;
    ~QtDescriptor();

    /// Any thread.
    [[nodiscard]] int get() const { return descriptor_; }

private:
    int descriptor_;
    QSocketNotifier notifier_;
};

}  // namespace corvane
