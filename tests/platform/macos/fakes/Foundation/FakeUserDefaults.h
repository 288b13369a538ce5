#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tests/platform/macos/fakes/Current.h"

namespace corvane {

/// The settings that the system stores for all programs: what was synchronised outlives the process. One at a
/// time; empty to begin with.
class FakeUserDefaults {
public:
    FakeUserDefaults();
    FakeUserDefaults(const FakeUserDefaults&) = delete;
    FakeUserDefaults& operator=(const FakeUserDefaults&) = delete;
    ~FakeUserDefaults();

    /// The process ends, and another one starts: what was not synchronised is lost.
    void endProcess();
    /// From now on nothing is stored, or is again.
    void setFailing(bool isFailing);
    /// Somebody else stores what is none of ours: a list.
    void storeList(const std::string& domain, const std::string& key);
    /// The same for an integer that only fits without a sign.
    void storeLargest(const std::string& domain, const std::string& key);
    /// For all programs, when one has no value of its own.
    void storeForAll(const std::string& key, bool value);

    /// The keys that are stored for a program.
    [[nodiscard]] std::vector<std::string> storedKeys(const std::string& domain) const;

    class State;

private:
    std::unique_ptr<State> state_;
};

}  // namespace corvane
