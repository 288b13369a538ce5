#include "platform/linux/desktop/ApplicationUnits.h"

#include <memory>
#include <optional>
#include <utility>

namespace corvane {

ApplicationUnits::ApplicationUnits(asio::io_context& context, const UserBus& bus,
                                   UserManagerPatience patience, const UserManagerLink::Publish& publish)
    : link_(
          context, patience.retry,
          [&context, bus, patience, publish](std::function<void()> onLost) {
              auto link = std::make_unique<UserManagerLink>(context, bus.connect(), patience, publish,
                                                            std::move(onLost));
              link->start();
              return link;
          },
          [publish] { publish(std::nullopt); }) {}

}  // namespace corvane
