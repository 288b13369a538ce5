#include "app/windows/makeSettingsWindow.h"

#include <QJSEngine>
#include <utility>

namespace corvane {

namespace {

constexpr QSize settingsSize(380, 540);

QString settingsTitle(const Lang& lang) {
    return QString::fromUtf8(lang.text("Corvane Einstellungen", "Corvane Settings"));
}

template <typename Model>
QVariant lentToView(Model& model) {
    QJSEngine::setObjectOwnership(&model, QJSEngine::CppOwnership);
    return QVariant::fromValue(&model);
}

}  // namespace

std::unique_ptr<QuickWindow> makeSettingsWindow(const WindowServices& services, SettingsState& state,
                                                WindowClosed closed) {
    auto window = std::make_unique<QuickWindow>(
        services,
        QuickWindow::Content{
            .view = "SettingsView",
            .title = settingsTitle(services.lang),
            .size = settingsSize,
            .properties = {{"settings", lentToView(state)}, {"updates", lentToView(state.updates())}}},
        std::move(closed));
    // The connection ends with the view.
    QObject::connect(&state, &SettingsState::languageChanged, &window->view(),
                     [&shown = *window, &lang = services.lang] {
                         shown.language().refresh();
                         shown.view().setTitle(settingsTitle(lang));
                     });
    return window;
}

}  // namespace corvane
