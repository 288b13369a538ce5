#pragma once

#include <utility>

#include <fmt/format.h>

#include "platform/Console.h"

namespace corvane {

/// Prints what `format` makes of the arguments, and a line end, to standard output.
template <typename... Args>
void printLine(Console& console, fmt::format_string<Args...> format, Args&&... args) {
    console.print(fmt::format(format, std::forward<Args>(args)...) + '\n');
}

/// The same to standard error.
template <typename... Args>
void printErrorLine(Console& console, fmt::format_string<Args...> format, Args&&... args) {
    console.printError(fmt::format(format, std::forward<Args>(args)...) + '\n');
}

}  // namespace corvane
