#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <sdbus-c++/sdbus-c++.h>

#include "platform/linux/HelperBus.h"
#include "tests/support/Notes.h"

namespace corvane {

/// Owns the helper's name on a bus and does to callers whatever a test says. It takes the name from another
/// one of its kind. It answers on a thread of its own.
class MisbehavingHelper {
public:
    struct Behaviour {
        std::function<void(const sdbus::MethodCall& call)> act;
        /// The signature of what it answers; nothing for what was agreed.
        std::optional<std::string> form = {};
    };

    MisbehavingHelper(const std::string& bus, Behaviour behaviour)
        : behaviour_(std::move(behaviour)), connection_(HelperBus{bus}.connect()) {
        object_ = sdbus::createObject(*connection_, HelperAddress::objectPath);
        add("pingWithReply", "", "bs");
        add("getStatusWithReply", "", "a{sv}");
        add("setFanFloorWithPercentWithReply", "d", "bs");
        add("stopBoostWithReply", "", "bs");
        add("setLidStayAwakeWithReply", "b", "bs");
        object_->finishRegistration();
        bus_ = sdbus::createProxy(*connection_, "org.freedesktop.DBus", "/org/freedesktop/DBus");
        takeName();
        connection_->enterEventLoopAsync();
    }

    MisbehavingHelper(const MisbehavingHelper&) = delete;
    MisbehavingHelper& operator=(const MisbehavingHelper&) = delete;
    ~MisbehavingHelper() { connection_->leaveEventLoop(); }

    /// Answers nothing.
    static Behaviour silence() {
        return {[](const sdbus::MethodCall& /*call*/) {}};
    }

    /// Answers `values`, whatever was agreed.
    template <typename... Values>
    static Behaviour answer(Values... values) {
        return {[values...](const sdbus::MethodCall& call) { send(call, values...); },
                (std::string() + ... + sdbus::signature_of<Values>::str())};
    }

    static Behaviour refuse(const std::string& error, const std::string& message) {
        return {[=](const sdbus::MethodCall& call) {
            call.createErrorReply(sdbus::Error(error, message)).send();
        }};
    }

    template <typename... Values>
    static void send(const sdbus::MethodCall& call, const Values&... values) {
        auto reply = call.createReply();
        (void)(reply << ... << values);
        reply.send();
    }

    /// The calls so far. They can still be answered.
    [[nodiscard]] const Notes<std::shared_ptr<sdbus::MethodCall>>& calls() const { return calls_; }

    /// Gives the name up and stays.
    void dropName() { connection_->releaseName(HelperAddress::busName); }

    /// Tells `caller` that the name changed hands, as only the bus may.
    void forgeOwnerChange(const std::string& caller) {
        const auto forger = sdbus::createObject(*connection_, "/org/freedesktop/DBus");
        auto signal = forger->createSignal("org.freedesktop.DBus", "NameOwnerChanged");
        signal.setDestination(caller);
        signal << HelperAddress::busName << ":1.0"
               << "";
        forger->emitSignal(signal);
    }

private:
    void add(const std::string& member, const std::string& takes, const std::string& gives) {
        object_->registerMethod(HelperAddress::interface, member, takes, behaviour_.form.value_or(gives),
                                [this](const sdbus::MethodCall& call) {
                                    calls_.add(std::make_shared<sdbus::MethodCall>(call));
                                    behaviour_.act(call);
                                });
    }

    void takeName() {
        constexpr std::uint32_t allowReplacement = 1;
        constexpr std::uint32_t replaceExisting = 2;
        constexpr std::uint32_t doNotQueue = 4;
        bus_->callMethod("RequestName")
            .onInterface("org.freedesktop.DBus")
            .withArguments(std::string(HelperAddress::busName),
                           allowReplacement | replaceExisting | doNotQueue);
    }

    Behaviour behaviour_;
    std::unique_ptr<sdbus::IConnection> connection_;
    // Destroyed before the connection, whose messages these are.
    Notes<std::shared_ptr<sdbus::MethodCall>> calls_;
    std::unique_ptr<sdbus::IObject> object_;
    std::unique_ptr<sdbus::IProxy> bus_;
};

}  // namespace corvane
