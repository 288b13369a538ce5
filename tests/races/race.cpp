#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <thread>

#include <fmt/format.h>
#include <sdbus-c++/sdbus-c++.h>

#include "platform/linux/AsioSerialQueue.h"
#include "platform/linux/HelperBus.h"
#include "platform/linux/desktop/QtSerialQueue.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/QtThread.h"

// Makes a race on purpose, by way of a library that is not compiled for ThreadSanitizer or hands work over by
// itself.

namespace corvane {
namespace {

/// What two threads count with nothing between them.
class Race {
public:
    void countThere() {
        count_ = count_ + 1;
        isCounted_.store(true, std::memory_order_relaxed);
    }

    /// Waits in a way that puts nothing in order: so it is a race whoever comes first.
    void countHere() {
        count_ = count_ + 1;
        while (!isCounted_.load(std::memory_order_relaxed)) {
            std::this_thread::yield();
        }
    }

private:
    /// Volatile, so that the compiler does not leave out what nobody reads.
    volatile int count_ = 0;
    std::atomic<bool> isCounted_ = false;
};

/// There is what a message on the bus calls.
void raceOverTheBus() {
    constexpr const char* interface = "de.tavrin.corvane.Race";
    const PrivateBus bus;
    if (bus.problem()) {
        fmt::print("Skipped: {}\n", *bus.problem());
        return;
    }
    Race race;
    const auto server = HelperBus{bus.address()}.connect();
    const auto object = sdbus::createObject(*server, "/");
    object->registerMethod("count").onInterface(interface).implementedAs([&race] { race.countThere(); });
    object->finishRegistration();
    server->enterEventLoopAsync();
    const auto client = HelperBus{bus.address()}.connect();
    const auto proxy = sdbus::createProxy(*client, server->getUniqueName(), "/");
    proxy->callMethod("count").onInterface(interface).dontExpectReply();
    race.countHere();
    server->leaveEventLoop();
}

/// There is work on asio's event loop.
void raceOverAsio() {
    Race race;
    AsioSerialQueue queue("race");
    queue.async([&race] { race.countThere(); });
    race.countHere();
}

/// There is work on Qt's.
void raceOverQt() {
    Race race;
    std::unique_ptr<QtSerialQueue> queue;
    const QtThread thread([&queue] { queue = std::make_unique<QtSerialQueue>(); },
                          [&queue] { queue.reset(); });
    queue->async([&race] { race.countThere(); });
    race.countHere();
}

}  // namespace
}  // namespace corvane

int main(int count, char* arguments[]) {
    const std::map<std::string_view, std::function<void()>> roads{
        {"OverTheBus", corvane::raceOverTheBus},
        {"OverAsio", corvane::raceOverAsio},
        {"OverQt", corvane::raceOverQt},
    };
    roads.at(count == 2 ? arguments[1] : "")();
}
