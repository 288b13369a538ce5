#include "tests/platform/macos/fakes/Foundation/XPC/FakeXpcServices.h"

#include <algorithm>
#include <utility>

#include <gtest/gtest.h>

#include "tests/platform/macos/fakes/Foundation/XPC/FakeXpc.h"
#include "tests/platform/macos/fakes/Foundation/XPC/NSXPCFakes.h"
#include "tests/platform/macos/fakes/dispatch/FakeDispatch.h"

namespace corvane {

FakeXpcServices* FakeXpcServices::current() {
    FakeXpc* const xpc = Current<FakeXpc>::get();
    return xpc == nullptr ? nullptr : &xpc->services();
}

void FakeXpcServices::send(const std::shared_ptr<FakeXpcEnd>& client,
                           const std::shared_ptr<FakeXpcCall>& call, SEL selector,
                           std::function<void(id exported)> perform) {
    EXPECT_TRUE(client->isResumed) << "a message was sent on a connection that was not resumed";
    client->async([this, client, call, selector, perform = std::move(perform)] {
        transmit(client, call, selector, perform);
    });
}

void FakeXpcServices::transmit(const std::shared_ptr<FakeXpcEnd>& client,
                               const std::shared_ptr<FakeXpcCall>& call, SEL selector,
                               const std::function<void(id exported)>& perform) {
    if (client->isInvalid) {
        call->fail(NSXPCConnectionInvalid);
        return;
    }
    if (isHung) {
        lost_.push_back(call);
        return;
    }
    auto server = client->peer.lock();
    if (!server) {
        server = connect(client, [this, client, call, selector, perform] {
            client->async([=, this] { transmit(client, call, selector, perform); });
        });
    }
    if (server) {
        server->async([server, call, selector, perform] {
            if (!server->isInvalid) {
                EXPECT_TRUE([server->exportedInterface hasSelector:selector])
                    << "the service exports no such message";
                perform(server->exportedObject);
            }
        });
    }
}

std::shared_ptr<FakeXpcEnd> FakeXpcServices::connect(const std::shared_ptr<FakeXpcEnd>& client,
                                                     const std::function<void()>& sendAgain) {
    const auto found = known.find(client->service);
    if (found == known.end() || !client->isPrivileged) {
        client->invalidate();
        return nullptr;
    }
    Service& service = found->second;
    if (service.listener == nil) {
        service.waiting.push_back(sendAgain);
        launch(service);
        return nullptr;
    }
    return accept(service, client);
}

std::shared_ptr<FakeXpcEnd> FakeXpcServices::accept(Service& service,
                                                    const std::shared_ptr<FakeXpcEnd>& client) {
    auto server = std::make_shared<FakeXpcEnd>(client->service);
    server->peerProcess = client->process;
    NSXPCConnection* connection = [[NSXPCConnection alloc] initWithEnd:server];
    if (![service.listener offer:connection]) {
        server->die();
        client->interrupt();
        return nullptr;
    }
    EXPECT_TRUE(server->isResumed) << "a connection was accepted and not resumed";
    EXPECT_TRUE(server->exportedInterface != nil && server->exportedObject != nil) << "nothing is exported";
    client->peer = server;
    server->peer = client;
    service.served.emplace_back(server, connection);
    return server;
}

void FakeXpcServices::launch(Service& service) {
    if (!service.launch || std::exchange(service.isLaunching, true)) {
        return;
    }
    FakeDispatch& dispatch = FakeDispatch::current();
    dispatch.async(dispatch.mainQueue(), service.launch);
}

void FakeXpcServices::listen(const std::string& name, NSXPCListener* listener) {
    const auto found = known.find(name);
    if (found == known.end()) {
        ADD_FAILURE() << "launchd does not let this process listen on " << name;
        return;
    }
    EXPECT_EQ(found->second.listener, nil) << "two listen on " << name;
    found->second.listener = listener;
    found->second.isLaunching = false;
    for (const auto& sendAgain : std::exchange(found->second.waiting, {})) {
        sendAgain();
    }
}

void FakeXpcServices::unlisten(const std::string& name, NSXPCListener* listener) {
    const auto found = known.find(name);
    if (found != known.end() && found->second.listener == listener) {
        found->second.listener = nil;
    }
}

bool FakeXpcServices::drop(const std::shared_ptr<FakeXpcEnd>& server) {
    for (auto& [name, service] : known) {
        const auto isServer = [&](const auto& served) { return served.first == server; };
        if (std::erase_if(service.served, isServer) != 0) {
            return true;
        }
    }
    return false;
}

void FakeXpcServices::invalidate(const std::shared_ptr<FakeXpcEnd>& end) {
    end->invalidate();
    const auto other = end->peer.lock();
    const bool isServed = drop(end);
    if (!other) {
        return;
    }
    end->peer.reset();
    if (isServed) {
        other->interrupt();
    } else {
        other->invalidate();
        drop(other);
    }
}

void FakeXpcServices::kill(const std::string& name) {
    Service& service = known.at(name);
    service.listener = nil;
    for (const auto& [server, connection] : std::exchange(service.served, {})) {
        server->die();
        if (const auto client = server->peer.lock()) {
            client->interrupt();
        }
    }
}

FakeXpc::FakeXpc() : services_(std::make_unique<FakeXpcServices>()) {}

FakeXpc::~FakeXpc() {
    // What still wants to be told.
    FakeDispatch::current().time().settle();
}

void FakeXpc::install(const std::string& name, std::function<void()> launch) {
    services_->known[name].launch = std::move(launch);
}

void FakeXpc::remove(const std::string& name) {
    services_->known.erase(name);
}

void FakeXpc::kill(const std::string& name) {
    services_->kill(name);
}

void FakeXpc::callFrom(pid_t process) {
    services_->caller = process;
}

void FakeXpc::setHung(bool isHung) {
    services_->isHung = isHung;
}

std::size_t FakeXpc::served(const std::string& name) const {
    const auto found = services_->known.find(name);
    return found == services_->known.end() ? 0 : found->second.served.size();
}

}  // namespace corvane
