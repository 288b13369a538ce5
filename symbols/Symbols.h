#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>
#include <QString>

namespace corvane {

// The project's own drawings, for platforms that have no system symbols. Each has one colour, the one it is
// asked for in. Any thread that may paint on an image.

/// Whether there is a drawing of this name, such as "gauge.with.dots.needle.bottom.50percent".
[[nodiscard]] bool hasSymbol(const QString& name);

/// Draws the symbol as large as fits into the middle of `box`, which is in the painter's coordinates. It is
/// drawn for the pixels it ends up on, so it is sharp at any scale. Nothing for an unknown name.
void drawSymbol(QPainter& painter, const QString& name, const QRectF& box, const QColor& color);

}  // namespace corvane
