#include "tests/platform/macos/fakes/Foundation/FakeSystemLog.h"

#include <algorithm>
#include <cstdarg>

#import <Foundation/Foundation.h>

#include "tests/platform/macos/fakes/Foundation/StringText.h"

namespace corvane {

std::size_t FakeSystemLog::count(const std::string& text) const {
    return static_cast<std::size_t>(std::ranges::count_if(
        lines_, [&](const std::string& line) { return line.find(text) != std::string::npos; }));
}

}  // namespace corvane

void NSLog(NSString* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::string line = corvane::objc::formatted(format, arguments);
    va_end(arguments);
    if (corvane::FakeSystemLog* log = corvane::Current<corvane::FakeSystemLog>::get()) {
        log->add(std::move(line));
    }
}
