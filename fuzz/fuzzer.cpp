#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include <fmt/format.h>

#include "fuzz/faultOf.h"

/// What libFuzzer calls with data of its invention.
// NOLINTNEXTLINE(readability-identifier-naming): libFuzzer's name
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string fault = corvane::faultOf(std::string(data, data + size));
    if (!fault.empty()) {
        fmt::print(stderr, "{}\n", fault);
        std::abort();
    }
    return 0;
}
