#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <cstddef>
#include <optional>
#include <vector>

namespace corvane {

/// The form in which lists are kept in settings: a JSON array of objects, UTF-8. What is read may have been
/// written by anybody. Pure functions; any thread.
struct StoredList {
    using Data = std::vector<std::byte>;

    /// Beyond either of them a list is not ours: nobody chooses that much.
    static constexpr std::size_t largestData = 1024UL * 1024;
    static constexpr qsizetype mostEntries = 10'000;

    /// Without blanks. None for a list that would not be read again.
    [[nodiscard]] static std::optional<Data> write(const QJsonArray& entries);

    /// None for anything but an array of objects, and beyond the limits.
    [[nodiscard]] static std::optional<QList<QJsonObject>> read(const Data& data);

    /// What `decodeEntry` makes of each object, as an optional; empty when it makes none of any of them. A
    /// list of which one entry is damaged is not one that we wrote.
    template <typename Item, typename DecodeEntry>
    [[nodiscard]] static QList<Item> decode(const Data& data, DecodeEntry decodeEntry) {
        QList<Item> items;
        for (const QJsonObject& entry : read(data).value_or(QList<QJsonObject>())) {
            std::optional<Item> item = decodeEntry(entry);
            if (!item) {
                return {};
            }
            items.append(*std::move(item));
        }
        return items;
    }

    /// The text under `key`; none for anything else.
    [[nodiscard]] static std::optional<QString> text(const QJsonObject& entry, const QString& key);
};

}  // namespace corvane
