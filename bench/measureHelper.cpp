// Measures the real helper process: its memory, the time from a call to the fan, what a held fan costs, and
// how steady its control loop stays under load.
//
//   measure-helper CORVANE [RUNS] [SECONDS]
//
// CORVANE is the program, RUNS how often everything is measured (3), SECONDS how long each load lasts (30).

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <fmt/format.h>
#include <sys/resource.h>

#include "bench/CountingCaller.h"
#include "bench/Crowd.h"
#include "bench/DutyWatch.h"
#include "bench/Figures.h"
#include "bench/MeasuredHelper.h"
#include "bench/SystemCalls.h"
#include "bench/TickRecorder.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using Clock = DutyWatch::Clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr double tickMs = 400.0;
constexpr int callsToTheFan = 2000;

/// Floors with exact duties of the nominal range, all above what the firmware does.
struct Floor {
    double percent;
    int duty;
};
constexpr Floor low{40.0, 102};
constexpr Floor high{80.0, 204};

void measureMemory(const MeasuredHelper& helper, const std::string& when, Figures& figures) {
    figures.add("resident memory, " + when, "MiB", helper.statusFigure("VmRSS") / 1024);
    figures.add("resident memory of its own, " + when, "MiB", helper.statusFigure("RssAnon") / 1024);
    figures.add("threads, " + when, "", helper.statusFigure("Threads"));
}

/// From just before a call is sent until the fan's file is seen to hold what it asks for.
double callToFan(CountingCaller& caller, DutyWatch& watch, const Floor& floor) {
    watch.forget();
    const Clock::time_point start = Clock::now();
    caller.setFloor(floor.percent);
    while (const auto seen = watch.nextWrite(start + 1s)) {
        // A tick may write the previous duty in between.
        if (watch.duty() == floor.duty) {
            return Milliseconds(*seen - start).count();
        }
    }
    throw std::runtime_error("a call does not reach the fan");
}

void measureCallToFan(const MeasuredHelper& helper, CountingCaller& caller, Figures& figures) {
    DutyWatch watch(helper.tree().dutyFile());
    std::vector<double> times;
    for (int i = 0; i < callsToTheFan; ++i) {
        times.push_back(callToFan(caller, watch, i % 2 == 0 ? high : low));
        if (!caller.awaitAnswer()) {
            throw std::runtime_error("a call is not answered");
        }
        // Callers come one by one, to a helper that has gone to sleep again.
        std::this_thread::sleep_for(3ms);
    }
    figures.add("call to fan, median", "ms", quantileOf(times, 0.5));
    figures.add("call to fan, 99 %", "ms", quantileOf(times, 0.99));
    figures.add("call to fan, longest", "ms", quantileOf(times, 1.0));
}

/// How far the distances of the writes are from the tick's period, ms.
std::vector<double> deviations(std::vector<double> distances) {
    for (double& distance : distances) {
        distance = std::abs(distance - tickMs);
    }
    return distances;
}

/// What a held fan costs between requests. The time is shorter than the helper waits for a sign of its
/// client.
void measureSystemCalls(const MeasuredHelper& helper, CountingCaller& client, Figures& figures) {
    client.holdFloor(low.percent);
    const auto calls = countSystemCalls(helper.id(), 5s, helper.tree().runFolder());
    const double ticks = calls["pwrite64"] / HwmonTree::fans;
    if (ticks == 0) {
        fmt::print(stderr, "System calls are not counted: strace is missing or may not trace.\n");
        return;
    }
    figures.add("system calls per tick", "", calls.total() / ticks);
    figures.add("reads (pread64) per tick", "", calls["pread64"] / ticks);
    figures.add("writes (pwrite64) per tick", "", calls["pwrite64"] / ticks);
    figures.add("looks at the journal (newfstatat) per tick", "", calls["newfstatat"] / ticks);
}

void measureSteadiness(const MeasuredHelper& helper, CountingCaller& client, std::size_t callerCount,
                       std::chrono::seconds duration, Figures& figures) {
    Crowd crowd(helper.busAddress(), callerCount);
    // Connecting takes a while.
    client.holdFloor(low.percent);
    const std::uint64_t processorBefore = helper.processorTime();
    const Clock::time_point start = Clock::now();
    TickRecorder recorder(helper.tree().dutyFile());
    if (callerCount == 0) {
        client.keepInTouch(start + duration);
    } else {
        crowd.callUntil(start + duration);
    }
    const std::vector<double> off = deviations(recorder.stop());
    const double elapsedMs = Milliseconds(Clock::now() - start).count();
    const double processorMs = static_cast<double>(helper.processorTime() - processorBefore) / 1e6;

    if (static_cast<double>(off.size()) < elapsedMs / tickMs / 2) {
        throw std::runtime_error("the control loop has stopped");
    }
    const std::string load = fmt::format("{} callers: ", callerCount);
    if (callerCount != 0) {
        figures.add(load + "answers", "per s", static_cast<double>(crowd.answers()) / elapsedMs * 1000);
        figures.add(load + "errors", "", static_cast<double>(crowd.errors()));
    }
    figures.add(load + "helper's processor time", "% of one", processorMs / elapsedMs * 100);
    figures.add(load + "tick off 0.4 s, median", "ms", quantileOf(off, 0.5));
    figures.add(load + "tick off 0.4 s, 99 %", "ms", quantileOf(off, 0.99));
    figures.add(load + "tick off 0.4 s, most", "ms", quantileOf(off, 1.0));
    if (!recorder.goesFirst()) {
        fmt::print(stderr, "The recorder of the ticks has no real-time priority.\n");
    }
}

void measureOnce(const std::string& corvane, std::chrono::seconds duration, Figures& figures) {
    MeasuredHelper helper(corvane, BusLimits::ofSession);
    std::this_thread::sleep_for(1s);
    measureMemory(helper, "idle", figures);

    CountingCaller client(helper.busAddress());
    client.holdFloor(low.percent);
    measureCallToFan(helper, client, figures);
    client.holdFloor(low.percent);
    measureSystemCalls(helper, client, figures);
    for (const std::size_t callers : {0U, 1U, 100U, 1000U}) {
        measureSteadiness(helper, client, callers, duration, figures);
    }
    measureMemory(helper, "after 1000 callers", figures);
    if (helper.stop() != EXIT_SUCCESS) {
        throw std::runtime_error("the helper ended badly");
    }
}

/// A thousand connections need as many files, here and on the bus, which inherits this.
void allowManyFiles() {
    rlimit limit{};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = limit.rlim_max;
    ::setrlimit(RLIMIT_NOFILE, &limit);
}

/// The positive number in `text`; throws.
int numberIn(const std::string& text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number <= 0) {
        throw std::invalid_argument("not a positive number: " + text);
    }
    return number;
}

void measure(const std::vector<std::string>& arguments) {
    const int runs = arguments.size() > 1 ? numberIn(arguments[1]) : 3;
    const std::chrono::seconds duration(arguments.size() > 2 ? numberIn(arguments[2]) : 30);
    allowManyFiles();
    Figures figures;
    for (int run = 1; run <= runs; ++run) {
        fmt::print(stderr, "run {} of {}\n", run, runs);
        measureOnce(arguments[0], duration, figures);
    }
    figures.print();
}

}  // namespace
}  // namespace corvane

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.empty() || arguments.size() > 3) {
        fmt::print(stderr, "usage: measure-helper CORVANE [RUNS] [SECONDS]\n");
        return EXIT_FAILURE;
    }
    try {
        corvane::measure(arguments);
    } catch (const std::exception& error) {
        fmt::print(stderr, "measure-helper: {}\n", error.what());
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
