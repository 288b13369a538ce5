#include "app/ui/AppearanceState.h"

#include "app/ui/prepareEngine.h"

namespace corvane {

AppearanceState::AppearanceState(Appearance& appearance)
    : appearance_(appearance), observation_(appearance.observe([this] { Q_EMIT isDarkChanged(); })) {}

AppearanceState* AppearanceState::create(QQmlEngine* engine, QJSEngine* /*jsEngine*/) {
    return appearanceOf(*engine);
}

}  // namespace corvane
