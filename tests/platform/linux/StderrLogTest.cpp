#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/linux/StderrLog.h"

namespace corvane {
namespace {

/// What `action` writes to standard error.
template <typename Action>
std::string standardErrorOf(const Action& action) {
    testing::internal::CaptureStderr();
    action();
    return testing::internal::GetCapturedStderr();
}

TEST(StderrLog, WritesEachEventAsOneLine) {
    StderrLog log;
    EXPECT_EQ(standardErrorOf([&] {
                  log.write("Corvane daemon starting");
                  log.write("");
                  log.write("72° — fine");
              }),
              "Corvane daemon starting\n\n72° — fine\n");
}

TEST(StderrLog, DoesNotMixTheLinesOfSeveralThreads) {
    constexpr std::size_t linesPerThread = 200;
    StderrLog log;
    const std::string written = standardErrorOf([&] {
        std::vector<std::thread> threads;
        for (const char letter : {'a', 'b', 'c'}) {
            threads.emplace_back([&log, line = std::string(100, letter)] {
                for (std::size_t i = 0; i < linesPerThread; ++i) {
                    log.write(line);
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    });
    std::istringstream lines(written);
    std::multiset<std::string> counted;
    for (std::string line; std::getline(lines, line);) {
        counted.insert(line);
    }
    for (const char letter : {'a', 'b', 'c'}) {
        EXPECT_EQ(counted.count(std::string(100, letter)), linesPerThread);
    }
    EXPECT_EQ(counted.size(), 3 * linesPerThread);
}

TEST(StderrLog, DropsWhatCannotBeWritten) {
    StderrLog log;
    const int kept = dup(STDERR_FILENO);
    ASSERT_GE(kept, 0);
    close(STDERR_FILENO);
    log.write("nobody hears this");
    dup2(kept, STDERR_FILENO);
    close(kept);
    EXPECT_EQ(standardErrorOf([&] { log.write("but this"); }), "but this\n");
}

}  // namespace
}  // namespace corvane
