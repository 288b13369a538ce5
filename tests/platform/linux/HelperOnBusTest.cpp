// The real helper on a simulated Mac, called over a bus of its own.

#include <cmath>
#include <deque>
#include <future>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include "helper/FanHelperService.h"
#include "platform/linux/AsioSerialQueue.h"
#include "platform/simulated/RecordingLog.h"
#include "platform/simulated/SimulatedSleepSetting.h"
#include "platform/simulated/SimulatedSmc.h"
#include "smc/csmc.h"
#include "tests/support/BusCaller.h"
#include "tests/support/ListenerThread.h"
#include "tests/support/PrivateBus.h"

namespace corvane {
namespace {

using testing::Pair;
using testing::Pointee;

constexpr std::string_view refusal = "org.freedesktop.DBus.Error.LimitsExceeded";

constexpr std::size_t crowd = 1000;
/// Files that a test with a crowd has open: a few for each of its connections.
constexpr rlim_t filesOfACrowd = 8 * crowd;

/// False when this process may not open that many files.
bool mayOpenFiles(rlim_t count) {
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    if (limit.rlim_cur < count) {
        limit.rlim_cur = std::min(count, limit.rlim_max);
        setrlimit(RLIMIT_NOFILE, &limit);
    }
    return limit.rlim_cur >= count;
}

/// Hands each status request to a queue, as the real helper does, and counts on both sides of it.
class QueueingHelper final : public FanHelperProtocol {
public:
    explicit QueueingHelper(SerialQueue& queue) : queue_(queue) {}

    void getStatusWithReply(StatusReply reply) override {
        queue_.async([this, reply = std::move(reply)] {
            ++served_;
            reply({});
        });
        handedOver_.add(1);
    }
    void pingWithReply(Reply /*reply*/) override {}
    void setFanFloorWithPercentWithReply(double /*percent*/, Reply /*reply*/) override {}
    void stopBoostWithReply(Reply /*reply*/) override {}
    void setLidStayAwakeWithReply(bool /*on*/, Reply /*reply*/) override {}

    [[nodiscard]] const Notes<int>& handedOver() const { return handedOver_; }
    /// On the queue.
    [[nodiscard]] std::size_t served() const { return served_; }

private:
    SerialQueue& queue_;
    Notes<int> handedOver_;
    std::size_t served_ = 0;
};

/// Many callers with one status request each.
class Crowd {
public:
    explicit Crowd(const std::string& address) {
        for (std::size_t i = 0; i < crowd; ++i) {
            callers_.emplace_back(address);
        }
    }

    void ask() {
        for (BusCaller& caller : callers_) {
            caller.begin<BusDictionary>("getStatusWithReply", [this](const std::string& error) {
                ++(error.empty() ? answered_ : error == refusal ? refused_ : failed_);
            });
        }
    }

    /// Until each has heard; false when some have not in the time a test waits.
    bool listen() {
        for (BusCaller& caller : callers_) {
            const std::size_t before = heard();
            if (!caller.processUntil([&] { return heard() > before; })) {
                return false;
            }
        }
        return true;
    }

    [[nodiscard]] std::size_t answered() const { return answered_; }
    [[nodiscard]] std::size_t refused() const { return refused_; }

private:
    [[nodiscard]] std::size_t heard() const { return answered_ + refused_ + failed_; }

    std::deque<BusCaller> callers_;
    std::size_t answered_ = 0;
    std::size_t refused_ = 0;
    std::size_t failed_ = 0;
};

class BusTest : public testing::Test {
protected:
    void SetUp() override {
        if (bus.problem()) {
            GTEST_SKIP() << *bus.problem();
        }
    }

    /// The bus needs files for a crowd, too.
    const bool hasFilesForACrowd = mayOpenFiles(filesOfACrowd);
    PrivateBus bus;
    AsioSerialQueue queue{"test"};
};

class HelperOnBusTest : public BusTest {
protected:
    HelperOnBusTest() { csmc_use_connection(&smc_); }
    ~HelperOnBusTest() override {
        listener.reset();
        queue.sync([this] {
            if (service) {
                service->emergencyRelease();
                service.reset();
            }
        });
        csmc_use_connection(nullptr);
    }

    void SetUp() override {
        BusTest::SetUp();
        if (!bus.problem()) {
            service = FanHelperService::create(queue, sleepSetting_, log);
            listener.emplace(bus.address(), service);
            ASSERT_EQ(listener->failure(), std::nullopt);
        }
    }

    RecordingLog log;
    std::shared_ptr<FanHelperService> service;
    std::optional<ListenerThread> listener;

private:
    SimulatedMac mac_{{}, [this] { return queue.bootTime(); }};
    SimulatedSmc smc_{mac_};
    SimulatedSleepSetting sleepSetting_;
};

TEST_F(HelperOnBusTest, AnswersEachMemberInItsWords) {
    BusCaller caller(bus.address());
    EXPECT_THAT(caller.call("pingWithReply"), Pair(true, "Corvane daemon alive, fans=2"));
    EXPECT_THAT(caller.call("setFanFloorWithPercentWithReply", 42.9), Pair(true, "floor set to 42%"));
    const StatusRecord status = caller.status();
    EXPECT_THAT(status.get<double>(StatusKey::floorPercent), Pointee(42.9));
    EXPECT_THAT(status.get<bool>(StatusKey::isBoosted), Pointee(true));
    EXPECT_THAT(status.get<std::vector<StatusRecord>>(StatusKey::fans), Pointee(testing::SizeIs(2)));
    EXPECT_THAT(caller.call("stopBoostWithReply"), Pair(true, "boost stopped"));
    EXPECT_THAT(caller.call("setLidStayAwakeWithReply", true), Pair(true, "lid-stay-awake on"));
    EXPECT_THAT(caller.call("setLidStayAwakeWithReply", false), Pair(true, "lid-stay-awake off"));
}

TEST_F(HelperOnBusTest, ClampsWhateverPercentTheBusDelivers) {
    BusCaller caller(bus.address());
    const auto floor = [&](double percent) {
        return caller.call("setFanFloorWithPercentWithReply", percent);
    };
    EXPECT_THAT(floor(HUGE_VAL), Pair(true, "floor set to 100%"));
    EXPECT_THAT(floor(std::nan("")), Pair(true, "boost off"));
    EXPECT_THAT(floor(150.0), Pair(true, "floor set to 100%"));
    EXPECT_THAT(floor(-HUGE_VAL), Pair(true, "boost off"));
    EXPECT_THAT(floor(-3.0), Pair(true, "boost off"));
}

TEST_F(HelperOnBusTest, AnswersAPingWhileItsQueueIsBusy) {
    BusCaller caller(bus.address());
    std::promise<void> busy;
    std::promise<void> release;
    queue.async([&] {
        busy.set_value();
        release.get_future().wait();
    });
    busy.get_future().wait();
    EXPECT_THAT(caller.call("pingWithReply"), Pair(true, "Corvane daemon alive, fans=2"));
    release.set_value();
    queue.sync([] {});
}

TEST_F(HelperOnBusTest, AnswersAThousandCallersAtOnceAndKeepsTheFans) {
    if (!hasFilesForACrowd) {
        GTEST_SKIP() << "this process may not open enough files for a thousand connections";
    }
    Crowd callers(bus.address());
    BusCaller caller(bus.address());
    caller.call("setFanFloorWithPercentWithReply", 60.0);
    callers.ask();
    ASSERT_TRUE(callers.listen());
    EXPECT_EQ(callers.answered() + callers.refused(), crowd) << "every one is answered or turned away";
    EXPECT_GE(callers.answered(), 1U);
    EXPECT_THAT(caller.status().get<bool>(StatusKey::isBoosted), Pointee(true));
    EXPECT_EQ(log.count("released to Apple-auto"), 0U);
}

TEST_F(BusTest, LetsADueTimerRunAheadOfAThousandWaitingRequests) {
    if (!hasFilesForACrowd) {
        GTEST_SKIP() << "this process may not open enough files for a thousand connections";
    }
    const auto helper = std::make_shared<QueueingHelper>(queue);
    ListenerThread listener(bus.address(), helper);
    Crowd callers(bus.address());
    std::promise<void> release;
    std::promise<std::size_t> servedWhenDue;
    std::unique_ptr<Timer> timer;
    queue.async([&] {
        timer = queue.after(Duration::zero(), [&] { servedWhenDue.set_value(helper->served()); });
        release.get_future().wait();
    });
    callers.ask();
    const bool allHandedOver = helper->handedOver().waitFor(crowd);
    release.set_value();
    EXPECT_TRUE(allHandedOver);
    EXPECT_LE(servedWhenDue.get_future().get(), 2U);
    EXPECT_TRUE(callers.listen());
    EXPECT_EQ(callers.answered(), crowd);
    queue.sync([&] { timer.reset(); });
}

}  // namespace
}  // namespace corvane
