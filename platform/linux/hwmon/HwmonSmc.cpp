#include "platform/linux/hwmon/HwmonSmc.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include <fmt/format.h>

#include "platform/linux/hwmon/FanSpeed.h"

namespace corvane {

namespace {

constexpr std::uint32_t flt = fourCharCode("flt ");
constexpr std::uint32_t ui8 = fourCharCode("ui8 ");
constexpr std::uint32_t ui32 = fourCharCode("ui32");
/// Forced, the only mode besides 0.
constexpr std::uint8_t forcedMode = 1;
constexpr float millidegrees = 1000.0F;
/// Two places of a sensor's number in its key.
constexpr std::string_view digits = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::size_t maxSensors = digits.size() * digits.size();

SmcKey fltKey(std::string_view name, std::uint8_t attributes) {
    return {fourCharCode(name), flt, sizeof(float),
            static_cast<std::uint8_t>(attributes | SmcAttribute::readable | SmcAttribute::littleEndian)};
}

SmcKey ui8Key(std::string_view name, std::uint8_t attributes) {
    return {fourCharCode(name), ui8, 1, static_cast<std::uint8_t>(attributes | SmcAttribute::readable)};
}

std::string sensorKey(std::string_view prefix, std::size_t number) {
    return fmt::format("{}{}{}", prefix, digits[number / digits.size()], digits[number % digits.size()]);
}

void putBigEndian(std::uint32_t value, std::span<std::uint8_t> bytes) {
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(value >> 24);
        value <<= 8;
    }
}

std::optional<float> speedOf(ChipAttribute& attribute) {
    const std::optional<std::int64_t> rpm = attribute.read();
    const bool isSpeed = rpm && *rpm >= 0 && *rpm <= FanSpeed::highest;
    return isSpeed ? std::optional(static_cast<float>(*rpm)) : std::nullopt;
}

}  // namespace

HwmonSmc::HwmonSmc(std::unique_ptr<Sysfs> sysfs, std::string journalPath, FanOwner owner,
                   SerialQueue* retryQueue, Log& log)
    : sysfs_(std::move(sysfs)),
      journal_(std::move(journalPath), log),
      owner_(owner),
      retryQueue_(retryQueue),
      log_(log),
      absentFans_(*sysfs_, journal_, log) {}

std::int32_t HwmonSmc::open() {
    inventory_ = takeInventory(*sysfs_, retryQueue_, owner_, journal_, log_);
    absentFans_.remember(inventory_);
    if (!absentFans_.isEmpty()) {
        startRetrying();
    }
    if (inventory_.chips.empty()) {
        return noService;
    }
    declareKeys();
    return 0;
}

std::int32_t HwmonSmc::exchange(SmcRecord& record) {
    if (keys_.empty()) {
        return noService;
    }
    answerFromTable(*this, record);
    return 0;
}

SmcResult HwmonSmc::read(std::size_t index, std::span<std::uint8_t> bytes) {
    const Binding& binding = bindings_[index];
    switch (binding.kind) {
        case Kind::keyCount:
            putBigEndian(static_cast<std::uint32_t>(keys_.size()), bytes);
            return SmcResult::success;
        case Kind::fanCount:
            bytes[0] = static_cast<std::uint8_t>(inventory_.fans.size());
            return SmcResult::success;
        case Kind::forceTest:
            bytes[0] = forceTest_;
            return SmcResult::success;
        case Kind::fanMode:
            return readMode(*inventory_.fans[binding.index], bytes[0]);
        default:
            break;
    }
    const std::optional<float> value = number(binding);
    if (!value) {
        return SmcResult::notReadable;
    }
    std::memcpy(bytes.data(), &*value, sizeof(float));
    return SmcResult::success;
}

SmcResult HwmonSmc::write(std::size_t index, std::span<const std::uint8_t> bytes) {
    const Binding& binding = bindings_[index];
    if (binding.kind == Kind::forceTest) {
        forceTest_ = bytes[0];
        return SmcResult::success;
    }
    FanCustody& custody = inventory_.fans[binding.index]->custody;
    const SmcResult result =
        binding.kind == Kind::fanMode ? setMode(custody, bytes[0]) : setTarget(custody, bytes);
    if (custody.isStuck()) {
        startRetrying();
    }
    return result;
}

void HwmonSmc::declareKeys() {
    bindings_ = {
        {{fourCharCode("#KEY"), ui32, 4, SmcAttribute::readable}, Kind::keyCount, 0},
        {ui8Key("FNum", 0), Kind::fanCount, 0},
        {ui8Key("Ftst", SmcAttribute::writable), Kind::forceTest, 0},
    };
    for (std::size_t i = 0; i < inventory_.fans.size(); ++i) {
        declareFan(bindings_, i);
    }
    declareTemperatures(bindings_);
    std::sort(bindings_.begin(), bindings_.end(),
              [](const Binding& left, const Binding& right) { return left.key.name < right.key.name; });
    keys_.clear();
    for (const Binding& binding : bindings_) {
        keys_.push_back(binding.key);
    }
}

void HwmonSmc::declareFan(std::vector<Binding>& bindings, std::size_t index) const {
    constexpr std::uint8_t driven = SmcAttribute::writable | SmcAttribute::function;
    const std::uint8_t control = inventory_.fans[index]->custody.isDrivable() ? driven : 0;
    const std::string fan = fmt::format("F{}", index);
    bindings.push_back({fltKey(fan + "Ac", 0), Kind::fanSpeed, index});
    bindings.push_back({fltKey(fan + "Mn", 0), Kind::fanMin, index});
    bindings.push_back({fltKey(fan + "Mx", 0), Kind::fanMax, index});
    bindings.push_back({ui8Key(fan + "Md", control), Kind::fanMode, index});
    bindings.push_back({fltKey(fan + "Tg", control), Kind::fanTarget, index});
}

void HwmonSmc::declareTemperatures(std::vector<Binding>& bindings) const {
    std::size_t cpuSensors = 0;
    std::size_t gpuSensors = 0;
    for (std::size_t i = 0; i < inventory_.sensors.size(); ++i) {
        const bool isCpu = inventory_.sensors[i]->family == TemperatureFamily::cpu;
        std::size_t& count = isCpu ? cpuSensors : gpuSensors;
        if (count < maxSensors) {
            bindings.push_back({fltKey(sensorKey(isCpu ? "Tp" : "Tg", count), 0), Kind::temperature, i});
            ++count;
        }
    }
}

std::optional<float> HwmonSmc::number(const Binding& binding) {
    if (binding.kind == Kind::temperature) {
        const std::optional<std::int64_t> value = inventory_.sensors[binding.index]->input.read();
        return value ? std::optional(static_cast<float>(*value) / millidegrees) : std::nullopt;
    }
    HwmonFan& fan = *inventory_.fans[binding.index];
    if (binding.kind == Kind::fanSpeed) {
        return speedOf(fan.speed);
    }
    if (binding.kind == Kind::fanTarget) {
        return target(fan);
    }
    if (!fan.range.isKnown()) {
        return std::nullopt;
    }
    return binding.kind == Kind::fanMin ? fan.range.min : fan.range.max;
}

/// What the firmware aims at is 0 where the chip does not tell it.
std::optional<float> HwmonSmc::target(HwmonFan& fan) {
    if (const std::optional<float> held = fan.custody.target()) {
        return held;
    }
    return fan.firmwareTarget ? speedOf(*fan.firmwareTarget) : 0.0F;
}

SmcResult HwmonSmc::readMode(HwmonFan& fan, std::uint8_t& mode) {
    const bool isReleased = fan.custody.isReleased();
    // Somebody holds the fan, and the journal does not tell a process without root whether it is the helper.
    if (isReleased && !journal_.isReadable() && fan.mode && fan.mode->read() == forcedMode) {
        return SmcResult::notReadable;
    }
    mode = isReleased ? 0 : forcedMode;
    return SmcResult::success;
}

SmcResult HwmonSmc::setMode(FanCustody& custody, std::uint8_t mode) {
    if (mode > forcedMode) {
        return SmcResult::badArgument;
    }
    return mode == forcedMode ? custody.force() : custody.release();
}

SmcResult HwmonSmc::setTarget(FanCustody& custody, std::span<const std::uint8_t> bytes) {
    float rpm = 0.0F;
    std::memcpy(&rpm, bytes.data(), sizeof rpm);
    return custody.drive(rpm);
}

void HwmonSmc::startRetrying() {
    if (retryQueue_ != nullptr && retryTimer_ == nullptr) {
        retryTimer_ = retryQueue_->every(retryInterval, retryInterval, [this] { retryHandBack(); });
    }
}

void HwmonSmc::retryHandBack() {
    absentFans_.handBack();
    bool isDone = absentFans_.isEmpty();
    for (const auto& fan : inventory_.fans) {
        if (fan->custody.isStuck()) {
            isDone = fan->custody.release() == SmcResult::success && isDone;
        }
    }
    if (isDone) {
        retryTimer_.reset();
    }
}

}  // namespace corvane
