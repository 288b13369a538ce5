#pragma once

#include <functional>
#include <utility>

#include "app/shell/AppWindow.h"

namespace corvane {

/// A window that tells `current` of itself as long as it exists.
class RecordingWindow final : public AppWindow {
public:
    RecordingWindow(RecordingWindow*& current, WindowClosed closed)
        : current_(current), closed_(std::move(closed)) {
        current_ = this;
    }
    ~RecordingWindow() override { current_ = nullptr; }

    void bringToFront() override { ++timesToFront; }

    /// The user closes it.
    void close() const { closed_(); }

    int timesToFront = 0;

private:
    RecordingWindow*& current_;
    WindowClosed closed_;
};

}  // namespace corvane
