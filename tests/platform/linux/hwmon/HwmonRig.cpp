#include "tests/platform/linux/hwmon/HwmonRig.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>

#include "platform/SmcKeyTable.h"
#include "platform/linux/hwmon/HwmonSmc.h"

namespace corvane {

TemporaryFolder::TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "corvane-hwmon-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no temporary folder");
    }
    folder_ = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

void TemporaryFolder::write(const std::string& name, const std::string& text) const {
    std::ofstream(folder_ / name, std::ios::binary) << text;
}

std::string TemporaryFolder::read(const std::string& name) const {
    std::ifstream file(folder_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::optional<float> SmcClient::flt(std::string_view key) {
    const SmcRecord answer = exchange(key, SmcCommand::readKey, sizeof(float));
    if (answer.result != 0) {
        return std::nullopt;
    }
    float value = 0.0F;
    std::memcpy(&value, answer.bytes.data(), sizeof value);
    return value;
}

std::optional<int> SmcClient::ui8(std::string_view key) {
    const SmcRecord answer = exchange(key, SmcCommand::readKey, 1);
    return answer.result == 0 ? std::optional<int>(answer.bytes[0]) : std::nullopt;
}

SmcResult SmcClient::readResult(std::string_view key) {
    return static_cast<SmcResult>(exchange(key, SmcCommand::readKey, sizeof(float)).result);
}

SmcResult SmcClient::writeFlt(std::string_view key, float value) {
    std::array<std::uint8_t, 32> bytes = {};
    std::memcpy(bytes.data(), &value, sizeof value);
    return static_cast<SmcResult>(exchange(key, SmcCommand::writeKey, sizeof value, bytes).result);
}

SmcResult SmcClient::writeUi8(std::string_view key, int value) {
    const std::array<std::uint8_t, 32> bytes = {static_cast<std::uint8_t>(value)};
    return static_cast<SmcResult>(exchange(key, SmcCommand::writeKey, 1, bytes).result);
}

std::vector<std::string> SmcClient::keys() {
    std::vector<std::string> names;
    SmcRecord record;
    record.data8 = static_cast<std::uint8_t>(SmcCommand::keyAtIndex);
    for (;; ++record.data32) {
        if (connection_->exchange(record) != 0 || record.result != 0) {
            return names;
        }
        std::string name;
        for (int shift = 24; shift >= 0; shift -= 8) {
            name += static_cast<char>(record.key >> shift & 0xFF);
        }
        names.push_back(name);
    }
}

std::optional<int> SmcClient::attributes(std::string_view key) {
    const SmcRecord answer = exchange(key, SmcCommand::keyInfo, 0);
    return answer.result == 0 ? std::optional<int>(answer.keyInfo.dataAttributes) : std::nullopt;
}

SmcRecord SmcClient::exchange(std::string_view key, SmcCommand command, std::uint32_t size,
                              std::array<std::uint8_t, 32> bytes) {
    SmcRecord record;
    record.key = fourCharCode(key);
    record.data8 = static_cast<std::uint8_t>(command);
    record.keyInfo.dataSize = size;
    record.bytes = bytes;
    EXPECT_EQ(connection_->exchange(record), 0);
    return record;
}

SmcClient HwmonRig::connect(FanOwner owner) {
    SmcClient client = connectUnopened(owner);
    EXPECT_EQ(client.open(), 0);
    return client;
}

SmcClient HwmonRig::connectUnopened(FanOwner owner) {
    return SmcClient(std::make_unique<HwmonSmc>(hardware.view(), journalPath, owner, &queue, log));
}

}  // namespace corvane
