#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Log.h"
#include "platform/SmcConnection.h"
#include "platform/linux/hwmon/FanDriver.h"
#include "platform/linux/hwmon/FanJournal.h"

namespace corvane {

/// Who has a fan: decides whether it may be taken from its firmware, remembers in the journal what must be
/// restored before anything is written to it, and gives it back. On every doubt the firmware gets the fan.
/// One thread.
class FanCustody {
public:
    struct Setting {
        /// What the log calls the fan.
        std::string name;
        FanIdentity fan;
        FanOwner owner = FanOwner::helper;
    };

    /// `driver` may be null: a fan that can only be watched. `journal` and `log` outlive the custody. An
    /// entry that the journal holds for the fan counts from now on.
    FanCustody(Setting setting, std::unique_ptr<FanDriver> driver, FanJournal& journal, Log& log);

    [[nodiscard]] const FanIdentity& fan() const { return setting_.fan; }

    [[nodiscard]] bool isDrivable() const { return driver_ != nullptr; }

    /// Takes the fan over, or makes sure that it is still held. Does not allocate while it is.
    [[nodiscard]] SmcResult force();

    /// Drives a held fan at `rpm` or at what it did when it was taken over, whichever is more. A fan that is
    /// not held accepts speeds of 0 and less, which ask for nothing.
    [[nodiscard]] SmcResult drive(float rpm);

    /// Gives the fan back and proves it.
    [[nodiscard]] SmcResult release();

    /// Whether the fan is with its firmware, or with somebody that Corvane knows nothing of.
    [[nodiscard]] bool isReleased();

    /// A release failed: the fan runs as hard as it can and has to be released again.
    [[nodiscard]] bool isStuck() const { return state_ == State::stuck; }

    /// The speed a held fan is driven at, in RPM.
    [[nodiscard]] std::optional<float> target() const;

private:
    enum class State {
        /// With its firmware.
        free,
        /// In the journal, but not driven by this process.
        left,
        /// In the journal, with no known way back.
        lost,
        held,
        /// Taken back by its controller or claimed by another process; waits for its release.
        yielded,
        stuck,
    };

    void consultJournal();
    [[nodiscard]] bool claim();
    [[nodiscard]] bool claimIn(FanJournal::Entries& entries, std::string_view& refusal);
    [[nodiscard]] SmcResult takeOver();
    [[nodiscard]] SmcResult keepHolding();
    [[nodiscard]] SmcResult giveUp(std::string_view reason);
    [[nodiscard]] bool keepsEntry();
    void yield(std::string_view reason);
    [[nodiscard]] bool handBack();
    [[nodiscard]] bool removeEntry();
    void becomeStuck(std::string_view reason);
    /// Logs a reason once, until something went well again.
    void complain(std::string_view reason);

    Setting setting_;
    std::unique_ptr<FanDriver> driver_;
    FanJournal& journal_;
    Log& log_;
    State state_ = State::free;
    /// The hardware does not let go of this fan: not tried again by this process.
    bool isRefused_ = false;
    float target_ = 0.0F;
    std::string_view complaint_;
};

}  // namespace corvane
