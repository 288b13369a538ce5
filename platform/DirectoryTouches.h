#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "platform/Lifetime.h"
#include "platform/MainLoopExit.h"
#include "platform/SerialQueue.h"

namespace corvane {

/// Touches of drives that may never answer, for the platforms' volumes. A drive is touched once at a time:
/// further touches join the one under way. Main loop.
class DirectoryTouches {
public:
    /// Under way at a time; beyond that, and when there is no thread to spare, a touch is over at once.
    static constexpr std::size_t most = 256;

    /// Runs work on some other thread, sooner or later; false when it cannot.
    using Background = std::function<bool(std::function<void()> work)>;
    /// Touches the directory at a path, on any thread, for as long as that takes.
    using List = std::function<void(const std::string& path)>;

    /// `mainLoop` outlives the touches.
    DirectoryTouches(SerialQueue& mainLoop, Background background, List list);
    DirectoryTouches(const DirectoryTouches&) = delete;
    DirectoryTouches& operator=(const DirectoryTouches&) = delete;
    /// Nothing that was asked for runs any more; the touches under way go on.
    ~DirectoryTouches();

    /// `done` runs on the main loop after a touch of `path`.
    void begin(const std::string& path, std::function<void()> done);

private:
    using Waiting = std::multimap<std::string, std::function<void()>>;

    [[nodiscard]] bool start(const std::string& path);
    void finish(const std::string& path);

    Background background_;
    std::shared_ptr<const List> list_;
    /// What runs after the touches under way, by path.
    Waiting waiting_;
    std::shared_ptr<MainLoopExit> exit_;
    Lifetime lifetime_;
};

}  // namespace corvane
