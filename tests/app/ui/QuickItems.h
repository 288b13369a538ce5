#pragma once

#include <QQuickItem>
#include <QQuickWindow>
#include <QString>
#include <functional>

namespace corvane {

// Ways to the items of a window, by what is seen of them: through the tree that they are drawn in, pop-ups
// included.

/// The item under a path of names, "section/switch": the first that is seen, or else the first. Each name may
/// be any number of items below the one before it. Throws when there is none, which fails the test.
[[nodiscard]] QQuickItem& itemAt(QQuickItem& root, const QString& path);

/// There is such an item, and it is seen.
[[nodiscard]] bool isShownAt(QQuickItem& root, const QString& path);

/// Visits every item that is seen, parents before their children, in the order of stacking.
void forEachShown(QQuickItem& root, const std::function<void(QQuickItem&)>& visit);

/// Lets the window lay out and draw all that is so by now.
void renderAll(QQuickWindow& window);

}  // namespace corvane
