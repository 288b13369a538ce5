#pragma once

#include <memory>
#include <utility>

namespace corvane {

/// How long an object lives, for work on its way that may outlive it. A member of the object, which belongs
/// to one thread: bound work runs on that thread, or on none any more when the object is destroyed.
class Lifetime {
public:
    Lifetime() = default;
    Lifetime(const Lifetime&) = delete;
    Lifetime& operator=(const Lifetime&) = delete;
    ~Lifetime() = default;

    /// A function that does what `work` does with the same arguments, and nothing once this is gone. What may
    /// be copied, moved and destroyed on other threads is up to `work` alone, which may end this lifetime.
    template <typename Work>
    [[nodiscard]] auto bound(Work work) const {
        return [life = std::weak_ptr(life_), work = std::move(work)](auto&&... values) mutable {
            if (!life.expired()) {
                work(std::forward<decltype(values)>(values)...);
            }
        };
    }

private:
    struct Life {};
    std::shared_ptr<Life> life_ = std::make_shared<Life>();
};

}  // namespace corvane
