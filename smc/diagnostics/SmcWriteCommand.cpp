#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/SmcKeyTable.h"
#include "smc/SmcSession.h"
#include "smc/csmc.h"
#include "smc/diagnostics/PrintLine.h"
#include "smc/diagnostics/ValueDecoding.h"
#include "smc/diagnostics/diagnostics.h"

namespace corvane {

namespace {

constexpr int cannotOpenStatus = 2;
constexpr std::size_t keyLength = 4;
constexpr std::uint32_t fpe2Type = fourCharCode("fpe2");

/// The whole text as a decimal number within the type's range. No blanks, no "+"; "-" for signed types only.
template <typename Integer>
std::optional<Integer> parseDecimal(std::string_view text) {
    Integer value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stop == end ? std::optional(value) : std::nullopt;
}

std::optional<std::int32_t> parseRpm(std::string_view text) {
    const bool hasPlus = text.starts_with('+') && !text.starts_with("+-");
    return parseDecimal<std::int32_t>(hasPlus ? text.substr(1) : text);
}

bool isKey(std::string_view text) {
    const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    return text.size() == keyLength && std::ranges::all_of(text, isAscii);
}

template <typename Value>
bool reportWrite(Console& console, std::string_view key, Value value, std::int32_t code) {
    if (code != 0) {
        printErrorLine(console, "write {}={} failed: rc={}", key, value, code);
    }
    return code == 0;
}

bool writeU8(Console& console, const std::string& key, std::string_view text) {
    const std::optional<std::uint8_t> value = parseDecimal<std::uint8_t>(text);
    if (!value) {
        printErrorLine(console, "bad u8 value: {}", text);
        return false;
    }
    return reportWrite(console, key, *value, csmc_write_u8(key.c_str(), *value));
}

/// A key of another type takes the bytes as well. Nothing but 0 means the same in all types.
void noteOtherType(Console& console, const std::string& key, std::int32_t rpm) {
    std::uint32_t type = 0;
    if (rpm > 0 && csmc_key_info(key.c_str(), nullptr, &type, nullptr) == 0 && type != fpe2Type) {
        printLine(console, "note: {} is of type \"{}\" and takes {}, written as fpe2, for another number",
                  key, fourCharText(type), rpm);
    }
}

bool writeRpm(Console& console, const std::string& key, std::string_view text) {
    const std::optional<std::int32_t> value = parseRpm(text);
    if (!value) {
        printErrorLine(console, "bad rpm value: {}", text);
        return false;
    }
    if (!reportWrite(console, key, *value, csmc_write_fpe2(key.c_str(), *value))) {
        return false;
    }
    noteOtherType(console, key, *value);
    return true;
}

/// One pair. False when it failed, which has been reported then.
bool writePair(Console& console, const std::string& specification, const std::string& value) {
    const std::size_t colon = specification.find(':');
    const std::string key = specification.substr(0, colon);
    if (!isKey(key)) {
        printErrorLine(console, "bad key: {}", key);
        return false;
    }
    const bool isByte = colon != std::string::npos && specification.substr(colon + 1) == "u8";
    return isByte ? writeU8(console, key, value) : writeRpm(console, key, value);
}

}  // namespace

int runSmcWrite(CommandPlatform& platform, std::span<const std::string> arguments) {
    const SmcSession session(platform.makeSmcConnection());
    if (const std::int32_t code = csmc_open(); code != 0) {
        printErrorLine(platform.console(), "csmc_open failed: {}", code);
        return cannotOpenStatus;
    }
    bool allWritten = true;
    for (std::size_t i = 1; i + 1 < arguments.size(); i += 2) {
        allWritten = writePair(platform.console(), arguments[i], arguments[i + 1]) && allWritten;
    }
    return allWritten ? 0 : 1;
}

}  // namespace corvane
