#include "app/installer/AppleScriptSource.h"

#include <fmt/format.h>

namespace corvane {

namespace {

std::string literal(std::string_view text) {
    std::string quoted = "\"";
    for (const char character : text) {
        if (character == '\\' || character == '"') {
            quoted += '\\';
        }
        quoted += character;
    }
    quoted += '"';
    return quoted;
}

}  // namespace

std::string appleScriptSource(std::string_view shellScript, std::string_view prompt) {
    return fmt::format("do shell script {} with prompt {} with administrator privileges",
                       literal(shellScript), literal(prompt));
}

}  // namespace corvane
