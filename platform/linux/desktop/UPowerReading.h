#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <asio/io_context.hpp>
#include <asio/steady_timer.hpp>
#include <sdbus-c++/sdbus-c++.h>

#include "platform/Lifetime.h"
#include "platform/PowerSources.h"

namespace corvane {

/// UPower's names.
namespace UPower {
inline constexpr const char* busName = "org.freedesktop.UPower";
inline constexpr const char* objectPath = "/org/freedesktop/UPower";
inline constexpr const char* interface = "org.freedesktop.UPower";
inline constexpr const char* deviceInterface = "org.freedesktop.UPower.Device";
}  // namespace UPower

/// One round of questions to UPower: is the computer on battery, which devices are there, what are they?
/// Belongs to the thread that pumps the connection. Ends early when it is destroyed.
class UPowerReading {
public:
    /// The computer's batteries in the order of their object paths, which is the order of the kernel's names.
    using Batteries = std::vector<PowerSourceDescription>;

    /// `done` runs once, as work of its own on `context`, and may destroy the reading. It gets nothing when
    /// UPower has not answered everything within `patience`, or answered nonsense.
    ///
    /// Sends messages: made within a handler of the connection or within `BusPump::send`. Throws sdbus::Error
    /// when the bus is gone.
    UPowerReading(asio::io_context& context, sdbus::IConnection& connection,
                  std::chrono::milliseconds patience, std::function<void(std::optional<Batteries>)> done);

private:
    using Properties = std::map<std::string, sdbus::Variant>;

    sdbus::IProxy& proxyFor(const std::string& path);
    void askForManager();
    void askForDevices();
    void askForEach(const std::vector<sdbus::ObjectPath>& paths);
    void askForDevice(const std::string& path);
    void answered();
    void finish(std::optional<Batteries> result);
    [[nodiscard]] Batteries batteries() const;

    asio::io_context& context_;
    sdbus::IConnection& connection_;
    std::function<void(std::optional<Batteries>)> done_;
    Lifetime lifetime_;
    int openQuestions_ = 0;
    std::optional<bool> isOnBattery_;
    /// By object path.
    std::map<std::string, Properties> devices_;
    std::vector<std::unique_ptr<sdbus::IProxy>> proxies_;
    asio::steady_timer timeout_;
};

}  // namespace corvane
