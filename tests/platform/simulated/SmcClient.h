#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/SmcConnection.h"
#include "platform/SmcKeyTable.h"

namespace corvane {

/// Speaks to an SMC record by record, so that tests see exactly what it answers.
class SmcClient {
public:
    /// `connection` outlives the client.
    explicit SmcClient(SmcConnection& connection) : connection_(connection) {}

    SmcRecord send(SmcRecord record) {
        connection_.exchange(record);
        return record;
    }

    SmcRecord info(std::string_view key) {
        SmcRecord record;
        record.key = fourCharCode(key);
        record.data8 = static_cast<std::uint8_t>(SmcCommand::keyInfo);
        return send(record);
    }

    SmcRecord read(std::string_view key) {
        SmcRecord record = info(key);
        if (record.result != 0) {
            return record;
        }
        record.data8 = static_cast<std::uint8_t>(SmcCommand::readKey);
        return send(record);
    }

    SmcResult readResult(std::string_view key) { return static_cast<SmcResult>(read(key).result); }

    /// Of a `flt ` key; nothing when the read fails.
    std::optional<float> readFloat(std::string_view key) {
        const SmcRecord record = read(key);
        if (record.result != 0) {
            return std::nullopt;
        }
        return std::bit_cast<float>(littleEndian(record));
    }

    /// First byte of the value; nothing when the read fails.
    std::optional<int> readByte(std::string_view key) {
        const SmcRecord record = read(key);
        return record.result == 0 ? std::optional<int>(record.bytes[0]) : std::nullopt;
    }

    SmcResult writeFloat(std::string_view key, float value) {
        SmcRecord record = request(key);
        const auto bits = std::bit_cast<std::uint32_t>(value);
        for (std::size_t i = 0; i < 4; ++i) {
            record.bytes[i] = static_cast<std::uint8_t>(bits >> (8 * i));
        }
        return write(record);
    }

    SmcResult writeByte(std::string_view key, std::uint8_t value) {
        SmcRecord record = request(key);
        record.bytes[0] = value;
        return write(record);
    }

    /// Every key the SMC lists, by index.
    std::vector<std::string> list() {
        std::vector<std::string> names;
        for (std::uint32_t index = 0;; ++index) {
            SmcRecord record;
            record.data8 = static_cast<std::uint8_t>(SmcCommand::keyAtIndex);
            record.data32 = index;
            record = send(record);
            if (record.result != 0) {
                return names;
            }
            names.push_back(unpacked(record.key));
        }
    }

    static std::uint32_t littleEndian(const SmcRecord& record) {
        return static_cast<std::uint32_t>(record.bytes[0]) |
               static_cast<std::uint32_t>(record.bytes[1]) << 8U |
               static_cast<std::uint32_t>(record.bytes[2]) << 16U |
               static_cast<std::uint32_t>(record.bytes[3]) << 24U;
    }

    static std::string unpacked(std::uint32_t code) {
        return {static_cast<char>(code >> 24U), static_cast<char>(code >> 16U), static_cast<char>(code >> 8U),
                static_cast<char>(code)};
    }

private:
    SmcRecord request(std::string_view key) {
        SmcRecord record = info(key);
        record.key = fourCharCode(key);
        record.data8 = static_cast<std::uint8_t>(SmcCommand::writeKey);
        return record;
    }

    SmcResult write(const SmcRecord& record) { return static_cast<SmcResult>(send(record).result); }

    SmcConnection& connection_;
};

}  // namespace corvane
