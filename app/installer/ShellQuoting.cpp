#include "app/installer/ShellQuoting.h"

namespace corvane {

std::string shellQuoted(const std::filesystem::path& path) {
    std::string quoted = "'";
    for (const char character : path.string()) {
        if (character == '\'') {
            quoted += R"('"'"')";
        } else {
            quoted += character;
        }
    }
    quoted += '\'';
    return quoted;
}

}  // namespace corvane
