#include "platform/DirectoryTouches.h"

#include <utility>

namespace corvane {

DirectoryTouches::DirectoryTouches(SerialQueue& mainLoop, Background background, List list)
    : background_(std::move(background)),
      list_(std::make_shared<const List>(std::move(list))),
      exit_(std::make_shared<MainLoopExit>(mainLoop)) {}

DirectoryTouches::~DirectoryTouches() {
    exit_->close();
}

void DirectoryTouches::begin(const std::string& path, std::function<void()> done) {
    if (waiting_.size() < most && (waiting_.contains(path) || start(path))) {
        waiting_.emplace(path, std::move(done));
    } else {
        exit_->toMainLoop(lifetime_.bound(std::move(done)));
    }
}

bool DirectoryTouches::start(const std::string& path) {
    return background_(
        [path, list = list_, exit = exit_, finished = lifetime_.bound([this, path] { finish(path); })] {
            (*list)(path);
            exit->toMainLoop(finished);
        });
}

void DirectoryTouches::finish(const std::string& path) {
    // What runs now may touch again, which is another touch then, or end the touches.
    Waiting ended;
    while (waiting_.contains(path)) {
        ended.insert(waiting_.extract(waiting_.find(path)));
    }
    for (const auto& [touched, done] : ended) {
        done();
    }
}

}  // namespace corvane
