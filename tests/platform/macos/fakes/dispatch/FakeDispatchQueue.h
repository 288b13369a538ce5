#pragma once

#include <string>
#include <utility>

#include "platform/simulated/VirtualTime.h"
#include "tests/platform/macos/fakes/dispatch/FakeDispatchObject.h"

namespace corvane {

/// What the handle of a queue leads to.
class FakeDispatchQueue final : public FakeDispatchObject {
public:
    FakeDispatchQueue(VirtualQueue& work, std::string label) : work_(work), label_(std::move(label)) {}

    void resume() override;

    [[nodiscard]] VirtualQueue& work() { return work_; }
    [[nodiscard]] const std::string& label() const { return label_; }

private:
    VirtualQueue& work_;
    std::string label_;
};

}  // namespace corvane
