#include "platform/linux/desktop/DrmDisplays.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include <fmt/format.h>

#include "platform/linux/hwmon/DirectorySysfs.h"
#include "platform/linux/hwmon/HwmonChip.h"

namespace corvane {

namespace {

constexpr const char* connectorFolder = "class/drm";

/// The kind of a connector, "HDMI-A" of "card1-HDMI-A-2"; empty for what is no connector.
std::string_view connectorKind(std::string_view entry) {
    const std::size_t card = entry.find('-');
    const std::size_t number = entry.rfind('-');
    if (!entry.starts_with("card") || card == number) {
        return {};
    }
    return entry.substr(card + 1, number - card - 1);
}

bool isDisplay(std::string_view kind) {
    return !kind.empty() && kind != "Writeback" && kind != "Unknown";
}

bool isPanel(std::string_view kind) {
    return kind == "eDP" || kind == "LVDS" || kind == "DSI";
}

}  // namespace

DrmDisplays::DrmDisplays(SerialQueue& mainLoop, std::string root)
    : mainLoop_(mainLoop), root_(std::move(root)) {}

std::optional<std::vector<Display>> DrmDisplays::online() const {
    DirectorySysfs sysfs(root_);
    if (!sysfs.canonicalPath(connectorFolder)) {
        return std::nullopt;
    }
    std::vector<Display> displays;
    for (const std::string& entry : sysfs.list(connectorFolder)) {
        const std::string_view kind = connectorKind(entry);
        if (isDisplay(kind) &&
            readText(sysfs, fmt::format("{}/{}/status", connectorFolder, entry)) == "connected") {
            displays.push_back({.isBuiltIn = isPanel(kind)});
        }
    }
    return displays;
}

std::unique_ptr<Observation> DrmDisplays::observe(std::function<void()> changed) {
    if (!monitor_) {
        monitor_.emplace("drm", [this] { announceSoon(); });
    }
    return observers_.add(std::move(changed));
}

void DrmDisplays::announceSoon() {
    if (!settling_) {
        settling_ = mainLoop_.after(settlingTime, [this] {
            // Ends the timer, and thus goes first: an observer may cause the next.
            const std::unique_ptr<Timer> over = std::move(settling_);
            observers_.notify();
        });
    }
}

}  // namespace corvane
