#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <sdbus-c++/sdbus-c++.h>

#include "platform/linux/HelperBus.h"
#include "tests/support/Notes.h"

namespace corvane {

/// A notification server on a bus, on a thread of its own.
class FakeNotifications {
public:
    /// What it was asked to show.
    struct Shown {
        std::uint32_t id;
        std::string application;
        std::uint32_t replaces;
        std::string icon;
        std::string title;
        std::string body;
        std::vector<std::string> actions;
        std::map<std::string, sdbus::Variant> hints;
        std::int32_t milliseconds;
    };

    /// How it answers both calls.
    enum class Manner { well, withErrors, withNonsense, notAtAll };

    explicit FakeNotifications(const std::string& bus, std::vector<std::string> capabilities = {},
                               Manner manner = Manner::well)
        : manner_(manner), capabilities_(std::move(capabilities)), connection_(HelperBus{bus}.connect()) {
        object_ = sdbus::createObject(*connection_, "/org/freedesktop/Notifications");
        const bool isNonsense = manner == Manner::withNonsense;
        object_->registerMethod(name, "GetCapabilities", "", isNonsense ? "sd" : "as",
                                [this](sdbus::MethodCall call) { tellCapabilities(call); });
        object_->registerMethod(name, "Notify", "susssasa{sv}i", isNonsense ? "sd" : "u",
                                [this](sdbus::MethodCall call) { show(call); });
        object_->finishRegistration();
        connection_->requestName(name);
        connection_->enterEventLoopAsync();
    }

    [[nodiscard]] const Notes<Shown>& shown() const { return shown_; }
    /// The callers, one note for each time.
    [[nodiscard]] const Notes<std::string>& capabilityRequests() const { return capabilityRequests_; }

private:
    static constexpr const char* name = "org.freedesktop.Notifications";

    void tellCapabilities(sdbus::MethodCall& call) {
        answer(call, capabilities_);
        capabilityRequests_.add(call.getSender());
    }

    void show(sdbus::MethodCall& call) {
        Shown shown{++lastId_, {}, 0, {}, {}, {}, {}, {}, 0};
        call >> shown.application >> shown.replaces >> shown.icon >> shown.title >> shown.body >>
            shown.actions >> shown.hints >> shown.milliseconds;
        answer(call, shown.id);
        shown_.add(std::move(shown));
    }

    template <typename Answer>
    void answer(sdbus::MethodCall& call, const Answer& good) {
        if (manner_ == Manner::notAtAll) {
            return;
        }
        if (manner_ == Manner::withErrors) {
            call.createErrorReply(sdbus::Error("org.example.Error", "not today")).send();
            return;
        }
        auto reply = call.createReply();
        if (manner_ == Manner::withNonsense) {
            reply << std::string("nonsense") << 2.5;
        } else {
            reply << good;
        }
        reply.send();
    }

    Manner manner_;
    std::vector<std::string> capabilities_;
    std::uint32_t lastId_ = 0;
    Notes<Shown> shown_;
    Notes<std::string> capabilityRequests_;
    std::unique_ptr<sdbus::IConnection> connection_;
    std::unique_ptr<sdbus::IObject> object_;
};

}  // namespace corvane
