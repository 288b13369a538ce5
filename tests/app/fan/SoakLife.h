#pragma once

#include <array>
#include <memory>
#include <string>
#include <utility>
#include <variant>

#include <gtest/gtest.h>

#include "tests/app/fan/SoakHardware.h"
#include "tests/app/fan/SoakTransport.h"
#include "tests/app/fan/SoakWishes.h"

namespace corvane {

/// How often something happens: once in so many seconds.
struct SoakPace {
    std::uint64_t heat = 60;
    std::uint64_t deeds = 25;
};

/// The life of a machine whose user, programs and parts do whatever comes to their mind. The same seed gives
/// the same life.
class SoakLife {
public:
    SoakLife(MacModel model, std::uint64_t seed, SoakPace pace = {})
        : pace_(pace), world_(std::move(model), seed) {
        machine().open();
        machine().fan->reconcileToOffOnLaunch();
        machine().settle();
        static_cast<void>(machine().takeRequests());
    }

    /// For so many seconds awake, or until something is wrong; what is slept through comes on top.
    void live(int seconds) {
        for (const int end = story().second() + seconds; story().second() < end && isWell();
             story().nextSecond()) {
            transport_.endDeeds();
            hardware_.endDeeds();
            if (dice().oneIn(pace_.heat)) {
                hardware_.changeHeat();
            }
            if (dice().oneIn(pace_.deeds)) {
                doSomething();
            }
            pass();
        }
    }

    /// How much there was to check, s.
    [[nodiscard]] int forcedSeconds() const { return world_.oracle.forcedSeconds; }
    [[nodiscard]] int comparedSeconds() const { return world_.oracle.comparedSeconds; }

    /// Everything is mended, a helper that may have learnt nonsense of broken fans too, and nobody wants
    /// anything any more: then the firmware has all fans again.
    void expectPeace() {
        transport_.mend();
        hardware_.mend();
        wishes_.wishNothing();
        if (oracle().areFansInDoubt()) {
            transport_.killHelper();
        }
        for (int i = 0; i < secondsToPeace && isWell(); ++i, story().nextSecond()) {
            pass();
        }
        if (machine().helper.mac.isAnyFanForced()) {
            story().fail("a fan is forced in the end");
        }
        if (machine().helper.sleepSetting.isSleepDisabled()) {
            story().fail("the lid is held in the end");
        }
    }

    /// A day without heat, releases and boosts would prove nothing.
    void expectEventful() {
        EXPECT_GT(oracle().forcedSeconds, 10000);
        EXPECT_GT(oracle().comparedSeconds, 30000);
        EXPECT_GT(oracle().firmwareSeconds, 5000);
        EXPECT_GT(oracle().hotSeconds, 100);
        EXPECT_GT(oracle().criticalReleases, 5U);
        EXPECT_GT(oracle().blindReleases, 5U);
        EXPECT_GT(oracle().silentReleases, 5U);
        EXPECT_GT(oracle().silentLidReleases, 5U);
        EXPECT_GT(machine().log.count("fans=yes"), 5U);
        EXPECT_GT(machine().log.count("lid=yes"), 2U);
        EXPECT_GT(wishes_.boostsEnded(), 5);
        EXPECT_GT(suspends_, 20);
    }

private:
    /// A release that fails is tried five times; a helper that nobody speaks to lets go within 8 s.
    static constexpr int secondsToPeace = 15;

    /// Something that a part of the life can do.
    using Deed = std::variant<void (SoakWishes::*)(), void (SoakTransport::*)(), void (SoakHardware::*)(),
                              void (SoakLife::*)()>;

    [[nodiscard]] static bool isWell() { return !testing::Test::HasFailure(); }
    [[nodiscard]] FanMachine& machine() { return world_.machine; }
    [[nodiscard]] SoakOracle& oracle() { return world_.oracle; }
    [[nodiscard]] SoakStory& story() { return world_.story; }
    [[nodiscard]] SoakDice& dice() { return world_.dice; }

    void doSomething() {
        // What people do comes more than once.
        static constexpr std::array<Deed, 29> choices{
            &SoakWishes::turnSwitch,      &SoakWishes::turnSwitch,    &SoakWishes::turnSwitch,
            &SoakWishes::moveSlider,      &SoakWishes::moveSlider,    &SoakWishes::changeMode,
            &SoakWishes::changeMode,      &SoakWishes::changeProfile, &SoakWishes::changeLength,
            &SoakWishes::chooseLength,    &SoakWishes::ask,           &SoakWishes::ask,
            &SoakWishes::withdraw,        &SoakWishes::withdraw,      &SoakWishes::withdraw,
            &SoakWishes::lockLid,         &SoakWishes::lockLid,       &SoakTransport::meddle,
            &SoakTransport::meddle,       &SoakTransport::killHelper, &SoakTransport::hangHelper,
            &SoakTransport::letCallsFail, &SoakTransport::garble,     &SoakHardware::breakSensors,
            &SoakHardware::holdSensors,   &SoakLife::suspend,         &SoakLife::update,
            &SoakHardware::breakFans,     &SoakHardware::breakFans};
        std::visit([this](auto deed) { perform(deed); }, choices.at(dice().pick(choices.size())));
    }
    void perform(void (SoakWishes::*deed)()) { (wishes_.*deed)(); }
    void perform(void (SoakTransport::*deed)()) { (transport_.*deed)(); }
    void perform(void (SoakHardware::*deed)()) { (hardware_.*deed)(); }
    void perform(void (SoakLife::*deed)()) { (this->*deed)(); }

    void suspend() {
        if (!machine().helper.service) {
            return;
        }
        ++suspends_;
        const Duration duration = dice().seconds(dice().oneIn(3) ? 3600 : 30);
        story().tell("suspended for {} s", duration / 1s);
        oracle().disturb();
        const std::shared_ptr<FanHelperService> service = machine().helper.service;
        machine().helper.queue.sync([&] { service->releaseBeforeSuspend(); });
        machine().advance(1s * dice().pick(2));
        if (machine().helper.mac.isAnyFanForced() && !oracle().areFansInDoubt()) {
            story().fail("a fan is forced on the way into a suspend");
        }
        machine().helper.time.suspend(duration);
        resume(*service);
        wishes_.noticeEndOfBoost();
    }
    /// Both hear of it at the same time, in any order.
    void resume(FanHelperService& service) {
        const bool isHelperFirst = dice().oneIn(2);
        if (!isHelperFirst) {
            world_.fan().resumeAfterSuspend();
            machine().settle();
        }
        machine().helper.queue.sync([&] { service.resumeAfterSuspend(); });
        if (isHelperFirst) {
            world_.fan().resumeAfterSuspend();
        }
        machine().settle();
    }

    void update() {
        world_.fan().installHelper();
        machine().settle();
        switch (dice().pick(4)) {
            case 0:
                story().tell("update cancelled");
                machine().installer.finish(InstallResult::cancelled());
                break;
            case 1:
                story().tell("update failed");
                machine().installer.finish(InstallResult::failure("disk full"));
                break;
            default:
                transport_.killHelper();
                story().tell("helper updated");
                machine().installer.finish(InstallResult::success());
                break;
        }
        machine().settle();
    }

    void pass() {
        transport_.tellOracle();
        machine().advance(1s);
        wishes_.noticeEndOfBoost();
        oracle().check([this](const std::string& what) { story().fail(what); });
        machine().helper.writes.clear();
    }

    SoakPace pace_;
    SoakWorld world_;
    SoakWishes wishes_{world_};
    SoakTransport transport_{world_};
    SoakHardware hardware_{world_};
    int suspends_ = 0;
};

}  // namespace corvane
