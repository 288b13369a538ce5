#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include <IOKit/pwr_mgt/IOPMLib.h>

#include "tests/platform/macos/fakes/Current.h"

namespace corvane {

/// The system's power as far as it is told of: who has registered hears of sleep and wake, and sleep waits
/// for the answers. On the virtual time of the Dispatch there is. A registration that is left behind fails
/// the test.
class FakeSystemPower {
public:
    /// What the system waits for.
    static constexpr std::intptr_t sleepIdentifier = 0x5EE9;

    FakeSystemPower() = default;
    FakeSystemPower(const FakeSystemPower&) = delete;
    FakeSystemPower& operator=(const FakeSystemPower&) = delete;
    ~FakeSystemPower();

    /// From now on nobody can register.
    void refuse() { isRefusing_ = true; }

    /// All that were asked or told last have answered.
    [[nodiscard]] bool isAllReady() const { return allowed_ == registrations_.size(); }

    /// Asks whether the computer may sleep, as it does when nobody uses it, and says whether all agreed.
    bool askToSleep();
    /// Announces sleep and lets the main queue run until it is due; says whether all were ready for it.
    bool announceSleep();
    void announceWake();
    /// A message that is neither.
    void announce(std::uint32_t type);

    // For IOKit's functions.
    struct Registration {
        io_connect_t connection;
        io_object_t notifier;
        void* reference;
        IOServiceInterestCallback callback;
        bool isOnMainQueue = false;
    };
    io_connect_t add(void* reference, IOServiceInterestCallback callback, IONotificationPortRef* port,
                     io_object_t* notifier);
    void remove(io_object_t notifier);
    void allow(io_connect_t connection, std::intptr_t identifier);
    void deliverOnMainQueue(IONotificationPortRef port);

private:
    void send(std::uint32_t type, std::intptr_t identifier);
    bool sendAndAwait(std::uint32_t type);

    std::vector<Registration> registrations_;
    std::size_t allowed_ = 0;
    bool isRefusing_ = false;
    Current<FakeSystemPower> current_{*this};
};

}  // namespace corvane
