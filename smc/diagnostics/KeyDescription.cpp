#include "smc/diagnostics/KeyDescription.h"

#include <array>
#include <cstdint>
#include <span>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "platform/SmcKeyTable.h"
#include "smc/csmc.h"
#include "smc/diagnostics/ValueDecoding.h"

namespace corvane {

std::string describeKey(const char* key) {
    const std::string name = printable(key);
    std::uint32_t size = 0;
    std::uint32_t type = 0;
    std::uint8_t attributes = 0;
    if (const std::int32_t code = csmc_key_info(key, &size, &type, &attributes); code != 0) {
        return fmt::format("{}: no info (rc={})", name, code);
    }

    std::array<std::uint8_t, csmcMaxValueSize> buffer = {};
    std::uint32_t length = 0;
    const std::int32_t code = csmc_read_raw(key, buffer.data(), csmcMaxValueSize, &length);
    const std::span<const std::uint8_t> bytes = std::span(buffer).first(length);
    const std::string value =
        code == 0 ? decodeValue(type, attributes, bytes) : fmt::format("not readable (rc={})", code);
    return fmt::format("{}: size={} type={} attrs=0x{:02x}  bytes=[{:02x}]  {}", name, size,
                       fourCharText(type), attributes, fmt::join(bytes, " "), value);
}

}  // namespace corvane
