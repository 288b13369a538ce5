#include <array>
#include <cmath>
#include <deque>
#include <random>
#include <string>
#include <tuple>

#include <gtest/gtest.h>

#include "tests/app/fan/SoakOracle.h"

namespace corvane {
namespace {

using Kind = CoolingProfile::Kind;

/// A day; what is slept through comes on top.
constexpr int secondsAwake = 24 * 3600;
/// What was done last is told with a failure.
constexpr std::size_t deedsTold = 12;

/// A day in the life of a machine whose user, programs and parts do whatever comes to their mind.
class Soak {
public:
    Soak(MacModel model, std::uint64_t seed) : random_(seed), machine_(std::move(model)), oracle_(machine_) {
        machine_.host.filterStatus([this](const StatusRecord& record) {
            oracle_.takeRecord(record);
            return isGarbled_ ? garbage() : record;
        });
        machine_.open();
        machine_.fan->reconcileToOffOnLaunch();
        machine_.settle();
    }

    void live() {
        for (; step_ < secondsAwake && !testing::Test::HasFailure(); ++step_) {
            endDeeds();
            if (oneIn(60)) {
                changeHeat();
            }
            if (oneIn(25)) {
                doSomething();
            }
            tellOracle();
            machine_.advance(1s);
            noticeEndOfBoost();
            oracle_.check([this](const std::string& what) { fail(what); });
            machine_.helper.writes.clear();
        }
    }

    /// A day without heat, releases and boosts would prove nothing.
    void expectEventful() {
        EXPECT_GT(oracle_.forcedSeconds, 10000);
        EXPECT_GT(oracle_.comparedSeconds, 30000);
        EXPECT_GT(oracle_.firmwareSeconds, 5000);
        EXPECT_GT(oracle_.hotSeconds, 100);
        EXPECT_GT(oracle_.criticalReleases, 5U);
        EXPECT_GT(oracle_.blindReleases, 5U);
        EXPECT_GT(oracle_.silentReleases, 5U);
        EXPECT_GT(oracle_.silentLidReleases, 5U);
        EXPECT_GT(machine_.log.count("fans=yes"), 5U);
        EXPECT_GT(machine_.log.count("lid=yes"), 2U);
        EXPECT_GT(boostsEnded_, 5);
        EXPECT_GT(suspends_, 20);
    }

private:
    using Deed = void (Soak::*)();

    std::uint64_t pick(std::uint64_t count) { return random_() % count; }
    bool oneIn(std::uint64_t count) { return pick(count) == 0; }
    Duration seconds(std::uint64_t most) { return 1s * (1 + pick(most)); }

    void fail(const std::string& what) {
        std::string story;
        for (const std::string& deed : deeds_) {
            story += fmt::format("\n  {}", deed);
        }
        ADD_FAILURE() << fmt::format("second {}: {}; last deeds:{}", step_, what, story);
    }

    template <typename... Args>
    void tell(fmt::format_string<Args...> format, Args&&... args) {
        const std::string deed = fmt::format(format, std::forward<Args>(args)...);
        deeds_.push_back(fmt::format("second {}: {}", step_, deed));
        if (deeds_.size() > deedsTold) {
            deeds_.pop_front();
        }
    }

    void doSomething() {
        // What people do comes more than once.
        static constexpr std::array<Deed, 27> choices{
            &Soak::turnSwitch,   &Soak::turnSwitch,   &Soak::turnSwitch, &Soak::moveSlider,
            &Soak::moveSlider,   &Soak::changeMode,   &Soak::changeMode, &Soak::changeProfile,
            &Soak::changeLength, &Soak::chooseLength, &Soak::ask,        &Soak::ask,
            &Soak::withdraw,     &Soak::withdraw,     &Soak::withdraw,   &Soak::lockLid,
            &Soak::lockLid,      &Soak::meddle,       &Soak::meddle,     &Soak::killHelper,
            &Soak::hangHelper,   &Soak::letCallsFail, &Soak::garble,     &Soak::breakSensors,
            &Soak::holdSensors,  &Soak::suspend,      &Soak::update};
        (this->*choices.at(pick(choices.size())))();
    }

    FanController& fan() { return *machine_.fan; }

    // The user.

    void turnSwitch() {
        oracle_.isSwitchedOn = oneIn(2);
        tell("switch {}", oracle_.isSwitchedOn);
        fan().setFansEnabled(oracle_.isSwitchedOn);
    }
    void moveSlider() {
        const double percent = oneIn(20) ? std::nan("") : oneIn(6) ? 0 : static_cast<double>(pick(1200)) / 10;
        tell("slider {}", percent);
        if (percent == 0 && fan().coolingMode() == CoolingMode::manual) {
            oracle_.isSwitchedOn = false;
        }
        fan().setManualFloor(percent);
    }
    void changeMode() {
        const bool isManual = oneIn(2);
        tell("manual mode {}", isManual);
        fan().setCoolingMode(isManual ? CoolingMode::manual : CoolingMode::automatic);
    }
    void changeProfile() {
        tell("profile");
        fan().setCoolingProfile(anyKind());
    }
    void changeLength() {
        const auto length = static_cast<double>(10 + pick(oneIn(3) ? 6000 : 300));
        tell("boost length {}", length);
        fan().setBoostDuration(length);
    }
    /// Beside the slider.
    void chooseLength() {
        changeLength();
        if (oracle_.isSwitchedOn && fan().coolingMode() == CoolingMode::manual) {
            static_cast<void>(fan().applyBoost(fan().boostDuration(), false));
        }
    }

    void noticeEndOfBoost() {
        const std::vector<UserNotification>& posted = machine_.center.posted();
        for (; seenNotifications_ < posted.size(); ++seenNotifications_) {
            if (posted[seenNotifications_].title == "Fan boost finished") {
                ++boostsEnded_;
                tell("the boost is over");
                oracle_.isSwitchedOn = false;
            }
        }
    }

    // The automation and the closed-lid mode.

    Kind anyKind() { return CoolingProfile::allKinds.at(pick(CoolingProfile::allKinds.size())); }
    std::string anySource() { return oneIn(2) ? "lid" : "apps"; }
    void ask() {
        const std::string source = anySource();
        tell("{} asks", source);
        oracle_.requesters.insert(source);
        fan().requestCooling(anyKind(), source);
    }
    void withdraw() {
        const std::string source = anySource();
        tell("{} withdraws", source);
        oracle_.requesters.erase(source);
        fan().requestCooling(std::nullopt, source);
    }
    void lockLid() {
        oracle_.wantsLid = oneIn(2);
        tell("lid {}", oracle_.wantsLid);
        fan().setLidStayAwake(oracle_.wantsLid);
    }

    // Everybody else.

    /// Another program calls the helper.
    void meddle() {
        if (!machine_.helper.service || isHelperHung_) {
            return;
        }
        tell("somebody meddles");
        FanHelperService& service = *machine_.helper.service;
        oracle_.disturb();
        switch (pick(5)) {
            case 0:
                service.stopBoostWithReply([](bool, const std::string&) {});
                break;
            case 1:
                service.setLidStayAwakeWithReply(true, [](bool, const std::string&) {});
                break;
            default:
                service.setFanFloorWithPercentWithReply(static_cast<double>(pick(101)),
                                                        [](bool, const std::string&) {});
                break;
        }
        machine_.settle();
    }

    /// A process that is gone neither hangs nor holds the lid; the service manager starts it anew at once.
    void killHelper() {
        tell("the helper dies");
        endHang();
        endFailures();
        oracle_.disturb();
        machine_.killHelper();
        static_cast<void>(machine_.helper.sleepSetting.setSleepDisabled(false));
        manager_->remoteObject().pingWithReply([](bool, const std::string&) {});
    }
    void hangHelper() {
        tell("the helper hangs");
        hangEnds_ = machine_.helper.now() + seconds(12);
        isHelperHung_ = true;
        machine_.host.setHung(true);
    }
    void letCallsFail() {
        tell("calls fail");
        failuresEnd_ = machine_.helper.now() + seconds(6);
        areCallsFailing_ = true;
        machine_.host.failCallsWith("no such luck");
    }
    void garble() {
        tell("garbled records");
        garbageEnds_ = machine_.helper.now() + seconds(20);
        isGarbled_ = true;
    }

    StatusRecord garbage() {
        StatusRecord record;
        switch (pick(4)) {
            case 0:
                break;
            case 1:
                record.set(StatusKey::isBoosted, oneIn(2));
                record.set(StatusKey::cpuTemp, static_cast<double>(pick(200)) - 50);
                record.set(StatusKey::lidStayAwake, oneIn(2));
                break;
            case 2:
                record.set(StatusKey::fans, std::string("two"));
                record.set(StatusKey::isBoosted, 1);
                record.set(StatusKey::cpuTemp, std::nan(""));
                break;
            default:
                record.set(StatusKey::fans, std::vector<StatusRecord>(3));
                record.set(StatusKey::gpuTemp, 1e300);
                break;
        }
        return record;
    }

    // The machine.

    void changeHeat() {
        const double watts = static_cast<double>(pick(oneIn(4) ? 120 : 30));
        machine_.helper.mac.setLoad(watts);
        if (oneIn(5)) {
            machine_.helper.mac.setAmbient(5 + static_cast<double>(pick(40)));
        }
        tell("{} W", watts);
    }
    void breakSensors() {
        const std::array faults{KeyFault::vanished(), KeyFault::readFails(), KeyFault::stale(),
                                KeyFault::spike(129, 3), KeyFault::spike(8, 2)};
        const std::size_t fault = pick(faults.size());
        tell("sensors broken, kind {}", fault);
        machine_.helper.mac.setFault(oneIn(3) ? "Tp*" : "T*", faults.at(fault));
        faultsEnd_ = machine_.helper.now() + seconds(60);
        oracle_.areSensorsBroken = true;
    }
    void holdSensors() {
        const auto celsius = static_cast<float>(30 + pick(90));
        tell("all sensors show {}", celsius);
        machine_.helper.mac.holdSensorsAt(celsius);
        holdEnds_ = machine_.helper.now() + seconds(60);
        oracle_.heldReading = static_cast<double>(celsius);
    }
    void suspend() {
        if (!machine_.helper.service) {
            return;
        }
        ++suspends_;
        const Duration duration = seconds(oneIn(3) ? 3600 : 30);
        tell("suspended for {} s", duration / 1s);
        oracle_.disturb();
        const std::shared_ptr<FanHelperService> service = machine_.helper.service;
        machine_.helper.queue.sync([&] { service->releaseBeforeSuspend(); });
        machine_.advance(1s * pick(2));
        if (machine_.helper.mac.isAnyFanForced()) {
            fail("a fan is forced on the way into a suspend");
        }
        machine_.helper.time.suspend(duration);
        // Both hear of the resume at the same time, in any order.
        const bool isHelperFirst = oneIn(2);
        if (!isHelperFirst) {
            fan().resumeAfterSuspend();
            machine_.settle();
        }
        machine_.helper.queue.sync([&] { service->resumeAfterSuspend(); });
        if (isHelperFirst) {
            fan().resumeAfterSuspend();
        }
        machine_.settle();
        noticeEndOfBoost();
    }

    void update() {
        fan().installHelper();
        machine_.settle();
        switch (pick(4)) {
            case 0:
                tell("update cancelled");
                machine_.installer.finish(InstallResult::cancelled());
                break;
            case 1:
                tell("update failed");
                machine_.installer.finish(InstallResult::failure("disk full"));
                break;
            default:
                killHelper();
                tell("helper updated");
                machine_.installer.finish(InstallResult::success());
                break;
        }
        machine_.settle();
    }

    void endDeeds() {
        const Duration now = machine_.helper.now();
        if (isHelperHung_ && now >= hangEnds_) {
            endHang();
        }
        if (areCallsFailing_ && now >= failuresEnd_) {
            endFailures();
        }
        if (isGarbled_ && now >= garbageEnds_) {
            isGarbled_ = false;
        }
        if (oracle_.areSensorsBroken && now >= faultsEnd_) {
            machine_.helper.mac.clearFaults();
            oracle_.areSensorsBroken = false;
        }
        if (oracle_.heldReading && now >= holdEnds_) {
            machine_.helper.mac.releaseSensor("T*");
            oracle_.heldReading.reset();
        }
    }
    void tellOracle() {
        oracle_.isGarbled = isGarbled_;
        oracle_.isTransportBroken = isHelperHung_ || areCallsFailing_;
        if (oracle_.isTransportBroken) {
            oracle_.disturb();
        }
    }
    void endHang() {
        isHelperHung_ = false;
        machine_.host.setHung(false);
    }
    void endFailures() {
        areCallsFailing_ = false;
        machine_.host.failCallsWith("");
    }

    std::mt19937_64 random_;
    FanMachine machine_;
    SoakOracle oracle_;
    /// The service manager's way to the helper.
    std::unique_ptr<HelperConnection> manager_ =
        machine_.host.connect({[] {}, [] {}, [](const std::string&) {}});
    int step_ = 0;
    std::deque<std::string> deeds_;
    std::size_t seenNotifications_ = 0;
    int boostsEnded_ = 0;
    int suspends_ = 0;
    bool isHelperHung_ = false;
    bool areCallsFailing_ = false;
    bool isGarbled_ = false;
    Duration hangEnds_{};
    Duration failuresEnd_{};
    Duration garbageEnds_{};
    Duration faultsEnd_{};
    Duration holdEnds_{};
};

/// Model and seed.
class FanSoak : public testing::TestWithParam<std::tuple<std::string, std::uint64_t>> {
protected:
    static MacModel model(std::string_view name) { return name == "tiny" ? tinyMac() : *findMacModel(name); }
};

TEST_P(FanSoak, ForcesNothingUnwantedNothingTooSlowAndNothingAtCriticalHeatForADay) {
    const auto& [name, seed] = GetParam();
    SCOPED_TRACE(fmt::format("{}, seed {}", name, seed));
    Soak soak(model(name), seed);
    soak.live();
    if (!HasFailure()) {
        soak.expectEventful();
    }
}

INSTANTIATE_TEST_SUITE_P(Machines, FanSoak,
                         testing::Combine(testing::Values(std::string("tiny"), std::string("macbook-pro-13"),
                                                          std::string("macbook-pro-14-m5")),
                                          testing::Range<std::uint64_t>(1, 4)));

}  // namespace
}  // namespace corvane
