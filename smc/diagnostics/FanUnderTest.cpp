#include "smc/diagnostics/FanUnderTest.h"

#include <algorithm>

#include "smc/SmcReading.h"
#include "smc/csmc.h"
#include "smc/diagnostics/FanKey.h"

namespace corvane {

namespace {

constexpr int restoreAttempts = 5;
/// Firmware can take a moment to show that it has the fan again, also after a signal.
constexpr Duration restorePause = std::chrono::milliseconds(120);

}  // namespace

FanUnderTest::FanUnderTest(int fan)
    : fan_(fan),
      speedKey_(fanKey(fan, "Ac")),
      targetKey_(fanKey(fan, "Tg")),
      modeKey_(fanKey(fan, "Md")),
      savedMode_(mode()),
      savedTarget_(readFinite(targetKey_.c_str())) {}

float FanUnderTest::demand() const {
    return std::max(speed(), target());
}

float FanUnderTest::speed() const {
    return readFinite(speedKey_.c_str()).value_or(0.0F);
}

float FanUnderTest::target() const {
    return readFinite(targetKey_.c_str()).value_or(0.0F);
}

std::uint8_t FanUnderTest::mode() const {
    return csmc_read_u8(modeKey_.c_str(), nullptr);
}

std::int32_t FanUnderTest::writeMode(std::uint8_t mode) {
    const std::int32_t code = csmc_write_u8(modeKey_.c_str(), mode);
    modeWasAccepted_ = modeWasAccepted_ || code == 0;
    return code;
}

std::int32_t FanUnderTest::writeTarget(float rpm) const {
    return csmc_write_flt(targetKey_.c_str(), rpm);
}

std::int32_t FanUnderTest::writeTargetAsFpe2(std::int32_t rpm) const {
    return csmc_write_fpe2(targetKey_.c_str(), rpm);
}

bool FanUnderTest::restore(InterruptiblePause& pause) {
    for (int attempt = 0; attempt < restoreAttempts; ++attempt) {
        if (writeModeBack()) {
            // Not earlier: a fan that stays forced must not slow down to what the firmware asked for before.
            if (savedTarget_) {
                writeTarget(*savedTarget_);
            }
            return true;
        }
        pause.wait(restorePause);
    }
    return false;
}

/// Some modes can be read but not written; the firmware is to have the fan then.
bool FanUnderTest::writeModeBack() {
    return isRestored(csmc_write_u8(modeKey_.c_str(), savedMode_)) ||
           isRestored(csmc_write_u8(modeKey_.c_str(), automaticMode));
}

/// By the code of the write where the mode cannot be read, unless the fan never took a mode at all.
bool FanUnderTest::isRestored(std::int32_t writeCode) const {
    std::uint8_t ok = 0;
    const std::uint8_t mode = csmc_read_u8(modeKey_.c_str(), &ok);
    if (ok != 0) {
        return mode == savedMode_ || mode == automaticMode;
    }
    return writeCode == 0 || !modeWasAccepted_;
}

}  // namespace corvane
