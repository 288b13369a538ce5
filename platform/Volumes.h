#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// What the system says of one mounted file system. Members are none when it does not say.
struct Volume {
    /// Where it is mounted, absolute.
    std::string path;
    /// What the user knows it by; may be empty.
    std::optional<std::string> name;
    /// On a drive that belongs to this computer.
    std::optional<bool> isInternal;
    /// Meant for the user to look into.
    std::optional<bool> isBrowsable;

    bool operator==(const Volume&) const = default;
};

/// The mounted file systems. Belongs to the main loop and never waits for a drive on it.
class Volumes {
public:
    Volumes() = default;
    Volumes(const Volumes&) = delete;
    Volumes& operator=(const Volumes&) = delete;
    virtual ~Volumes() = default;

    /// In the system's order, without what it hides from users. Empty when there is no way to find out.
    [[nodiscard]] virtual std::vector<Volume> mounted() const = 0;

    /// A volume is mounted at `path`.
    [[nodiscard]] virtual bool isMounted(const std::string& path) const = 0;

    /// Lists the directory at `path` in the background, at low priority, however long that takes, and throws
    /// the listing away; an error is passed over. A drive that does not answer does not hold up the touch of
    /// another. Then runs `done` on the main loop, unless the volumes are gone; never for a drive that never
    /// answers.
    virtual void touch(const std::string& path, std::function<void()> done) = 0;
};

}  // namespace corvane
