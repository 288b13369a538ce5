#pragma once

#include <QObject>
#include <QtQmlIntegration>
#include <memory>

#include "platform/Appearance.h"
#include "platform/Observation.h"

class QJSEngine;
class QQmlEngine;

namespace corvane {

/// Whether the views look dark or light, which they follow at once. Main loop.
class AppearanceState final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    Q_PROPERTY(bool isDark READ isDark NOTIFY isDarkChanged)

public:
    /// `appearance` outlives the object.
    explicit AppearanceState(Appearance& appearance);

    /// What the engine was prepared with.
    static AppearanceState* create(QQmlEngine* engine, QJSEngine* jsEngine);

    [[nodiscard]] bool isDark() const { return appearance_.isDark(); }

Q_SIGNALS:
    void isDarkChanged();

private:
    Appearance& appearance_;
    std::unique_ptr<Observation> observation_;
};

}  // namespace corvane
