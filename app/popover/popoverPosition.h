#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <optional>

namespace corvane {

/// What is kept free between the panel and the edges of the screen, and between it and what it hangs on;
/// device-independent pixels.
constexpr int popoverMargin = 6;

/// Where the upper left corner of a panel of this size goes. It hangs below `anchor`, the place that was
/// clicked, or stands above it in the lower half of the screen, always whole within `available`, the screen
/// without its bars, unless it is larger. Nothing known of the click: the upper right corner, where status
/// items are.
///
/// All in device-independent pixels of the virtual desktop. A pure function.
[[nodiscard]] QPoint popoverPosition(QSize size, std::optional<QPoint> anchor, const QRect& available);

}  // namespace corvane
