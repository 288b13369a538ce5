#pragma once

#include <QObject>
#include <utility>

namespace corvane {

/// Counts how often an object emits one of its signals.
class SignalCount final {
public:
    template <typename Object, typename Signal>
    SignalCount(const Object& object, Signal signal)
        : connection_(QObject::connect(&object, signal, [this] { ++emitted_; })) {}
    SignalCount(const SignalCount&) = delete;
    SignalCount& operator=(const SignalCount&) = delete;
    ~SignalCount() { QObject::disconnect(connection_); }

    /// Since the last `take`.
    [[nodiscard]] int value() const { return emitted_; }

    /// Since this was last called.
    [[nodiscard]] int take() { return std::exchange(emitted_, 0); }

private:
    int emitted_ = 0;
    QMetaObject::Connection connection_;
};

}  // namespace corvane
