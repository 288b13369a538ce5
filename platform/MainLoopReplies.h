#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>

#include "platform/Lifetime.h"
#include "platform/MainLoopExit.h"
#include "platform/SerialQueue.h"

namespace corvane {

/// Replies that run on the main loop with what other threads find out, at some time or never. None runs after
/// this is destroyed, and none leaves the main loop: all that other threads carry is its number. Main loop.
template <typename Answer>
class MainLoopReplies {
public:
    using Reply = std::function<void(Answer)>;

    /// `mainLoop` outlives this.
    explicit MainLoopReplies(SerialQueue& mainLoop) : exit_(std::make_shared<MainLoopExit>(mainLoop)) {}
    MainLoopReplies(const MainLoopReplies&) = delete;
    MainLoopReplies& operator=(const MainLoopReplies&) = delete;
    ~MainLoopReplies() { exit_->close(); }

    /// What brings an answer to `reply`, which runs later, and once. Any thread may call it, however late.
    [[nodiscard]] std::function<void(Answer)> await(Reply reply) {
        const std::uint64_t number = ++lastNumber_;
        replies_.emplace(number, std::move(reply));
        return [exit = exit_, tell = lifetime_.bound([this, number](Answer answer) {
            finish(number, std::move(answer));
        })](Answer answer) {
            exit->toMainLoop([tell, answer = std::move(answer)]() mutable { tell(std::move(answer)); });
        };
    }

private:
    /// The reply may await another one, or end all of them.
    void finish(std::uint64_t number, Answer answer) {
        if (auto waiting = replies_.extract(number)) {
            waiting.mapped()(std::move(answer));
        }
    }

    std::uint64_t lastNumber_ = 0;
    std::map<std::uint64_t, Reply> replies_;
    std::shared_ptr<MainLoopExit> exit_;
    Lifetime lifetime_;
};

}  // namespace corvane
