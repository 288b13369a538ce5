#pragma once

#include <optional>
#include <string>

#include "tests/platform/macos/fakes/Current.h"

namespace corvane {

/// The system's login items, as far as the application is one. One at a time.
class FakeLoginItems {
public:
    enum class Status { notRegistered = 0, enabled = 1, requiresApproval = 2, notFound = 3 };

    void set(Status status) { status_ = status; }
    /// From now on the user has to approve what is registered.
    void askForApproval() { isApprovalMissing_ = true; }
    /// From now on changes fail with this error; none: with no error to tell of.
    void fail(std::optional<std::string> description) {
        isFailing_ = true;
        error_ = std::move(description);
    }
    /// How often something was registered, or taken away.
    [[nodiscard]] int changes() const { return changes_; }

    // For the framework's class.
    [[nodiscard]] Status status() const { return status_; }
    [[nodiscard]] const std::optional<std::string>& error() const { return error_; }
    /// False when it fails.
    bool enroll();
    bool withdraw();

private:
    Status status_ = Status::notRegistered;
    bool isApprovalMissing_ = false;
    bool isFailing_ = false;
    std::optional<std::string> error_;
    int changes_ = 0;
    Current<FakeLoginItems> current_{*this};
};

}  // namespace corvane
