#pragma once

#include <algorithm>
#include <condition_variable>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <sdbus-c++/sdbus-c++.h>

#include "platform/linux/HelperBus.h"
#include "tests/support/Notes.h"

namespace corvane {

/// A session's service that keeps the computer awake on request, on a thread of its own. It lets go of what a
/// caller took when that has left the bus.
class FakeInhibitor {
public:
    struct Service {
        const char* name;
        const char* path;
        const char* interface;
        /// What `Inhibit` takes.
        const char* signature;
        const char* release;
    };
    static constexpr Service sessionManager{"org.gnome.SessionManager", "/org/gnome/SessionManager",
                                            "org.gnome.SessionManager", "susu", "Uninhibit"};
    static constexpr Service powerManagement{"org.freedesktop.PowerManagement",
                                             "/org/freedesktop/PowerManagement/Inhibit",
                                             "org.freedesktop.PowerManagement.Inhibit", "ss", "UnInhibit"};
    static constexpr Service screenSaver{"org.freedesktop.ScreenSaver", "/org/freedesktop/ScreenSaver",
                                         "org.freedesktop.ScreenSaver", "ss", "UnInhibit"};
    /// Only its name counts.
    static constexpr Service kdePower{"org.kde.Solid.PowerManagement", "/org/kde/none",
                                      "org.kde.Solid.PowerManagement", "ss", "UnInhibit"};

    /// How it answers requests; `later` when it is told to.
    enum class Manner { well, withErrors, withNonsense, later };

    explicit FakeInhibitor(const std::string& bus, const Service& service, Manner manner = Manner::well)
        : service_(service), manner_(manner), connection_(HelperBus{bus}.connect()) {
        object_ = sdbus::createObject(*connection_, service.path);
        object_->registerMethod(service.interface, "Inhibit", service.signature,
                                manner == Manner::withNonsense ? "sd" : "u",
                                [this](sdbus::MethodCall call) { inhibit(std::move(call)); });
        object_->registerMethod(service.interface, service.release, "u", "",
                                [this](sdbus::MethodCall call) { uninhibit(call); });
        object_->finishRegistration();
        departures_ = connection_->addMatch(
            "type='signal',sender='org.freedesktop.DBus',member='NameOwnerChanged',arg2=''",
            [this](sdbus::Message& signal) { forgetCaller(signal); });
        connection_->requestName(service.name);
        connection_->enterEventLoopAsync();
    }
    FakeInhibitor(const FakeInhibitor&) = delete;
    FakeInhibitor& operator=(const FakeInhibitor&) = delete;
    ~FakeInhibitor() { connection_->leaveEventLoop(); }

    /// Every request it got, its arguments joined by bars.
    [[nodiscard]] const Notes<std::string>& requests() const { return requests_; }

    /// The requests that are held now, in the order they came.
    [[nodiscard]] std::vector<std::string> held() const {
        const std::lock_guard lock(mutex_);
        return heldNow();
    }

    /// Who holds something now, by unique name.
    [[nodiscard]] std::set<std::string> callers() const {
        const std::lock_guard lock(mutex_);
        std::set<std::string> callers;
        for (const auto& [number, held] : held_) {
            callers.insert(held.caller);
        }
        return callers;
    }

    /// Whether exactly that is held, sooner or later.
    [[nodiscard]] bool comesToHold(const std::vector<std::string>& requests) const {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, testPatience, [&] { return heldNow() == requests; });
    }

    /// How many holds were taken back by their number, and by a number that nobody holds.
    [[nodiscard]] std::size_t released() const {
        const std::lock_guard lock(mutex_);
        return released_;
    }
    [[nodiscard]] std::size_t mistaken() const {
        const std::lock_guard lock(mutex_);
        return mistaken_;
    }

    /// Answers what waits for it, and from now on at once.
    void answerNow() {
        std::vector<std::pair<sdbus::MethodCall, std::uint32_t>> unanswered;
        {
            const std::lock_guard lock(mutex_);
            manner_ = Manner::well;
            unanswered.swap(unanswered_);
        }
        // Not under the lock: the bus library has one of its own, which its thread takes first.
        for (auto& [call, number] : unanswered) {
            auto reply = call.createReply();
            reply << number;
            reply.send();
        }
    }

    /// From now on.
    void changeManner(Manner manner) {
        const std::lock_guard lock(mutex_);
        manner_ = manner;
    }

private:
    struct Held {
        std::string caller;
        std::string request;
    };

    [[nodiscard]] std::vector<std::string> heldNow() const {
        std::vector<std::string> requests;
        for (const auto& [number, held] : held_) {
            requests.push_back(held.request);
        }
        return requests;
    }

    static std::string read(sdbus::MethodCall& call, const std::string& signature) {
        std::string request;
        for (const char type : signature) {
            if (type == 's') {
                std::string text;
                call >> text;
                request += text;
            } else {
                std::uint32_t number = 0;
                call >> number;
                request += fmt::format("{}", number);
            }
            request += '|';
        }
        request.pop_back();
        return request;
    }

    void inhibit(sdbus::MethodCall call) {
        const std::string request = read(call, service_.signature);
        {
            const std::lock_guard lock(mutex_);
            answer(call, request);
        }
        changed_.notify_all();
        requests_.add(request);
    }

    void answer(sdbus::MethodCall& call, const std::string& request) {
        if (manner_ == Manner::withErrors) {
            call.createErrorReply(sdbus::Error("org.example.Error", "not today")).send();
            return;
        }
        auto reply = call.createReply();
        if (manner_ == Manner::withNonsense) {
            reply << std::string("nonsense") << 2.5;
            reply.send();
            return;
        }
        held_[++lastNumber_] = {call.getSender(), request};
        if (manner_ == Manner::later) {
            unanswered_.emplace_back(std::move(call), lastNumber_);
            return;
        }
        reply << lastNumber_;
        reply.send();
    }

    void uninhibit(sdbus::MethodCall& call) {
        std::uint32_t number = 0;
        call >> number;
        {
            const std::lock_guard lock(mutex_);
            const bool wasHeld = held_.erase(number) > 0;
            ++(wasHeld ? released_ : mistaken_);
        }
        changed_.notify_all();
        if (!call.doesntExpectReply()) {
            call.createReply().send();
        }
    }

    void forgetCaller(sdbus::Message& signal) {
        std::string name;
        signal >> name;
        {
            const std::lock_guard lock(mutex_);
            std::erase_if(held_, [&](const auto& held) { return held.second.caller == name; });
        }
        changed_.notify_all();
    }

    Service service_;
    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    Manner manner_;
    std::uint32_t lastNumber_ = 0;
    std::map<std::uint32_t, Held> held_;
    std::size_t released_ = 0;
    std::size_t mistaken_ = 0;
    std::vector<std::pair<sdbus::MethodCall, std::uint32_t>> unanswered_;
    Notes<std::string> requests_;
    std::unique_ptr<sdbus::IConnection> connection_;
    sdbus::Slot departures_;
    std::unique_ptr<sdbus::IObject> object_;
};

}  // namespace corvane
