#include "platform/linux/desktop/XdgLoginItem.h"

#include <string_view>
#include <system_error>

#include <fmt/format.h>

#include "platform/ApplicationIdentifier.h"
#include "platform/linux/desktop/DesktopEntries.h"
#include "platform/linux/desktop/XdgFolder.h"
#include "platform/posix/BoundedFile.h"

namespace corvane {

namespace {

/// In bytes; far more than a file of ours has.
constexpr std::size_t largestFile = 65'536;

/// Text as an entry has it.
std::string escaped(std::string_view text) {
    std::string value;
    for (const char character : text) {
        switch (character) {
            case '\\':
                value.append("\\\\");
                break;
            case '\n':
                value.append("\\n");
                break;
            case '\t':
                value.append("\\t");
                break;
            case '\r':
                value.append("\\r");
                break;
            default:
                value.push_back(character);
        }
    }
    return value;
}

/// A path as one quoted argument of a command line; to be escaped as every entry's text.
std::string quoted(const std::string& path) {
    std::string argument = "\"";
    for (const char character : path) {
        if (std::string_view("\"`$\\").find(character) != std::string_view::npos) {
            argument.push_back('\\');
        } else if (character == '%') {
            argument.push_back('%');
        }
        argument.push_back(character);
    }
    return argument.append("\"");
}

/// Desktops start nothing, and complain of nothing, once the program is gone.
std::string textFor(const std::filesystem::path& executable) {
    return fmt::format(
        "[Desktop Entry]\n"
        "Type=Application\n"
        "Name=Corvane\n"
        "Icon={}\n"
        "TryExec={}\n"
        "Exec={}\n"
        "X-GNOME-Autostart-enabled=true\n",
        applicationIdentifier, escaped(executable.string()), escaped(quoted(executable.string())));
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
    if (executable_.empty()) {
        return "the executable is not known";
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
    return xdgFolder(environment, "XDG_CONFIG_HOME", ".config") / "autostart" /
           fmt::format("{}.desktop", applicationIdentifier);
}

}  // namespace corvane
