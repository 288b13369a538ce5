#pragma once

#include <QGuiApplication>
#include <chrono>
#include <functional>

#include "platform/linux/desktop/QtSerialQueue.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/Notes.h"

namespace corvane {

/// The main loop of an application that draws, on the test's own thread and without a screen.
class GuiLoop {
public:
    [[nodiscard]] SerialQueue& queue() { return queue_; }

    /// Runs the loop until `isDone`; false when that did not happen in the time a test waits.
    bool runUntil(const std::function<bool()>& isDone) {
        const auto end = std::chrono::steady_clock::now() + testPatience;
        // Wakes the loop up to look again.
        const auto ticking =
            queue_.every(Duration::zero(), std::chrono::milliseconds(5), [] { /* looks again */ });
        while (!isDone() && std::chrono::steady_clock::now() < end) {
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        }
        return isDone();
    }

private:
    const EnvironmentVariable platform_{"QT_QPA_PLATFORM", "offscreen"};
    int argumentCount_ = 1;
    char name_[5] = "test";
    char* arguments_[2] = {name_, nullptr};
    QGuiApplication application_{argumentCount_, arguments_};
    QtSerialQueue queue_;
};

}  // namespace corvane
