#pragma once

#include <QPixmap>
#include <QQuickImageProvider>
#include <QSize>
#include <QString>

namespace corvane {

/// The icons of applications as the images "image://applications/NAME", where NAME is a name in the icon
/// theme or the absolute path of an ordinary file of up to 1 MiB, percent-encoded. What has no such icon gets
/// the symbol of an application. Main loop.
class ApplicationIcons final : public QQuickImageProvider {
public:
    /// What the engine knows it by.
    static constexpr const char* providerName = "applications";
    /// Pixels along an edge of an icon that is asked for in no size.
    static constexpr int defaultExtent = 48;
    /// Larger icons are scaled down as they are read.
    static constexpr int largestExtent = 256;

    ApplicationIcons() : QQuickImageProvider(Pixmap) {}

    QPixmap requestPixmap(const QString& id, QSize* size, const QSize& requestedSize) override;
};

}  // namespace corvane
