#include "platform/linux/desktop/LogindResumeObserver.h"

#include <optional>
#include <string>
#include <utility>

#include <asio/post.hpp>
#include <asio/steady_timer.hpp>
#include <fmt/format.h>
#include <sdbus-c++/sdbus-c++.h>

#include "platform/Lifetime.h"
#include "platform/linux/BusPump.h"
#include "platform/linux/LogindLock.h"
#include "platform/linux/LogindSignals.h"

namespace corvane {

namespace {

/// How long the bus's answers are waited for: others use the thread.
constexpr std::chrono::seconds busPatience(5);

}  // namespace

class LogindResumeObserver::Listener {
public:
    Listener(asio::io_context& context, std::chrono::milliseconds retry, Log& log,
             std::function<void()> resumed)
        : context_(context), retry_(retry), log_(log), resumed_(std::move(resumed)), retryTimer_(context) {}

    void listen() {
        try {
            connect();
        } catch (const sdbus::Error& error) {
            tellOfAbsence(error);
            forgetConnection();
        }
    }

private:
    void connect() {
        connection_ = sdbus::createSystemBusConnection();
        connection_->setMethodCallTimeout(busPatience);
        signals_.emplace(
            *connection_, [this](bool isGoingDown) { prepareForSleep(isGoingDown); },
            [this] { missNoResume(false); });
        manager_ = sdbus::createProxy(*connection_, Logind::busName, Logind::objectPath);
        askForState();
        pump_.emplace(context_, *connection_, [this](const std::string& reason) {
            log_.write(fmt::format("Corvane: lost the login manager: {}", reason));
            // It is the pump that calls.
            asio::post(context_, lifetime_.bound([this] { disconnect(); }));
        });
        pump_->process();
    }

    void forgetConnection() {
        pump_.reset();
        manager_.reset();
        signals_.reset();
        connection_.reset();
    }

    void disconnect() {
        forgetConnection();
        retryTimer_.expires_after(retry_);
        retryTimer_.async_wait(lifetime_.bound([this](const std::error_code& error) {
            if (!error) {
                reconnect();
            }
        }));
    }

    /// The log knows already that the bus is gone.
    void reconnect() {
        try {
            connect();
        } catch (const sdbus::Error&) {
            disconnect();
        }
    }

    /// Starts a login manager that waits to be asked, and finds out whether there is one.
    void askForState() {
        manager_->callMethodAsync("Get")
            .onInterface("org.freedesktop.DBus.Properties")
            .withArguments(Logind::interface, "PreparingForSleep")
            .uponReplyInvoke([this](const sdbus::Error* error, const sdbus::Variant& isGoingDown) {
                if (error != nullptr) {
                    tellOfAbsence(*error);
                } else if (isGoingDown.containsValueOfType<bool>()) {
                    missNoResume(isGoingDown.get<bool>());
                }
            });
    }

    void tellOfAbsence(const sdbus::Error& error) {
        log_.write(
            fmt::format("Corvane: no login manager, resumes will not be noticed: {}", error.getMessage()));
    }

    /// Whoever announced a suspend is gone, and a resume may have gone unheard.
    void missNoResume(bool isGoingDown) {
        if (isGoingDown_ && !isGoingDown) {
            resumed_();
        }
        isGoingDown_ = isGoingDown;
    }

    void prepareForSleep(bool isGoingDown) {
        isGoingDown_ = isGoingDown;
        if (!isGoingDown) {
            resumed_();
        }
    }

    asio::io_context& context_;
    std::chrono::milliseconds retry_;
    Log& log_;
    std::function<void()> resumed_;
    asio::steady_timer retryTimer_;
    bool isGoingDown_ = false;
    Lifetime lifetime_;
    // Destroyed from the last to the first: what uses the connection before it.
    std::unique_ptr<sdbus::IConnection> connection_;
    std::optional<LogindSignals> signals_;
    std::unique_ptr<sdbus::IProxy> manager_;
    std::optional<BusPump> pump_;
};

LogindResumeObserver::LogindResumeObserver(BusThread& bus, SerialQueue& mainLoop, Log& log,
                                           std::chrono::milliseconds retry)
    : bus_(bus), mainLoop_(mainLoop), log_(log), retry_(retry) {}

LogindResumeObserver::~LogindResumeObserver() {
    bus_.post([listener = std::move(listener_)] {});
}

void LogindResumeObserver::observe(std::function<void()> afterResume) {
    afterResume_ = std::make_shared<std::function<void()>>(std::move(afterResume));
    listener_ = std::make_shared<Listener>(bus_.context(), retry_, log_,
                                           [&mainLoop = mainLoop_, waiting = std::weak_ptr(afterResume_)] {
                                               mainLoop.async([waiting] {
                                                   if (const auto work = waiting.lock()) {
                                                       (*work)();
                                                   }
                                               });
                                           });
    bus_.post([listener = listener_] { listener->listen(); });
}

}  // namespace corvane
