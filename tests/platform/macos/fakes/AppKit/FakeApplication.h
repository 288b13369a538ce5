#pragma once

#include <memory>

namespace corvane {

/// What the Mac makes of this process, and how its user wants applications to look. One at a time; main
/// thread. At its end the test fails if somebody still observes the appearance.
class FakeApplication {
public:
    enum class Presence { regular, accessory, prohibited };

    /// A regular application in the light, as a process without a bundle is.
    FakeApplication();
    FakeApplication(const FakeApplication&) = delete;
    FakeApplication& operator=(const FakeApplication&) = delete;
    ~FakeApplication();

    [[nodiscard]] Presence presence() const;
    /// How often it was brought before all others.
    [[nodiscard]] int activations() const;

    /// Tells whoever observes, also when nothing changes, as changes of contrast do.
    void setDark(bool isDark);
    /// Who observes the appearance.
    [[nodiscard]] int observers() const;

    class State;

private:
    std::unique_ptr<State> state_;
};

}  // namespace corvane
