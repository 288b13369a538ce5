#pragma once

#include <memory>

#include "platform/HelperListener.h"

namespace corvane {

/// Publishes the helper as a Mach service. launchd gives that name to the helper's process and starts it when
/// somebody calls.
///
/// Calls reach the served object one at a time for each connection, on threads of XPC's. A call for which
/// there is no room is not answered: its reply is thrown away, and XPC tells the caller.
class XpcHelperListener final : public HelperListener {
public:
    XpcHelperListener();
    /// Ends all connections. Once it returns no call is under way, and none of the transport's threads holds
    /// the served object any more.
    ~XpcHelperListener() override;

    [[nodiscard]] std::optional<std::string> resume(HelperListenerDelegate& delegate) override;

private:
    class Service;

    std::unique_ptr<Service> service_;
};

}  // namespace corvane
