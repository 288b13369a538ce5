#pragma once

#include <QObject>
#include <QtQmlIntegration>

#include "app/shell/Lang.h"

class QJSEngine;
class QQmlEngine;

namespace corvane {

/// The language of the views, which they know as `Lang`. Main loop.
class LanguageState final : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Lang)
    QML_SINGLETON

    Q_PROPERTY(bool isGerman READ isGerman NOTIFY isGermanChanged)

public:
    /// `lang` outlives the object.
    explicit LanguageState(const Lang& lang) : lang_(lang), isGerman_(lang.isGerman()) {}

    /// What the engine was prepared with.
    static LanguageState* create(QQmlEngine* engine, QJSEngine* jsEngine);

    /// As of the last `refresh`.
    [[nodiscard]] bool isGerman() const { return isGerman_; }

    /// Asks `lang` again; every text follows a change at once.
    void refresh();

Q_SIGNALS:
    void isGermanChanged();

private:
    const Lang& lang_;
    bool isGerman_;
};

}  // namespace corvane
