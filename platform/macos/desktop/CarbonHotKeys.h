#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>

#include "platform/HotKeyService.h"

namespace corvane {

/// The hot keys of a Mac, as Carbon's event manager has them. Main loop, on which the application dispatches
/// its events. A letter names the key's place on an American keyboard, whatever the layout makes of it.
class CarbonHotKeys final : public HotKeyService {
public:
    CarbonHotKeys() = default;
    ~CarbonHotKeys() override;

    [[nodiscard]] std::unique_ptr<HotKeyRegistration> add(
        const HotKey& key, std::function<void(std::uint32_t id)> pressed) override;

private:
    class Registration;
    class Handler;

    /// False when there can be none.
    bool listen();
    /// False for a key that nobody has registered.
    bool press(std::uint32_t id);

    /// Of Carbon, which calls it until it is removed; null before the first key.
    void* handler_ = nullptr;
    std::map<std::uint32_t, std::function<void(std::uint32_t id)>> pressed_;
};

}  // namespace corvane
