#include "tests/platform/macos/fakes/IOKit/FakeSmcService.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

#include <mach/mach.h>

#include "platform/SmcKeyTable.h"
#include "tests/platform/macos/fakes/CoreFoundation/CfObject.h"
#include "tests/platform/macos/fakes/IOKit/IoObjects.h"

namespace corvane {

namespace {

constexpr const char* smcClassName = "AppleSMC";
constexpr const char* providerClassKey = "IOProviderClass";
constexpr std::uint32_t smcExchangeSelector = 2;
constexpr std::size_t smcRecordSize = 80;

/// Offsets are written out: what a client makes of the record is its own affair.
constexpr std::size_t smcCommandOffset = 42;

bool isSmcWrite(const void* input) {
    return static_cast<const std::uint8_t*>(input)[smcCommandOffset] ==
           static_cast<std::uint8_t>(SmcCommand::writeKey);
}

bool matchesSmcClass(CFDictionaryRef matching) {
    return std::ranges::any_of(heldByCf<CfEntries>(matching), [](const auto& entry) {
        return heldByCf<std::string>(entry.first.get()) == providerClassKey &&
               heldByCf<std::string>(entry.second.get()) == smcClassName;
    });
}

}  // namespace

std::size_t FakeSmcService::openConnections() const {
    return static_cast<std::size_t>(std::ranges::count_if(connections_, [](io_connect_t connection) {
        return isIoObject(connection, IoObjectKind::connection);
    }));
}

IOReturn FakeSmcService::open(io_connect_t& connection) {
    if (openCode_ == kIOReturnSuccess) {
        connection = makeIoObject(IoObjectKind::connection);
        connections_.push_back(connection);
    }
    return openCode_;
}

IOReturn FakeSmcService::exchange(io_connect_t connection, const void* input, void* output,
                                  std::size_t& outputSize) {
    if (std::ranges::find(connections_, connection) == connections_.end()) {
        return kIOReturnBadArgument;
    }
    if (!isThere()) {
        return kIOReturnNoDevice;
    }
    if (exchangeCode_ != kIOReturnSuccess) {
        return exchangeCode_;
    }
    if (!isPrivileged_ && isSmcWrite(input)) {
        return kIOReturnNotPrivileged;
    }
    SmcRecord record;
    std::memcpy(&record, input, smcRecordSize);
    answerFromTable(mac_, record);
    std::memcpy(output, &record, std::min(answerSize_, smcRecordSize));
    outputSize = answerSize_;
    return kIOReturnSuccess;
}

}  // namespace corvane

using corvane::IoObjectKind;
using FakeSmc = corvane::Current<corvane::FakeSmcService>;

mach_port_t mach_task_self_ = 0x203;
const mach_port_t kIOMainPortDefault = 0;

CFMutableDictionaryRef IOServiceMatching(const char* name) {
    corvane::CfEntries entries;
    entries.emplace_back(corvane::makeCfObject(std::string(corvane::providerClassKey)),
                         corvane::makeCfObject(std::string(name)));
    const void* dictionary = corvane::makeCfObject(std::move(entries)).release();
    return static_cast<CFMutableDictionaryRef>(const_cast<void*>(dictionary));
}

io_service_t IOServiceGetMatchingService(mach_port_t mainPort, CFDictionaryRef matching) {
    // It takes the caller's reference, whatever it finds.
    const corvane::CfReference taken(matching);
    const corvane::FakeSmcService* service = FakeSmc::get();
    if (mainPort != kIOMainPortDefault || service == nullptr || !service->isThere() ||
        !corvane::matchesSmcClass(matching)) {
        return IO_OBJECT_NULL;
    }
    return corvane::makeIoObject(IoObjectKind::service);
}

kern_return_t IOServiceOpen(io_service_t service, task_port_t owningTask, uint32_t type,
                            io_connect_t* connection) {
    if (!corvane::isIoObject(service, IoObjectKind::service) || owningTask != mach_task_self_ || type != 0) {
        return kIOReturnBadArgument;
    }
    corvane::FakeSmcService* smc = FakeSmc::get();
    return smc == nullptr ? kIOReturnNoDevice : smc->open(*connection);
}

kern_return_t IOConnectCallStructMethod(mach_port_t connection, uint32_t selector, const void* input,
                                        size_t inputSize, void* output, size_t* outputSize) {
    corvane::FakeSmcService* smc = FakeSmc::get();
    if (smc == nullptr || !corvane::isIoObject(connection, IoObjectKind::connection)) {
        return MACH_SEND_INVALID_DEST;
    }
    if (selector != corvane::smcExchangeSelector || inputSize != corvane::smcRecordSize ||
        *outputSize != corvane::smcRecordSize) {
        return kIOReturnBadArgument;
    }
    return smc->exchange(connection, input, output, *outputSize);
}
