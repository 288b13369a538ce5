#include "app/ui/ApplicationIcons.h"

#include <QBuffer>
#include <QByteArray>
#include <QColor>
#include <QFile>
#include <QIcon>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QRectF>
#include <QUrl>
#include <algorithm>
#include <cstddef>
#include <string>

#include "platform/posix/BoundedFile.h"
#include "symbols/Symbols.h"

namespace corvane {

namespace {

// What an icon's file may be. Anybody's desktop entry names it, and it is read and drawn on the main loop.
constexpr std::size_t largestFileBytes = 1U << 20U;
constexpr int largestFileExtent = 2048;

QPixmap readFile(const QString& path, int extent) {
    const std::string content = readAtMost(QFile::encodeName(path).toStdString(), largestFileBytes + 1);
    if (content.size() > largestFileBytes) {
        return {};
    }
    QByteArray bytes = QByteArray::fromStdString(content);
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    const QSize size = reader.size();
    if (size.isEmpty() || size.width() > largestFileExtent || size.height() > largestFileExtent) {
        return {};
    }
    reader.setScaledSize(size.scaled(extent, extent, Qt::KeepAspectRatio));
    return QPixmap::fromImage(reader.read());
}

QPixmap iconNamed(const QString& name, int extent) {
    if (name.isEmpty()) {
        return {};
    }
    return name.startsWith('/') ? readFile(name, extent) : QIcon::fromTheme(name).pixmap(extent, extent);
}

QPixmap symbolOfApplication(int extent) {
    QPixmap image(extent, extent);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    // Stands out from a light and from a dark list.
    drawSymbol(painter, QStringLiteral("app.fill"), QRectF(0, 0, extent, extent), QColor(0x80, 0x8a, 0x96));
    return image;
}

}  // namespace

QPixmap ApplicationIcons::requestPixmap(const QString& id, QSize* size, const QSize& requestedSize) {
    const int wanted =
        requestedSize.isEmpty() ? defaultExtent : std::max(requestedSize.width(), requestedSize.height());
    const int extent = std::min(wanted, largestExtent);
    QPixmap icon = iconNamed(QUrl::fromPercentEncoding(id.toUtf8()), extent);
    if (icon.isNull()) {
        icon = symbolOfApplication(extent);
    }
    if (size != nullptr) {
        *size = icon.size();
    }
    return icon;
}

}  // namespace corvane
