#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Log.h"
#include "platform/UserDefaults.h"

namespace corvane {

/// The user's settings as the system keeps them for an application: under the identifier of its bundle, or
/// under the program's name when it runs outside of one.
///
/// A real that is not finite and a text or key that is not UTF-8 are refused with a line in the log: the
/// former value stays. What another program stores under a key of ours, of a type that is none of ours, reads
/// as none.
class MacUserDefaults final : public UserDefaults {
public:
    /// `log` outlives this.
    explicit MacUserDefaults(Log& log) : log_(log) {}

    [[nodiscard]] std::optional<DefaultsValue> value(std::string_view key) const override;
    void set(std::string_view key, DefaultsValue value) override;
    void remove(std::string_view key) override;
    void removeAll() override;

private:
    using Values = std::map<std::string, DefaultsValue, std::less<>>;

    void synchronize();

    Log& log_;
    bool isFailing_ = false;
    /// What holds until the process ends, once everything was removed.
    std::optional<Values> unkept_;
};

}  // namespace corvane
