#pragma once

#include <memory>
#include <string>

#include "tests/app/fan/SoakGarbage.h"
#include "tests/app/fan/SoakWorld.h"

namespace corvane {

/// What becomes of the helper and of what passes between it and its callers.
class SoakTransport {
public:
    explicit SoakTransport(SoakWorld& world) : world_(world) {
        host().filterStatus([this](const StatusRecord& record) {
            world_.oracle.takeRecord(record, isGarbled_);
            return isGarbled_ ? soakGarbage(world_.dice) : record;
        });
    }
    SoakTransport(const SoakTransport&) = delete;
    SoakTransport& operator=(const SoakTransport&) = delete;
    ~SoakTransport() { host().filterStatus(nullptr); }

    /// Another program calls the helper.
    void meddle() {
        if (!world_.machine.helper.service || isHelperHung_) {
            return;
        }
        world_.story.tell("somebody meddles");
        FanHelperService& service = *world_.machine.helper.service;
        world_.oracle.disturb();
        switch (world_.dice.pick(5)) {
            case 0:
                service.stopBoostWithReply([](bool, const std::string&) {});
                break;
            case 1:
                service.setLidStayAwakeWithReply(true, [](bool, const std::string&) {});
                break;
            default:
                service.setFanFloorWithPercentWithReply(static_cast<double>(world_.dice.pick(101)),
                                                        [](bool, const std::string&) {});
                break;
        }
        world_.machine.settle();
    }

    /// A process that is gone neither hangs nor holds the lid; the service manager starts it anew at once.
    void killHelper() {
        world_.story.tell("the helper dies");
        endHang();
        endFailures();
        world_.oracle.disturb();
        world_.machine.killHelper();
        static_cast<void>(world_.machine.helper.sleepSetting.setSleepDisabled(false));
        manager_->remoteObject().pingWithReply([](bool, const std::string&) {});
    }
    void hangHelper() {
        world_.story.tell("the helper hangs");
        hangEnds_ = world_.now() + world_.dice.seconds(12);
        isHelperHung_ = true;
        host().setHung(true);
    }
    void letCallsFail() {
        world_.story.tell("calls fail");
        failuresEnd_ = world_.now() + world_.dice.seconds(6);
        areCallsFailing_ = true;
        host().failCallsWith("no such luck");
    }
    void garble() {
        world_.story.tell("garbled records");
        garbageEnds_ = world_.now() + world_.dice.seconds(20);
        isGarbled_ = true;
    }

    /// Ends what has lasted long enough.
    void endDeeds() {
        const Duration now = world_.now();
        if (isHelperHung_ && now >= hangEnds_) {
            endHang();
        }
        if (areCallsFailing_ && now >= failuresEnd_) {
            endFailures();
        }
        if (isGarbled_ && now >= garbageEnds_) {
            isGarbled_ = false;
        }
    }
    void mend() {
        endHang();
        endFailures();
        isGarbled_ = false;
    }

    void tellOracle() {
        world_.oracle.isGarbled = isGarbled_;
        if (isHelperHung_ || areCallsFailing_) {
            callsLostUntil_ = world_.now() + callTimeOut;
        }
        world_.oracle.isTransportBroken = world_.now() < callsLostUntil_;
        if (world_.oracle.isTransportBroken) {
            world_.oracle.disturb();
        }
    }

private:
    /// A call that is lost ends the connection only then.
    static constexpr Duration callTimeOut = 5s;

    [[nodiscard]] SimulatedHelperHost& host() { return world_.machine.host; }
    void endHang() {
        isHelperHung_ = false;
        host().setHung(false);
    }
    void endFailures() {
        areCallsFailing_ = false;
        host().failCallsWith("");
    }

    SoakWorld& world_;
    /// The service manager's way to the helper.
    std::unique_ptr<HelperConnection> manager_ = host().connect({[] {}, [] {}, [](const std::string&) {}});
    bool isHelperHung_ = false;
    bool areCallsFailing_ = false;
    bool isGarbled_ = false;
    Duration hangEnds_{};
    Duration failuresEnd_{};
    Duration garbageEnds_{};
    Duration callsLostUntil_{};
};

}  // namespace corvane
