#pragma once

#include <memory>

#include "platform/MainLoop.h"
#include "platform/linux/desktop/QtDescriptor.h"
#include "platform/qt/QtEventLoop.h"

namespace corvane {

/// The application's main loop: Qt's. Made after the QCoreApplication.
class QtMainLoop final : public MainLoop {
public:
    void holdTerminationSignals() override;
    /// Throws std::system_error when the system has no descriptors left.
    void onTerminationSignal(std::function<void()> handler) override;
    int run() override { return loop_.run(); }
    void exit(int status) override { loop_.exit(status); }

private:
    void takeSignal();

    std::function<void()> handler_;
    std::unique_ptr<QtDescriptor> signals_;
    QtEventLoop loop_;
};

}  // namespace corvane
