#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "platform/macos/DispatchSerialQueue.h"
#include "platform/macos/desktop/XpcHelperConnector.h"
#include "tests/platform/macos/fakes/dispatch/FakeDispatch.h"

namespace corvane {

/// An application as far as its connection to the helper goes: a main loop, and notes of all that it is told.
class XpcClient {
public:
    XpcClient() { connect(); }

    /// Replaces the connection.
    void connect() {
        connection_ = connector_.connect({[this] { note("interrupted"); }, [this] { note("invalidated"); },
                                          [this](const std::string& why) { note("failed: " + why); }});
    }
    void disconnect() { connection_.reset(); }

    FanHelperProtocol& helper() { return connection_->remoteObject(); }
    void ping() { helper().pingWithReply(noteText()); }
    void status() {
        helper().getStatusWithReply([this](const StatusRecord& status) {
            last = status;
            note(fmt::format("status of {}", status.entries().size()));
        });
    }
    void setFanFloor(double percent) { helper().setFanFloorWithPercentWithReply(percent, noteText()); }
    void stopBoost() { helper().stopBoostWithReply(noteText()); }
    void setLidStayAwake(bool on) { helper().setLidStayAwakeWithReply(on, noteText()); }

    /// What was told since this was last called: "ok: ..." and "no: ..." for replies with a text.
    std::vector<std::string> takeTold() { return std::exchange(told_, {}); }

    /// Runs after each note.
    std::function<void()> afterEachNote;
    StatusRecord last;

private:
    FanHelperProtocol::Reply noteText() {
        return [this](bool ok, const std::string& text) { note((ok ? "ok: " : "no: ") + text); };
    }

    void note(std::string what) {
        EXPECT_TRUE(FakeDispatch::current().isOnMainThread());
        told_.push_back(std::move(what));
        if (afterEachNote) {
            afterEachNote();
        }
    }

    std::vector<std::string> told_;
    DispatchSerialQueue mainLoop_{DispatchSerialQueue::OfMainThread{}};
    XpcHelperConnector connector_{mainLoop_};
    std::unique_ptr<HelperConnection> connection_;
};

}  // namespace corvane
