#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include <sys/types.h>

#include "tests/platform/macos/fakes/Current.h"

namespace corvane {

class FakeXpcServices;

/// launchd and XPC for one computer, all of whose processes live in this one, on the virtual time of the
/// Dispatch there is. One at a time; outlived by no connection and no listener.
class FakeXpc {
public:
    FakeXpc();
    FakeXpc(const FakeXpc&) = delete;
    FakeXpc& operator=(const FakeXpc&) = delete;
    ~FakeXpc();

    /// launchd knows the service in the system's domain from now on. When a message comes for it and nobody
    /// listens, `launch` runs on the main thread, which has somebody listen; without, messages wait.
    void install(const std::string& name, std::function<void()> launch = nullptr);
    /// And no more.
    void remove(const std::string& name);

    /// The process that listens ends without a word.
    void kill(const std::string& name);

    /// Which process makes the connections from now on; this one to begin with.
    void callFrom(pid_t process);

    /// Messages are lost on their way to the service, as if it hung.
    void setHung(bool isHung);

    /// What connections the service serves now.
    [[nodiscard]] std::size_t served(const std::string& name) const;

    /// For Foundation's classes.
    [[nodiscard]] FakeXpcServices& services() { return *services_; }

private:
    std::unique_ptr<FakeXpcServices> services_;
    Current<FakeXpc> current_{*this};
};

}  // namespace corvane
