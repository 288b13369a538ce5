#pragma once

#include <QPoint>
#include <optional>

namespace corvane {

/// The panel as a pop-up at the status item: it is closed by a click anywhere else, by Escape, and when it
/// loses the keyboard. Main loop.
class Popover {
public:
    Popover() = default;
    Popover(const Popover&) = delete;
    Popover& operator=(const Popover&) = delete;
    virtual ~Popover() = default;

    [[nodiscard]] virtual bool isShown() const = 0;

    /// Shows the panel in front of all others and gives it the keyboard. `anchor` is the place that was
    /// clicked, in device-independent pixels of the virtual desktop; none when nobody knows. Shown already,
    /// it moves there.
    virtual void show(std::optional<QPoint> anchor) = 0;

    /// Nothing happens when it is not shown.
    virtual void close() = 0;

    /// The language has changed: what is shown follows. What is not is in the language of the moment when it
    /// is shown next.
    virtual void retranslate() = 0;

    /// It was closed a moment ago by this very click on the status item, which was a click elsewhere to the
    /// panel and shall not open it again. `anchor` is where the item was clicked.
    [[nodiscard]] virtual bool wasClosedByThisClick(std::optional<QPoint> anchor) const = 0;
};

}  // namespace corvane
