#include "platform/macos/IoKitSmc.h"

#include <cstddef>

#include <IOKit/IOKitLib.h>
#include <mach/mach.h>

namespace corvane {

namespace {

constexpr std::uint32_t userClientType = 0;
/// The service's one method that takes and gives a record.
constexpr std::uint32_t exchangeSelector = 2;

}  // namespace

IoKitSmc::~IoKitSmc() {
    if (connection_ != IO_OBJECT_NULL) {
        IOServiceClose(connection_);
    }
}

std::int32_t IoKitSmc::open() {
    if (connection_ != IO_OBJECT_NULL) {
        return 0;
    }
    // The matching dictionary is the callee's from here on.
    const io_service_t service =
        IOServiceGetMatchingService(kIOMainPortDefault, IOServiceMatching("AppleSMC"));
    if (service == IO_OBJECT_NULL) {
        return noService;
    }
    io_connect_t connection = IO_OBJECT_NULL;
    const kern_return_t code = IOServiceOpen(service, mach_task_self(), userClientType, &connection);
    IOObjectRelease(service);
    if (code == KERN_SUCCESS) {
        connection_ = connection;
    }
    return code;
}

std::int32_t IoKitSmc::exchange(SmcRecord& record) {
    SmcRecord answer;
    std::size_t size = sizeof answer;
    const kern_return_t code =
        IOConnectCallStructMethod(connection_, exchangeSelector, &record, sizeof record, &answer, &size);
    if (code != KERN_SUCCESS) {
        return code;
    }
    // Half a record may lack the value, and 0 RPM or 0 °C is nothing to act upon.
    if (size != sizeof answer) {
        return kIOReturnUnderrun;
    }
    record = answer;
    return 0;
}

}  // namespace corvane
