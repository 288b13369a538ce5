#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/hwmon/Sysfs.h"
#include "tests/platform/linux/hwmon/Machines.h"

namespace corvane {

/// Thrown out of a write to stand for the end of the process at this very moment.
struct ProcessKilled {};

/// Device attributes in memory, with drivers that misbehave on demand. Outlives the connections to it.
class FakeHardware {
public:
    struct Attribute {
        std::string text;
        unsigned mode = 0444;
        int readError = 0;
        int writeError = 0;
        /// What a write leaves in the attribute; without one, what was written.
        std::function<std::string(const std::string& written)> onWrite;
        int reads = 0;
        /// Its file no longer exists, though handles do.
        bool isGone = false;
    };

    explicit FakeHardware(const machines::Machine& machine);
    FakeHardware() = default;

    void plug(const machines::ChipSpec& chip);
    /// Handles to its attributes answer ENODEV from now on.
    void unplug(const machines::ChipSpec& chip);
    void add(const std::string& path, const std::string& text, unsigned mode = 0444);
    void link(const std::string& path, const std::string& target) { links_[path] = target; }

    /// The attribute with this path; fails the test when there is none.
    Attribute& at(const std::string& path);

    /// Every write that a driver took or refused, as "name=value", since the last call.
    std::vector<std::string> takeWrites();

    /// The process dies instead of making its write number `count`, counted from now on, 0 the first.
    void killAtWrite(int count) { writesToDeath_ = count; }

    /// A new process's view. Only one view's process may be killed at a time.
    std::unique_ptr<Sysfs> view();

private:
    friend class FakeSysfs;
    friend class FakeHandle;

    [[nodiscard]] std::string resolve(const std::string& path) const;
    int write(const std::string& name, Attribute& attribute, const std::string& text);

    std::map<std::string, std::shared_ptr<Attribute>> attributes_;
    std::map<std::string, std::string> links_;
    std::vector<std::string> writes_;
    int writesToDeath_ = -1;
};

}  // namespace corvane
