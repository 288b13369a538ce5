#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// The user's workspace: what runs in it, and what it opens. One at a time; main thread.
class FakeWorkspace {
public:
    FakeWorkspace();
    FakeWorkspace(const FakeWorkspace&) = delete;
    FakeWorkspace& operator=(const FakeWorkspace&) = delete;
    ~FakeWorkspace();

    /// Posts the notice soon, from the main thread; none: an application without an identifier.
    void launch(const std::optional<std::string>& identifier);
    void quit(const std::optional<std::string>& identifier);

    /// The addresses that it was to open, oldest first.
    [[nodiscard]] const std::vector<std::string>& opened() const;

    class State;

private:
    std::unique_ptr<State> state_;
};

}  // namespace corvane
