#pragma once

#include <functional>
#include <string>
#include <vector>

#include "app/session/SleepManager.h"
#include "app/shell/Lang.h"
#include "platform/StatusItem.h"

namespace corvane {

/// What the status item's menu is about and can do. The models outlive the menu.
struct StatusMenuServices {
    SleepManager& manager;
    const Lang& lang;
    std::function<void()> openPanel;
    std::function<void()> toggleKeepAwake;
    std::function<void()> toggleFans;
    std::function<void()> quit;
};

/// The everyday actions without the panel, for who prefers a menu or has no pointer. Texts in the user's
/// language. Main loop.
class StatusMenu {
public:
    explicit StatusMenu(StatusMenuServices services) : services_(std::move(services)) {}

    /// As the models are now.
    [[nodiscard]] std::vector<StatusMenuEntry> entries() const;

    /// Does what the entry says; an identifier of no entry does nothing.
    void choose(int id);

private:
    StatusMenuServices services_;
};

}  // namespace corvane
