#pragma once

#include <QJsonValue>
#include <optional>

#include "platform/UserDefaults.h"

namespace corvane {

// Settings as JSON. Truth values, texts and whole numbers are what they are in JSON. A real is {"real": 1.0},
// since JSON does not tell 1.0 from 1, and data are {"data": "…"} in base64.

/// None for a value that no setting is written as.
std::optional<DefaultsValue> fromJson(const QJsonValue& json);

/// None for what JSON has no form for: a real that is not finite, a text that is not UTF-8.
std::optional<QJsonValue> toJson(const DefaultsValue& value);

}  // namespace corvane
