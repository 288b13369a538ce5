#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "platform/PowerAssertions.h"

namespace corvane {

/// Keeps the assertions that are held; refuses them when it is told to. Main loop.
class SimulatedPowerAssertions final : public PowerAssertions {
public:
    struct Assertion {
        std::string type;
        std::string name;

        bool operator==(const Assertion&) const = default;
    };

    [[nodiscard]] std::optional<Id> create(std::string_view type, std::string_view name) override {
        if (type == refusedType_) {
            return std::nullopt;
        }
        held_.emplace(++lastId_, Assertion{std::string(type), std::string(name)});
        return lastId_;
    }
    void release(Id id) override { released_ += held_.erase(id); }

    /// From now on no assertion of this type can be taken; empty for none.
    void refuse(std::string_view type) { refusedType_ = type; }

    /// By id, in the order they were taken.
    [[nodiscard]] const std::map<Id, Assertion>& held() const { return held_; }
    [[nodiscard]] std::size_t taken() const { return lastId_; }
    [[nodiscard]] std::size_t released() const { return released_; }

private:
    std::map<Id, Assertion> held_;
    Id lastId_ = 0;
    std::size_t released_ = 0;
    std::string refusedType_;
};

}  // namespace corvane
