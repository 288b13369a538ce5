#include <chrono>
#include <cstdint>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/AsioSerialQueue.h"
#include "platform/linux/BusNameWatch.h"
#include "platform/linux/desktop/PortalHotKeys.h"
#include "platform/linux/desktop/PortalShortcuts.h"
#include "platform/linux/desktop/makeHotKeys.h"
#include "platform/simulated/RecordingLog.h"
#include "tests/platform/linux/desktop/hotKeys.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/FakePortal.h"
#include "tests/support/PrivateBus.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

/// A private bus stands in for the session's.
class PortalHotKeysTest : public testing::Test {
protected:
    void SetUp() override {
        if (bus->problem()) {
            GTEST_SKIP() << *bus->problem();
        }
        mainLoop.sync([this] { keys.emplace(busThread, mainLoop, log); });
    }
    ~PortalHotKeysTest() override {
        mainLoop.sync([this] {
            registrations.clear();
            keys.reset();
        });
    }

    void add(const std::vector<HotKey>& wanted) {
        mainLoop.sync([&] {
            for (const HotKey& key : wanted) {
                registrations.push_back(keys->add(key, [this](std::uint32_t id) { presses.add(id); }));
            }
        });
    }
    void removeAll() {
        mainLoop.sync([this] { registrations.clear(); });
    }

    /// Waits until what was added and removed so far has been taken to the bus.
    void settle() {
        mainLoop.sync([] {});
        std::promise<void> done;
        busThread.post([&] { done.set_value(); });
        done.get_future().wait();
    }

    /// Waits for a line in the log that has this text, as the only one.
    testing::AssertionResult isToldOnce(const std::string& text) {
        const auto end = std::chrono::steady_clock::now() + testPatience;
        while (log.count(text) == 0 && std::chrono::steady_clock::now() < end) {
            settle();
        }
        return log.lines().size() == 1 && log.count(text) == 1
                   ? testing::AssertionSuccess()
                   : testing::AssertionFailure() << testing::PrintToString(log.lines());
    }

    std::optional<PrivateBus> bus{std::in_place};
    std::optional<EnvironmentVariable> sessionBus{std::in_place, "DBUS_SESSION_BUS_ADDRESS",
                                                  bus->address().c_str()};
    RecordingLog log;
    AsioSerialQueue mainLoop{"main"};
    BusThread busThread;
    Notes<std::uint32_t> presses;
    std::optional<PortalHotKeys> keys;
    std::vector<std::unique_ptr<HotKeyRegistration>> registrations;
};

/// Waits until the keys are bound and returns their session.
std::string sessionOf(const FakePortal& portal, std::size_t times = 1) {
    EXPECT_TRUE(portal.bound().waitFor(times));
    const auto bound = portal.bound().all();
    return bound.empty() ? "/none" : bound.back().session;
}

TEST_F(PortalHotKeysTest, AskForAllKeysTogether) {
    const FakePortal portal(bus->address());
    add({keepAwake, fanBoost});
    ASSERT_TRUE(portal.bound().waitFor(1));
    const FakePortal::Bound bound = portal.bound().all().front();
    EXPECT_THAT(bound.shortcuts, UnorderedElementsAre(Pair("hot-key-1", Pair("Keep awake", "LOGO+ALT+k")),
                                                      Pair("hot-key-2", Pair("Fan boost", "LOGO+ALT+l"))));
    EXPECT_EQ(bound.parentWindow, "");
    settle();
    EXPECT_EQ(portal.sessions().size(), 1U);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(PortalHotKeysTest, DeliverEachPressOfEachKey) {
    FakePortal portal(bus->address());
    add({keepAwake, fanBoost});
    const std::string session = sessionOf(portal);
    portal.activate(session, "hot-key-1");
    portal.deactivate(session, "hot-key-1");
    portal.activate(session, "hot-key-2");
    portal.deactivate(session, "hot-key-2");
    portal.activate(session, "hot-key-1");
    ASSERT_TRUE(presses.waitFor(3));
    EXPECT_THAT(presses.all(), ElementsAre(1U, 2U, 1U));
}

TEST_F(PortalHotKeysTest, DeliverAKeyThatIsHeldDownOnce) {
    FakePortal portal(bus->address());
    add({keepAwake, fanBoost});
    const std::string session = sessionOf(portal);
    for (int i = 0; i < 5; ++i) {
        portal.activate(session, "hot-key-1");
    }
    portal.activate(session, "hot-key-2");
    ASSERT_TRUE(presses.waitFor(2));
    EXPECT_THAT(presses.all(), ElementsAre(1U, 2U));
}

TEST_F(PortalHotKeysTest, DeliverTheNextPressWhereThePortalNeverTellsOfReleases) {
    FakePortal portal(bus->address());
    add({keepAwake});
    const std::string session = sessionOf(portal);
    portal.activate(session, "hot-key-1");
    ASSERT_TRUE(presses.waitFor(1));
    // Until the time has passed in which a key is taken for held down. The clock is the system's.
    const auto notBefore = std::chrono::steady_clock::now() + PortalShortcuts::repeatTime;
    std::promise<void> isOver;
    asio::steady_timer timer(busThread.context(), notBefore + std::chrono::milliseconds(100));
    timer.async_wait([&](const std::error_code& /*error*/) { isOver.set_value(); });
    isOver.get_future().wait();
    portal.activate(session, "hot-key-1");
    EXPECT_TRUE(presses.waitFor(2));
}

TEST_F(PortalHotKeysTest, IgnoreOtherSessionsOtherKeysOtherSendersAndNonsense) {
    FakePortal portal(bus->address());
    add({keepAwake, fanBoost});
    const std::string session = sessionOf(portal);
    portal.activate("/org/freedesktop/portal/desktop/session/1_2/corvane", "hot-key-1");
    portal.activate(session, "hot-key-3");
    portal.activate(session, "");
    portal.activateWithNonsense();
    // Somebody else, who addresses the keys' connection, past what it asked the bus for.
    const auto impostor = HelperBus{bus->address()}.connect();
    const auto object = sdbus::createObject(*impostor, "/org/freedesktop/portal/desktop");
    auto signal = object->createSignal("org.freedesktop.portal.GlobalShortcuts", "Activated");
    signal.setDestination(portal.sessions().all().front());
    signal << sdbus::ObjectPath(session) << std::string("hot-key-1") << std::uint64_t{0}
           << FakePortal::Dictionary();
    object->emitSignal(signal);
    // Once the bus has answered this it has passed that on.
    EXPECT_NE(busNameOwner(*impostor, "org.freedesktop.portal.Desktop"), "");
    portal.activate(session, "hot-key-2");
    ASSERT_TRUE(presses.waitFor(1));
    EXPECT_THAT(presses.all(), ElementsAre(2U));
}

TEST_F(PortalHotKeysTest, GiveTheKeysBackWithTheirRegistrations) {
    FakePortal portal(bus->address());
    add({keepAwake, fanBoost});
    const std::string session = sessionOf(portal);
    removeAll();
    settle();
    portal.activate(session, "hot-key-1");
    add({keepAwake, fanBoost});
    const std::string again = sessionOf(portal, 2);
    EXPECT_NE(again, session);
    portal.activate(again, "hot-key-2");
    ASSERT_TRUE(presses.waitFor(1));
    EXPECT_THAT(presses.all(), ElementsAre(2U));
}

TEST_F(PortalHotKeysTest, AreNotAskedForAnewWhenNothingChangesInTheEnd) {
    const FakePortal portal(bus->address());
    add({keepAwake});
    sessionOf(portal);
    mainLoop.sync([this] {
        registrations.clear();
        registrations.push_back(keys->add(keepAwake, [this](std::uint32_t id) { presses.add(id); }));
    });
    settle();
    add({fanBoost});
    sessionOf(portal, 2);
    EXPECT_EQ(portal.sessions().size(), 2U);
}

TEST_F(PortalHotKeysTest, AreBoundAgainWhenThePortalComesBack) {
    auto portal = std::make_unique<FakePortal>(bus->address());
    add({keepAwake, fanBoost});
    sessionOf(*portal);
    portal.reset();
    portal = std::make_unique<FakePortal>(bus->address());
    const std::string session = sessionOf(*portal);
    portal->activate(session, "hot-key-1");
    EXPECT_TRUE(presses.waitFor(1));
    EXPECT_EQ(portal->sessions().size(), 1U);
}

TEST_F(PortalHotKeysTest, AreGoneWithTheirSessionWithoutNaggingForAnother) {
    auto portal = std::make_unique<FakePortal>(bus->address());
    add({keepAwake});
    const std::string session = sessionOf(*portal);
    portal->endSession("/org/freedesktop/portal/desktop/session/1_2/corvane");
    portal->activate(session, "hot-key-1");
    ASSERT_TRUE(presses.waitFor(1)) << "it was another's session";
    portal->deactivate(session, "hot-key-1");
    portal->endSession(session);
    EXPECT_TRUE(isToldOnce("No hot keys: the desktop has taken them back."));
    portal->activate(session, "hot-key-1");
    EXPECT_EQ(portal->sessions().size(), 1U);
    portal.reset();
    portal = std::make_unique<FakePortal>(bus->address());
    const std::string next = sessionOf(*portal);
    portal->activate(next, "hot-key-1");
    EXPECT_TRUE(presses.waitFor(2));
    EXPECT_EQ(presses.size(), 2U) << "one of them after the end of its session";
}

TEST_F(PortalHotKeysTest, AreBoundByAPortalThatComesUpLater) {
    add({keepAwake});
    EXPECT_TRUE(isToldOnce("No hot keys: the desktop has no portal for them"));
    FakePortal portal(bus->address());
    portal.activate(sessionOf(portal), "hot-key-1");
    EXPECT_TRUE(presses.waitFor(1));
    EXPECT_EQ(log.lines().size(), 1U);
}

TEST_F(PortalHotKeysTest, UnderstandPortalsThatAnswerBeforeTheyReplyAndThatChooseTheirOwnPaths) {
    FakePortal::Manner manner;
    manner.isHasty = true;
    std::optional<FakePortal> portal(std::in_place, bus->address(), manner);
    add({keepAwake});
    portal->activate(sessionOf(*portal), "hot-key-1");
    ASSERT_TRUE(presses.waitFor(1));
    portal.reset();
    manner = FakePortal::Manner();
    manner.hasOwnPaths = true;
    portal.emplace(bus->address(), manner);
    portal->activate(sessionOf(*portal), "hot-key-1");
    EXPECT_TRUE(presses.waitFor(2));
}

TEST_F(PortalHotKeysTest, AreSilentWhenTheUserDoesNotWantThem) {
    FakePortal::Manner manner;
    manner.code = 1;
    const FakePortal portal(bus->address(), manner);
    add({keepAwake});
    EXPECT_TRUE(isToldOnce("No hot keys: the user does not want them."));
    EXPECT_EQ(portal.bound().size(), 0U);
}

TEST_F(PortalHotKeysTest, AreSilentWhenThePortalRefuses) {
    FakePortal::Manner manner;
    manner.code = 2;
    const FakePortal refusing(bus->address(), manner);
    add({keepAwake});
    EXPECT_TRUE(isToldOnce("No hot keys: the desktop's portal refuses them."));
}

TEST_F(PortalHotKeysTest, AreSilentWhenThePortalKnowsNoShortcuts) {
    FakePortal::Manner manner;
    manner.isBroken = true;
    const FakePortal broken(bus->address(), manner);
    add({keepAwake});
    EXPECT_TRUE(isToldOnce("No hot keys: the desktop has no portal for them (org.example.Broken)."));
}

TEST_F(PortalHotKeysTest, SurviveNonsense) {
    FakePortal::Manner manner;
    manner.isNonsense = true;
    std::optional<FakePortal> portal(std::in_place, bus->address(), manner);
    add({keepAwake});
    EXPECT_TRUE(isToldOnce("No hot keys: the desktop's portal answers nonsense."));
    for (const char* name : {"no path", "//", "/a/"}) {
        portal.reset();
        manner = FakePortal::Manner();
        manner.sessionName = name;
        portal.emplace(bus->address(), manner);
        ASSERT_TRUE(portal->sessions().waitFor(1)) << name;
    }
    portal.reset();
    portal.emplace(bus->address());
    portal->activate(sessionOf(*portal), "hot-key-1");
    EXPECT_TRUE(presses.waitFor(1));
    EXPECT_EQ(log.lines().size(), 1U) << "the reason is told once until it works again";
}

TEST_F(PortalHotKeysTest, OutliveTheBus) {
    std::optional<FakePortal> portal(std::in_place, bus->address());
    add({keepAwake});
    sessionOf(*portal);
    // It could not bear to be without.
    portal.reset();
    bus->end();
    settle();
    removeAll();
    settle();
    EXPECT_EQ(presses.size(), 0U);
}

TEST_F(PortalHotKeysTest, AreThoseOfASessionOnWaylandEvenWithAnXServer) {
    const FakePortal portal(bus->address());
    const auto environment = [](const char* name) {
        return std::string_view(name) == "WAYLAND_DISPLAY" ? "wayland-0" : ":0";
    };
    std::unique_ptr<HotKeyService> made;
    std::unique_ptr<HotKeyRegistration> registration;
    mainLoop.sync([&] {
        made = makeHotKeys(environment, busThread, mainLoop, log);
        registration = made->add(keepAwake, [](std::uint32_t /*id*/) {});
    });
    EXPECT_TRUE(portal.bound().waitFor(1));
    mainLoop.sync([&] {
        registration.reset();
        made.reset();
    });
}

TEST(WaylandSession, IsKnownByItsTypeOrItsDisplay) {
    const auto isWayland = [](const std::string& type, const std::string& display) {
        return isWaylandSession([&](const char* name) -> const char* {
            const std::string_view variable = name;
            if (variable == "XDG_SESSION_TYPE") {
                return type.c_str();
            }
            return variable == "WAYLAND_DISPLAY" ? display.c_str() : nullptr;
        });
    };
    EXPECT_TRUE(isWayland("wayland", ""));
    EXPECT_TRUE(isWayland("x11", "wayland-1"));
    EXPECT_TRUE(isWayland("", "wayland-1"));
    EXPECT_FALSE(isWayland("x11", ""));
    EXPECT_FALSE(isWayland("tty", ""));
    EXPECT_FALSE(isWaylandSession([](const char* /*name*/) -> const char* { return nullptr; }));
}

TEST_F(PortalHotKeysTest, SayOnceThatThereIsNoBus) {
    bus->end();
    add({keepAwake, fanBoost});
    EXPECT_TRUE(isToldOnce("No hot keys: there is no session bus."));
}

}  // namespace
}  // namespace corvane
