#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace corvane {

/// The parameter record of the SMC's user client, sent and answered whole. Integers are little-endian host
/// order; `bytes` is in the SMC's own order. Fields without a comment are unused and 0.
struct SmcRecord {
    /// Four ASCII characters, the first in the most significant byte.
    std::uint32_t key = 0;
    struct {
        std::uint8_t major = 0;
        std::uint8_t minor = 0;
        std::uint8_t build = 0;
        std::uint8_t reserved = 0;
        std::uint16_t release = 0;
    } vers;
    std::uint16_t padding10 = 0;
    struct {
        std::uint16_t version = 0;
        std::uint16_t length = 0;
        std::uint32_t cpuPLimit = 0;
        std::uint32_t gpuPLimit = 0;
        std::uint32_t memPLimit = 0;
    } pLimit;
    struct {
        /// Size of the key's value in bytes.
        std::uint32_t dataSize = 0;
        /// Four characters, packed like a key.
        std::uint32_t dataType = 0;
        std::uint8_t dataAttributes = 0;
        std::array<std::uint8_t, 3> padding = {};
    } keyInfo;
    /// The SMC's answer, one of `SmcResult`.
    std::uint8_t result = 0;
    std::uint8_t status = 0;
    /// Command code, one of `SmcCommand`.
    std::uint8_t data8 = 0;
    std::uint8_t padding43 = 0;
    /// Argument of the command: the index for `SmcCommand::keyAtIndex`.
    std::uint32_t data32 = 0;
    std::array<std::uint8_t, 32> bytes = {};
};

static_assert(sizeof(SmcRecord) == 80);
static_assert(offsetof(SmcRecord, key) == 0);
static_assert(offsetof(SmcRecord, vers.major) == 4);
static_assert(offsetof(SmcRecord, vers.minor) == 5);
static_assert(offsetof(SmcRecord, vers.build) == 6);
static_assert(offsetof(SmcRecord, vers.reserved) == 7);
static_assert(offsetof(SmcRecord, vers.release) == 8);
static_assert(offsetof(SmcRecord, padding10) == 10);
static_assert(offsetof(SmcRecord, pLimit.version) == 12);
static_assert(offsetof(SmcRecord, pLimit.length) == 14);
static_assert(offsetof(SmcRecord, pLimit.cpuPLimit) == 16);
static_assert(offsetof(SmcRecord, pLimit.gpuPLimit) == 20);
static_assert(offsetof(SmcRecord, pLimit.memPLimit) == 24);
static_assert(offsetof(SmcRecord, keyInfo.dataSize) == 28);
static_assert(offsetof(SmcRecord, keyInfo.dataType) == 32);
static_assert(offsetof(SmcRecord, keyInfo.dataAttributes) == 36);
static_assert(offsetof(SmcRecord, keyInfo.padding) == 37);
static_assert(offsetof(SmcRecord, result) == 40);
static_assert(offsetof(SmcRecord, status) == 41);
static_assert(offsetof(SmcRecord, data8) == 42);
static_assert(offsetof(SmcRecord, padding43) == 43);
static_assert(offsetof(SmcRecord, data32) == 44);
static_assert(offsetof(SmcRecord, bytes) == 48);

/// Command codes of `SmcRecord::data8`.
enum class SmcCommand : std::uint8_t { readKey = 5, writeKey = 6, keyAtIndex = 8, keyInfo = 9 };

/// Result codes of `SmcRecord::result`, as real machines answer them.
enum class SmcResult : std::uint8_t {
    success = 0x00,
    badCommand = 0x82,
    keyNotFound = 0x84,
    notReadable = 0x85,
    notWritable = 0x86,
    sizeMismatch = 0x87,
    badArgument = 0x89,
    indexOutOfRange = 0xB8,
};

/// The one road to the hardware: exchanges records with a System Management Controller, or with whatever
/// stands in for one.
///
/// Not thread-safe; one thread at a time. Never logs, never throws. `exchange` does not allocate.
class SmcConnection {
public:
    /// `open` answers this when there is no controller to talk to.
    static constexpr std::int32_t noService = -1;

    SmcConnection() = default;
    SmcConnection(const SmcConnection&) = delete;
    SmcConnection& operator=(const SmcConnection&) = delete;
    virtual ~SmcConnection() = default;

    /// 0 when the controller can be talked to from now on, `noService`, or the platform's own code. Called
    /// until it has succeeded once.
    virtual std::int32_t open() = 0;

    /// Sends `record` and overwrites it with the answer. Returns 0 when the record came back, whatever its
    /// `result` says, otherwise the platform's own code; then `record` is unspecified.
    virtual std::int32_t exchange(SmcRecord& record) = 0;
};

}  // namespace corvane
