#pragma once

#include <functional>
#include <memory>

#include "platform/Appearance.h"

namespace corvane {

/// How the Mac's user wants applications to look, as the application object has it. Main thread.
class MacAppearance final : public Appearance {
public:
    MacAppearance();
    ~MacAppearance() override;

    [[nodiscard]] bool isDark() const override;
    [[nodiscard]] std::unique_ptr<Observation> observe(std::function<void()> changed) override;

private:
    class Watch;

    std::unique_ptr<Watch> watch_;
};

}  // namespace corvane
