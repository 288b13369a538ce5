#include "app/ui/CoolingCurveItem.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPen>
#include <cmath>

#include "app/menu/ChartGeometry.h"
#include "app/ui/chartPath.h"

namespace corvane {

namespace {

/// Room around the curve for the dot at its end.
constexpr double margin = 4;
constexpr double dotRadius = 3.5;

constexpr double guideOpacity = 0.1;
constexpr double markerOpacity = 0.18;
constexpr double curveOpacityAtTop = 0.2;
constexpr double curveOpacityAtBottom = 0.02;
constexpr double curveWidth = 1.8;

}  // namespace

CoolingCurveItem::CoolingCurveItem(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &CoolingCurveItem::changed, this, [this] { update(); });
}

QRectF CoolingCurveItem::area() const {
    return boundingRect().adjusted(margin, margin, -margin, -margin);
}

void CoolingCurveItem::paint(QPainter* painter) {
    const auto profile = CoolingProfile::fromRawValue(kind_.toStdString());
    if (!profile || tMax_ <= tMin_ || !area().isValid()) {
        return;
    }
    painter->setClipRect(boundingRect());
    painter->translate(area().topLeft());
    drawGuide(*painter);
    drawCurve(*painter, *profile);
    drawMarker(*painter, *profile);
}

void CoolingCurveItem::drawGuide(QPainter& painter) const {
    const double middle = std::round(area().height() / 2);
    painter.setPen(QPen(fainter(primaryColor_, guideOpacity), 1, Qt::DashLine));
    painter.drawLine(QPointF(0, middle), QPointF(area().width(), middle));
}

void CoolingCurveItem::drawCurve(QPainter& painter, CoolingProfile::Kind profile) const {
    const double w = area().width();
    const double h = area().height();
    QLinearGradient gradient(0, 0, 0, h);
    gradient.setColorAt(0, fainter(color_, curveOpacityAtTop));
    gradient.setColorAt(1, fainter(color_, curveOpacityAtBottom));
    painter.fillPath(chartPath(coolingCurveArea(profile, tMin_, tMax_, w, h)), gradient);
    painter.strokePath(chartPath(coolingCurvePoints(profile, tMin_, tMax_, w, h)),
                       QPen(color_, curveWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

void CoolingCurveItem::drawMarker(QPainter& painter, CoolingProfile::Kind profile) const {
    bool isKnown = false;
    const double temp = currentTemp_.toDouble(&isKnown);
    if (!isKnown || !std::isfinite(temp)) {
        return;
    }
    const auto [x, y] = coolingCurveMarker(profile, temp, tMin_, tMax_, area().width(), area().height());
    painter.setPen(QPen(fainter(primaryColor_, markerOpacity), 1));
    painter.drawLine(QPointF(x, 0), QPointF(x, area().height()));
    painter.setPen(Qt::NoPen);
    painter.setBrush(color_);
    painter.drawEllipse(QPointF(x, y), dotRadius, dotRadius);
}

}  // namespace corvane
