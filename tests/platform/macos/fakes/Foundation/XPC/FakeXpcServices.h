#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#import <Foundation/Foundation.h>
#include <unistd.h>

#include "tests/platform/macos/fakes/Foundation/XPC/FakeXpcEnd.h"

namespace corvane {

/// What launchd knows and who listens, for FakeXpc.
class FakeXpcServices {
public:
    /// The one there is; null when XPC is not faked.
    static FakeXpcServices* current();

    struct Service {
        std::function<void()> launch;
        NSXPCListener* listener = nil;
        bool isLaunching = false;
        /// Both ends of each connection that was accepted.
        std::vector<std::pair<std::shared_ptr<FakeXpcEnd>, NSXPCConnection*>> served;
        /// What waits for somebody to listen.
        std::vector<std::function<void()>> waiting;
    };

    /// Sends a message on the client's connection: `perform` runs with the exported object on the service's
    /// queue.
    void send(const std::shared_ptr<FakeXpcEnd>& client, const std::shared_ptr<FakeXpcCall>& call,
              SEL selector, std::function<void(id exported)> perform);

    void listen(const std::string& name, NSXPCListener* listener);
    /// The listener goes; its connections stay.
    void unlisten(const std::string& name, NSXPCListener* listener);
    /// One end of a connection goes, as it is asked to.
    void invalidate(const std::shared_ptr<FakeXpcEnd>& end);
    void kill(const std::string& name);

    std::map<std::string, Service> known;
    /// Whose connections those are that are made now.
    pid_t caller = getpid();
    bool isHung = false;

private:
    void transmit(const std::shared_ptr<FakeXpcEnd>& client, const std::shared_ptr<FakeXpcCall>& call,
                  SEL selector, const std::function<void(id exported)>& perform);
    /// Null when the client hears of that, or waits.
    std::shared_ptr<FakeXpcEnd> connect(const std::shared_ptr<FakeXpcEnd>& client,
                                        const std::function<void()>& sendAgain);
    std::shared_ptr<FakeXpcEnd> accept(Service& service, const std::shared_ptr<FakeXpcEnd>& client);
    void launch(Service& service);
    /// False when no connection that is served has this end.
    bool drop(const std::shared_ptr<FakeXpcEnd>& server);

    /// Never to arrive.
    std::vector<std::shared_ptr<FakeXpcCall>> lost_;
};

}  // namespace corvane
