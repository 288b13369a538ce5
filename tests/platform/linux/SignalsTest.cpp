// The held signals, and the two that answer them: pauses and the main loop.

#include <csignal>
#include <thread>

#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

#include "platform/linux/LinuxClock.h"
#include "platform/linux/LinuxMainLoop.h"
#include "platform/posix/SignalPause.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;

/// Leaves the program's signals as it found them. Signals are sent to the process, as they are in life.
class SignalsTest : public testing::Test {
protected:
    SignalsTest() {
        pthread_sigmask(SIG_SETMASK, nullptr, &mask_);
        sigaction(SIGPIPE, nullptr, &onPipe_);
    }
    ~SignalsTest() override {
        pthread_sigmask(SIG_SETMASK, &mask_, nullptr);
        sigaction(SIGPIPE, &onPipe_, nullptr);
    }

    static void send(int signal) { kill(getpid(), signal); }

private:
    sigset_t mask_{};
    struct sigaction onPipe_ {};
};

using SignalPauseTest = SignalsTest;

TEST_F(SignalPauseTest, WaitsForItsTime) {
    SignalPause pause{linuxBootTime};
    pause.holdTerminationSignals();
    const BootTime before = pause.bootTime();
    EXPECT_TRUE(pause.pause(20ms));
    EXPECT_GE(pause.bootTime() - before, 20ms);
    EXPECT_TRUE(pause.pause(0ms));
    EXPECT_TRUE(pause.pause(-1s));
}

TEST_F(SignalPauseTest, IsCutShortByEachTerminationSignal) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        SignalPause pause{linuxBootTime};
        pause.holdTerminationSignals();
        send(signal);
        EXPECT_FALSE(pause.pause(24h)) << strsignal(signal);
    }
}

TEST_F(SignalPauseTest, IsCutShortByASignalThatArrivesMeanwhile) {
    SignalPause pause{linuxBootTime};
    pause.holdTerminationSignals();
    std::thread sender([] { send(SIGTERM); });
    EXPECT_FALSE(pause.pause(24h));
    sender.join();
}

TEST_F(SignalPauseTest, StaysShortOnceItWasCutShort) {
    SignalPause pause{linuxBootTime};
    pause.holdTerminationSignals();
    send(SIGINT);
    EXPECT_FALSE(pause.pause(24h));
    EXPECT_FALSE(pause.pause(24h));
}

TEST_F(SignalPauseTest, WaitsToTheEndWhereThatIsAskedForWhateverHasArrived) {
    SignalPause pause{linuxBootTime};
    pause.holdTerminationSignals();
    send(SIGINT);
    ASSERT_FALSE(pause.pause(24h));
    send(SIGTERM);
    const BootTime before = pause.bootTime();
    pause.wait(20ms);
    EXPECT_GE(pause.bootTime() - before, 20ms);
}

TEST_F(SignalPauseTest, IsNotCutShortByOtherSignals) {
    struct sigaction former {};
    struct sigaction ignoring {};
    ignoring.sa_handler = [](int) {};
    sigaction(SIGUSR1, &ignoring, &former);
    SignalPause pause{linuxBootTime};
    pause.holdTerminationSignals();
    const BootTime before = pause.bootTime();
    const pthread_t waiting = pthread_self();
    std::thread sender([waiting] { pthread_kill(waiting, SIGUSR1); });
    EXPECT_TRUE(pause.pause(50ms));
    EXPECT_GE(pause.bootTime() - before, 50ms);
    sender.join();
    sigaction(SIGUSR1, &former, nullptr);
}

TEST_F(SignalPauseTest, KeepsTheProcessAliveWhenItWritesToAClosedPipe) {
    SignalPause pause{linuxBootTime};
    pause.holdTerminationSignals();
    int ends[2] = {};
    ASSERT_EQ(pipe(ends), 0);
    close(ends[0]);
    EXPECT_EQ(write(ends[1], "x", 1), -1);
    EXPECT_EQ(errno, EPIPE);
    close(ends[1]);
}

using LinuxMainLoopTest = SignalsTest;

TEST_F(LinuxMainLoopTest, DeliversASignalThatWasHeldBeforeTheHandlerWasSetOnce) {
    LinuxMainLoop loop;
    loop.holdTerminationSignals();
    send(SIGTERM);
    int handled = 0;
    loop.onTerminationSignal([&] {
        ++handled;
        loop.exit(0);
    });
    EXPECT_EQ(handled, 0) << "handlers run on the loop";
    EXPECT_EQ(loop.run(), 0);
    EXPECT_EQ(handled, 1);
}

TEST_F(LinuxMainLoopTest, DeliversEachTerminationSignal) {
    LinuxMainLoop loop;
    loop.holdTerminationSignals();
    int handled = 0;
    loop.onTerminationSignal([&] {
        if (++handled == 3) {
            loop.exit(0);
        }
    });
    send(SIGTERM);
    send(SIGINT);
    send(SIGHUP);
    EXPECT_EQ(loop.run(), 0);
    EXPECT_EQ(handled, 3);
}

TEST_F(LinuxMainLoopTest, DeliversASignalThatArrivesWhileItRuns) {
    LinuxMainLoop loop;
    loop.holdTerminationSignals();
    loop.onTerminationSignal([&] { loop.exit(7); });
    std::thread sender([] { send(SIGHUP); });
    EXPECT_EQ(loop.run(), 7);
    sender.join();
}

TEST_F(LinuxMainLoopTest, ReturnsTheFirstStatusItIsGiven) {
    LinuxMainLoop loop;
    loop.exit(3);
    loop.exit(4);
    EXPECT_EQ(loop.run(), 3) << "also when the end was asked for before the loop ran";
}

TEST_F(LinuxMainLoopTest, MayBeEndedFromAnyThread) {
    LinuxMainLoop loop;
    std::thread other([&] { loop.exit(5); });
    EXPECT_EQ(loop.run(), 5);
    other.join();
}

}  // namespace
}  // namespace corvane
