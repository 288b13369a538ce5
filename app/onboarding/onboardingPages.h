#pragma once

#include <QList>

#include "app/onboarding/OnboardingPage.h"
#include "app/shell/Lang.h"

namespace corvane {

/// How many pages the introduction has.
inline constexpr int onboardingPageCount = 6;

/// The pages of the introduction in their order, built anew in the language of the moment. Main loop.
[[nodiscard]] QList<OnboardingPage> onboardingPages(const Lang& lang);

}  // namespace corvane
