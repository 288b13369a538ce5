#pragma once

#include <cmath>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/UserDefaults.h"

namespace corvane {

/// Settings that are kept in memory only, with a record of every write.
class MemoryUserDefaults final : public UserDefaults {
public:
    /// A call of `set`, or, with no value, of `remove`.
    using Write = std::pair<std::string, std::optional<DefaultsValue>>;

    [[nodiscard]] std::optional<DefaultsValue> value(std::string_view key) const override {
        const auto stored = values_.find(key);
        return stored == values_.end() ? std::nullopt : std::optional(stored->second);
    }

    /// Refuses a real that is not finite, as settings that are stored do.
    void set(std::string_view key, DefaultsValue value) override {
        const double* real = std::get_if<double>(&value);
        if (real != nullptr && !std::isfinite(*real)) {
            return;
        }
        writes_.emplace_back(key, value);
        values_.insert_or_assign(std::string(key), std::move(value));
    }

    void remove(std::string_view key) override {
        writes_.emplace_back(key, std::nullopt);
        if (const auto stored = values_.find(key); stored != values_.end()) {
            values_.erase(stored);
        }
    }

    void removeAll() override {
        isRemoved_ = true;
        values_.clear();
    }

    /// Whether everything was removed, after which nothing is kept any more.
    [[nodiscard]] bool isRemoved() const { return isRemoved_; }

    /// Oldest first.
    [[nodiscard]] const std::vector<Write>& writes() const { return writes_; }

private:
    std::map<std::string, DefaultsValue, std::less<>> values_;
    std::vector<Write> writes_;
    bool isRemoved_ = false;
};

}  // namespace corvane
