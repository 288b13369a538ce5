#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace corvane {

/// The modifiers of a hot key; a mask is the sum of those that are held down. The bits are those of the home
/// platform, where Command and Option are what other keyboards call Super and Alt.
namespace HotKeyModifier {
inline constexpr std::uint32_t command = 0x0100;
inline constexpr std::uint32_t option = 0x0800;
}  // namespace HotKeyModifier

/// A key that works while another application is in front.
struct HotKey {
    /// Tells it from the caller's other keys; the same from one start to the next.
    std::uint32_t id = 0;
    /// A lower-case letter, a to z, as the keyboard's layout has it; on the home platform, where keys are
    /// named by their place, as the American one does, which is the same for most layouts and letters.
    char letter = '\0';
    std::uint32_t modifiers = 0;
    /// What it does, in the user's language, for services that show that. UTF-8.
    std::string description;
    /// Four characters, packed with the first in the most significant byte, that go with the id on the home
    /// platform. Nobody looks at them.
    std::uint32_t signature = 0;

    bool operator==(const HotKey&) const = default;
};

/// A hot key that is wanted; destroying it gives the key back. The service outlives it.
class HotKeyRegistration {
public:
    HotKeyRegistration() = default;
    HotKeyRegistration(const HotKeyRegistration&) = delete;
    HotKeyRegistration& operator=(const HotKeyRegistration&) = delete;
    virtual ~HotKeyRegistration() = default;
};

/// The keyboard shortcuts that work everywhere. Belongs to the main loop.
class HotKeyService {
public:
    HotKeyService() = default;
    HotKeyService(const HotKeyService&) = delete;
    HotKeyService& operator=(const HotKeyService&) = delete;
    virtual ~HotKeyService() = default;

    /// Registers a key, which is not registered here yet. Runs `pressed` with the key's id on the main loop
    /// each time it is pressed, once for as long as it is held down, until the registration is destroyed,
    /// which `pressed` must not do. Null when it is known at once that the key cannot be had: another
    /// application has it, say. A service that asks the user first finds that out later, and the key stays
    /// silent.
    [[nodiscard]] virtual std::unique_ptr<HotKeyRegistration> add(
        const HotKey& key, std::function<void(std::uint32_t id)> pressed) = 0;
};

}  // namespace corvane
