#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "platform/Log.h"
#include "platform/SerialQueue.h"
#include "platform/SmcConnection.h"
#include "platform/SmcKeyTable.h"
#include "platform/linux/hwmon/AbsentFans.h"
#include "platform/linux/hwmon/FanJournal.h"
#include "platform/linux/hwmon/HwmonInventory.h"
#include "platform/linux/hwmon/Sysfs.h"

namespace corvane {

/// Presents the fans and sensors of a Linux machine as the keys of a System Management Controller.
///
/// | key | value |
/// |---|---|
/// | #KEY, FNum, Ftst | numbers of keys and fans; a byte that is only remembered |
/// | F<i>Ac, Mn, Mx | speed and limits, RPM |
/// | F<i>Md | 1 takes the fan over, 0 gives it back exactly as it was; reads 0 once that is proven |
/// | F<i>Tg | speed a held fan is driven at, RPM |
/// | Tp.., Tg.. | temperatures of processor and graphics, °C as the driver gives them |
///
/// What cannot be read now answers `notReadable`; a fan that cannot be taken over safely `notWritable`, one
/// without known limits `badArgument`.
class HwmonSmc final : public SmcConnection, private SmcKeyTable {
public:
    /// A fan that could not be handed back is tried again this often, and one whose chip is absent looked
    /// for.
    static constexpr Duration retryInterval = std::chrono::seconds(2);

    /// `retryQueue`, on which the connection is then used, may be null: a failed hand-back is then repeated
    /// by the next write of mode 0 only. It and `log` outlive the connection.
    HwmonSmc(std::unique_ptr<Sysfs> sysfs, std::string journalPath, FanOwner owner, SerialQueue* retryQueue,
             Log& log);

    std::int32_t open() override;
    std::int32_t exchange(SmcRecord& record) override;

private:
    enum class Kind : std::uint8_t {
        keyCount,
        fanCount,
        forceTest,
        fanSpeed,
        fanMin,
        fanMax,
        fanMode,
        fanTarget,
        temperature,
    };

    /// What stands behind a key.
    struct Binding {
        SmcKey key;
        Kind kind;
        /// Of the fan or sensor.
        std::size_t index;
    };

    [[nodiscard]] std::span<const SmcKey> keys() const override { return keys_; }
    SmcResult read(std::size_t index, std::span<std::uint8_t> bytes) override;
    SmcResult write(std::size_t index, std::span<const std::uint8_t> bytes) override;

    void declareKeys();
    void declareFan(std::vector<Binding>& bindings, std::size_t index) const;
    void declareTemperatures(std::vector<Binding>& bindings) const;
    [[nodiscard]] std::optional<float> number(const Binding& binding);
    [[nodiscard]] static std::optional<float> target(HwmonFan& fan);
    SmcResult readMode(HwmonFan& fan, std::uint8_t& mode);
    static SmcResult setMode(FanCustody& custody, std::uint8_t mode);
    static SmcResult setTarget(FanCustody& custody, std::span<const std::uint8_t> bytes);
    void startRetrying();
    void retryHandBack();

    std::unique_ptr<Sysfs> sysfs_;
    FanJournal journal_;
    FanOwner owner_;
    SerialQueue* retryQueue_;
    Log& log_;
    HwmonInventory inventory_;
    AbsentFans absentFans_;
    std::vector<SmcKey> keys_;
    std::vector<Binding> bindings_;
    std::uint8_t forceTest_ = 0;
    std::unique_ptr<Timer> retryTimer_;
};

}  // namespace corvane
