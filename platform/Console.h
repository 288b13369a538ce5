#pragma once

#include <string_view>

namespace corvane {

/// Standard output and standard error of a command. Texts are written as they are, without a line end of
/// their own, and are visible at once.
class Console {
public:
    Console() = default;
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;
    virtual ~Console() = default;

    virtual void print(std::string_view text) = 0;
    virtual void printError(std::string_view text) = 0;
};

}  // namespace corvane
