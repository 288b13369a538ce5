#pragma once

#include <QQuickItem>
#include <QQuickWindow>
#include <string>
#include <string_view>

namespace corvane {

/// Uses a window as a person would: by pressing what is on it. Main loop.
class WindowHand {
public:
    /// The window outlives the hand.
    explicit WindowHand(QQuickWindow& window) : window_(window) {}

    /// Clicks into the middle of what has these object names, one within the other, "fanSection/switch".
    /// Throws std::runtime_error when there is nothing of that name to be seen.
    void click(std::string_view path);

    /// Drags the slider of that name to this part, 0...1, of its way, and lets go.
    void drag(std::string_view path, double part);

    /// Scrolls what it is in so far that it can be seen.
    void reveal(std::string_view path);

    /// Writes what the window shows to a PNG file. Throws std::runtime_error when that fails.
    void takePicture(const std::string& file);

private:
    [[nodiscard]] QQuickItem* find(std::string_view path) const;
    [[nodiscard]] QQuickItem& get(std::string_view path) const;

    QQuickWindow& window_;
};

}  // namespace corvane
