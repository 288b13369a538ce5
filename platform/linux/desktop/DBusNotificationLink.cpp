#include "platform/linux/desktop/DBusNotificationLink.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>

#include <sdbus-c++/sdbus-c++.h>

#include "platform/ApplicationIdentifier.h"
#include "platform/XmlText.h"
#include "platform/linux/BusNameWatch.h"

namespace corvane {

namespace {

// The names are those of the Desktop Notifications Specification and of the Sound Naming Specification.
constexpr const char* busName = "org.freedesktop.Notifications";
constexpr const char* objectPath = "/org/freedesktop/Notifications";
constexpr const char* interface = "org.freedesktop.Notifications";
constexpr const char* application = "Corvane";
constexpr const char* markupCapability = "body-markup";
constexpr const char* sound = "message-new-instant";
constexpr std::uint8_t normalUrgency = 1;
constexpr std::uint32_t nothingReplaced = 0;
constexpr std::int32_t serverDecidesHowLong = -1;

std::unique_ptr<sdbus::IConnection> connect(const HelperBus& bus, std::chrono::nanoseconds patience) {
    auto connection = bus.connect();
    connection->setMethodCallTimeout(std::chrono::duration_cast<std::chrono::microseconds>(patience));
    return connection;
}

}  // namespace

DBusNotificationLink::DBusNotificationLink(asio::io_context& context, const HelperBus& bus,
                                           std::chrono::nanoseconds patience, OnUseless onUseless)
    : patience_(patience),
      onUseless_(std::move(onUseless)),
      deadline_(context),
      connection_(connect(bus, patience)),
      // Another server may take other texts.
      ownerWatch_(watchBusName(*connection_, busName,
                               [this](const OwnerChange& /*change*/) { takesMarkup_.reset(); })),
      server_(sdbus::createProxy(*connection_, busName, objectPath)),
      pump_(context, *connection_, [this](const std::string& /*reason*/) { onUseless_(weak_from_this()); }) {}

void DBusNotificationLink::start() {
    pump_.process();
}

void DBusNotificationLink::post(const Post& post) {
    // News that has arrived comes first: it may be that there is another server now.
    pump_.process();
    if (takesMarkup_) {
        notify(post);
        return;
    }
    waiting_.push_back(post);
    if (waiting_.size() == 1) {
        askCapabilities();
    }
}

void DBusNotificationLink::askCapabilities() {
    pump_.send([this] {
        server_->callMethodAsync("GetCapabilities")
            .onInterface(interface)
            .uponReplyInvoke([this](const sdbus::Error* error, const std::vector<std::string>& capabilities) {
                answered();
                if (error == nullptr) {
                    learnCapabilities(capabilities);
                }
                // Without a server, or with one that does not work, nothing waits.
                waiting_.clear();
            });
        awaitAnswer();
    });
}

void DBusNotificationLink::learnCapabilities(const std::vector<std::string>& capabilities) {
    takesMarkup_ = std::ranges::find(capabilities, markupCapability) != capabilities.end();
    for (const Post& post : waiting_) {
        notify(post);
    }
}

void DBusNotificationLink::notify(const Post& post) {
    const std::string body = *takesMarkup_ ? xmlText(post->body) : post->body;
    const std::map<std::string, sdbus::Variant> hints = {
        {"desktop-entry", sdbus::Variant(std::string(applicationIdentifier))},
        {"urgency", sdbus::Variant(normalUrgency)},
        {"sound-name", sdbus::Variant(std::string(sound))}};
    pump_.send([&] {
        server_->callMethodAsync("Notify")
            .onInterface(interface)
            .withArguments(application, nothingReplaced, applicationIdentifier, post->title, body,
                           std::vector<std::string>{}, hints, serverDecidesHowLong)
            // Whatever the answer is: the notification itself is not needed any more.
            .uponReplyInvoke([this, post](const sdbus::Error* /*error*/) { answered(); });
        awaitAnswer();
    });
}

/// Counts a call that was sent, and gives the server time.
void DBusNotificationLink::awaitAnswer() {
    ++unanswered_;
    deadline_.expires_after(patience_);
    deadline_.async_wait([link = weak_from_this()](const std::error_code& error) {
        const auto self = link.lock();
        if (!error && self && self->unanswered_ > 0) {
            self->onUseless_(link);
        }
    });
}

void DBusNotificationLink::answered() {
    if (--unanswered_ == 0) {
        deadline_.cancel();
    }
}

}  // namespace corvane
