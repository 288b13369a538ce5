#include "platform/macos/desktop/CarbonHotKeys.h"

#include <array>
#include <cstddef>
#include <optional>
#include <utility>

#include <Carbon/Carbon.h>

namespace corvane {

namespace {

constexpr std::array keyCodes = {
    kVK_ANSI_A, kVK_ANSI_B, kVK_ANSI_C, kVK_ANSI_D, kVK_ANSI_E, kVK_ANSI_F, kVK_ANSI_G,
    kVK_ANSI_H, kVK_ANSI_I, kVK_ANSI_J, kVK_ANSI_K, kVK_ANSI_L, kVK_ANSI_M, kVK_ANSI_N,
    kVK_ANSI_O, kVK_ANSI_P, kVK_ANSI_Q, kVK_ANSI_R, kVK_ANSI_S, kVK_ANSI_T, kVK_ANSI_U,
    kVK_ANSI_V, kVK_ANSI_W, kVK_ANSI_X, kVK_ANSI_Y, kVK_ANSI_Z,
};

std::optional<UInt32> keyCodeOf(char letter) {
    if (letter < 'a' || letter > 'z') {
        return std::nullopt;
    }
    return static_cast<UInt32>(keyCodes.at(static_cast<std::size_t>(letter - 'a')));
}

// The port's modifiers are Carbon's.
static_assert(HotKeyModifier::command == cmdKey);
static_assert(HotKeyModifier::option == optionKey);

}  // namespace

class CarbonHotKeys::Registration final : public HotKeyRegistration {
public:
    Registration(CarbonHotKeys& keys, std::uint32_t id, EventHotKeyRef hotKey)
        : keys_(keys), id_(id), hotKey_(hotKey) {}
    ~Registration() override {
        UnregisterEventHotKey(hotKey_);
        keys_.pressed_.erase(id_);
    }

private:
    CarbonHotKeys& keys_;
    std::uint32_t id_;
    EventHotKeyRef hotKey_;
};

/// What Carbon calls.
class CarbonHotKeys::Handler {
public:
    static OSStatus handle(EventHandlerCallRef /*next*/, EventRef event, void* keys) {
        EventHotKeyID id{};
        const OSStatus status = GetEventParameter(event, kEventParamDirectObject, typeEventHotKeyID, nullptr,
                                                  sizeof id, nullptr, &id);
        if (status != noErr) {
            return status;
        }
        if (!static_cast<CarbonHotKeys*>(keys)->press(id.id)) {
            return eventNotHandledErr;
        }
        return noErr;
    }
};

CarbonHotKeys::~CarbonHotKeys() {
    if (handler_ != nullptr) {
        RemoveEventHandler(static_cast<EventHandlerRef>(handler_));
    }
}

std::unique_ptr<HotKeyRegistration> CarbonHotKeys::add(const HotKey& key,
                                                       std::function<void(std::uint32_t id)> pressed) {
    const std::optional<UInt32> keyCode = keyCodeOf(key.letter);
    if (!keyCode || !listen()) {
        return nullptr;
    }
    constexpr OptionBits noOptions = 0;
    EventHotKeyRef hotKey = nullptr;
    if (RegisterEventHotKey(*keyCode, key.modifiers, {.signature = key.signature, .id = key.id},
                            GetApplicationEventTarget(), noOptions, &hotKey) != noErr) {
        return nullptr;
    }
    pressed_.insert_or_assign(key.id, std::move(pressed));
    return std::make_unique<Registration>(*this, key.id, hotKey);
}

bool CarbonHotKeys::listen() {
    if (handler_ != nullptr) {
        return true;
    }
    const EventTypeSpec pressedEvent = {kEventClassKeyboard, kEventHotKeyPressed};
    EventHandlerRef installed = nullptr;
    if (InstallEventHandler(GetApplicationEventTarget(), &Handler::handle, 1, &pressedEvent, this,
                            &installed) != noErr) {
        return false;
    }
    handler_ = installed;
    return true;
}

bool CarbonHotKeys::press(std::uint32_t id) {
    const auto found = pressed_.find(id);
    if (found == pressed_.end()) {
        return false;
    }
    found->second(id);
    return true;
}

}  // namespace corvane
