#include "platform/linux/hwmon/FanCustody.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <fmt/format.h>

namespace corvane {

namespace {

/// Set when the claim itself had no objection.
constexpr std::string_view journalFailed = "not taken over: the fan journal cannot be written now";
/// Whatever the driver cannot observe is one of these.
constexpr std::string_view foundManual =
    "not taken over: it is under manual control already, and nothing tells the way back";
constexpr std::string_view notObserved =
    "not taken over: what it does now cannot be told, or is more than can be asked of it";

}  // namespace

FanCustody::FanCustody(Setting setting, std::unique_ptr<FanDriver> driver, FanJournal& journal, Log& log)
    : setting_(std::move(setting)), driver_(std::move(driver)), journal_(journal), log_(log) {
    consultJournal();
}

SmcResult FanCustody::force() {
    if (driver_ == nullptr) {
        return SmcResult::notWritable;
    }
    if (!driver_->range().isKnown()) {
        return SmcResult::badArgument;
    }
    if (state_ == State::held) {
        return keepHolding();
    }
    return isRefused_ || state_ == State::yielded ? SmcResult::notWritable : takeOver();
}

SmcResult FanCustody::drive(float rpm) {
    if (driver_ == nullptr) {
        return SmcResult::notWritable;
    }
    if (!std::isfinite(rpm)) {
        return SmcResult::badArgument;
    }
    if (state_ == State::left && rpm > 0.0F && driver_->isHeld() == true && claim()) {
        state_ = State::held;
    }
    if (state_ != State::held) {
        return rpm > 0.0F ? SmcResult::notWritable : SmcResult::success;
    }
    if (!keepsEntry()) {
        return SmcResult::notWritable;
    }
    const std::optional<float> driven = driver_->drive(rpm);
    if (!driven) {
        return giveUp("given back: it does not take its speed");
    }
    target_ = *driven;
    return SmcResult::success;
}

SmcResult FanCustody::release() {
    if (driver_ == nullptr) {
        return SmcResult::notWritable;
    }
    if (state_ == State::free || state_ == State::lost) {
        consultJournal();
    }
    if (state_ == State::free) {
        return SmcResult::success;
    }
    return state_ != State::lost && handBack() ? SmcResult::success : SmcResult::notWritable;
}

bool FanCustody::isReleased() {
    switch (state_) {
        case State::free:
            return true;
        case State::lost:
        case State::stuck:
            return false;
        case State::held:
        case State::left:
        case State::yielded:
            return driver_->isHandedBack();
    }
    return false;
}

std::optional<float> FanCustody::target() const {
    return state_ == State::held ? std::optional(target_) : std::nullopt;
}

/// For a fan that this process has not touched.
void FanCustody::consultJournal() {
    const JournalEntry* entry = journal_.find(setting_.fan);
    if (entry == nullptr) {
        state_ = State::free;
    } else if (driver_ != nullptr && driver_->adopt(entry->originals)) {
        state_ = State::left;
    } else {
        state_ = State::lost;
        complain("WARNING: was not given back, and its journal entry cannot be used");
    }
}

/// Puts the fan under this owner in the journal: with the originals of an entry that is there already, else
/// with what is observed now. Observing under the journal's lock makes sure that no other process is just
/// holding the fan.
bool FanCustody::claim() {
    std::string_view refusal = journalFailed;
    if (!journal_.update([&](FanJournal::Entries& entries) { return claimIn(entries, refusal); })) {
        complain(refusal);
        return false;
    }
    state_ = State::left;
    return true;
}

bool FanCustody::claimIn(FanJournal::Entries& entries, std::string_view& refusal) {
    auto entry = std::find_if(entries.begin(), entries.end(),
                              [this](const JournalEntry& each) { return each.fan == setting_.fan; });
    if (entry == entries.end()) {
        const std::optional<FanOriginals> originals = driver_->observe();
        if (!originals) {
            refusal = driver_->isHeld() == true ? foundManual : notObserved;
            return false;
        }
        entry = entries.insert(entries.end(), {setting_.fan, setting_.owner, *originals});
    }
    if (entry->owner == FanOwner::helper && setting_.owner == FanOwner::diagnostics) {
        refusal = "not taken over: the helper has it";
        return false;
    }
    if (!driver_->adopt(entry->originals)) {
        refusal = "not taken over: no known way back";
        return false;
    }
    entry->owner = setting_.owner;
    return true;
}

SmcResult FanCustody::takeOver() {
    if (!claim()) {
        return SmcResult::notWritable;
    }
    if (!driver_->takeOver()) {
        complain("stays with its firmware: it refuses manual control");
        // A device that just vanished cannot be handed back either, and has refused nothing.
        isRefused_ = handBack();
        return SmcResult::notWritable;
    }
    state_ = State::held;
    target_ = 0.0F;
    complaint_ = {};
    return SmcResult::success;
}

SmcResult FanCustody::keepHolding() {
    if (!keepsEntry()) {
        return SmcResult::notWritable;
    }
    const std::optional<bool> isHeld = driver_->isHeld();
    if (!isHeld) {
        return giveUp("given back: its mode cannot be read");
    }
    if (!*isHeld) {
        yield("taken back by its controller");
        return SmcResult::notWritable;
    }
    return SmcResult::success;
}

/// A fan that can no longer be relied on must not stay at the speed it happens to have.
SmcResult FanCustody::giveUp(std::string_view reason) {
    complain(reason);
    static_cast<void>(handBack());
    return SmcResult::notWritable;
}

/// Whether a held fan still is this owner's. One that is not is never left forced with nobody to drive it.
bool FanCustody::keepsEntry() {
    const JournalEntry* entry = journal_.find(setting_.fan);
    if (entry != nullptr && entry->owner == setting_.owner) {
        return true;
    }
    if (entry != nullptr && setting_.owner == FanOwner::helper && claim()) {
        // A diagnostic command may be gone by now.
        state_ = State::held;
        return true;
    }
    if (entry != nullptr && setting_.owner == FanOwner::diagnostics) {
        yield("claimed by the helper");
    } else if (driver_->isHeld() == false) {
        yield("given back by another process");
    } else {
        static_cast<void>(giveUp("given back: its journal entry is no longer its own"));
    }
    return false;
}

void FanCustody::yield(std::string_view reason) {
    state_ = State::yielded;
    complain(reason);
}

bool FanCustody::handBack() {
    if (!driver_->handBack()) {
        driver_->driveFull();
        becomeStuck("WARNING: cannot be handed back; runs at full speed until it can");
        return false;
    }
    if (!removeEntry()) {
        becomeStuck("handed back, but the fan journal cannot be written");
        return false;
    }
    if (std::exchange(state_, State::free) == State::stuck) {
        complain("handed back after all");
    }
    if (!isRefused_) {
        complaint_ = {};
    }
    return true;
}

bool FanCustody::removeEntry() {
    return journal_.update([this](FanJournal::Entries& entries) {
        std::erase_if(entries, [this](const JournalEntry& entry) { return entry.fan == setting_.fan; });
        return true;
    });
}

void FanCustody::becomeStuck(std::string_view reason) {
    state_ = State::stuck;
    complain(reason);
}

void FanCustody::complain(std::string_view reason) {
    if (std::exchange(complaint_, reason) != reason) {
        log_.write(fmt::format("Corvane daemon: {}: {}", setting_.name, reason));
    }
}

}  // namespace corvane
