#pragma once

#include <QColor>
#include <QImage>
#include <QSize>
#include <QString>
#include <vector>

#include "platform/StatusItem.h"
#include "platform/linux/gui/NotifierContents.h"

namespace corvane {

/// What a status item shows. Drawn on the main loop: fonts need the QGuiApplication.
struct StatusDrawing {
    StatusImage image = StatusImage::gauge50;
    /// Below the image, which is smaller then: what is wider than high is squeezed into a square by most
    /// trays, until nobody can read it.
    QString title;
    QColor color;

    bool operator==(const StatusDrawing&) const = default;

    /// An image of this size, in pixels, with the largest square in its middle filled and the rest clear.
    /// Premultiplied.
    [[nodiscard]] QImage paint(QSize size) const;

    /// In the sizes that trays commonly ask for.
    [[nodiscard]] std::vector<NotifierPixmap> pixmaps() const;
};

}  // namespace corvane
