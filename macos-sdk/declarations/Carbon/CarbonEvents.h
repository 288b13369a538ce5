#pragma once

#include <Carbon/CarbonEventsCore.h>

#ifdef __cplusplus
extern "C" {
#endif

// Public documentation (Carbon Event Manager).
EventTargetRef GetApplicationEventTarget(void);

// Public documentation (Carbon Event Manager): the events of hot keys.
enum { kEventClassKeyboard = 'keyb' };
enum { kEventHotKeyPressed = 5 };
enum { typeEventHotKeyID = 'hkid' };

// Public documentation (Carbon Event Manager).
struct EventHotKeyID {
    OSType signature;
    UInt32 id;
};
typedef struct EventHotKeyID EventHotKeyID;
typedef struct OpaqueEventHotKeyRef* EventHotKeyRef;

// Public documentation (Carbon Event Manager): a key is named by its place on the keyboard.
OSStatus RegisterEventHotKey(UInt32 keyCode, UInt32 modifiers, EventHotKeyID id, EventTargetRef target,
                             OptionBits options, EventHotKeyRef* registered);
OSStatus UnregisterEventHotKey(EventHotKeyRef hotKey);
enum { eventHotKeyExistsErr = -9878, eventHotKeyInvalidErr = -9879 };

#ifdef __cplusplus
}
#endif
