#include "app/ui/prepareEngine.h"

#include <QObject>
#include <QQmlEngine>
#include <QVariant>
#include <memory>

#include "app/ui/AppearanceState.h"
#include "app/ui/ApplicationIcons.h"
#include "app/ui/LanguageState.h"

/// Made by the build from the declarations in the headers.
void qml_register_types_Corvane();

namespace corvane {

namespace {

// Where an engine keeps what it was prepared with.
constexpr const char* languageProperty = "corvaneLanguage";
constexpr const char* appearanceProperty = "corvaneAppearance";

void keep(QQmlEngine& engine, const char* property, QObject& state) {
    QJSEngine::setObjectOwnership(&state, QJSEngine::CppOwnership);
    engine.setProperty(property, QVariant::fromValue(&state));
}

}  // namespace

void prepareEngine(QQmlEngine& engine, LanguageState& language, AppearanceState& appearance) {
    // A static library's types are registered only by those who ask for it.
    qml_register_types_Corvane();
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    // The engine owns it from now on.
    engine.addImageProvider(ApplicationIcons::providerName, std::make_unique<ApplicationIcons>().release());
    keep(engine, languageProperty, language);
    keep(engine, appearanceProperty, appearance);
}

LanguageState* languageOf(const QQmlEngine& engine) {
    return qobject_cast<LanguageState*>(engine.property(languageProperty).value<QObject*>());
}

AppearanceState* appearanceOf(const QQmlEngine& engine) {
    return qobject_cast<AppearanceState*>(engine.property(appearanceProperty).value<QObject*>());
}

}  // namespace corvane
