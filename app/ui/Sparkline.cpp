#include "app/ui/Sparkline.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPen>

#include "app/menu/ChartGeometry.h"
#include "app/ui/chartPath.h"

namespace corvane {

namespace {

constexpr double sparklineOpacityAtTop = 0.28;
constexpr double sparklineOpacityAtBottom = 0.02;
constexpr double lineWidth = 1.5;

}  // namespace

Sparkline::Sparkline(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &Sparkline::changed, this, [this] { update(); });
}

void Sparkline::paint(QPainter* painter) {
    QLinearGradient gradient(0, 0, 0, height());
    gradient.setColorAt(0, fainter(color_, sparklineOpacityAtTop));
    gradient.setColorAt(1, fainter(color_, sparklineOpacityAtBottom));
    painter->fillPath(chartPath(sparklineArea(values_, width(), height())), gradient);
    painter->strokePath(chartPath(sparklinePoints(values_, width(), height())), QPen(color_, lineWidth));
}

}  // namespace corvane
