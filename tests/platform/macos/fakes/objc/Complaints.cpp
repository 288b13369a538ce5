#include "tests/platform/macos/fakes/objc/Complaints.h"

#include <cstdio>
#include <cstdlib>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace corvane::objc {

void complain(const std::string& text) {
    ADD_FAILURE() << text;
}

void fatal(const std::string& text) {
    fmt::print(stderr, "objc: {}\n", text);
    std::abort();
}

}  // namespace corvane::objc
