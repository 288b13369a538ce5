#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <sdbus-c++/sdbus-c++.h>

#include "platform/linux/HelperBus.h"
#include "tests/support/Notes.h"

namespace corvane {

/// A desktop's portal for global shortcuts on a bus, on a thread of its own.
class FakePortal {
public:
    using Dictionary = std::map<std::string, sdbus::Variant>;

    /// What it was asked to bind.
    struct Bound {
        std::string session;
        /// By the shortcut's id: description and preferred trigger.
        std::map<std::string, std::pair<std::string, std::string>> shortcuts;
        std::string parentWindow;
    };

    /// What is wrong with it, if anything.
    struct Manner {
        /// The answer to the requests: 1 is "cancelled by the user".
        std::uint32_t code = 0;
        /// Calls are answered with an error.
        bool isBroken = false;
        /// Answers to requests are of another shape.
        bool isNonsense = false;
        /// Of a request's answer: it comes before the call's.
        bool isHasty = false;
        /// It chooses the paths of requests itself.
        bool hasOwnPaths = false;
        /// What it calls a session, if not what it should.
        std::string sessionName;
    };

    explicit FakePortal(const std::string& bus) : FakePortal(bus, Manner()) {}
    FakePortal(const std::string& bus, Manner manner)
        : manner_(std::move(manner)), connection_(HelperBus{bus}.connect()) {
        object_ = sdbus::createObject(*connection_, "/org/freedesktop/portal/desktop");
        object_->registerMethod(shortcuts, "CreateSession", "a{sv}", "o",
                                [this](sdbus::MethodCall call) { createSession(call); });
        object_->registerMethod(shortcuts, "BindShortcuts", "oa(sa{sv})sa{sv}", "o",
                                [this](sdbus::MethodCall call) { bind(call); });
        object_->registerSignal(shortcuts, "Activated", "osta{sv}");
        object_->registerSignal(shortcuts, "Deactivated", "osta{sv}");
        object_->finishRegistration();
        connection_->requestName(name);
        connection_->enterEventLoopAsync();
    }

    /// The callers that wanted a session, one note for each.
    [[nodiscard]] const Notes<std::string>& sessions() const { return sessions_; }
    [[nodiscard]] const Notes<Bound>& bound() const { return bound_; }

    void activate(const std::string& session, const std::string& id) { tell("Activated", session, id); }
    void deactivate(const std::string& session, const std::string& id) { tell("Deactivated", session, id); }

    /// Ends a session, as when the user no longer wants it.
    void endSession(const std::string& session) {
        constexpr const char* interface = "org.freedesktop.portal.Session";
        const auto object = sdbus::createObject(*connection_, session);
        object->registerSignal(interface, "Closed", "a{sv}");
        object->finishRegistration();
        auto signal = object->createSignal(interface, "Closed");
        signal << Dictionary();
        object->emitSignal(signal);
    }

    /// Tells of an activation with too little to say.
    void activateWithNonsense() {
        auto signal = object_->createSignal(shortcuts, "Activated");
        signal << 2.5;
        object_->emitSignal(signal);
    }

private:
    static constexpr const char* name = "org.freedesktop.portal.Desktop";
    static constexpr const char* shortcuts = "org.freedesktop.portal.GlobalShortcuts";

    static std::string senderPart(const sdbus::MethodCall& call) {
        std::string sender = call.getSender().substr(1);
        std::ranges::replace(sender, '.', '_');
        return sender;
    }

    void createSession(sdbus::MethodCall& call) {
        Dictionary options;
        call >> options;
        const auto token = options.at("session_handle_token").get<std::string>();
        const std::string session =
            manner_.sessionName.empty()
                ? fmt::format("/org/freedesktop/portal/desktop/session/{}/{}", senderPart(call), token)
                : manner_.sessionName;
        answer(call, options, {{"session_handle", sdbus::Variant(session)}});
        sessions_.add(call.getSender());
    }

    void bind(sdbus::MethodCall& call) {
        sdbus::ObjectPath session;
        std::vector<sdbus::Struct<std::string, Dictionary>> wanted;
        Bound bound;
        Dictionary options;
        call >> session >> wanted >> bound.parentWindow >> options;
        bound.session = session;
        for (const auto& shortcut : wanted) {
            const Dictionary& about = shortcut.get<1>();
            bound.shortcuts[shortcut.get<0>()] = {about.at("description").get<std::string>(),
                                                  about.at("preferred_trigger").get<std::string>()};
        }
        answer(call, options, {});
        bound_.add(std::move(bound));
    }

    void answer(const sdbus::MethodCall& call, const Dictionary& options, const Dictionary& results) {
        if (manner_.isBroken) {
            call.createErrorReply(sdbus::Error("org.example.Broken", "not today")).send();
            return;
        }
        const std::string path =
            fmt::format("/org/freedesktop/portal/desktop/request/{}/{}", senderPart(call),
                        manner_.hasOwnPaths ? fmt::format("own{}", ++ownPaths_)
                                            : options.at("handle_token").get<std::string>());
        auto reply = call.createReply();
        reply << sdbus::ObjectPath(path);
        if (!manner_.isHasty) {
            reply.send();
        }
        respond(path, results);
        if (manner_.isHasty) {
            reply.send();
        }
    }

    void respond(const std::string& path, const Dictionary& results) {
        constexpr const char* interface = "org.freedesktop.portal.Request";
        const auto request = sdbus::createObject(*connection_, path);
        request->registerSignal(interface, "Response", "ua{sv}");
        request->finishRegistration();
        auto response = request->createSignal(interface, "Response");
        if (manner_.isNonsense) {
            response << std::string("nonsense");
        } else {
            response << manner_.code << results;
        }
        request->emitSignal(response);
    }

    void tell(const char* member, const std::string& session, const std::string& id) {
        constexpr std::uint64_t anyTime = 0;
        auto signal = object_->createSignal(shortcuts, member);
        signal << sdbus::ObjectPath(session) << id << anyTime << Dictionary();
        object_->emitSignal(signal);
    }

    Manner manner_;
    int ownPaths_ = 0;
    Notes<std::string> sessions_;
    Notes<Bound> bound_;
    std::unique_ptr<sdbus::IConnection> connection_;
    std::unique_ptr<sdbus::IObject> object_;
};

}  // namespace corvane
