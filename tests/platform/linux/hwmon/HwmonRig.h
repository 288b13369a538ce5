#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "platform/SmcConnection.h"
#include "platform/linux/hwmon/FanOwner.h"
#include "platform/simulated/RecordingLog.h"
#include "platform/simulated/VirtualTime.h"
#include "tests/platform/linux/hwmon/FakeSysfs.h"

namespace corvane {

/// A folder of its own that is removed in the end.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    [[nodiscard]] std::string path(const std::string& name) const { return (folder_ / name).string(); }
    void write(const std::string& name, const std::string& text) const;
    /// Empty when there is no such file.
    [[nodiscard]] std::string read(const std::string& name) const;

private:
    std::filesystem::path folder_;
};

/// Exchanges records with a connection.
class SmcClient {
public:
    explicit SmcClient(std::unique_ptr<SmcConnection> connection) : connection_(std::move(connection)) {}

    [[nodiscard]] std::int32_t open() { return connection_->open(); }
    /// Nothing unless the result is success.
    [[nodiscard]] std::optional<float> flt(std::string_view key);
    [[nodiscard]] std::optional<int> ui8(std::string_view key);
    [[nodiscard]] SmcResult readResult(std::string_view key);
    [[nodiscard]] SmcResult writeFlt(std::string_view key, float value);
    [[nodiscard]] SmcResult writeUi8(std::string_view key, int value);
    [[nodiscard]] std::vector<std::string> keys();
    [[nodiscard]] std::optional<int> attributes(std::string_view key);

private:
    SmcRecord exchange(std::string_view key, SmcCommand command, std::uint32_t size,
                       std::array<std::uint8_t, 32> bytes = {});

    std::unique_ptr<SmcConnection> connection_;
};

/// A machine's hardware, its journal, and processes that connect to it.
class HwmonRig {
public:
    explicit HwmonRig(const machines::Machine& machine) : hardware(machine) {}

    /// A process that has opened the connection.
    [[nodiscard]] SmcClient connect(FanOwner owner = FanOwner::helper);
    [[nodiscard]] SmcClient connectUnopened(FanOwner owner = FanOwner::helper);

    [[nodiscard]] std::string journal() const { return folder.read("fans"); }

    TemporaryFolder folder;
    FakeHardware hardware;
    VirtualTime time;
    VirtualQueue queue{time};
    RecordingLog log;
    std::string journalPath = folder.path("fans");
};

}  // namespace corvane
