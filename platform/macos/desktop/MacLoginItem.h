#pragma once

#include "platform/Log.h"
#include "platform/LoginItem.h"

namespace corvane {

/// The application itself as a login item, by the system's service management. It counts as off while the
/// user has not approved it, or no longer does. Main loop.
class MacLoginItem final : public LoginItem {
public:
    /// `log` outlives the item.
    explicit MacLoginItem(Log& log) : log_(log) {}

    [[nodiscard]] bool isEnabled() const override;
    bool setEnabled(bool on) override;

private:
    Log& log_;
};

}  // namespace corvane
