#pragma once

#include <memory>
#include <string>

#include <sdbus-c++/sdbus-c++.h>

namespace corvane {

/// Stands for the login manager on a private bus: gives whoever asks a lock that nobody looks at. Answers on
/// a thread of its own.
class LockGiver {
public:
    /// `address` is the bus's. Throws sdbus::Error.
    explicit LockGiver(const std::string& address);

private:
    std::unique_ptr<sdbus::IConnection> connection_;
    std::unique_ptr<sdbus::IObject> object_;
};

}  // namespace corvane
