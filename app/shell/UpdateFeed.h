#pragma once

#include <QString>
#include <QUrl>
#include <optional>
#include <string>

namespace corvane {

/// What the maker's feed offers. Texts are as the network says them.
struct UpdateFeed {
    QString version;
    /// Of any scheme; empty for none.
    QUrl url;
    /// Empty for none.
    QString notes;

    /// None for anything but a JSON object (UTF-8) that names a version. A url or notes that are none count
    /// as absent.
    [[nodiscard]] static std::optional<UpdateFeed> parse(const std::string& body);

    bool operator==(const UpdateFeed&) const = default;
};

}  // namespace corvane
