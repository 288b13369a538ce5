#include "platform/linux/hwmon/makeHwmonSmc.h"

#include <utility>

#include "platform/linux/hwmon/DirectorySysfs.h"
#include "platform/linux/hwmon/HwmonSmc.h"

namespace corvane {

std::unique_ptr<SmcConnection> makeHwmonSmc(HwmonOptions options, SerialQueue* retryQueue, Log& log) {
    return std::make_unique<HwmonSmc>(std::make_unique<DirectorySysfs>(std::move(options.sysfsRoot)),
                                      std::move(options.journalPath), options.owner, retryQueue, log);
}

}  // namespace corvane
