#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "app/shell/Lang.h"
#include "platform/HotKeyService.h"
#include "platform/Lifetime.h"
#include "platform/SerialQueue.h"

namespace corvane {

/// The two keyboard shortcuts that work while another application is in front: Option-Command-K and
/// Option-Command-L. It only says which was pressed; what that does is the handler's affair. Main loop.
///
/// The application owns the one there is, rather than the process: so it ends before the platform's service,
/// and tests have as many as they like.
class Hotkeys {
public:
    enum class Action { toggleKeepAwake, toggleFanBoost };

    /// All outlive the object. `lang` chooses how the shortcuts are described to the user.
    Hotkeys(HotKeyService& service, SerialQueue& mainLoop, const Lang& lang)
        : service_(service), mainLoop_(mainLoop), lang_(lang) {}

    /// `handler` runs for each press, after the event that brought it was handled. Without one, presses are
    /// ignored.
    void setHandler(std::function<void(Action)> handler) { handler_ = std::move(handler); }

    /// Registers both shortcuts, or neither. To begin with they are not. Changes nothing where it is so
    /// already. A shortcut that cannot be had is silent; the other one works.
    void setEnabled(bool on);

private:
    void deliver(std::uint32_t id);

    HotKeyService& service_;
    SerialQueue& mainLoop_;
    const Lang& lang_;
    std::function<void(Action)> handler_;
    bool isEnabled_ = false;
    /// Null for a key that could not be had.
    std::vector<std::unique_ptr<HotKeyRegistration>> registrations_;
    Lifetime lifetime_;
};

}  // namespace corvane
