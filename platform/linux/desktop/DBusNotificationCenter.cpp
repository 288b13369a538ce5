#include "platform/linux/desktop/DBusNotificationCenter.h"

#include <atomic>
#include <exception>
#include <utility>

#include <asio/post.hpp>

#include "platform/linux/desktop/DBusNotificationLink.h"

namespace corvane {

/// Keeps a link to the server. Belongs to the bus thread.
class DBusNotificationCenter::Poster : public std::enable_shared_from_this<Poster> {
public:
    Poster(asio::io_context& context, HelperBus bus, Duration patience)
        : context_(context), bus_(std::move(bus)), patience_(patience) {}

    /// How often connecting has failed so far. Any thread.
    [[nodiscard]] unsigned failures() const { return failures_; }

    /// `failuresBefore` is what `failures` told when the notification was handed over.
    void post(const DBusNotificationLink::Post& post, unsigned failuresBefore) {
        // A bus that lets one attempt wait for long must not do so for each notification handed over
        // meanwhile.
        if (!link_ && failuresBefore == failures_) {
            connect();
        }
        if (link_) {
            link_->post(post);
        }
    }

private:
    void connect() {
        try {
            link_ = std::make_shared<DBusNotificationLink>(context_, bus_, patience_,
                                                           [this](const auto& useless) { drop(useless); });
            link_->start();
        } catch (const std::exception&) {
            ++failures_;
        }
    }

    /// Lets go of the link, and of what is under way on it; not here and now, since it is the link that
    /// calls.
    void drop(const std::weak_ptr<DBusNotificationLink>& useless) {
        asio::post(context_, [self = weak_from_this(), useless] {
            const auto poster = self.lock();
            if (poster && poster->link_ == useless.lock()) {
                poster->link_.reset();
            }
        });
    }

    asio::io_context& context_;
    HelperBus bus_;
    Duration patience_;
    std::atomic<unsigned> failures_ = 0;
    std::shared_ptr<DBusNotificationLink> link_;
};

DBusNotificationCenter::DBusNotificationCenter(BusThread& busThread, SerialQueue& mainLoop, HelperBus bus,
                                               Duration patience)
    : busThread_(busThread),
      mainLoop_(mainLoop),
      poster_(std::make_shared<Poster>(busThread.context(), std::move(bus), patience)) {}

DBusNotificationCenter::~DBusNotificationCenter() {
    // The last to let go of it is the bus thread.
    busThread_.post([poster = std::move(poster_)] {});
}

void DBusNotificationCenter::getAuthorization(std::function<void(NotificationAuthorization)> reply) {
    mainLoop_.async([reply = std::move(reply)] { reply(NotificationAuthorization::authorized); });
}

void DBusNotificationCenter::add(const UserNotification& notification) {
    std::erase_if(underWay_, [](const auto& post) { return post.expired(); });
    if (underWay_.size() >= maxUnderWay) {
        return;
    }
    auto post = std::make_shared<const UserNotification>(notification);
    underWay_.push_back(post);
    busThread_.post([poster = poster_, post = std::move(post), failures = poster_->failures()] {
        poster->post(post, failures);
    });
}

}  // namespace corvane
