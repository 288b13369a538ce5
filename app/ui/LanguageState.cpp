#include "app/ui/LanguageState.h"

#include <utility>

#include "app/ui/prepareEngine.h"

namespace corvane {

LanguageState* LanguageState::create(QQmlEngine* engine, QJSEngine* /*jsEngine*/) {
    return languageOf(*engine);
}

void LanguageState::refresh() {
    const bool isGerman = lang_.isGerman();
    if (std::exchange(isGerman_, isGerman) != isGerman) {
        Q_EMIT isGermanChanged();
    }
}

}  // namespace corvane
