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

    /// It lost the keyboard a moment ago and closed: to the click on the status item that is handled now,
    /// which shall not open it again. Where the panel takes the pointer, the tray does not hear of such a
    /// click.
    [[nodiscard]] virtual bool wasClosedByThisClick() const = 0;
};

}  // namespace corvane
