#include "platform/SmcKeyTable.h"

#include <algorithm>
#include <optional>

namespace corvane {

namespace {

std::optional<std::size_t> indexOf(std::span<const SmcKey> keys, std::uint32_t name) {
    const auto match =
        std::lower_bound(keys.begin(), keys.end(), name,
                         [](const SmcKey& key, std::uint32_t wanted) { return key.name < wanted; });
    if (match == keys.end() || match->name != name) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(match - keys.begin());
}

SmcResult answerKeyAtIndex(const SmcKeyTable& table, SmcRecord& record) {
    const std::span<const SmcKey> keys = table.keys();
    if (record.data32 >= keys.size()) {
        return SmcResult::indexOutOfRange;
    }
    record.key = keys[record.data32].name;
    return SmcResult::success;
}

void describe(const SmcKey& key, SmcRecord& record) {
    record.keyInfo.dataSize = key.size;
    record.keyInfo.dataType = key.type;
    record.keyInfo.dataAttributes = key.attributes;
}

SmcResult answerRead(SmcKeyTable& table, std::size_t index, SmcRecord& record) {
    const SmcKey& key = table.keys()[index];
    if ((key.attributes & SmcAttribute::readable) == 0) {
        return SmcResult::notReadable;
    }
    if (record.keyInfo.dataSize != key.size) {
        return SmcResult::sizeMismatch;
    }
    return table.read(index, std::span(record.bytes).first(key.size));
}

SmcResult answerWrite(SmcKeyTable& table, std::size_t index, const SmcRecord& record) {
    const SmcKey& key = table.keys()[index];
    if ((key.attributes & SmcAttribute::writable) == 0) {
        return SmcResult::notWritable;
    }
    if (record.keyInfo.dataSize != key.size) {
        return SmcResult::sizeMismatch;
    }
    return table.write(index, std::span(record.bytes).first(key.size));
}

SmcResult answer(SmcKeyTable& table, SmcRecord& record) {
    const auto command = static_cast<SmcCommand>(record.data8);
    if (command == SmcCommand::keyAtIndex) {
        return answerKeyAtIndex(table, record);
    }
    const std::optional<std::size_t> index = indexOf(table.keys(), record.key);
    if (!index) {
        return SmcResult::keyNotFound;
    }
    switch (command) {
        case SmcCommand::keyInfo:
            describe(table.keys()[*index], record);
            return SmcResult::success;
        case SmcCommand::readKey:
            return answerRead(table, *index, record);
        case SmcCommand::writeKey:
            return answerWrite(table, *index, record);
        case SmcCommand::keyAtIndex:
            break;
    }
    return SmcResult::badCommand;
}

}  // namespace

void answerFromTable(SmcKeyTable& table, SmcRecord& record) {
    record.result = static_cast<std::uint8_t>(answer(table, record));
}

}  // namespace corvane
