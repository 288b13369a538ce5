#pragma once

#include <cstdio>

#include "platform/Console.h"

namespace corvane {

/// The process's own standard output and standard error.
class StdioConsole final : public Console {
public:
    void print(std::string_view text) override { write(stdout, text); }
    void printError(std::string_view text) override { write(stderr, text); }

private:
    static void write(std::FILE* stream, std::string_view text) {
        std::fwrite(text.data(), 1, text.size(), stream);
        std::fflush(stream);
    }
};

}  // namespace corvane
