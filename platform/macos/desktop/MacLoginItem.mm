#include "platform/macos/desktop/MacLoginItem.h"

#include <optional>
#include <string>

#import <ServiceManagement/ServiceManagement.h>
#include <fmt/format.h>

#include "platform/macos/NSStringText.h"

namespace corvane {

namespace {

SMAppService* service() {
    return SMAppService.mainAppService;
}

std::string describe(NSError* error) {
    return error == nil ? "unknown error" : textOf(error.localizedDescription);
}

/// What went wrong, or nothing.
std::optional<std::string> enable() {
    NSError* error = nil;
    if (![service() registerAndReturnError:&error]) {
        return describe(error);
    }
    return service().status == SMAppServiceStatusEnabled
               ? std::nullopt
               : std::optional<std::string>("the user has not approved it in the system's settings");
}

/// One that waits for the user's approval is taken away as well. What went wrong, or nothing.
std::optional<std::string> disable() {
    const SMAppServiceStatus status = service().status;
    if (status != SMAppServiceStatusEnabled && status != SMAppServiceStatusRequiresApproval) {
        return std::nullopt;
    }
    NSError* error = nil;
    return [service() unregisterAndReturnError:&error] ? std::nullopt : std::optional(describe(error));
}

}  // namespace

bool MacLoginItem::isEnabled() const {
    return service().status == SMAppServiceStatusEnabled;
}

bool MacLoginItem::setEnabled(bool on) {
    if (on && isEnabled()) {
        return true;
    }
    const std::optional<std::string> error = on ? enable() : disable();
    if (error) {
        log_.write(fmt::format("Corvane login-item toggle failed: {}", *error));
    }
    return !error;
}

}  // namespace corvane
