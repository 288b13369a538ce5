#pragma once

#include <future>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "platform/linux/AsioSerialQueue.h"
#include "platform/linux/desktop/DBusHelperConnector.h"
#include "tests/support/Notes.h"

namespace corvane {

/// An application as far as its connection to the helper goes: a main loop, a bus thread, and notes of all
/// that it is told.
class HelperClient {
public:
    /// What is told of a call that was not answered in time.
    static constexpr const char* tooLate = "failed: The helper did not answer in time.";

    explicit HelperClient(const std::string& bus, Duration timeout = testPatience)
        : connector_(busThread_, mainLoop_, HelperBus{bus}, timeout) {
        connect();
    }
    HelperClient(const HelperClient&) = delete;
    HelperClient& operator=(const HelperClient&) = delete;
    ~HelperClient() {
        // The connection goes on the main loop, its work before the loop does.
        mainLoop_.sync([this] { connection_.reset(); });
    }

    /// Replaces the connection.
    void connect() {
        mainLoop_.sync([this] {
            connection_ =
                connector_.connect({[this] { note("interrupted"); }, [this] { note("invalidated"); },
                                    [this](const std::string& why) { note("failed: " + why); }});
        });
    }

    /// Destroys the connection. On the main loop.
    void disconnect() { connection_.reset(); }

    void ping() {
        use([this](FanHelperProtocol& helper) { helper.pingWithReply(noteText()); });
    }
    void status() {
        use([this](FanHelperProtocol& helper) {
            helper.getStatusWithReply([this](const StatusRecord& status) {
                last_ = status;
                note(fmt::format("status of {}", status.entries().size()));
            });
        });
    }
    void setFanFloor(double percent) {
        use([&](FanHelperProtocol& helper) { helper.setFanFloorWithPercentWithReply(percent, noteText()); });
    }
    void stopBoost() {
        use([this](FanHelperProtocol& helper) { helper.stopBoostWithReply(noteText()); });
    }
    void setLidStayAwake(bool on) {
        use([&](FanHelperProtocol& helper) { helper.setLidStayAwakeWithReply(on, noteText()); });
    }

    /// Runs `work` on the main loop and waits for it.
    template <typename Work>
    void use(const Work& work) {
        mainLoop_.sync([&] { work(connection_->remoteObject()); });
    }

    /// Runs on the main loop after each note. Set before anything can be told.
    void afterEachNote(std::function<void()> work) {
        mainLoop_.sync([&] { afterEachNote_ = std::move(work); });
    }

    /// Waits until the bus thread and the main loop have done what they have to do now.
    void settle() {
        std::promise<void> done;
        busThread_.post([&] { done.set_value(); });
        done.get_future().wait();
        mainLoop_.sync([] {});
    }

    /// What was told, in order: "ok: ..." and "no: ..." for replies with a text.
    [[nodiscard]] const Notes<std::string>& told() const { return told_; }

    /// What `told` has, which is forgotten.
    [[nodiscard]] std::vector<std::string> takeTold() { return told_.take(); }

    /// The status told last.
    [[nodiscard]] StatusRecord lastStatus() {
        StatusRecord status;
        mainLoop_.sync([&] { status = last_; });
        return status;
    }

private:
    FanHelperProtocol::Reply noteText() {
        return [this](bool ok, const std::string& text) { note((ok ? "ok: " : "no: ") + text); };
    }

    void note(std::string what) {
        // First, so that whoever waits for the note finds it done.
        if (afterEachNote_) {
            afterEachNote_();
        }
        told_.add(std::move(what));
    }

    Notes<std::string> told_;
    AsioSerialQueue mainLoop_{"main"};
    BusThread busThread_;
    DBusHelperConnector connector_;
    std::unique_ptr<HelperConnection> connection_;
    std::function<void()> afterEachNote_;
    StatusRecord last_;
};

}  // namespace corvane
