#pragma once

#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "tests/app/fan/SoakWorld.h"

namespace corvane {

/// What the user, the automation and the closed-lid mode ask of the application.
class SoakWishes {
public:
    explicit SoakWishes(SoakWorld& world) : world_(world) {}

    // The user.

    void turnSwitch() {
        world_.oracle.isSwitchedOn = world_.dice.oneIn(2);
        world_.story.tell("switch {}", world_.oracle.isSwitchedOn);
        world_.fan().setFansEnabled(world_.oracle.isSwitchedOn);
    }
    void moveSlider() {
        const double percent = anyPercent();
        world_.story.tell("slider {}", percent);
        if (percent == 0 && world_.fan().coolingMode() == CoolingMode::manual) {
            world_.oracle.isSwitchedOn = false;
        }
        world_.fan().setManualFloor(percent);
    }
    void changeMode() {
        const bool isManual = world_.dice.oneIn(2);
        world_.story.tell("manual mode {}", isManual);
        world_.fan().setCoolingMode(isManual ? CoolingMode::manual : CoolingMode::automatic);
    }
    void changeProfile() {
        world_.story.tell("profile");
        world_.fan().setCoolingProfile(anyKind());
    }
    void changeLength() {
        const auto length = static_cast<double>(10 + world_.dice.pick(world_.dice.oneIn(3) ? 6000 : 300));
        world_.story.tell("boost length {}", length);
        world_.fan().setBoostDuration(length);
    }
    /// Beside the slider.
    void chooseLength() {
        changeLength();
        if (world_.oracle.isSwitchedOn && world_.fan().coolingMode() == CoolingMode::manual) {
            static_cast<void>(world_.fan().applyBoost(world_.fan().boostDuration(), false));
        }
    }

    // The automation and the closed-lid mode.

    void ask() {
        const std::string source = anySource();
        world_.story.tell("{} asks", source);
        world_.oracle.requesters.insert(source);
        world_.fan().requestCooling(anyKind(), source);
    }
    void withdraw() {
        const std::string source = anySource();
        world_.story.tell("{} withdraws", source);
        withdrawAs(source);
    }
    void lockLid() {
        world_.oracle.wantsLid = world_.dice.oneIn(2);
        world_.story.tell("lid {}", world_.oracle.wantsLid);
        world_.fan().setLidStayAwake(world_.oracle.wantsLid);
    }

    void wishNothing() {
        world_.story.tell("nobody wants anything");
        for (const char* source : {"lid", "apps"}) {
            withdrawAs(source);
        }
        world_.oracle.wantsLid = false;
        world_.fan().setLidStayAwake(false);
        world_.oracle.isSwitchedOn = false;
        world_.fan().setFansEnabled(false);
    }

    /// A boost that is over turns the switch off.
    void noticeEndOfBoost() {
        const std::vector<UserNotification>& posted = world_.machine.center.posted();
        for (; seenNotifications_ < posted.size(); ++seenNotifications_) {
            if (posted[seenNotifications_].title == "Fan boost finished") {
                ++boostsEnded_;
                world_.story.tell("the boost is over");
                world_.oracle.isSwitchedOn = false;
            }
        }
    }
    [[nodiscard]] int boostsEnded() const { return boostsEnded_; }

private:
    double anyPercent() {
        SoakDice& dice = world_.dice;
        return dice.oneIn(20) ? std::nan("") : dice.oneIn(6) ? 0 : static_cast<double>(dice.pick(1200)) / 10;
    }
    CoolingProfile::Kind anyKind() {
        return CoolingProfile::allKinds.at(world_.dice.pick(CoolingProfile::allKinds.size()));
    }
    std::string anySource() { return world_.dice.oneIn(2) ? "lid" : "apps"; }
    void withdrawAs(const std::string& source) {
        world_.oracle.requesters.erase(source);
        world_.fan().requestCooling(std::nullopt, source);
    }

    SoakWorld& world_;
    std::size_t seenNotifications_ = 0;
    int boostsEnded_ = 0;
};

}  // namespace corvane
