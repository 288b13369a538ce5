#pragma once

#include <string>
#include <vector>

#include "tests/platform/macos/fakes/Current.h"

namespace corvane {

/// The Trash: what is moved there goes from the disk. One at a time.
class FakeTrash {
public:
    /// From now on nothing can be moved.
    void fail() { isFailing_ = true; }
    /// What is in it, by the path it had.
    [[nodiscard]] const std::vector<std::string>& contents() const { return contents_; }

    // For the framework's class: false when it cannot be moved.
    bool take(const std::string& path);

private:
    bool isFailing_ = false;
    std::vector<std::string> contents_;
    Current<FakeTrash> current_{*this};
};

}  // namespace corvane
