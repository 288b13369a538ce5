#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace corvane {

/// A stored setting. The types do not convert into each other: a Boolean is not a text, nor a number.
using DefaultsValue = std::variant<bool, std::int64_t, double, std::string, std::vector<std::byte>>;

/// The user's settings, kept from one start to the next. Belongs to the main loop.
class UserDefaults {
public:
    UserDefaults() = default;
    UserDefaults(const UserDefaults&) = delete;
    UserDefaults& operator=(const UserDefaults&) = delete;
    virtual ~UserDefaults() = default;

    /// None when nothing is stored under `key`, or something that is none of the types.
    [[nodiscard]] virtual std::optional<DefaultsValue> value(std::string_view key) const = 0;

    /// Stores at once: what was set survives the end of the process in whatever way. What cannot be stored is
    /// logged, and holds until the process ends. A real that is not finite is refused and changes nothing.
    virtual void set(std::string_view key, DefaultsValue value) = 0;

    /// Forgets the value, if there is one; at once as well.
    virtual void remove(std::string_view key) = 0;

    /// Forgets everything, and takes away what it was kept in; what cannot be taken away is passed over. From
    /// then on nothing is stored any more: what is set holds until the process ends, so that nothing is left
    /// behind by whoever still sets something on the way to that end.
    virtual void removeAll() = 0;

    /// The value under `key` when it has just this type.
    template <typename T>
    [[nodiscard]] std::optional<T> get(std::string_view key) const {
        std::optional<DefaultsValue> stored = value(key);
        T* typed = stored ? std::get_if<T>(&*stored) : nullptr;
        return typed == nullptr ? std::nullopt : std::optional<T>(std::move(*typed));
    }
};

}  // namespace corvane
