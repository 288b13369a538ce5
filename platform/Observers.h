#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "platform/Observation.h"

namespace corvane {

/// Who observes one thing, for the platforms' monitors. One thread.
class Observers {
public:
    /// The observation does nothing more once the observers themselves are gone.
    [[nodiscard]] std::unique_ptr<Observation> add(std::function<void()> changed) {
        auto observer = std::make_shared<Observer>(std::move(changed));
        std::erase_if(observers_, [](const auto& known) { return known.expired(); });
        observers_.push_back(observer);
        return std::make_unique<SharedObservation>(std::move(observer));
    }

    /// Runs what each observer asked for, in the order they were added. Meanwhile an observer may end itself
    /// or others, which then do not run any more, and may add others, which do not run yet.
    void notify() const {
        for (const std::weak_ptr<Observer>& known : std::vector(observers_)) {
            // Held while it runs: it may end itself.
            if (const auto observer = known.lock()) {
                observer->changed();
            }
        }
    }

private:
    struct Observer {
        explicit Observer(std::function<void()> work) : changed(std::move(work)) {}
        std::function<void()> changed;
    };

    /// The one owner of its observer.
    class SharedObservation final : public Observation {
    public:
        explicit SharedObservation(std::shared_ptr<Observer> observer) : observer_(std::move(observer)) {}

    private:
        std::shared_ptr<Observer> observer_;
    };

    std::vector<std::weak_ptr<Observer>> observers_;
};

}  // namespace corvane
