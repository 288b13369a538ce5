#include "entry/Role.h"

namespace corvane {

namespace {

/// The flag itself, a key and a value.
constexpr std::size_t fewestSmcWriteArguments = 3;

}  // namespace

Role roleFor(std::span<const std::string> arguments) {
    if (arguments.empty()) {
        return Role::application;
    }
    const std::string& first = arguments.front();
    if (first == "--daemon") {
        return Role::daemon;
    }
    if (first == "--smc-write" && arguments.size() >= fewestSmcWriteArguments) {
        return Role::smcWrite;
    }
    if (first == "--temps") {
        return Role::temps;
    }
    if (first == "--diag") {
        return Role::diag;
    }
    if (first == "--dumpkeys") {
        return Role::dumpKeys;
    }
    return Role::application;
}

}  // namespace corvane
