#include "platform/linux/desktop/UPowerClient.h"

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace corvane {

UPowerClient::UPowerClient(asio::io_context& context, UPowerPatience patience,
                           const UPowerLink::Publish& publish)
    : link_(
          context, patience.retry,
          [&context, patience, publish](std::function<void()> onLost) {
              return std::make_unique<UPowerLink>(context, patience, publish, std::move(onLost));
          },
          [publish] { publish(std::nullopt); }) {}

}  // namespace corvane
