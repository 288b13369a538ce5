#include "platform/linux/StatusCodec.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <vector>

#include <sdbus-c++/Error.h>

namespace corvane {

namespace {

using BusDictionaries = std::vector<BusDictionary>;

struct ToVariant {
    sdbus::Variant operator()(std::monostate) const { return {}; }

    sdbus::Variant operator()(const std::vector<StatusRecord>& records) const {
        BusDictionaries dictionaries;
        std::transform(records.begin(), records.end(), std::back_inserter(dictionaries), toBus);
        return dictionaries;
    }

    template <typename T>
    sdbus::Variant operator()(const T& value) const {
        return value;
    }
};

/// Reads values one by one, straight from the message, so that a sender who means harm costs no more memory
/// than the message that has arrived.
class StatusReader {
public:
    explicit StatusReader(sdbus::Message& message) : message_(message) {}

    StatusRecord readRecord() {
        spend(itemsLeft_, 1);
        spend(levelsLeft_, 1);
        StatusRecord record;
        enterArray("{sv}");
        while (message_.enterDictEntry("sv")) {
            spend(itemsLeft_, 1);
            const std::string key = readText();
            StatusValue value = readValue();
            if (!record.contains(key)) {
                record.set(key, std::move(value));
            }
            message_.exitDictEntry();
        }
        leaveArray();
        ++levelsLeft_;
        return record;
    }

private:
    StatusValue readValue() {
        std::string type;
        std::string contents;
        message_.peekType(type, contents);
        const auto read = readers().find(contents);
        if (read == readers().end()) {
            sdbus::Variant passedOver;
            message_ >> passedOver;
            return std::monostate{};
        }
        message_.enterVariant(contents);
        StatusValue value = (this->*read->second)();
        message_.exitVariant();
        return value;
    }

    using Reader = StatusValue (StatusReader::*)();
    /// By the signature of what they read.
    static const std::map<std::string, Reader>& readers() {
        static const std::map<std::string, Reader> all{{"b", &StatusReader::readPlain<bool>},
                                                       {"i", &StatusReader::readPlain<std::int32_t>},
                                                       {"d", &StatusReader::readPlain<double>},
                                                       {"s", &StatusReader::readTextValue},
                                                       {"aa{sv}", &StatusReader::readRecords}};
        return all;
    }

    template <typename T>
    StatusValue readPlain() {
        T value{};
        message_ >> value;
        return value;
    }

    StatusValue readTextValue() { return readText(); }

    StatusValue readRecords() {
        std::vector<StatusRecord> records;
        enterArray("a{sv}");
        while (hasMore()) {
            records.push_back(readRecord());
        }
        leaveArray();
        return records;
    }

    std::string readText() {
        // Stays in the message: nothing is copied before its length is known to be fine.
        char* text = nullptr;
        message_ >> text;
        const std::string_view view(text);
        spend(textLeft_, view.size());
        return std::string(view);
    }

    /// Whether the array that was entered goes on.
    bool hasMore() {
        std::string type;
        std::string contents;
        message_.peekType(type, contents);
        return type.front() != endOfContainer;
    }

    void enterArray(const std::string& ofType) {
        if (!message_.enterContainer(ofType)) {
            throw sdbus::Error(inconsistentMessage, "There is no status record.");
        }
    }

    void leaveArray() {
        // The mark that there was no further element.
        message_.clearFlags();
        message_.exitContainer();
    }

    static void spend(std::size_t& left, std::size_t amount) {
        if (amount > left) {
            throw sdbus::Error(limitsExceeded, "The status record is too large.");
        }
        left -= amount;
    }

    static constexpr char endOfContainer = '\0';
    static constexpr const char* inconsistentMessage = "org.freedesktop.DBus.Error.InconsistentMessage";
    static constexpr const char* limitsExceeded = "org.freedesktop.DBus.Error.LimitsExceeded";

    sdbus::Message& message_;
    std::size_t itemsLeft_ = 1024;
    std::size_t textLeft_ = 65536;
    std::size_t levelsLeft_ = 4;
};

}  // namespace

BusDictionary toBus(const StatusRecord& record) {
    BusDictionary dictionary;
    for (const auto& [key, value] : record.entries()) {
        if (!std::holds_alternative<std::monostate>(value)) {
            dictionary.emplace(key, std::visit(ToVariant{}, value));
        }
    }
    return dictionary;
}

StatusRecord fromBus(sdbus::Message& message) {
    return StatusReader(message).readRecord();
}

}  // namespace corvane
