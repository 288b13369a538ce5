#pragma once

#include <QJsonObject>
#include <QString>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Log.h"
#include "platform/UserDefaults.h"
#include "platform/linux/desktop/EnvironmentLookup.h"
#include "platform/linux/desktop/JsonSettingsFile.h"

namespace corvane {

/// The user's settings in one JSON file (docs/settings.md has its form), read when this is made and written
/// as a whole by each change.
///
/// Nothing in the file is lost: what no setting is written as stays in it. A damaged file is renamed, and one
/// that can be neither read nor renamed is never touched; settings then hold until the process ends. Each of
/// these is one line in the log. What others write to the file meanwhile is taken over when the next setting
/// is set or removed here, which goes on top even if nothing changes for this process.
///
/// A real that is not finite, a text or key that is not UTF-8, and what would make the file larger than
/// `JsonSettingsFile::maxSize` are refused with a line in the log: the former value stays.
class JsonUserDefaults final : public UserDefaults {
public:
    /// `log` outlives this.
    JsonUserDefaults(std::filesystem::path path, Log& log);

    [[nodiscard]] std::optional<DefaultsValue> value(std::string_view key) const override;
    void set(std::string_view key, DefaultsValue value) override;
    void remove(std::string_view key) override;
    /// The file's folder goes as well, unless somebody else has something in it; so it goes even where the
    /// file must not be touched otherwise.
    void removeAll() override;

private:
    /// Reads the file; what is not in it yet goes on top.
    void load();
    void change(const QString& key, const QJsonValue& value);
    void write(bool wasFailing);
    void setAside(const std::string& reason);
    void leaveAlone(const std::string& why);
    void refuse(std::string_view key, std::string_view why);

    std::filesystem::path path_;
    Log& log_;
    /// None once the file must not be touched.
    std::optional<JsonSettingsFile> file_;
    QJsonObject values_;
    /// Changes that are not in the file yet; undefined for what was removed.
    std::map<QString, QJsonValue> unwritten_;
};

/// Where a user's settings are kept: in the folder for configuration, as `xdgFolder` finds it.
[[nodiscard]] std::filesystem::path settingsPath(const EnvironmentLookup& environment);

}  // namespace corvane
