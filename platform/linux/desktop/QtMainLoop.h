#pragma once

#include <memory>
#include <optional>

#include "platform/MainLoop.h"
#include "platform/linux/desktop/QtDescriptor.h"

namespace corvane {

/// The application's main loop: Qt's. Made after the QCoreApplication.
class QtMainLoop final : public MainLoop {
public:
    void holdTerminationSignals() override;
    /// Throws std::system_error when the system has no descriptors left.
    void onTerminationSignal(std::function<void()> handler) override;
    int run() override;
    void exit(int status) override;

private:
    void takeSignal();

    std::function<void()> handler_;
    std::unique_ptr<QtDescriptor> signals_;
    std::optional<int> status_;
};

}  // namespace corvane
