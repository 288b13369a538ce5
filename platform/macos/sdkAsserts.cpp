// What the C++ of this folder takes for granted about Apple's C interfaces, checked wherever it is compiled:
// a real SDK that differs does not compile. All of it is about the SDK's own names.

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <type_traits>

#include <Carbon/Carbon.h>
#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CoreGraphics.h>
#include <IOKit/IOKitLib.h>
#include <IOKit/IOMessage.h>
#include <IOKit/ps/IOPSKeys.h>
#include <IOKit/ps/IOPowerSources.h>
#include <IOKit/pwr_mgt/IOPMLib.h>
#include <dispatch/dispatch.h>
#include <mach/mach.h>

#include "platform/HotKeyService.h"
#include "platform/PowerAssertions.h"
#include "platform/PowerSources.h"
#include "platform/SmcConnection.h"

namespace corvane {

namespace {

using std::is_same_v;

// Mach: names of ports and results are 32 bits wide, which is what the ports' own types hold.
static_assert(is_same_v<kern_return_t, int>);
static_assert(is_same_v<mach_port_t, std::uint32_t>);
static_assert(KERN_SUCCESS == 0);

// Core Foundation: what is handed over by address, and what is converted.
static_assert(is_same_v<CFTypeRef, const void*>);
static_assert(is_same_v<CFIndex, long>);
static_assert(is_same_v<Boolean, unsigned char>);
static_assert(is_same_v<UInt8, std::uint8_t>);
static_assert(kCFStringEncodingUTF8 == 0x08000100);
static_assert(kCFNumberIntType == 9);
static_assert(sizeof(CGFloat) == sizeof(double));
static_assert(sizeof(CGRect) == 4 * sizeof(double));
static_assert(offsetof(CGRect, size) == 2 * sizeof(double));

// Messages between two starts of the application.
static_assert(kCFMessagePortSuccess == 0);
static_assert(kCFMessagePortSendTimeout == -1);
static_assert(kCFMessagePortReceiveTimeout == -2);

// Dispatch.
static_assert(DISPATCH_TIMER_STRICT == 1);
static_assert(DISPATCH_TIME_NOW == 0);
static_assert(DISPATCH_TIME_FOREVER == std::numeric_limits<dispatch_time_t>::max());

// IOKit's objects and its codes, which go up to the log and to the diagnostics as they are.
static_assert(is_same_v<io_connect_t, std::uint32_t>);
static_assert(is_same_v<io_service_t, std::uint32_t>);
static_assert(is_same_v<IOReturn, std::int32_t>);
static_assert(IO_OBJECT_NULL == 0);
static_assert(kIOReturnSuccess == 0);
static_assert(static_cast<std::uint32_t>(kIOReturnNoDevice) == 0xE00002C0);
static_assert(static_cast<std::uint32_t>(kIOReturnNotPrivileged) == 0xE00002C1);
static_assert(static_cast<std::uint32_t>(kIOReturnBadArgument) == 0xE00002C2);
static_assert(static_cast<std::uint32_t>(kIOReturnUnderrun) == 0xE00002E7);
static_assert(static_cast<std::uint32_t>(kIOReturnNotFound) == 0xE00002F0);
static_assert(SmcConnection::noService != kIOReturnNotFound);

// Power management and power sources.
static_assert(static_cast<std::uint32_t>(kIOMessageCanSystemSleep) == 0xE0000270);
static_assert(static_cast<std::uint32_t>(kIOMessageSystemWillSleep) == 0xE0000280);
static_assert(static_cast<std::uint32_t>(kIOMessageSystemHasPoweredOn) == 0xE0000300);
static_assert(is_same_v<IOPMAssertionID, PowerAssertions::Id>);
static_assert(is_same_v<IOPMAssertionLevel, std::uint32_t>);
static_assert(kIOPMAssertionLevelOn == 255);
static_assert(std::string_view(kIOPSCurrentCapacityKey) == "Current Capacity");
static_assert(std::string_view(kIOPSMaxCapacityKey) == "Max Capacity");
static_assert(std::string_view(kIOPSPowerSourceStateKey) == "Power Source State");
static_assert(std::string_view(kIOPSIsChargingKey) == "Is Charging");
static_assert(std::string_view(kIOPSACPowerValue) == PowerSources::acPower);

// The window server.
static_assert(is_same_v<CGDirectDisplayID, std::uint32_t>);
static_assert(sizeof(CGError) == sizeof(std::int32_t));
static_assert(kCGErrorSuccess == 0);

// Carbon.
static_assert(is_same_v<OSStatus, std::int32_t>);
static_assert(kEventClassKeyboard == 0x6B657962, "'keyb'");
static_assert(kEventHotKeyPressed == 5);
static_assert(kEventParamDirectObject == 0x2D2D2D2D, "'----'");
static_assert(typeEventHotKeyID == 0x686B6964, "'hkid'");
static_assert(noErr == 0);
static_assert(eventNotHandledErr == -9874);
static_assert(eventHotKeyExistsErr == -9878);
static_assert(cmdKey == HotKeyModifier::command);
static_assert(optionKey == HotKeyModifier::option);
static_assert(kVK_ANSI_K == 40);
static_assert(kVK_ANSI_L == 37);
static_assert(sizeof(EventHotKeyID) == 8);
static_assert(offsetof(EventHotKeyID, signature) == 0);
static_assert(offsetof(EventHotKeyID, id) == 4);
static_assert(sizeof(EventTypeSpec) == 8);
static_assert(offsetof(EventTypeSpec, eventClass) == 0);
static_assert(offsetof(EventTypeSpec, eventKind) == 4);
static_assert(is_same_v<EventHandlerUPP, OSStatus (*)(EventHandlerCallRef, EventRef, void*)>);

}  // namespace

}  // namespace corvane
