#include "tests/platform/macos/fakes/Carbon/FakeHotKeys.h"

#include <algorithm>
#include <cstring>

#include <gtest/gtest.h>

#include "tests/platform/macos/fakes/MainThread.h"

/// An event of a hot key, for as long as it is handled; without an id, one that has no parameters.
struct OpaqueEventRef {
    const EventHotKeyID* id;
};

namespace corvane {

FakeHotKeys::~FakeHotKeys() {
    EXPECT_TRUE(keys_.empty()) << "hot keys are left registered";
    EXPECT_TRUE(handlers_.empty()) << "the event manager is left with a handler";
}

bool FakeHotKeys::press(UInt32 keyCode, UInt32 modifiers) {
    const auto found = std::ranges::find_if(
        keys_, [&](const Registered& key) { return key.keyCode == keyCode && key.modifiers == modifiers; });
    if (found == keys_.end()) {
        return false;
    }
    const EventHotKeyID id = {.signature = found->signature, .id = found->id};
    return dispatch(&id) == noErr;
}

bool FakeHotKeys::pressUnknown(UInt32 id) {
    const EventHotKeyID unknown = {.signature = 0x3F3F3F3F, .id = id};
    return dispatch(&unknown) == noErr;
}

OSStatus FakeHotKeys::sendWithoutId() {
    return dispatch(nullptr);
}

/// The newest handler first, until one wants the event.
OSStatus FakeHotKeys::dispatch(const EventHotKeyID* id) {
    OpaqueEventRef event = {.id = id};
    OSStatus status = eventNotHandledErr;
    for (auto handler = handlers_.rbegin(); handler != handlers_.rend() && status == eventNotHandledErr;
         ++handler) {
        status = handler->function(nullptr, &event, handler->userData);
    }
    return status;
}

std::vector<FakeHotKeys::Registered> FakeHotKeys::registered() const {
    return {keys_.begin(), keys_.end()};
}

FakeHotKeys::Handler* FakeHotKeys::install(Handler handler) {
    return refusesHandlers_ ? nullptr : &handlers_.emplace_back(handler);
}

bool FakeHotKeys::remove(const void* handler) {
    return handlers_.remove_if([&](const Handler& known) { return &known == handler; }) == 1;
}

OSStatus FakeHotKeys::add(const Registered& key, EventHotKeyRef& reference) {
    const bool isOurs = std::ranges::any_of(keys_, [&](const Registered& known) {
        return known.keyCode == key.keyCode && known.modifiers == key.modifiers;
    });
    if (isOurs || taken_.contains({key.keyCode, key.modifiers})) {
        return eventHotKeyExistsErr;
    }
    reference = reinterpret_cast<EventHotKeyRef>(&keys_.emplace_back(key));
    return noErr;
}

bool FakeHotKeys::removeKey(const void* key) {
    return keys_.remove_if([&](const Registered& known) { return &known == key; }) == 1;
}

namespace {

/// A target is known by its address alone.
EventTargetRef applicationTarget() {
    static char target = 0;
    return reinterpret_cast<EventTargetRef>(&target);
}

FakeHotKeys* currentHotKeys(const char* function) {
    expectMainThread(function);
    return Current<FakeHotKeys>::get();
}

constexpr OSStatus badCarbonParameter = -50;

}  // namespace

}  // namespace corvane

using corvane::badCarbonParameter;
using corvane::currentHotKeys;

EventTargetRef GetApplicationEventTarget() {
    return corvane::applicationTarget();
}

OSStatus InstallEventHandler(EventTargetRef target, EventHandlerUPP handler, ItemCount count,
                             const EventTypeSpec* types, void* userData, EventHandlerRef* installed) {
    corvane::FakeHotKeys* keys = currentHotKeys("InstallEventHandler");
    const bool isForHotKeys = count == 1 && types->eventClass == static_cast<OSType>(kEventClassKeyboard) &&
                              types->eventKind == kEventHotKeyPressed;
    if (keys == nullptr || target != corvane::applicationTarget() || !isForHotKeys) {
        return badCarbonParameter;
    }
    *installed = reinterpret_cast<EventHandlerRef>(keys->install({handler, userData}));
    return *installed == nullptr ? badCarbonParameter : OSStatus{noErr};
}

OSStatus RemoveEventHandler(EventHandlerRef handler) {
    corvane::FakeHotKeys* keys = currentHotKeys("RemoveEventHandler");
    const bool isRemoved = keys != nullptr && keys->remove(handler);
    EXPECT_TRUE(isRemoved) << "RemoveEventHandler of what is none";
    return isRemoved ? OSStatus{noErr} : badCarbonParameter;
}

OSStatus RegisterEventHotKey(UInt32 keyCode, UInt32 modifiers, EventHotKeyID id, EventTargetRef target,
                             OptionBits options, EventHotKeyRef* registered) {
    corvane::FakeHotKeys* keys = currentHotKeys("RegisterEventHotKey");
    if (keys == nullptr || target != corvane::applicationTarget() || options != 0) {
        return badCarbonParameter;
    }
    return keys->add({.keyCode = keyCode, .modifiers = modifiers, .signature = id.signature, .id = id.id},
                     *registered);
}

OSStatus UnregisterEventHotKey(EventHotKeyRef hotKey) {
    corvane::FakeHotKeys* keys = currentHotKeys("UnregisterEventHotKey");
    const bool isRemoved = keys != nullptr && keys->removeKey(hotKey);
    EXPECT_TRUE(isRemoved) << "UnregisterEventHotKey of what is none";
    return isRemoved ? OSStatus{noErr} : OSStatus{eventHotKeyInvalidErr};
}

OSStatus GetEventParameter(EventRef event, EventParamName name, EventParamType type,
                           EventParamType* actualType, ByteCount bufferSize, ByteCount* actualSize,
                           void* buffer) {
    if (event->id == nullptr || name != static_cast<EventParamName>(kEventParamDirectObject) ||
        type != static_cast<EventParamType>(typeEventHotKeyID)) {
        return eventParameterNotFoundErr;
    }
    if (bufferSize < sizeof *event->id) {
        return badCarbonParameter;
    }
    std::memcpy(buffer, event->id, sizeof *event->id);
    if (actualType != nullptr) {
        *actualType = type;
    }
    if (actualSize != nullptr) {
        *actualSize = sizeof *event->id;
    }
    return noErr;
}
