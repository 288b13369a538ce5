#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "platform/macos/CfRef.h"

namespace corvane {

using CfReference = CfRef<CFTypeRef>;
using CfElements = std::vector<CfReference>;
using CfEntries = std::vector<std::pair<CfReference, CfReference>>;

/// What an object of any other type holds.
class CfState {
public:
    CfState() = default;
    CfState(const CfState&) = delete;
    CfState& operator=(const CfState&) = delete;
    virtual ~CfState() = default;
};

/// What a fake object holds: UTF-8 of a string, a Boolean, an integer or real number, elements, entries, or a
/// state of its own kind; nothing once it has been released for the last time.
using CfValue = std::variant<std::monostate, std::string, bool, std::int64_t, double, CfElements, CfEntries,
                             std::shared_ptr<CfState>>;

[[noreturn]] void endForWrongCfType();

/// An object with one reference, the caller's. A use after its last release, one release too many and a use
/// as another type end the program with a message; a reference that is never released fails the test. Any
/// thread.
[[nodiscard]] CfReference makeCfObject(CfValue value);

/// An object that counts no references and never ends, as the compiler makes them.
[[nodiscard]] CFTypeRef makeCfConstant(CfValue value);

/// Another reference to a living object.
[[nodiscard]] CfReference retainedCf(CFTypeRef object);

/// Of a living object; stays until it ends.
[[nodiscard]] const CfValue& cfValueOf(CFTypeRef object);

/// The same for an object that must hold a `Held`, or ends the program.
template <typename Held>
[[nodiscard]] const Held& heldByCf(CFTypeRef object) {
    const auto* held = std::get_if<Held>(&cfValueOf(object));
    if (held == nullptr) {
        endForWrongCfType();
    }
    return *held;
}

/// The same for an object that must hold such a state.
template <typename State>
[[nodiscard]] State& stateOfCf(CFTypeRef object) {
    auto* state = dynamic_cast<State*>(heldByCf<std::shared_ptr<CfState>>(object).get());
    if (state == nullptr) {
        endForWrongCfType();
    }
    return *state;
}

/// By value; collections are equal when they hold the same objects.
[[nodiscard]] bool areEqualCf(CFTypeRef one, CFTypeRef other);

}  // namespace corvane
