#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/desktop/SessionApplications.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/FakeUserManager.h"
#include "tests/support/Notes.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

using Identifiers = RunningApplications::Identifiers;
using std::chrono::milliseconds;

/// What the other threads hand over waits until the test runs it: a main loop in the test's hands.
class HandedOver final : public SerialQueue {
public:
    void async(Work work) override { waiting_.add(std::move(work)); }

    /// Runs what has come, or waits for it; false when nothing came in the time a test waits.
    bool run() {
        const bool hasCome = waiting_.waitFor(1);
        for (const Work& work : waiting_.take()) {
            work();
        }
        return hasCome;
    }

    /// The last timer that was made is due. Fails the test when it is gone.
    void loseTrust() const {
        const auto work = whenTrustIsLost_.lock();
        ASSERT_TRUE(work);
        (*work)();
    }

    void sync(const Work& /*work*/) override { std::abort(); }
    void syncAhead(const Work& /*work*/) override { std::abort(); }
    std::unique_ptr<Timer> after(Duration /*delay*/, Work work) override {
        auto timer = std::make_unique<Trust>(std::move(work));
        whenTrustIsLost_ = timer->work;
        return timer;
    }
    std::unique_ptr<Timer> at(WallTime /*time*/, Work /*work*/) override { std::abort(); }
    std::unique_ptr<Timer> every(Duration /*first*/, Duration /*period*/, Work /*work*/) override {
        std::abort();
    }
    void sleep(Duration /*duration*/) override { std::abort(); }
    [[nodiscard]] BootTime bootTime() const override { std::abort(); }
    [[nodiscard]] WallTime wallTime() const override { std::abort(); }

private:
    struct Trust final : Timer {
        explicit Trust(Work whenLost) : work(std::make_shared<Work>(std::move(whenLost))) {}

        const std::shared_ptr<Work> work;
    };

    Notes<Work> waiting_;
    std::weak_ptr<Work> whenTrustIsLost_;
};

/// Looks at processes that get stuck when they are told to. They may outlive the test.
struct Looks {
    Identifiers look(ProcessApplications& processes) {
        begun.add(0);
        if (isStuck) {
            gotStuck();
            goOn.get_future().wait();
        }
        return processes.scan();
    }

    std::atomic<bool> isStuck = false;
    std::function<void()> gotStuck = [] {};
    std::promise<void> goOn;
    Notes<int> begun;
};

class SessionApplicationsTest : public testing::Test {
protected:
    void SetUp() override {
        if (bus.problem()) {
            GTEST_SKIP() << *bus.problem();
        }
        for (const std::string program : {"tool", "other"}) {
            folder.write("share/applications/" + program + ".desktop",
                         "[Desktop Entry]\nType=Application\nExec=" + program + "\n");
        }
        std::filesystem::create_directories(folder / "proc");
        manager.emplace(bus.address());
    }

    void TearDown() override {
        observation.reset();
        applications.reset();
        manager.reset();
    }

    /// What follows each announcement may be a look under way, which ends before one gets stuck.
    void waitUntilALookIsStuck() {
        std::atomic<bool> isStuck = false;
        looks->gotStuck = [&] {
            isStuck = true;
            mainLoop.async([] {});
        };
        looks->isStuck = true;
        static_cast<void>(applications->identifiers());
        while (!isStuck) {
            ASSERT_TRUE(mainLoop.run());
        }
    }

    void start() {
        applications.emplace(
            thread, mainLoop,
            [this](const char* name) {
                return std::string_view(name) == "XDG_DATA_HOME" ? dataFolder.c_str() : nullptr;
            },
            SessionApplications::Sources{
                .processes = (folder / "proc").string(),
                .patience = {.answer = milliseconds(200), .retry = milliseconds(50)},
                .look = [looks = looks](ProcessApplications& processes) { return looks->look(processes); }});
        observation = applications->observe([this] { announced.push_back(applications->identifiers()); });
    }

    void startWithAUnitAndAProcess() {
        manager->add("app-one-1.scope");
        manager->comeUp();
        run("tool");
        start();
        ASSERT_TRUE(announces({"one", "tool"}));
    }

    void run(const std::string& program, const std::string& process = "proc/10") const {
        std::filesystem::create_directories(folder / process);
        std::filesystem::create_symlink("/usr/bin/" + program, folder / process / "exe");
    }

    void end() const { std::filesystem::remove_all(folder / "proc/10"); }

    /// Whether the last announcement, sooner or later, is of these.
    bool announces(const Identifiers& expected) {
        while (announced.empty() || announced.back() != expected) {
            if (!mainLoop.run()) {
                return false;
            }
        }
        return true;
    }

    const TemporaryFolder folder;
    const std::string dataFolder = (folder / "share").string();
    PrivateBus bus;
    const EnvironmentVariable sessionBus{"DBUS_SESSION_BUS_ADDRESS", bus.address().c_str()};
    std::optional<FakeUserManager> manager;
    HandedOver mainLoop;
    BusThread thread;
    std::shared_ptr<Looks> looks = std::make_shared<Looks>();
    std::optional<SessionApplications> applications;
    std::vector<Identifiers> announced;
    std::unique_ptr<Observation> observation;
};

TEST_F(SessionApplicationsTest, AreTheManagersAndTheProcesses) {
    manager->add("app-one-1.scope");
    manager->comeUp();
    run("tool");
    start();
    EXPECT_TRUE(announces({"one", "tool"}));
    EXPECT_EQ(applications->identifiers(), (Identifiers{"one", "tool"}));
}

TEST_F(SessionApplicationsTest, AreAnnouncedWithoutBeingAskedForWhenTheManagerTells) {
    manager->comeUp();
    start();
    manager->add("app-one-1.scope");
    EXPECT_TRUE(announces({"one"}));
    manager->change("app-one-1.scope", "failed");
    EXPECT_TRUE(announces({}));
}

TEST_F(SessionApplicationsTest, OfProcessesAreAnnouncedSoonAfterSomebodyAsked) {
    manager->comeUp();
    start();
    manager->add("app-one-1.scope");
    ASSERT_TRUE(announces({"one"}));
    run("tool");
    EXPECT_EQ(applications->identifiers(), Identifiers{"one"});
    EXPECT_TRUE(announces({"one", "tool"}));
}

TEST_F(SessionApplicationsTest, EndForTheManagerAndForTheProcessesTogether) {
    const auto inScope = [this] {
        run("anything");
        folder.write("proc/10/cgroup", "0::/user.slice/app-one-1.scope\n");
    };
    inScope();
    manager->add("app-one-1.scope");
    manager->comeUp();
    start();
    ASSERT_TRUE(announces({"one"}));
    while (announced.size() < 2) {
        end();
        manager->remove("app-one-1.scope");
        ASSERT_TRUE(mainLoop.run());
    }
    EXPECT_EQ(announced.back(), Identifiers{});
}

TEST_F(SessionApplicationsTest, AreTheProcessesAloneWhenTheManagerIsGone) {
    startWithAUnitAndAProcess();
    manager.reset();
    EXPECT_TRUE(announces({"tool"}));
    manager.emplace(bus.address());
    manager->add("app-one-1.scope");
    manager->comeUp();
    EXPECT_TRUE(announces({"one", "tool"}));
}

TEST_F(SessionApplicationsTest, AreTheProcessesAloneWithoutABus) {
    const EnvironmentVariable none("DBUS_SESSION_BUS_ADDRESS", "unix:path=/no/such/bus");
    run("tool");
    start();
    EXPECT_TRUE(announces({"tool"}));
}

TEST_F(SessionApplicationsTest, AreTheManagersAloneWhileALookIsStuck) {
    startWithAUnitAndAProcess();
    waitUntilALookIsStuck();
    EXPECT_EQ(applications->identifiers(), (Identifiers{"one", "tool"})) << "a look may take its time";
    mainLoop.loseTrust();
    EXPECT_EQ(announced.back(), Identifiers{"one"}) << "the tool may have ended long ago";
    looks->isStuck = false;
    looks->goOn.set_value();
    EXPECT_TRUE(announces({"one", "tool"}));
}

/// Who asks again much later must not be told of a process that has ended since.
TEST_F(SessionApplicationsTest, OfProcessesAreForgottenWhenNobodyHasAskedForLong) {
    startWithAUnitAndAProcess();
    waitUntilALookIsStuck();
    // Asks nothing.
    int changes = 0;
    observation = applications->observe([&] { ++changes; });
    run("other", "proc/11");
    looks->isStuck = false;
    looks->goOn.set_value();
    while (changes == 0) {
        ASSERT_TRUE(mainLoop.run());
    }
    std::filesystem::remove_all(folder / "proc/10");
    std::filesystem::remove_all(folder / "proc/11");
    mainLoop.loseTrust();
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(applications->identifiers(), Identifiers{"one"});
}

TEST_F(SessionApplicationsTest, AreLookedAtOnceMoreWhenSomethingHappensDuringALook) {
    const EnvironmentVariable none("DBUS_SESSION_BUS_ADDRESS", "unix:path=/no/such/bus");
    looks->isStuck = true;
    start();
    ASSERT_TRUE(looks->begun.waitFor(1));
    static_cast<void>(applications->identifiers());
    static_cast<void>(applications->identifiers());
    looks->isStuck = false;
    looks->goOn.set_value();
    while (looks->begun.size() < 2) {
        ASSERT_TRUE(mainLoop.run());
    }
}

TEST_F(SessionApplicationsTest, DoNotWaitForAStuckLookWhenTheyGo) {
    manager->comeUp();
    looks->isStuck = true;
    start();
    ASSERT_TRUE(looks->begun.waitFor(1));
    applications.reset();
    looks->goOn.set_value();
}

TEST_F(SessionApplicationsTest, AreAnnouncedOnlyWhenTheyChanged) {
    manager->add("app-one-1.scope");
    manager->comeUp();
    start();
    ASSERT_TRUE(announces({"one"}));
    const std::size_t count = announced.size();
    manager->add("app-one-2.scope");
    manager->add("app-two-1.scope");
    ASSERT_TRUE(announces({"one", "two"}));
    EXPECT_EQ(announced.size(), count + 1);
}

TEST_F(SessionApplicationsTest, TellNothingMoreOnceTheyAreGone) {
    manager->add("app-one-1.scope");
    manager->comeUp();
    run("tool");
    start();
    ASSERT_TRUE(manager->questions().waitFor(1));
    applications.reset();
    // What is on its way to the bus thread is over after this.
    std::promise<void> done;
    thread.post([&] { done.set_value(); });
    done.get_future().wait();
    mainLoop.async([] {});
    mainLoop.run();
    EXPECT_TRUE(announced.empty());
}

}  // namespace
}  // namespace corvane
