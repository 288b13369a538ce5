#include "bench/MeasuredHelper.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <thread>
#include <utility>

#include <fmt/format.h>
#include <sdbus-c++/Error.h>

#include "bench/CountingCaller.h"

namespace corvane {

namespace {

using namespace std::chrono_literals;

/// Calls `attempt` every 10 ms until it is true; throws after 10 s.
template <typename Attempt>
void await(const std::string& what, const Attempt& attempt) {
    const auto deadline = std::chrono::steady_clock::now() + 10s;
    while (!attempt()) {
        if (std::chrono::steady_clock::now() > deadline) {
            throw std::runtime_error(what + " is not there");
        }
        std::this_thread::sleep_for(10ms);
    }
}

bool canCall(const std::string& address) {
    try {
        CountingCaller caller(address);
        caller.ping();
        return caller.awaitAnswer() && caller.errors() == 0;
    } catch (const sdbus::Error&) {
        return false;
    }
}

/// The limits that a bus has by itself are those of a system's bus.
std::string configurationOption(BusLimits limits, const HwmonTree& tree) {
    if (limits == BusLimits::ofSession) {
        return "--session";
    }
    const std::string file = tree.runFolder() + "/bus.conf";
    std::ofstream(file) << R"(<busconfig>
  <type>session</type>
  <listen>unix:path=)" << tree.runFolder()
                        << R"(/bus</listen>
  <auth>EXTERNAL</auth>
  <policy context="default"><allow own="*"/><allow send_destination="*"/><allow eavesdrop="false"/></policy>
</busconfig>
)";
    return "--config-file=" + file;
}

MeasuredProcess startHelper(const std::string& corvane, const HwmonTree& tree, const std::string& address) {
    await("the bus", [&] { return std::filesystem::exists(tree.runFolder() + "/bus"); });
    return MeasuredProcess({corvane, "--daemon"},
                           {{"CORVANE_SYSFS", tree.root()},
                            {"CORVANE_HELPER_BUS", address},
                            {"RUNTIME_DIRECTORY", tree.runFolder()},
                            // This machine's login manager is not asked: nothing of it is touched.
                            {"DBUS_SYSTEM_BUS_ADDRESS", address}});
}

}  // namespace

MeasuredHelper::MeasuredHelper(const std::string& corvane, BusLimits limits)
    : bus_({"dbus-daemon", configurationOption(limits, tree_), "--nofork", "--nopidfile",
            "--address=" + address_}),
      helper_(startHelper(corvane, tree_, address_)) {
    await("the helper", [&] { return canCall(address_); });
}

double MeasuredHelper::statusFigure(const std::string& name) const {
    std::ifstream status(fmt::format("/proc/{}/status", id()));
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(name + ":")) {
            return std::stod(line.substr(name.size() + 1));
        }
    }
    throw std::runtime_error("no " + name + " of the helper");
}

std::uint64_t MeasuredHelper::processorTime() const {
    std::uint64_t sum = 0;
    for (const auto& thread : std::filesystem::directory_iterator(fmt::format("/proc/{}/task", id()))) {
        std::uint64_t time = 0;
        std::ifstream(thread.path() / "schedstat") >> time;
        sum += time;
    }
    return sum;
}

int MeasuredHelper::stop() {
    return helper_.end(SIGTERM);
}

}  // namespace corvane
