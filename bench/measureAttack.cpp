// Measures how steady the real helper's control loop stays while callers do their worst.
//
//   measure-attack CORVANE [SECONDS] [SEED]
//
// CORVANE is the program, SECONDS how long each load lasts (60), SEED what the contents depend on (1). The
// private bus has the limits of a system's bus.

#include <chrono>
#include <cstdlib>
#include <exception>
#include <functional>
#include <future>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <fmt/format.h>

#include "bench/CountingCaller.h"
#include "bench/Crowd.h"
#include "bench/Figures.h"
#include "bench/LockGiver.h"
#include "bench/MeasuredHelper.h"
#include "bench/TickRecorder.h"
#include "tests/hostile/Attack.h"

namespace corvane {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::duration<double> tick{0.4};
constexpr double floorPercent = 40.0;
constexpr std::size_t crowdSize = 100;
constexpr int connectionsInARow = 150;

struct Load {
    std::string name;
    /// Lasts about so long.
    std::function<void(Clock::duration)> run;
};

/// How far apart the ticks were, ms.
struct Periods {
    double median;
    double most99;
    double most;
};

std::vector<Load> loadsOn(const std::string& bus, std::uint64_t seed) {
    const auto attack = [=](void (Attack::*kind)(Clock::duration)) {
        return [=](Clock::duration duration) { (Attack(bus, seed).*kind)(duration); };
    };
    return {{"idle", [](Clock::duration duration) { std::this_thread::sleep_for(duration); }},
            {fmt::format("{} well-behaved callers", crowdSize),
             [=](Clock::duration duration) { Crowd(bus, crowdSize).callUntil(Clock::now() + duration); }},
            {"nonsense", attack(&Attack::sendNonsense)},
            {"flood", attack(&Attack::flood)},
            {"vanishing callers", attack(&Attack::vanish)},
            {"thousands of connections",
             [=](Clock::duration duration) {
                 Attack attacker(bus, seed);
                 for (const auto end = Clock::now() + duration; Clock::now() < end;) {
                     attacker.connect(connectionsInARow);
                 }
             }},
            {"flood that toggles the lid", attack(&Attack::toggleLid)}};
}

/// The client that holds the floor stays in touch all the while. Throws when it is cut off, or when less than
/// half of the ticks came.
std::vector<double> distancesUnder(const Load& load, const MeasuredHelper& helper, CountingCaller& client,
                                   Clock::duration duration) {
    const auto start = Clock::now();
    TickRecorder recorder(helper.tree().dutyFile());
    auto honest = std::async(std::launch::async, [&] { client.keepInTouch(start + duration); });
    load.run(duration);
    honest.get();
    if (!recorder.goesFirst()) {
        fmt::print(stderr, "The recorder of the ticks has no real-time priority.\n");
    }
    std::vector<double> distances = recorder.stop();
    if (static_cast<double>(distances.size()) * 2 < (Clock::now() - start) / tick) {
        throw std::runtime_error("the control loop has stopped");
    }
    return distances;
}

void measure(const std::string& corvane, Clock::duration duration, std::uint64_t seed) {
    MeasuredHelper helper(corvane, BusLimits::ofSystem);
    const LockGiver logind(helper.busAddress());
    CountingCaller client(helper.busAddress());
    std::optional<Periods> idle;
    fmt::print("{:<28} {:>6} {:>9} {:>9} {:>9}   ratio to idle: {:>7} {:>7} {:>7} {:>12}\n", "load", "ticks",
               "median", "99 %", "most", "median", "99 %", "most", "processor");
    for (const Load& load : loadsOn(helper.busAddress(), seed)) {
        client.holdFloor(floorPercent);
        const std::uint64_t processorBefore = helper.processorTime();
        const Clock::time_point start = Clock::now();
        const std::vector<double> distances = distancesUnder(load, helper, client, duration);
        const auto processor = static_cast<double>(helper.processorTime() - processorBefore);
        const auto elapsed = static_cast<double>(std::chrono::nanoseconds(Clock::now() - start).count());
        const Periods periods{quantileOf(distances, 0.5), quantileOf(distances, 0.99),
                              quantileOf(distances, 1.0)};
        idle = idle.value_or(periods);
        fmt::print(
            "{:<28} {:>6} {:>6.1f} ms {:>6.1f} ms {:>6.1f} ms                  {:>7.3f} {:>7.3f} {:>7.3f} "
            "{:>10.1f} %\n",
            load.name, distances.size(), periods.median, periods.most99, periods.most,
            periods.median / idle->median, periods.most99 / idle->most99, periods.most / idle->most,
            processor / elapsed * 100);
    }
    if (helper.stop() != EXIT_SUCCESS) {
        throw std::runtime_error("the helper ended badly");
    }
}

}  // namespace
}  // namespace corvane

int main(int argc, char** argv) {
    if (argc < 2 || argc > 4) {
        fmt::print(stderr, "usage: measure-attack CORVANE [SECONDS] [SEED]\n");
        return EXIT_FAILURE;
    }
    try {
        corvane::measure(argv[1], std::chrono::seconds(argc > 2 ? std::stol(argv[2]) : 60),
                         argc > 3 ? std::stoull(argv[3]) : 1);
    } catch (const std::exception& error) {
        fmt::print(stderr, "measure-attack: {}\n", error.what());
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
