#include "platform/linux/desktop/UPowerReading.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include <asio/post.hpp>

namespace corvane {

namespace {

/// Far more than any computer has, mice included.
constexpr std::size_t maxDevices = 64;

constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";

/// Values of UPower's Type and State.
constexpr std::uint32_t isBatteryType = 2;
constexpr std::uint32_t isChargingState = 1;

using Properties = std::map<std::string, sdbus::Variant>;

/// None when it is missing or of another type.
template <typename T>
std::optional<T> property(const Properties& properties, const std::string& name) {
    const auto found = properties.find(name);
    if (found == properties.end() || !found->second.containsValueOfType<T>()) {
        return std::nullopt;
    }
    return found->second.get<T>();
}

bool isBatteryOfComputer(const Properties& device) {
    return property<std::uint32_t>(device, "Type") == isBatteryType &&
           property<bool>(device, "PowerSupply") == true &&
           property<bool>(device, "IsPresent").value_or(true);
}

/// Puts `now` of `full` into the description, in thousandths of their unit; false when they cannot be true.
/// Comparisons with NaN are false.
bool setCharge(PowerSourceDescription& description, std::optional<double> now, std::optional<double> full) {
    constexpr double thousandths = 1000;
    constexpr double most = std::numeric_limits<int>::max() / thousandths;
    const bool isPlausible = now && full && *full * thousandths >= 1 && *full <= most && *now >= 0 &&
                             *now <= most && *now <= 2 * *full;
    if (isPlausible) {
        description.currentCapacity = static_cast<int>(std::lround(*now * thousandths));
        description.maxCapacity = static_cast<int>(std::lround(*full * thousandths));
    }
    return isPlausible;
}

PowerSourceDescription describe(const Properties& battery, bool isOnBattery) {
    PowerSourceDescription description;
    // Wh; 0 from batteries that only tell a percentage.
    if (!setCharge(description, property<double>(battery, "Energy"),
                   property<double>(battery, "EnergyFull"))) {
        setCharge(description, property<double>(battery, "Percentage"), 100);
    }
    description.state = isOnBattery ? "Battery Power" : PowerSources::acPower;
    if (const auto state = property<std::uint32_t>(battery, "State")) {
        description.isCharging = state == isChargingState;
    }
    return description;
}

}  // namespace

UPowerReading::UPowerReading(asio::io_context& context, sdbus::IConnection& connection,
                             std::chrono::milliseconds patience,
                             std::function<void(std::optional<Batteries>)> done)
    : context_(context), connection_(connection), done_(std::move(done)), timeout_(context, patience) {
    timeout_.async_wait(lifetime_.bound([this](const std::error_code& error) {
        if (!error) {
            finish(std::nullopt);
        }
    }));
    askForManager();
    askForDevices();
}

sdbus::IProxy& UPowerReading::proxyFor(const std::string& path) {
    proxies_.push_back(sdbus::createProxy(connection_, UPower::busName, path));
    return *proxies_.back();
}

void UPowerReading::askForManager() {
    ++openQuestions_;
    proxyFor(UPower::objectPath)
        .callMethodAsync("GetAll")
        .onInterface(propertiesInterface)
        .withArguments(UPower::interface)
        .uponReplyInvoke([this](const sdbus::Error* error, const Properties& manager) {
            isOnBattery_ = error == nullptr ? property<bool>(manager, "OnBattery") : std::nullopt;
            if (!isOnBattery_) {
                finish(std::nullopt);
            }
            answered();
        });
}

void UPowerReading::askForDevices() {
    ++openQuestions_;
    proxyFor(UPower::objectPath)
        .callMethodAsync("EnumerateDevices")
        .onInterface(UPower::interface)
        .uponReplyInvoke([this](const sdbus::Error* error, const std::vector<sdbus::ObjectPath>& paths) {
            if (error == nullptr) {
                askForEach(paths);
            } else {
                finish(std::nullopt);
            }
            answered();
        });
}

void UPowerReading::askForEach(const std::vector<sdbus::ObjectPath>& paths) {
    try {
        std::for_each_n(paths.begin(), std::min(paths.size(), maxDevices),
                        [this](const std::string& path) { askForDevice(path); });
    } catch (const sdbus::Error&) {
        finish(std::nullopt);
    }
}

/// A device that does not answer is just being taken out, and left out here.
void UPowerReading::askForDevice(const std::string& path) {
    ++openQuestions_;
    proxyFor(path)
        .callMethodAsync("GetAll")
        .onInterface(propertiesInterface)
        .withArguments(UPower::deviceInterface)
        .uponReplyInvoke([this, path](const sdbus::Error* error, const Properties& device) {
            if (error == nullptr) {
                devices_[path] = device;
            }
            answered();
        });
}

void UPowerReading::answered() {
    if (--openQuestions_ == 0) {
        finish(batteries());
    }
}

void UPowerReading::finish(std::optional<Batteries> result) {
    if (!done_) {
        return;
    }
    timeout_.cancel();
    // The proxy whose handler this may be must not be destroyed in it.
    asio::post(context_,
               lifetime_.bound([done = std::exchange(done_, nullptr), result = std::move(result)]() mutable {
                   done(std::move(result));
               }));
}

UPowerReading::Batteries UPowerReading::batteries() const {
    Batteries batteries;
    for (const auto& [path, device] : devices_) {
        if (isBatteryOfComputer(device)) {
            batteries.push_back(describe(device, isOnBattery_.value_or(true)));
        }
    }
    return batteries;
}

}  // namespace corvane
