#include "app/ui/chartPath.h"

namespace corvane {

QPainterPath chartPath(const std::vector<ChartPoint>& points) {
    QPainterPath path;
    for (const ChartPoint& point : points) {
        if (path.elementCount() == 0) {
            path.moveTo(point.x, point.y);
        } else {
            path.lineTo(point.x, point.y);
        }
    }
    return path;
}

QColor fainter(const QColor& color, double opacity) {
    QColor faint = color;
    faint.setAlphaF(static_cast<float>(opacity));
    return faint;
}

}  // namespace corvane
