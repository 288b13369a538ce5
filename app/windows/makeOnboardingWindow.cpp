#include "app/windows/makeOnboardingWindow.h"

#include <QObject>
#include <QString>
#include <QVariant>
#include <utility>

#include "app/windows/DarkAppearance.h"

namespace corvane {

std::unique_ptr<QuickWindow> makeOnboardingWindow(SerialQueue& mainLoop, const Lang& lang,
                                                  OnboardingState& introduction, WindowClosed closed) {
    static DarkAppearance appearance;
    auto window = std::make_unique<QuickWindow>(
        WindowServices{.mainLoop = mainLoop, .appearance = appearance, .lang = lang},
        QuickWindow::Content{.view = QStringLiteral("OnboardingView"),
                             .title = QStringLiteral("Willkommen bei Corvane"),
                             .size = {560, 640},
                             .properties = {{"onboarding", QVariant::fromValue(&introduction)}},
                             .frame = QuickWindow::Frame::none},
        std::move(closed));
    // The connection ends with the window.
    QObject::connect(&introduction, &OnboardingState::pagesChanged, &window->language(),
                     &LanguageState::refresh);
    return window;
}

}  // namespace corvane
