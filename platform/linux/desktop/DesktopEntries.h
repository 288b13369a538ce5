#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// The entries of a desktop file's text that say what it is about: those of its group [Desktop Entry]. Any
/// text can be read; what is not as it should be has no entries.
class DesktopEntries {
public:
    /// `text` outlives the entries. Of an entry that comes twice the first counts.
    explicit DesktopEntries(std::string_view text);

    /// A value with its escapes resolved; empty when there is none.
    [[nodiscard]] std::string plain(std::string_view key) const;

    /// The value in the first of the languages, tags such as "de-CH", that has one, else the one for all.
    [[nodiscard]] std::string localised(std::string_view key,
                                        const std::vector<std::string>& languages) const;

    [[nodiscard]] bool isTrue(std::string_view key) const;

    [[nodiscard]] bool has(std::string_view key) const { return entries_.contains(key); }

    /// The parts of a value with semicolons between them; empty when there is none.
    [[nodiscard]] std::vector<std::string> list(std::string_view key) const;

private:
    /// By key; as the text has them.
    std::map<std::string_view, std::string_view> entries_;
};

}  // namespace corvane
