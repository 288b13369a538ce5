#include "platform/linux/desktop/UDisksClient.h"

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace corvane {

UDisksClient::UDisksClient(asio::io_context& context, UDisksPatience patience,
                           const UDisksLink::Publish& publish)
    : link_(
          context, patience.retry,
          [&context, patience, publish](std::function<void()> onLost) {
              return std::make_unique<UDisksLink>(context, patience, publish, std::move(onLost));
          },
          [publish] { publish(std::nullopt); }) {}

}  // namespace corvane
