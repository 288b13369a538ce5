#include "platform/linux/desktop/JsonValueCodec.h"

#include <QByteArray>
#include <QJsonObject>
#include <QMetaType>
#include <QString>
#include <QVariant>
#include <cmath>
#include <span>

namespace corvane {

namespace {

constexpr auto realTag = QLatin1String("real");
constexpr auto dataTag = QLatin1String("data");

std::optional<DefaultsValue> fromTagged(const QJsonObject& object) {
    if (object.size() != 1) {
        return std::nullopt;
    }
    const QJsonValue value = object.begin().value();
    if (object.begin().key() == realTag && value.isDouble()) {
        return value.toDouble();
    }
    if (object.begin().key() == dataTag && value.isString()) {
        const auto decoded = QByteArray::fromBase64Encoding(value.toString().toUtf8(),
                                                            QByteArray::AbortOnBase64DecodingErrors);
        if (decoded) {
            const auto bytes = std::as_bytes(std::span(decoded.decoded.cbegin(), decoded.decoded.cend()));
            return std::vector<std::byte>(bytes.begin(), bytes.end());
        }
    }
    return std::nullopt;
}

std::optional<QJsonValue> encode(bool value) {
    return QJsonValue(value);
}

std::optional<QJsonValue> encode(std::int64_t value) {
    return QJsonValue(static_cast<qint64>(value));
}

std::optional<QJsonValue> encode(double value) {
    if (!std::isfinite(value)) {
        return std::nullopt;
    }
    return QJsonObject{{realTag, value}};
}

std::optional<QJsonValue> encode(const std::string& value) {
    const QString text = QString::fromStdString(value);
    // What is not UTF-8 becomes replacement characters.
    if (text.toStdString() != value) {
        return std::nullopt;
    }
    return QJsonValue(text);
}

std::optional<QJsonValue> encode(const std::vector<std::byte>& value) {
    const auto bytes =
        QByteArray::fromRawData(static_cast<const char*>(static_cast<const void*>(value.data())),
                                static_cast<qsizetype>(value.size()));
    return QJsonObject{{dataTag, QString::fromLatin1(bytes.toBase64())}};
}

}  // namespace

std::optional<DefaultsValue> fromJson(const QJsonValue& json) {
    switch (json.type()) {
        case QJsonValue::Bool:
            return json.toBool();
        case QJsonValue::Double:
            // Qt keeps numbers without a fraction apart, as 64-bit integers.
            return json.toVariant().typeId() == QMetaType::LongLong
                       ? std::optional<DefaultsValue>(std::int64_t{json.toInteger()})
                       : std::nullopt;
        case QJsonValue::String:
            return json.toString().toStdString();
        case QJsonValue::Object:
            return fromTagged(json.toObject());
        default:
            return std::nullopt;
    }
}

std::optional<QJsonValue> toJson(const DefaultsValue& value) {
    return std::visit([](const auto& typed) { return encode(typed); }, value);
}

}  // namespace corvane
