#pragma once

#include <QColor>
#include <QPainterPath>
#include <vector>

#include "app/menu/ChartGeometry.h"

namespace corvane {

/// The polyline through `points`; empty for none.
[[nodiscard]] QPainterPath chartPath(const std::vector<ChartPoint>& points);

/// `color` at `opacity`, 0...1.
[[nodiscard]] QColor fainter(const QColor& color, double opacity);

}  // namespace corvane
