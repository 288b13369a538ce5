#include "tests/platform/macos/fakes/IOKit/FakeSystemPower.h"

#include <algorithm>
#include <bit>

#include <IOKit/IOMessage.h>
#include <dispatch/dispatch.h>
#include <gtest/gtest.h>

#include "tests/platform/macos/fakes/IOKit/IoObjects.h"
#include "tests/platform/macos/fakes/dispatch/FakeDispatch.h"

/// What a notification port leads to.
struct IONotificationPort {
    io_object_t notifier;
};

namespace corvane {

FakeSystemPower::~FakeSystemPower() {
    EXPECT_EQ(registrations_.size(), 0U) << "registrations for the system's power were left behind";
}

bool FakeSystemPower::askToSleep() {
    return sendAndAwait(kIOMessageCanSystemSleep);
}

bool FakeSystemPower::announceSleep() {
    return sendAndAwait(kIOMessageSystemWillSleep);
}

void FakeSystemPower::announceWake() {
    announce(kIOMessageSystemHasPoweredOn);
}

void FakeSystemPower::announce(std::uint32_t type) {
    send(type, 0);
    FakeDispatch::current().time().settle();
}

bool FakeSystemPower::sendAndAwait(std::uint32_t type) {
    allowed_ = 0;
    send(type, sleepIdentifier);
    FakeDispatch::current().time().settle();
    return isAllReady();
}

void FakeSystemPower::send(std::uint32_t type, std::intptr_t identifier) {
    FakeDispatch& dispatch = FakeDispatch::current();
    for (const Registration& registration : registrations_) {
        if (!registration.isOnMainQueue) {
            continue;
        }
        dispatch.async(dispatch.mainQueue(), [this, notifier = registration.notifier, type, identifier] {
            const auto found = std::ranges::find(registrations_, notifier, &Registration::notifier);
            if (found != registrations_.end()) {
                found->callback(found->reference, IO_OBJECT_NULL, type, std::bit_cast<void*>(identifier));
            }
        });
    }
}

io_connect_t FakeSystemPower::add(void* reference, IOServiceInterestCallback callback,
                                  IONotificationPortRef* port, io_object_t* notifier) {
    if (isRefusing_) {
        return IO_OBJECT_NULL;
    }
    const io_connect_t connection = makeIoObject(IoObjectKind::connection);
    *notifier = makeIoObject(IoObjectKind::service);
    *port = new IONotificationPort{*notifier};
    registrations_.push_back({connection, *notifier, reference, callback});
    return connection;
}

void FakeSystemPower::remove(io_object_t notifier) {
    EXPECT_EQ(
        std::erase_if(registrations_,
                      [&](const Registration& registration) { return registration.notifier == notifier; }),
        1U)
        << "IODeregisterForSystemPower of what is not registered";
}

void FakeSystemPower::allow(io_connect_t connection, std::intptr_t identifier) {
    EXPECT_EQ(identifier, sleepIdentifier) << "an answer to what was not asked";
    EXPECT_NE(std::ranges::find(registrations_, connection, &Registration::connection), registrations_.end());
    ++allowed_;
}

void FakeSystemPower::deliverOnMainQueue(IONotificationPortRef port) {
    std::ranges::find(registrations_, port->notifier, &Registration::notifier)->isOnMainQueue = true;
}

}  // namespace corvane

io_connect_t IORegisterForSystemPower(void* reference, IONotificationPortRef* port,
                                      IOServiceInterestCallback callback, io_object_t* notifier) {
    corvane::FakeSystemPower* const power = corvane::Current<corvane::FakeSystemPower>::get();
    return power == nullptr ? IO_OBJECT_NULL : power->add(reference, callback, port, notifier);
}

IOReturn IODeregisterForSystemPower(io_object_t* notifier) {
    corvane::Current<corvane::FakeSystemPower>::get()->remove(*notifier);
    return IOObjectRelease(*notifier);
}

IOReturn IOAllowPowerChange(io_connect_t connection, intptr_t notificationIdentifier) {
    corvane::Current<corvane::FakeSystemPower>::get()->allow(connection, notificationIdentifier);
    return kIOReturnSuccess;
}

void IONotificationPortSetDispatchQueue(IONotificationPortRef port, struct dispatch_queue_s* queue) {
    EXPECT_EQ(queue, dispatch_get_main_queue());
    corvane::Current<corvane::FakeSystemPower>::get()->deliverOnMainQueue(port);
}

void IONotificationPortDestroy(IONotificationPortRef port) {
    delete port;
}
