#include "platform/linux/desktop/DesktopFile.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/linux/desktop/DesktopEntries.h"

namespace corvane {

namespace {

/// Also with a version at their end.
constexpr std::array<std::string_view, 20> runners = {
    "ash", "bash", "bwrap", "dash", "env",    "fish", "flatpak", "gjs",  "java", "ksh",
    "lua", "mono", "node",  "perl", "python", "ruby", "sh",      "snap", "wine", "zsh"};

constexpr std::string_view wordBreaks = " \t\r\n";

/// Splits a command line as Exec's is written: words between blanks, or in double quotes. A backslash takes
/// the next character as it is.
std::vector<std::string> wordsOf(std::string_view command) {
    std::vector<std::string> words;
    bool isQuoted = false;
    bool isInWord = false;
    for (std::size_t at = 0; at < command.size(); ++at) {
        if (!isQuoted && wordBreaks.find(command[at]) != std::string_view::npos) {
            isInWord = false;
            continue;
        }
        if (!std::exchange(isInWord, true)) {
            words.emplace_back();
        }
        if (command[at] == '"') {
            isQuoted = !isQuoted;
            continue;
        }
        if (command[at] == '\\' && at + 1 < command.size()) {
            ++at;
        }
        words.back() += command[at];
    }
    return words;
}

/// What is replaced by files, addresses and the like when it is started.
bool isFieldCode(const std::string& word) {
    return word.size() == 2 && word.front() == '%';
}

/// Past `env` and what it sets.
std::vector<std::string>::const_iterator programIn(const std::vector<std::string>& words) {
    const bool hasEnvironment = !words.empty() && fileNameOf(words.front()) == "env";
    return std::find_if(words.begin() + (hasEnvironment ? 1 : 0), words.end(), [&](const std::string& word) {
        return !hasEnvironment || (word.find('=') == std::string::npos && !word.starts_with('-'));
    });
}

void addProgram(DesktopFile& file, std::string_view path) {
    const std::string program(fileNameOf(path));
    if (!program.empty() && !runsAllSorts(program) &&
        std::ranges::find(file.programs, program) == file.programs.end()) {
        file.programs.push_back(program);
    }
}

void readCommand(DesktopFile& file, std::string_view command) {
    const std::vector<std::string> words = wordsOf(command);
    const auto program = programIn(words);
    if (program == words.end()) {
        return;
    }
    addProgram(file, *program);
    file.argumentCount = static_cast<int>(
        std::count_if(program + 1, words.end(), [](const auto& word) { return !isFieldCode(word); }));
}

/// Whether a desktop's menus have it.
bool isShownIn(const DesktopEntries& entries, const std::vector<std::string>& desktops) {
    const auto names = [&](const char* key) {
        const std::vector<std::string> listed = entries.list(key);
        return std::ranges::any_of(desktops, [&](const std::string& desktop) {
            return std::ranges::find(listed, desktop) != listed.end();
        });
    };
    return desktops.empty() || (entries.has("OnlyShowIn") ? names("OnlyShowIn") : !names("NotShowIn"));
}

}  // namespace

std::string_view fileNameOf(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

bool runsAllSorts(std::string_view program) {
    const std::size_t end = program.find_last_not_of("0123456789.");
    return std::ranges::find(runners, program.substr(0, end == std::string_view::npos ? 0 : end + 1)) !=
           runners.end();
}

std::optional<DesktopFile> readDesktopFile(std::string_view text, const DesktopViewer& viewer) {
    const DesktopEntries entries(text);
    DesktopFile file;
    file.isHidden = entries.isTrue("Hidden");
    file.isOutOfMenus = entries.isTrue("NoDisplay") || !isShownIn(entries, viewer.desktops);
    if (entries.plain("Type") != "Application" && !file.isHidden) {
        return std::nullopt;
    }
    file.name = entries.localised("Name", viewer.languages);
    file.iconName = entries.localised("Icon", viewer.languages);
    readCommand(file, entries.plain("Exec"));
    addProgram(file, entries.plain("TryExec"));
    return file;
}

}  // namespace corvane
