#pragma once

#include <string>

/// How the fakes fail a test. From any thread.

namespace corvane::objc {

/// The running test fails with this text. For what a test can go on after.
void complain(const std::string& text);

/// Ends the program with this text on its standard error. For what nothing can go on after.
[[noreturn]] void fatal(const std::string& text);

}  // namespace corvane::objc
