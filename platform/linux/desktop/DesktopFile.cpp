#include "platform/linux/desktop/DesktopFile.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

namespace corvane {

namespace {

/// Also with a version at their end.
constexpr std::array<std::string_view, 20> runners = {
    "ash", "bash", "bwrap", "dash", "env",    "fish", "flatpak", "gjs",  "java", "ksh",
    "lua", "mono", "node",  "perl", "python", "ruby", "sh",      "snap", "wine", "zsh"};

/// By key; of the group that says what the file is about.
using Entries = std::map<std::string_view, std::string_view>;

constexpr std::string_view blanks = " \t\r\n";

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

std::string_view takeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    return trimmed(line);
}

/// Of an entry that comes twice the first counts.
Entries entriesOf(std::string_view text) {
    constexpr std::array<std::string_view, 5> wanted = {"Type", "Exec", "TryExec", "Hidden", "NoDisplay"};
    Entries entries;
    bool isInGroup = false;
    while (!text.empty()) {
        const std::string_view line = takeLine(text);
        const std::size_t equals = line.find('=');
        if (line.starts_with('[')) {
            isInGroup = line == "[Desktop Entry]";
        } else if (isInGroup && equals != std::string_view::npos) {
            const std::string_view key = trimmed(line.substr(0, equals));
            if (std::ranges::find(wanted, key) != wanted.end()) {
                entries.emplace(key, trimmed(line.substr(equals + 1)));
            }
        }
    }
    return entries;
}

/// A value with the escapes that every value may have resolved.
std::string plainValue(std::string_view value) {
    constexpr std::string_view escapes = "sntr\\";
    constexpr std::string_view characters = " \n\t\r\\";
    std::string plain;
    for (std::size_t at = 0; at < value.size(); ++at) {
        const std::size_t escape =
            value[at] == '\\' && at + 1 < value.size() ? escapes.find(value[at + 1]) : std::string::npos;
        if (escape == std::string::npos) {
            plain += value[at];
        } else {
            plain += characters[escape];
            ++at;
        }
    }
    return plain;
}

/// Splits a command line as Exec's is written: words between blanks, or in double quotes. A backslash takes
/// the next character as it is.
std::vector<std::string> wordsOf(std::string_view command) {
    std::vector<std::string> words;
    bool isQuoted = false;
    bool isInWord = false;
    for (std::size_t at = 0; at < command.size(); ++at) {
        if (!isQuoted && blanks.find(command[at]) != std::string_view::npos) {
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

}  // namespace

std::string_view fileNameOf(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

bool runsAllSorts(std::string_view program) {
    const std::size_t end = program.find_last_not_of("0123456789.");
    return std::ranges::find(runners, program.substr(0, end == std::string_view::npos ? 0 : end + 1)) !=
           runners.end();
}

std::optional<DesktopFile> readDesktopFile(std::string_view text) {
    Entries entries = entriesOf(text);
    DesktopFile file;
    file.isHidden = entries["Hidden"] == "true";
    file.isOutOfMenus = entries["NoDisplay"] == "true";
    if (entries["Type"] != "Application" && !file.isHidden) {
        return std::nullopt;
    }
    readCommand(file, plainValue(entries["Exec"]));
    addProgram(file, plainValue(entries["TryExec"]));
    return file;
}

}  // namespace corvane
