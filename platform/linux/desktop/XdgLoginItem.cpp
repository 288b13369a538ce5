#include "platform/linux/desktop/XdgLoginItem.h"

#include <optional>
#include <system_error>

#include <fmt/format.h>

#include "platform/ApplicationIdentifier.h"
#include "platform/linux/desktop/DesktopEntries.h"
#include "platform/posix/BoundedFile.h"

namespace corvane {

namespace {

/// In bytes; far more than a file of ours has.
constexpr std::size_t largestFile = 65'536;

/// A path as one quoted argument of an Exec entry. There are two layers: the argument's own quotes, and the
/// escapes that every value may have.
std::string quotedForExec(const std::string& path) {
    std::string quoted = "\"";
    for (const char character : path) {
        switch (character) {
            case '"':
            case '`':
            case '$':
                quoted.append("\\\\").push_back(character);
                break;
            case '\\':
                quoted.append("\\\\\\\\");
                break;
            case '%':
                quoted.append("%%");
                break;
            case '\n':
                quoted.append("\\n");
                break;
            case '\t':
                quoted.append("\\t");
                break;
            case '\r':
                quoted.append("\\r");
                break;
            default:
                quoted.push_back(character);
        }
    }
    return quoted.append("\"");
}

std::string textFor(const std::filesystem::path& executable) {
    return fmt::format(
        "[Desktop Entry]\n"
        "Type=Application\n"
        "Name=Corvane\n"
        "Icon={}\n"
        "Exec={}\n"
        "X-GNOME-Autostart-enabled=true\n",
        applicationIdentifier, quotedForExec(executable.string()));
}

}  // namespace

bool XdgLoginItem::isEnabled() const {
    const std::string text = readAtMost(file_.string(), largestFile);
    const DesktopEntries entries(text);
    return entries.plain("Type") == "Application" && !entries.isTrue("Hidden") &&
           entries.plain("X-GNOME-Autostart-enabled") != "false";
}

bool XdgLoginItem::setEnabled(bool on) {
    if (on == isEnabled() && (!on || startsExecutable())) {
        return true;
    }
    const std::optional<std::string> error = on ? write() : remove();
    if (error) {
        log_.write(fmt::format("Corvane login-item toggle failed: {}", *error));
    }
    return !error;
}

/// Not so when the application has been moved, or installed anew somewhere else.
bool XdgLoginItem::startsExecutable() const {
    const std::string text = readAtMost(file_.string(), largestFile);
    const std::string wanted = textFor(executable_);
    return DesktopEntries(text).plain("Exec") == DesktopEntries(wanted).plain("Exec");
}

std::optional<std::string> XdgLoginItem::write() {
    if (file_.empty() || executable_.empty()) {
        return file_.empty() ? "the environment names no home folder" : "the executable is not known";
    }
    std::error_code error;
    std::filesystem::create_directories(file_.parent_path(), error);
    const auto failure =
        error ? std::optional(error.message()) : files_.writeAtomically(file_, textFor(executable_));
    return failure ? std::optional(fmt::format("{}: {}", file_.string(), *failure)) : std::nullopt;
}

std::optional<std::string> XdgLoginItem::remove() {
    files_.remove(file_);
    return isEnabled() ? std::optional(fmt::format("{} cannot be removed", file_.string())) : std::nullopt;
}

std::filesystem::path autostartFile(const EnvironmentLookup& environment) {
    const auto absolute = [&](const char* name) {
        const char* const value = environment(name);
        return std::filesystem::path(value != nullptr && *value == '/' ? value : "");
    };
    std::filesystem::path folder = absolute("XDG_CONFIG_HOME");
    if (folder.empty()) {
        folder = absolute("HOME");
        folder = folder.empty() ? folder : folder / ".config";
    }
    return folder.empty() ? folder : folder / "autostart" / fmt::format("{}.desktop", applicationIdentifier);
}

}  // namespace corvane
