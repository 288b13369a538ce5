#include "smc/csmc.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "platform/SmcConnection.h"

using corvane::SmcCommand;
using corvane::SmcConnection;
using corvane::SmcRecord;

namespace {

constexpr std::int32_t maxFpe2 = 16383;
constexpr std::uint32_t fltSize = 4;
constexpr std::uint32_t countSize = 4;

SmcConnection* connection = nullptr;
bool isOpen = false;

constexpr std::uint32_t codeOf(SmcCommand command) {
    return static_cast<std::uint32_t>(command);
}

/// A text of fewer than four characters is never read beyond its end.
std::uint32_t packed(const char* key) {
    std::uint32_t code = 0;
    for (int shift = 24; shift >= 0 && *key != '\0'; shift -= 8, ++key) {
        code |= static_cast<std::uint32_t>(static_cast<std::uint8_t>(*key)) << shift;
    }
    return code;
}

/// Exchanges on a connection that is open; the controller's own result counts as the exchange's.
std::int32_t exchange(SmcRecord& record) {
    const std::int32_t code = connection->exchange(record);
    return code != 0 ? code : record.result;
}

std::int32_t fetchInfo(std::uint32_t key, SmcRecord& record) {
    record = SmcRecord{};
    record.key = key;
    record.data8 = static_cast<std::uint8_t>(SmcCommand::keyInfo);
    return exchange(record);
}

void copyOut(const SmcRecord& record, std::uint32_t size, void* output, std::uint32_t* outputLength) {
    const std::uint32_t count = std::min({*outputLength, size, csmcMaxValueSize});
    std::memcpy(output, record.bytes.data(), count);
    *outputLength = count;
}

std::int32_t read(const char* key, void* output, std::uint32_t* length) {
    return smc_call(packed(key), codeOf(SmcCommand::readKey), nullptr, 0, output, length);
}

std::int32_t write(const char* key, const void* input, std::uint32_t length) {
    return smc_call(packed(key), codeOf(SmcCommand::writeKey), input, length, nullptr, nullptr);
}

void report(std::uint8_t* ok, bool succeeded) {
    if (ok != nullptr) {
        *ok = succeeded ? 1 : 0;
    }
}

}  // namespace

void csmc_use_connection(SmcConnection* newConnection) {
    connection = newConnection;
    isOpen = false;
}

std::int32_t csmc_open() {
    if (isOpen) {
        return 0;
    }
    if (connection == nullptr) {
        return SmcConnection::noService;
    }
    const std::int32_t code = connection->open();
    isOpen = code == 0;
    return code;
}

std::int32_t smc_call(std::uint32_t key, std::uint32_t command, const void* input, std::uint32_t inputLength,
                      void* output, std::uint32_t* outputLength) {
    if (const std::int32_t code = csmc_open(); code != 0) {
        return code;
    }
    SmcRecord record;
    if (const std::int32_t code = fetchInfo(key, record); code != 0) {
        return code;
    }
    const auto info = record.keyInfo;

    record = SmcRecord{};
    record.key = key;
    record.keyInfo.dataSize = info.dataSize;
    record.data8 = static_cast<std::uint8_t>(command);
    const bool isRead = command == codeOf(SmcCommand::readKey);
    if (isRead) {
        record.keyInfo.dataType = info.dataType;
    } else if (input != nullptr) {
        if (inputLength > csmcMaxValueSize) {
            std::abort();
        }
        std::memcpy(record.bytes.data(), input, inputLength);
    }

    const std::int32_t code = exchange(record);
    if (code == 0 && isRead && output != nullptr && outputLength != nullptr) {
        copyOut(record, info.dataSize, output, outputLength);
    }
    return code;
}

float csmc_read_flt(const char* key, std::uint8_t* ok) {
    float value = 0.0F;
    std::uint32_t length = fltSize;
    const bool succeeded = read(key, &value, &length) == 0 && length >= fltSize;
    report(ok, succeeded);
    return succeeded ? value : 0.0F;
}

std::int32_t csmc_write_flt(const char* key, float value) {
    return write(key, &value, fltSize);
}

std::uint8_t csmc_read_u8(const char* key, std::uint8_t* ok) {
    std::uint8_t value = 0;
    std::uint32_t length = 1;
    const bool succeeded = read(key, &value, &length) == 0 && length >= 1;
    report(ok, succeeded);
    return succeeded ? value : 0;
}

std::int32_t csmc_write_fpe2(const char* key, std::int32_t value) {
    const auto clamped = static_cast<std::uint32_t>(std::clamp(value, 0, maxFpe2));
    const std::uint8_t bytes[2] = {static_cast<std::uint8_t>(clamped >> 6),
                                   static_cast<std::uint8_t>(clamped * 4 & 0xFF)};
    return write(key, bytes, sizeof bytes);
}

std::int32_t csmc_write_u8(const char* key, std::uint32_t value) {
    const auto byte = static_cast<std::uint8_t>(value & 0xFF);
    return write(key, &byte, 1);
}

std::int32_t csmc_key_info(const char* key, std::uint32_t* size, std::uint32_t* type,
                           std::uint8_t* attributes) {
    if (const std::int32_t code = csmc_open(); code != 0) {
        return code;
    }
    SmcRecord record;
    if (const std::int32_t code = fetchInfo(packed(key), record); code != 0) {
        return code;
    }
    if (size != nullptr) {
        *size = record.keyInfo.dataSize;
    }
    if (type != nullptr) {
        *type = record.keyInfo.dataType;
    }
    if (attributes != nullptr) {
        *attributes = record.keyInfo.dataAttributes;
    }
    return 0;
}

std::int32_t csmc_read_raw(const char* key, void* buffer, std::uint32_t length, std::uint32_t* copied) {
    const std::int32_t code = read(key, buffer, &length);
    if (code == 0 && copied != nullptr) {
        *copied = length;
    }
    return code;
}

std::uint32_t csmc_key_count() {
    std::uint8_t bytes[countSize] = {};
    std::uint32_t length = countSize;
    if (read("#KEY", bytes, &length) != 0 || length < countSize) {
        return 0;
    }
    return static_cast<std::uint32_t>(bytes[0]) << 24 | static_cast<std::uint32_t>(bytes[1]) << 16 |
           static_cast<std::uint32_t>(bytes[2]) << 8 | bytes[3];
}

std::int32_t csmc_key_at_index(std::uint32_t index, char out[5]) {
    if (const std::int32_t code = csmc_open(); code != 0) {
        return code;
    }
    SmcRecord record;
    record.data8 = static_cast<std::uint8_t>(SmcCommand::keyAtIndex);
    record.data32 = index;
    if (const std::int32_t code = exchange(record); code != 0) {
        return code;
    }
    for (int i = 0; i < 4; ++i) {
        out[i] = static_cast<char>(record.key >> (24 - 8 * i) & 0xFF);
    }
    out[4] = '\0';
    return 0;
}
