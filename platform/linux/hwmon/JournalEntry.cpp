#include "platform/linux/hwmon/JournalEntry.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include <fmt/format.h>

namespace corvane {

namespace {

constexpr std::string_view firstField = "fan";
constexpr std::string_view lastField = "end";
/// "fan", owner, device, chip, channel, at least one value, "end".
constexpr std::size_t minFields = 7;
constexpr std::size_t maxFields = 16;

constexpr std::string_view textOf(FanOwner owner) {
    return owner == FanOwner::helper ? "helper" : "diagnostics";
}

std::optional<FanOwner> parseOwner(std::string_view text) {
    for (const FanOwner owner : {FanOwner::helper, FanOwner::diagnostics}) {
        if (text == textOf(owner)) {
            return owner;
        }
    }
    return std::nullopt;
}

template <typename Integer>
std::optional<Integer> parseInteger(std::string_view text) {
    Integer value = 0;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), value);
    return error == std::errc() && end == text.end() ? std::optional(value) : std::nullopt;
}

std::optional<FanValue> parseValue(std::string_view text) {
    const std::size_t equals = text.find('=');
    if (equals == 0 || equals == std::string_view::npos) {
        return std::nullopt;
    }
    const auto value = parseInteger<std::int64_t>(text.substr(equals + 1));
    return value ? std::optional(FanValue{std::string(text.substr(0, equals)), *value}) : std::nullopt;
}

std::vector<std::string_view> split(std::string_view line) {
    std::vector<std::string_view> fields;
    std::size_t start = 0;
    while (fields.size() < maxFields) {
        const std::size_t tab = line.find('\t', start);
        fields.push_back(line.substr(start, tab - start));
        if (tab == std::string_view::npos) {
            break;
        }
        start = tab + 1;
    }
    return fields;
}

}  // namespace

std::string formatJournalEntry(const JournalEntry& entry) {
    std::string line = fmt::format("{}\t{}\t{}\t{}\t{}", firstField, textOf(entry.owner),
                                   entry.fan.chip.device, entry.fan.chip.name, entry.fan.channel);
    for (const FanValue& original : entry.originals) {
        line += fmt::format("\t{}={}", original.name, original.value);
    }
    return line + "\t" + std::string(lastField);
}

std::optional<JournalEntry> parseJournalEntry(std::string_view line) {
    const std::vector<std::string_view> fields = split(line);
    if (fields.size() < minFields || fields.front() != firstField || fields.back() != lastField) {
        return std::nullopt;
    }
    const std::optional<FanOwner> owner = parseOwner(fields[1]);
    const std::optional<int> channel = parseInteger<int>(fields[4]);
    if (!owner || !channel || fields[2].empty() || fields[3].empty()) {
        return std::nullopt;
    }
    JournalEntry entry{{{std::string(fields[2]), std::string(fields[3])}, *channel}, *owner, {}};
    for (std::size_t i = 5; i + 1 < fields.size(); ++i) {
        std::optional<FanValue> value = parseValue(fields[i]);
        if (!value) {
            return std::nullopt;
        }
        entry.originals.push_back(std::move(*value));
    }
    return entry;
}

}  // namespace corvane
