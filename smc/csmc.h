#pragma once

#include <cstdint>

namespace corvane {
class SmcConnection;
}

/// The C-level layer over the System Management Controller: typed reads and writes of four-character keys.
///
/// Every function that exchanges opens the connection first if need be. Results are 32-bit codes: 0 success;
/// a non-zero code of the platform as it is; otherwise the controller's result byte; -1 when there is no
/// controller. Keys are C strings of which the first four characters count. Nothing is cached, allocated or
/// logged: a read or write costs two exchanges. One process-wide connection, one thread at a time.

/// Values are at most this many bytes.
inline constexpr std::uint32_t csmcMaxValueSize = 32;

/// The connection everything below uses, not open yet. Not owned; null means "no controller".
void csmc_use_connection(corvane::SmcConnection* connection);

std::int32_t csmc_open();

/// One command on one key: asks for the key's info, then sends `command` with the key's own size. A write
/// takes `input`, at most 32 bytes (more aborts the process), padded with zeros; a read fills `output` with
/// at most
/// `*outputLength` bytes and sets that to their number. Each pointer may be null.
std::int32_t smc_call(std::uint32_t key, std::uint32_t command, const void* input, std::uint32_t inputLength,
                      void* output, std::uint32_t* outputLength);

/// `flt `, host byte order. 0.0 and `*ok` = 0 unless at least four bytes came back. `ok` may be null.
float csmc_read_flt(const char* key, std::uint8_t* ok);
std::int32_t csmc_write_flt(const char* key, float value);

/// First byte of the value. 0 and `*ok` = 0 on failure. `ok` may be null.
std::uint8_t csmc_read_u8(const char* key, std::uint8_t* ok);

/// `fpe2`: unsigned with two fraction bits, big-endian. Clamped to 0...16383.
std::int32_t csmc_write_fpe2(const char* key, std::int32_t value);
std::int32_t csmc_write_u8(const char* key, std::uint32_t value);

/// The outs, each of which may be null, are written on success only.
std::int32_t csmc_key_info(const char* key, std::uint32_t* size, std::uint32_t* type,
                           std::uint8_t* attributes);

/// The value's bytes as they come, at most `length`; `*copied`, which may be null, is their number.
std::int32_t csmc_read_raw(const char* key, void* buffer, std::uint32_t length, std::uint32_t* copied);

/// Number of keys, 0 when it cannot be read.
std::uint32_t csmc_key_count();

/// The key's four characters and a NUL.
std::int32_t csmc_key_at_index(std::uint32_t index, char out[5]);
