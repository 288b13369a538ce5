#include "platform/linux/desktop/JsonUserDefaults.h"

#include <utility>
#include <variant>

#include <fmt/format.h>

#include "platform/ApplicationIdentifier.h"
#include "platform/linux/desktop/JsonValueCodec.h"
#include "platform/linux/desktop/XdgFolder.h"

namespace corvane {

namespace {

constexpr const char* untilTheEnd = "settings hold until Corvane ends";

QString toKey(std::string_view key) {
    return QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size()));
}

}  // namespace

JsonUserDefaults::JsonUserDefaults(std::filesystem::path path, Log& log)
    : path_(std::move(path)), log_(log), file_(path_) {
    load();
}

std::optional<DefaultsValue> JsonUserDefaults::value(std::string_view key) const {
    return fromJson(values_.value(toKey(key)));
}

void JsonUserDefaults::set(std::string_view key, DefaultsValue value) {
    const std::optional<QJsonValue> json = toJson(value);
    const QString name = toKey(key);
    if (!json || name.toStdString() != key) {
        refuse(key, "the new value is not finite, or not UTF-8");
        return;
    }
    QJsonObject changed = values_;
    changed.insert(name, *json);
    if (JsonSettingsFile::isTooLarge(changed)) {
        refuse(key, fmt::format("the settings would take more than {} bytes", JsonSettingsFile::maxSize));
        return;
    }
    change(name, *json);
}

void JsonUserDefaults::remove(std::string_view key) {
    change(toKey(key), QJsonValue::Undefined);
}

void JsonUserDefaults::removeAll() {
    JsonSettingsFile(path_).erase();
    // Without a file nothing is written again.
    file_.reset();
    values_ = {};
    unwritten_.clear();
}

void JsonUserDefaults::load() {
    auto contents = file_->read();
    if (auto* values = std::get_if<QJsonObject>(&contents)) {
        values_ = std::move(*values);
        for (const auto& [key, value] : unwritten_) {
            values_.insert(key, value);
        }
    } else if (const auto* damaged = std::get_if<JsonSettingsFile::Damaged>(&contents)) {
        setAside(damaged->reason);
    } else if (const auto* unreadable = std::get_if<JsonSettingsFile::Unreadable>(&contents)) {
        leaveAlone(fmt::format("cannot be read ({})", unreadable->reason));
    }
}

void JsonUserDefaults::change(const QString& key, const QJsonValue& value) {
    // Undefined is both what an absent key holds and what removes one.
    const bool isHeld = values_.value(key) == value;
    values_.insert(key, value);
    if (!file_) {
        return;
    }
    const bool wasFailing = !unwritten_.empty();
    const bool isChangedByOthers = file_->hasChanged();
    if (isHeld && !wasFailing && !isChangedByOthers) {
        return;
    }
    unwritten_.insert_or_assign(key, value);
    if (isChangedByOthers) {
        load();
    }
    if (file_) {
        write(wasFailing);
    }
}

void JsonUserDefaults::write(bool wasFailing) {
    const std::optional<std::string> failure = file_->write(values_);
    if (!failure) {
        unwritten_.clear();
    } else if (!wasFailing) {
        log_.write(fmt::format("Corvane: settings cannot be written to {} ({}); until they can, {}",
                               file_->path().string(), *failure, untilTheEnd));
    }
}

void JsonUserDefaults::setAside(const std::string& reason) {
    const auto result = file_->setAside();
    if (const auto* aside = std::get_if<std::filesystem::path>(&result)) {
        log_.write(fmt::format("Corvane: the settings in {} are damaged ({}); they are kept as {}",
                               file_->path().string(), reason, aside->string()));
    } else {
        leaveAlone(fmt::format("are damaged ({}) and cannot be renamed ({})", reason,
                               std::get<std::string>(result)));
    }
}

void JsonUserDefaults::leaveAlone(const std::string& why) {
    log_.write(fmt::format("Corvane: the settings in {} {}; the file stays as it is and {}",
                           file_->path().string(), why, untilTheEnd));
    file_.reset();
    unwritten_.clear();
}

void JsonUserDefaults::refuse(std::string_view key, std::string_view why) {
    log_.write(fmt::format("Corvane: the setting \"{}\" stays as it was: {}", key, why));
}

std::filesystem::path settingsPath(const EnvironmentLookup& environment) {
    return xdgFolder(environment, "XDG_CONFIG_HOME", ".config") / applicationIdentifier / "settings.json";
}

}  // namespace corvane
