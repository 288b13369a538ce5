#pragma once

#include <map>
#include <string>
#include <vector>

#include <CoreFoundation/CFMessagePort.h>

#include "tests/platform/macos/fakes/CoreFoundation/CfObject.h"
#include "tests/platform/macos/fakes/Current.h"

namespace corvane {

/// The message ports of a user's session, this process's and others'. One at a time, main thread. At its end
/// the test fails if a port of this process is still there.
class FakeMessagePorts {
public:
    /// What another process does with a request: answers it, never looks at it, or ends when it comes.
    enum class Other { answers, hangs, ends };

    FakeMessagePorts() = default;
    FakeMessagePorts(const FakeMessagePorts&) = delete;
    FakeMessagePorts& operator=(const FakeMessagePorts&) = delete;
    ~FakeMessagePorts();

    /// Another process has the name from now on.
    void occupy(const std::string& name, Other other) { others_[name] = other; }
    /// No process can have a name any more, nor find one.
    void breakDown() { isBroken_ = true; }

    /// Another process sends a request to this one; false when nobody answers.
    bool request(const std::string& name);
    /// Requests that other processes got.
    [[nodiscard]] int sent() const { return sent_; }

    // For Core Foundation's functions.
    class LocalPort;
    class RemotePort;
    class Source;
    CFMessagePortRef create(const std::string& name, CFMessagePortCallBack answer, void* info);
    CFMessagePortRef find(const std::string& name) const;
    SInt32 send(const std::string& name);
    void invalidate(CFMessagePortRef port);
    void listen(CFTypeRef source) { sources_.push_back(retainedCf(source)); }

private:
    std::map<std::string, Other> others_;
    /// Not retained: they are who made them.
    std::map<std::string, CFMessagePortRef> ports_;
    /// Of the main run loop.
    CfElements sources_;
    bool isBroken_ = false;
    int sent_ = 0;
    Current<FakeMessagePorts> current_{*this};
};

}  // namespace corvane
