#include "app/onboarding/OnboardingState.h"

#include <algorithm>

namespace corvane {

void OnboardingState::advance(int delta) {
    goingForward_ = delta > 0;
    page_ = page_ + std::clamp(delta, -page(), lastPage - page());
}

}  // namespace corvane
