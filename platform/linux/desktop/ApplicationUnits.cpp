#include "platform/linux/desktop/ApplicationUnits.h"

#include <utility>

#include <asio/post.hpp>

namespace corvane {

ApplicationUnits::ApplicationUnits(asio::io_context& context, UserBus bus, UserManagerPatience patience,
                                   UserManagerLink::Publish publish)
    : context_(context),
      bus_(std::move(bus)),
      patience_(patience),
      publish_(std::move(publish)),
      retry_(context) {}

void ApplicationUnits::start() {
    try {
        link_ = std::make_unique<UserManagerLink>(
            context_, bus_.connect(), patience_, publish_,
            // A link must not be destroyed in its own work.
            [this] { asio::post(context_, lifetime_.bound([this] { startLater(); })); });
        link_->start();
    } catch (const sdbus::Error&) {
        startLater();
    }
}

void ApplicationUnits::startLater() {
    link_.reset();
    publish_(std::nullopt);
    retry_.expires_after(patience_.retry);
    retry_.async_wait(lifetime_.bound([this](const std::error_code& error) {
        if (!error) {
            start();
        }
    }));
}

}  // namespace corvane
