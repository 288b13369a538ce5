#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/CommandPlatform.h"

namespace corvane {

/// A fan that a write test drives. It remembers how it found the fan, and puts that back.
///
/// Results of writes are csmc's codes. Nothing is written before the first write that is asked for, which is
/// to come after termination signals are held.
class FanUnderTest {
public:
    static constexpr std::uint8_t automaticMode = 0;
    static constexpr std::uint8_t forcedMode = 1;

    /// Reads mode and target of fan `fan`, 0...9. A mode that cannot be read counts as automatic; a target
    /// that cannot is not put back.
    explicit FanUnderTest(int fan);

    [[nodiscard]] int number() const { return fan_; }
    [[nodiscard]] const std::string& modeKey() const { return modeKey_; }
    [[nodiscard]] const std::string& targetKey() const { return targetKey_; }
    [[nodiscard]] std::uint8_t savedMode() const { return savedMode_; }

    /// The fastest that the fan turns, or is asked to turn, at present, in RPM; 0 when neither can be read.
    [[nodiscard]] float demand() const;
    /// RPM; 0 when it cannot be read.
    [[nodiscard]] float speed() const;
    /// RPM; 0 when it cannot be read.
    [[nodiscard]] float target() const;
    /// 0 when it cannot be read.
    [[nodiscard]] std::uint8_t mode() const;

    std::int32_t writeMode(std::uint8_t mode);
    /// RPM, as `flt `.
    std::int32_t writeTarget(float rpm) const;
    /// RPM, as `fpe2`, whatever the key's own type.
    std::int32_t writeTargetAsFpe2(std::int32_t rpm) const;

    /// Writes back the saved mode, or automatic where that is refused, until it reads back, and then the
    /// saved target. False when the mode still reads otherwise after several attempts; the fan then keeps the
    /// speed it was given last.
    [[nodiscard]] bool restore(InterruptiblePause& pause);

private:
    bool writeModeBack();
    [[nodiscard]] bool isRestored(std::int32_t writeCode) const;

    int fan_;
    std::string speedKey_;
    std::string targetKey_;
    std::string modeKey_;
    std::uint8_t savedMode_;
    std::optional<float> savedTarget_;
    bool modeWasAccepted_ = false;
};

}  // namespace corvane
