#pragma once

#include <functional>
#include <optional>

#include "platform/MainLoop.h"
#include "platform/macos/TerminationSignals.h"
#include "platform/qt/QtEventLoop.h"

namespace corvane {

/// The application's main thread: Qt's event loop, which on a Mac is the main run loop, and so empties
/// Dispatch's main queue. Made after the QCoreApplication.
class CocoaMainLoop final : public MainLoop {
public:
    void holdTerminationSignals() override;
    void onTerminationSignal(std::function<void()> handler) override;
    int run() override { return loop_.run(); }
    void exit(int status) override { loop_.exit(status); }

private:
    QtEventLoop loop_;
    std::optional<TerminationSignals> signals_;
};

}  // namespace corvane
