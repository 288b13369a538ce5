#include "platform/linux/desktop/DesktopPowerAssertions.h"

#include <string>
#include <utility>

namespace corvane {

namespace {

/// A network stays reachable as long as the computer is awake: nothing is made for less.
std::optional<IdleKind> kindOf(std::string_view type) {
    if (type == PowerAssertions::preventUserIdleSystemSleep || type == PowerAssertions::networkClientActive) {
        return IdleKind::system;
    }
    if (type == PowerAssertions::preventUserIdleDisplaySleep) {
        return IdleKind::display;
    }
    return std::nullopt;
}

}  // namespace

DesktopPowerAssertions::DesktopPowerAssertions(BusThread& sessionBus, BusThread& systemBus,
                                               SerialQueue& mainLoop, Log& log, InhibitPatience patience)
    : mainLoop_(mainLoop), log_(log), session_{sessionBus, {}, {}}, system_{systemBus, {}, {}} {
    begin(session_, {{"session"}, sessionInhibitors, inhibitMethodOnSessionBus}, patience,
          &DesktopPowerAssertions::heldBySession);
    begin(system_, {{"system"}, systemInhibitors, inhibitMethodOnSystemBus}, patience,
          &DesktopPowerAssertions::heldByLoginManager);
}

void DesktopPowerAssertions::begin(Side& side, const InhibitRoute& route, InhibitPatience patience,
                                   void (DesktopPowerAssertions::*held)(Id, bool)) {
    auto presenceChanged =
        lifetime_.bound([this, &side](bool isPresent) { changePresence(side, isPresent); });
    auto heldChanged = lifetime_.bound([this, held](Id id, bool isHeld) { (this->*held)(id, isHeld); });
    side.link = std::make_shared<InhibitLink>(
        side.thread.context(), route, patience, log_,
        InhibitLink::Events{
            .presence =
                [&mainLoop = mainLoop_, presenceChanged](bool isPresent) {
                    mainLoop.async([presenceChanged, isPresent]() mutable { presenceChanged(isPresent); });
                },
            .held =
                [&mainLoop = mainLoop_, heldChanged](Id id, bool isHeld) {
                    mainLoop.async([heldChanged, id, isHeld]() mutable { heldChanged(id, isHeld); });
                }});
    side.thread.post([link = side.link] { link->start(); });
}

DesktopPowerAssertions::~DesktopPowerAssertions() {
    for (Side* side : {&session_, &system_}) {
        side->thread.post([link = std::move(side->link)] {});
    }
}

std::optional<PowerAssertions::Id> DesktopPowerAssertions::create(std::string_view type,
                                                                  std::string_view name) {
    const std::optional<IdleKind> kind = kindOf(type);
    const bool isNobodyThere = session_.isPresent == false && system_.isPresent == false;
    if (!kind || isNobodyThere) {
        return std::nullopt;
    }
    const Id id = nextId();
    const PowerHold& hold = holds_.try_emplace(id, PowerHold{*kind, std::string(name)}).first->second;
    want(session_, id, hold);
    // The session's service, where there is one, soon tells whether it has taken the hold.
    if (session_.isPresent != true) {
        want(system_, id, hold);
    }
    return id;
}

void DesktopPowerAssertions::release(Id id) {
    if (holds_.erase(id) > 0) {
        unwant(session_, id);
        unwant(system_, id);
    }
}

void DesktopPowerAssertions::heldBySession(Id id, bool isHeld) {
    const auto hold = holds_.find(id);
    if (hold == holds_.end()) {
        return;
    }
    if (isHeld) {
        unwant(system_, id);
    } else {
        want(system_, id, hold->second);
    }
}

void DesktopPowerAssertions::changePresence(Side& side, bool isPresent) {
    side.isPresent = isPresent;
    if (session_.isPresent == false && system_.isPresent == false) {
        log_.write("Corvane: keeping awake: there is no service that could be asked");
    }
}

/// 0 and those in use are skipped once the numbers start over.
PowerAssertions::Id DesktopPowerAssertions::nextId() {
    do {
        ++lastId_;
    } while (lastId_ == 0 || holds_.contains(lastId_));
    return lastId_;
}

void DesktopPowerAssertions::want(Side& side, Id id, const PowerHold& hold) {
    if (side.link->wanted().add(id, hold)) {
        side.thread.post([link = side.link] { link->follow(); });
    }
}

void DesktopPowerAssertions::unwant(Side& side, Id id) {
    if (side.link->wanted().remove(id)) {
        side.thread.post([link = side.link] { link->follow(); });
    }
}

}  // namespace corvane
