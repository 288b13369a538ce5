#include "app/popover/popoverPosition.h"

#include <algorithm>

namespace corvane {

namespace {

/// The start nearest to `wanted` at which `length` lies within `from`...`to`; `from` when it does not fit.
int within(int wanted, int length, int from, int to) {
    return std::max(from, std::min(wanted, to - length));
}

}  // namespace

QPoint popoverPosition(QSize size, std::optional<QPoint> anchor, const QRect& available) {
    const QRect room = available.adjusted(popoverMargin, popoverMargin, -popoverMargin, -popoverMargin);
    const int right = room.x() + room.width();
    const int bottom = room.y() + room.height();
    if (!anchor) {
        return {within(right, size.width(), room.x(), right), room.y()};
    }
    const bool isInUpperHalf = anchor->y() < available.center().y();
    const int y = isInUpperHalf ? anchor->y() + popoverMargin : anchor->y() - popoverMargin - size.height();
    return {within(anchor->x() - size.width() / 2, size.width(), room.x(), right),
            within(y, size.height(), room.y(), bottom)};
}

}  // namespace corvane
