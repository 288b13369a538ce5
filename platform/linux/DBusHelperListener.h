#pragma once

#include <memory>

#include <asio/io_context.hpp>
#include <sdbus-c++/IConnection.h>
#include <sdbus-c++/IObject.h>

#include "platform/HelperListener.h"
#include "platform/RequestLimiter.h"
#include "platform/linux/BusPump.h"
#include "platform/linux/HelperBus.h"

namespace corvane {

/// Publishes the helper on D-Bus. Everything on the bus happens on the main thread; replies from elsewhere
/// are handed over to it.
class DBusHelperListener final : public HelperListener {
public:
    /// `context` is the main thread's and outlives the listener and the replies. `onLost` hears, on the main
    /// thread, that the bus has gone away.
    DBusHelperListener(asio::io_context& context, HelperBus bus,
                       std::function<void(const std::string&)> onLost);
    ~DBusHelperListener() override;

    [[nodiscard]] std::optional<std::string> resume(HelperListenerDelegate& delegate) override;

private:
    void publish();
    template <typename Result, typename Call>
    void serve(Result&& result, const Call& call);

    asio::io_context& context_;
    HelperBus bus_;
    std::function<void(const std::string&)> onLost_;
    std::shared_ptr<RequestLimiter> limiter_ = std::make_shared<RequestLimiter>();
    std::shared_ptr<FanHelperProtocol> served_;
    /// Shared with requests under way, whose messages need it.
    std::shared_ptr<sdbus::IConnection> connection_;
    std::unique_ptr<sdbus::IObject> object_;
    std::shared_ptr<BusPump> pump_;
};

}  // namespace corvane
