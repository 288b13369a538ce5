#pragma once

#include <MacTypes.h>

#ifdef __cplusplus
extern "C" {
#endif

// Public documentation (Carbon Event Manager).
typedef struct OpaqueEventRef* EventRef;
typedef struct OpaqueEventTargetRef* EventTargetRef;
typedef struct OpaqueEventHandlerRef* EventHandlerRef;
typedef struct OpaqueEventHandlerCallRef* EventHandlerCallRef;

// Public documentation (Carbon Event Manager): an event's class and its kind within that.
struct EventTypeSpec {
    OSType eventClass;
    UInt32 eventKind;
};
typedef struct EventTypeSpec EventTypeSpec;

// Public documentation (Carbon Event Manager): in 64-bit programs a handler is its function.
typedef OSStatus (*EventHandlerProcPtr)(EventHandlerCallRef next, EventRef event, void* userData);
typedef EventHandlerProcPtr EventHandlerUPP;
OSStatus InstallEventHandler(EventTargetRef target, EventHandlerUPP handler, ItemCount count,
                             const EventTypeSpec* types, void* userData, EventHandlerRef* installed);
OSStatus RemoveEventHandler(EventHandlerRef handler);

// Public documentation (Carbon Event Manager): the actual type and size may be left out.
typedef OSType EventParamName;
typedef OSType EventParamType;
enum { kEventParamDirectObject = '----' };
OSStatus GetEventParameter(EventRef event, EventParamName name, EventParamType type,
                           EventParamType* actualType, ByteCount bufferSize, ByteCount* actualSize,
                           void* buffer);

// Public documentation (Carbon Event Manager): results.
enum { eventParameterNotFoundErr = -9870, eventNotHandledErr = -9874 };

#ifdef __cplusplus
}
#endif
