// What the helper's work costs: control ticks and status requests, on a simulated Mac and on attribute files,
// each machine with 2 fans and 60 sensors. Time is the processor's. Prints ratios in the end: unlike the
// times they can be compared between machines.

#include <array>
#include <map>
#include <string>

#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include "bench/TickRig.h"
#include "platform/linux/hwmon/DirectorySysfs.h"
#include "tests/platform/simulated/AllocationCount.h"

namespace corvane {
namespace {

/// Attribute use and allocations from its making to `report`, as counters per iteration.
class Tally {
public:
    explicit Tally(const TickRig& rig) : rig_(rig), useBefore_(rig.sysfsUse()) {}

    void report(benchmark::State& state) const {
        const std::size_t allocations = allocationCount() - allocationsBefore_;
        const SysfsUse& use = rig_.sysfsUse();
        const auto perIteration = [&state](std::size_t count) {
            return benchmark::Counter(static_cast<double>(count) / static_cast<double>(state.iterations()));
        };
        state.counters["allocations"] = perIteration(allocations);
        state.counters["opens"] = perIteration(use.opens - useBefore_.opens);
        state.counters["reads"] = perIteration(use.reads - useBefore_.reads);
        state.counters["writes"] = perIteration(use.writes - useBefore_.writes);
    }

private:
    const TickRig& rig_;
    SysfsUse useBefore_;
    std::size_t allocationsBefore_ = allocationCount();
};

template <typename Rig>
void twoTicks(benchmark::State& state) {
    Rig rig;
    const Tally tally(rig);
    for ([[maybe_unused]] auto step : state) {
        rig.twoTicks();
    }
    tally.report(state);
}

template <typename Rig>
void statusRequest(benchmark::State& state) {
    Rig rig;
    const Tally tally(rig);
    for ([[maybe_unused]] auto step : state) {
        benchmark::DoNotOptimize(rig.status());
    }
    tally.report(state);
}

/// Nothing but reading as many attributes as there are sensors: what no helper can do without.
void bareReads(benchmark::State& state) {
    const HwmonTree tree;
    DirectorySysfs sysfs(tree.root());
    const auto sensor = sysfs.open("class/hwmon/hwmon1/temp1_input", SysfsAccess::read);
    std::array<char, 24> text{};
    for ([[maybe_unused]] auto step : state) {
        for (int i = 0; i < HwmonTree::sensors; ++i) {
            benchmark::DoNotOptimize(sensor->read(text));
        }
    }
}

BENCHMARK(twoTicks<SimulatedTickRig>)->Name("simulated/two-ticks");
BENCHMARK(twoTicks<HwmonTickRig>)->Name("hwmon/two-ticks");
BENCHMARK(statusRequest<SimulatedTickRig>)->Name("simulated/status");
BENCHMARK(statusRequest<HwmonTickRig>)->Name("hwmon/status");
BENCHMARK(bareReads)->Name("bare/60-reads");

/// Remembers the last time of each benchmark; with repetitions, their median.
class TimesReporter final : public benchmark::ConsoleReporter {
public:
    TimesReporter() : ConsoleReporter(OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration || run.aggregate_name == "median") {
                times_[run.run_name.function_name] = run.GetAdjustedCPUTime();
            }
        }
        ConsoleReporter::ReportRuns(runs);
    }

    void printRatio(const std::string& one, const std::string& other) const {
        const auto dividend = times_.find(one);
        const auto divisor = times_.find(other);
        if (dividend != times_.end() && divisor != times_.end()) {
            fmt::print("{:<20} : {:<20} {:6.2f}\n", one, other, dividend->second / divisor->second);
        }
    }

private:
    std::map<std::string, double> times_;
};

}  // namespace
}  // namespace corvane

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return EXIT_FAILURE;
    }
    corvane::TimesReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    fmt::print("\nRatios\n");
    reporter.printRatio("hwmon/two-ticks", "bare/60-reads");
    reporter.printRatio("hwmon/two-ticks", "simulated/two-ticks");
    reporter.printRatio("hwmon/two-ticks", "hwmon/status");
    reporter.printRatio("simulated/two-ticks", "simulated/status");
    return EXIT_SUCCESS;
}
