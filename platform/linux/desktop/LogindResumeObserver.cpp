#include "platform/linux/desktop/LogindResumeObserver.h"

#include <optional>
#include <string>
#include <utility>

#include <fmt/format.h>
#include <sdbus-c++/sdbus-c++.h>

#include "platform/linux/BusPump.h"
#include "platform/linux/LogindLock.h"
#include "platform/linux/LogindSignals.h"

namespace corvane {

class LogindResumeObserver::Listener {
public:
    Listener(asio::io_context& context, Log& log, std::function<void()> resumed)
        : context_(context), log_(log), resumed_(std::move(resumed)) {}

    void listen() {
        try {
            connection_ = sdbus::createSystemBusConnection();
            signals_.emplace(
                *connection_, [this](bool isGoingDown) { prepareForSleep(isGoingDown); },
                [this] {
                    if (isGoingDown_) {
                        prepareForSleep(false);
                    }
                });
            manager_ = sdbus::createProxy(*connection_, Logind::busName, Logind::objectPath);
            askForState();
        } catch (const sdbus::Error& error) {
            tellOfAbsence(error);
            return;
        }
        pump_.emplace(context_, *connection_, [this](const std::string& reason) {
            log_.write(fmt::format("Corvane: lost the login manager: {}", reason));
        });
        pump_->process();
    }

private:
    /// Starts a login manager that waits to be asked, and finds out whether there is one.
    void askForState() {
        manager_->callMethodAsync("Get")
            .onInterface("org.freedesktop.DBus.Properties")
            .withArguments(Logind::interface, "PreparingForSleep")
            .uponReplyInvoke([this](const sdbus::Error* error, const sdbus::Variant& isGoingDown) {
                if (error != nullptr) {
                    tellOfAbsence(*error);
                } else if (isGoingDown.containsValueOfType<bool>()) {
                    isGoingDown_ = isGoingDown.get<bool>();
                }
            });
    }

    void tellOfAbsence(const sdbus::Error& error) {
        log_.write(
            fmt::format("Corvane: no login manager, resumes will not be noticed: {}", error.getMessage()));
    }

    void prepareForSleep(bool isGoingDown) {
        isGoingDown_ = isGoingDown;
        if (!isGoingDown) {
            resumed_();
        }
    }

    asio::io_context& context_;
    Log& log_;
    std::function<void()> resumed_;
    bool isGoingDown_ = false;
    std::unique_ptr<sdbus::IConnection> connection_;
    std::optional<LogindSignals> signals_;
    std::unique_ptr<sdbus::IProxy> manager_;
    std::optional<BusPump> pump_;
};

LogindResumeObserver::LogindResumeObserver(BusThread& bus, SerialQueue& mainLoop, Log& log)
    : bus_(bus), mainLoop_(mainLoop), log_(log) {}

LogindResumeObserver::~LogindResumeObserver() {
    bus_.post([listener = std::move(listener_)] {});
}

void LogindResumeObserver::observe(std::function<void()> afterResume) {
    afterResume_ = std::make_shared<std::function<void()>>(std::move(afterResume));
    listener_ = std::make_shared<Listener>(bus_.context(), log_,
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
