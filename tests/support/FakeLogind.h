#pragma once

#include <array>
#include <atomic>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <sdbus-c++/sdbus-c++.h>
#include <unistd.h>

#include "platform/linux/HelperBus.h"
#include "tests/support/Notes.h"

namespace corvane {

/// A login manager on a bus: it gives out locks and tells of suspends. It answers on a thread of its own.
class FakeLogind {
public:
    /// A lock as it was asked for, and the end that tells when the other one is closed.
    struct Lock {
        std::string request;
        sdbus::UnixFd watch;
    };

    explicit FakeLogind(const std::string& bus) : connection_(HelperBus{bus}.connect()) {
        object_ = sdbus::createObject(*connection_, "/org/freedesktop/login1");
        object_->registerMethod("Inhibit").onInterface(interface).implementedAs(
            [this](const std::string& what, const std::string& who, const std::string& why,
                   const std::string& mode) { return giveLock(what + '|' + who + '|' + why + '|' + mode); });
        object_->registerProperty("PreparingForSleep").onInterface(interface).withGetter([this] {
            questions_.add("PreparingForSleep");
            return isPreparingForSleep_.load();
        });
        object_->registerSignal("PrepareForSleep").onInterface(interface).withParameters<bool>();
        object_->finishRegistration();
        connection_->requestName("org.freedesktop.login1");
        connection_->enterEventLoopAsync();
    }

    /// What it answers when it is asked; a real one, too, gives out no locks then.
    void prepareForSleep(bool isGoingDown) { isPreparingForSleep_ = isGoingDown; }

    void tellOfSuspend(bool isGoingDown) {
        prepareForSleep(isGoingDown);
        object_->emitSignal("PrepareForSleep").onInterface(interface).withArguments(isGoingDown);
    }

    /// The same signal without its argument, and with one that makes no sense.
    void tellNonsense() {
        object_->emitSignal("PrepareForSleep").onInterface(interface);
        object_->emitSignal("PrepareForSleep").onInterface(interface).withArguments(std::string("now"));
    }

    /// The properties it was asked for.
    [[nodiscard]] const Notes<std::string>& questions() const { return questions_; }

    [[nodiscard]] const Notes<Lock>& locks() const { return locks_; }

    [[nodiscard]] std::string request(std::size_t lock) const { return locks_.all().at(lock).request; }

    [[nodiscard]] bool isHeld(std::size_t lock) const { return isHeld(locks_.all().at(lock), 0); }

    /// Whether the lock is still held after so many milliseconds; returns early when it is not. A lock may
    /// outlive its login manager.
    [[nodiscard]] static bool isHeld(const Lock& lock, int milliseconds) {
        pollfd waiting{lock.watch.get(), 0, 0};
        return poll(&waiting, 1, milliseconds) != 1 || (waiting.revents & POLLHUP) == 0;
    }

    /// False when it was still held when patience was over.
    [[nodiscard]] bool waitForRelease(std::size_t lock) const {
        return !isHeld(locks_.all().at(lock),
                       static_cast<int>(std::chrono::milliseconds(testPatience).count()));
    }

private:
    static constexpr const char* interface = "org.freedesktop.login1.Manager";

    sdbus::UnixFd giveLock(std::string request) {
        std::array<int, 2> ends{-1, -1};
        if (isPreparingForSleep_) {
            throw sdbus::Error("org.freedesktop.login1.OperationInProgress", "it sleeps already");
        }
        if (pipe2(ends.data(), O_CLOEXEC) != 0) {
            throw sdbus::Error("org.freedesktop.DBus.Error.Failed", "no pipe");
        }
        locks_.add({std::move(request), sdbus::UnixFd(ends[0], sdbus::adopt_fd)});
        return {ends[1], sdbus::adopt_fd};
    }

    std::atomic<bool> isPreparingForSleep_ = false;
    Notes<Lock> locks_;
    Notes<std::string> questions_;
    std::unique_ptr<sdbus::IConnection> connection_;
    std::unique_ptr<sdbus::IObject> object_;
};

}  // namespace corvane
