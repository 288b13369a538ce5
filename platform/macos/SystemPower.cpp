#include "platform/macos/SystemPower.h"

#include <cstdint>
#include <utility>

#include <IOKit/IOKitLib.h>
#include <IOKit/IOMessage.h>
#include <IOKit/pwr_mgt/IOPMLib.h>
#include <dispatch/dispatch.h>

namespace corvane {

class SystemPower::Registration {
public:
    Registration(std::function<void()> beforeSleep, std::function<void()> afterWake)
        : beforeSleep_(std::move(beforeSleep)),
          afterWake_(std::move(afterWake)),
          connection_(IORegisterForSystemPower(this, &port_, hear, &notifier_)) {
        if (connection_ != IO_OBJECT_NULL) {
            IONotificationPortSetDispatchQueue(port_, dispatch_get_main_queue());
        }
    }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration() {
        if (connection_ != IO_OBJECT_NULL) {
            IODeregisterForSystemPower(&notifier_);
            IOServiceClose(connection_);
            IONotificationPortDestroy(port_);
        }
    }

private:
    static void hear(void* self, io_service_t /*service*/, std::uint32_t type, void* argument) {
        static_cast<Registration*>(self)->hear(type, reinterpret_cast<std::intptr_t>(argument));
    }

    void hear(std::uint32_t type, std::intptr_t identifier) {
        switch (type) {
            case kIOMessageCanSystemSleep:
                // Silence would hold the sleep up, and a no is not ours to give.
                IOAllowPowerChange(connection_, identifier);
                break;
            case kIOMessageSystemWillSleep:
                beforeSleep_();
                IOAllowPowerChange(connection_, identifier);
                break;
            case kIOMessageSystemHasPoweredOn:
                afterWake_();
                break;
            default:
                break;
        }
    }

    std::function<void()> beforeSleep_;
    std::function<void()> afterWake_;
    IONotificationPortRef port_ = nullptr;
    io_object_t notifier_ = IO_OBJECT_NULL;
    io_connect_t connection_;
};

SystemPower::SystemPower(std::function<void()> beforeSleep, std::function<void()> afterWake)
    : registration_(std::make_unique<Registration>(std::move(beforeSleep), std::move(afterWake))) {}

SystemPower::~SystemPower() = default;

}  // namespace corvane
