#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/platform/macos/fakes/Current.h"

namespace corvane {

/// The volumes that a Mac has mounted; none to begin with. One at a time.
class FakeVolumes {
public:
    struct FakeVolume {
        std::string path;
        std::optional<std::string> name = std::nullopt;
        std::optional<bool> isInternal = std::nullopt;
        std::optional<bool> isBrowsable = std::nullopt;
        /// From users.
        bool isHidden = false;
        /// Its values cannot be read.
        bool isUnreadable = false;
        /// Its values are of other classes than they should.
        bool isNonsense = false;
    };

    FakeVolumes();
    FakeVolumes(const FakeVolumes&) = delete;
    FakeVolumes& operator=(const FakeVolumes&) = delete;
    ~FakeVolumes();

    void set(std::vector<FakeVolume> volumes);
    /// From now on the system does not tell.
    void fail() { isFailing_ = true; }

    // For the framework's class.
    [[nodiscard]] bool isFailing() const { return isFailing_; }
    [[nodiscard]] const std::vector<FakeVolume>& volumes() const { return volumes_; }

private:
    class Values;

    std::vector<FakeVolume> volumes_;
    bool isFailing_ = false;
    std::unique_ptr<Values> values_;
    Current<FakeVolumes> current_{*this};
};

}  // namespace corvane
