#include <algorithm>
#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/desktop/ApplicationUnits.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/FakeUserManager.h"
#include "tests/support/PrivateBus.h"

namespace corvane {
namespace {

using Identifiers = RunningApplications::Identifiers;
using Published = std::optional<Identifiers>;
using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

/// The service manager's applications on a private bus; the test's own thread is the bus thread.
class ApplicationUnitsTest : public testing::Test {
protected:
    void SetUp() override {
        if (bus->problem()) {
            GTEST_SKIP() << *bus->problem();
        }
        manager.emplace(bus->address());
    }

    void TearDown() override {
        units.reset();
        manager.reset();
    }

    /// The bus is the session's.
    UserBus userBus() {
        return UserBus([](const char* /*name*/) { return nullptr; });
    }

    void start(UserManagerPatience patience = {}) {
        units.emplace(context, userBus(), patience,
                      [this](Published identifiers) { published.push_back(std::move(identifiers)); });
        units->start();
    }

    /// False when that did not happen in the time a test waits.
    bool runUntil(const std::function<bool()>& isDone) {
        const auto end = std::chrono::steady_clock::now() + testPatience;
        while (!isDone() && std::chrono::steady_clock::now() < end) {
            context.restart();
            context.run_one_for(milliseconds(100));
        }
        return isDone();
    }

    /// Whether this is what is published, sooner or later.
    bool becomes(const Published& expected) {
        return runUntil([&] { return !published.empty() && published.back() == expected; });
    }

    std::optional<PrivateBus> bus{std::in_place};
    std::optional<EnvironmentVariable> sessionBus{std::in_place, "DBUS_SESSION_BUS_ADDRESS",
                                                  bus->address().c_str()};
    std::optional<FakeUserManager> manager;
    asio::io_context context{1};
    std::vector<Published> published;
    std::optional<ApplicationUnits> units;
};

TEST_F(ApplicationUnitsTest, AreThoseOfApplicationsThatRun) {
    manager->add("app-gnome-org.gnome.Maps-12.scope");
    manager->add("app-org.kde.kate@ab12.service", "reloading");
    manager->add("dbus-:1.2-org.gnome.Nautilus@0.service");
    manager->add("app-org.x.Failed@1.service", "failed");
    manager->add("app-org.x.Over-1.scope", "inactive");
    manager->add("app-org.x.Starting@1.service", "activating");
    manager->add("app-org.x.Ending@1.service", "deactivating");
    manager->add("app.slice");
    manager->add("pipewire.service");
    manager->comeUp();
    start();
    EXPECT_TRUE(becomes(Identifiers{"org.gnome.Maps", "org.gnome.Nautilus", "org.kde.kate"}));
    EXPECT_THAT(manager->questions().all(), ElementsAre(ElementsAre("app-*", "dbus-*")));
}

TEST_F(ApplicationUnitsTest, AreFollowed) {
    manager->comeUp();
    start();
    ASSERT_TRUE(becomes(Identifiers{}));
    manager->add("app-one-1.scope");
    EXPECT_TRUE(becomes(Identifiers{"one"}));
    manager->add("app-two-1.scope", "inactive");
    manager->change("app-two-1.scope", "active");
    EXPECT_TRUE(becomes(Identifiers{"one", "two"}));
    manager->change("app-one-1.scope", "failed");
    EXPECT_TRUE(becomes(Identifiers{"two"}));
    manager->remove("app-two-1.scope");
    EXPECT_TRUE(becomes(Identifiers{}));
}

TEST_F(ApplicationUnitsTest, AreNotAskedForWhenOtherUnitsChange) {
    manager->comeUp();
    start();
    ASSERT_TRUE(becomes(Identifiers{}));
    manager->add("backup.service");
    manager->change("backup.service", "failed");
    manager->remove("backup.service");
    manager->add("app-one-1.scope");
    ASSERT_TRUE(becomes(Identifiers{"one"}));
    EXPECT_EQ(manager->questions().size(), 2U);
}

TEST_F(ApplicationUnitsTest, AreKnownAfterMany) {
    manager->comeUp();
    start();
    Identifiers expected;
    for (int number = 0; number < 100; ++number) {
        manager->add(fmt::format("app-one{}-1.scope", number));
        expected.insert(fmt::format("one{}", number));
    }
    EXPECT_TRUE(becomes(expected));
}

TEST_F(ApplicationUnitsTest, AreUnknownWithoutAManagerUntilItComesUp) {
    start();
    ASSERT_TRUE(becomes(std::nullopt));
    manager->add("app-one-1.scope");
    manager->comeUp();
    EXPECT_TRUE(becomes(Identifiers{"one"}));
}

TEST_F(ApplicationUnitsTest, AreKnownAndFollowedAnewAfterTheManagerRestarted) {
    manager->add("app-one-1.scope");
    manager->comeUp();
    start();
    ASSERT_TRUE(becomes(Identifiers{"one"}));
    manager.reset();
    EXPECT_TRUE(becomes(std::nullopt));
    manager.emplace(bus->address());
    manager->add("app-two-1.scope");
    manager->comeUp();
    EXPECT_TRUE(becomes(Identifiers{"two"}));
    manager->add("app-three-1.scope");
    EXPECT_TRUE(becomes(Identifiers{"three", "two"}));
}

TEST_F(ApplicationUnitsTest, AreUnknownWhileTheManagerHangs) {
    manager->add("app-one-1.scope");
    manager->setHanging(true);
    manager->comeUp();
    start({.answer = milliseconds(50), .retry = milliseconds(50)});
    ASSERT_TRUE(becomes(std::nullopt));
    ASSERT_TRUE(runUntil([&] { return manager->questions().size() >= 3; })) << "it is asked again and again";
    manager->setHanging(false);
    EXPECT_TRUE(becomes(Identifiers{"one"}));
}

/// A manager whose answers are of another type.
class NonsenseManager {
public:
    explicit NonsenseManager(const std::string& bus) : connection_(HelperBus{bus}.connect()) {
        object_ = sdbus::createObject(*connection_, "/org/freedesktop/systemd1");
        object_->registerMethod("ListUnitsByPatterns")
            .onInterface("org.freedesktop.systemd1.Manager")
            .implementedAs([](const std::vector<std::string>&, const std::vector<std::string>&) {
                return std::string("all of them");
            });
        object_->registerSignal("UnitNew")
            .onInterface("org.freedesktop.systemd1.Manager")
            .withParameters<std::uint32_t>();
        object_->finishRegistration();
        connection_->requestName("org.freedesktop.systemd1");
        connection_->enterEventLoopAsync();
    }
    NonsenseManager(const NonsenseManager&) = delete;
    NonsenseManager& operator=(const NonsenseManager&) = delete;
    ~NonsenseManager() { connection_->leaveEventLoop(); }

    void talk() {
        object_->emitSignal("UnitNew").onInterface("org.freedesktop.systemd1.Manager").withArguments(7U);
    }

private:
    std::unique_ptr<sdbus::IConnection> connection_;
    std::unique_ptr<sdbus::IObject> object_;
};

TEST_F(ApplicationUnitsTest, AreUnknownFromAManagerThatTalksNonsense) {
    std::optional<NonsenseManager> nonsense(std::in_place, bus->address());
    start();
    ASSERT_TRUE(becomes(std::nullopt));
    nonsense->talk();
    nonsense.reset();
    manager->add("app-one-1.scope");
    manager->comeUp();
    EXPECT_TRUE(becomes(Identifiers{"one"}));
}

TEST_F(ApplicationUnitsTest, AreUnknownWithoutABusUntilThereIsOne) {
    sessionBus.emplace("DBUS_SESSION_BUS_ADDRESS", "unix:path=/no/such/bus");
    start({.answer = milliseconds(50), .retry = milliseconds(50)});
    ASSERT_TRUE(becomes(std::nullopt));
    sessionBus.reset();
    sessionBus.emplace("DBUS_SESSION_BUS_ADDRESS", bus->address().c_str());
    manager->add("app-one-1.scope");
    manager->comeUp();
    EXPECT_TRUE(becomes(Identifiers{"one"}));
}

TEST_F(ApplicationUnitsTest, AreUnknownWhenTheBusHasGoneAwayUntilItIsBack) {
    manager->add("app-one-1.scope");
    manager->comeUp();
    start({.retry = milliseconds(50)});
    ASSERT_TRUE(becomes(Identifiers{"one"}));
    manager.reset();
    bus->end();
    ASSERT_TRUE(becomes(std::nullopt));
    sessionBus.reset();
    bus.emplace();
    sessionBus.emplace("DBUS_SESSION_BUS_ADDRESS", bus->address().c_str());
    manager.emplace(bus->address());
    manager->add("app-two-1.scope");
    manager->comeUp();
    EXPECT_TRUE(becomes(Identifiers{"two"}));
}

TEST_F(ApplicationUnitsTest, AreLookedForOnTheUsersBusFirst) {
    const PrivateBus session;
    sessionBus.reset();
    sessionBus.emplace("DBUS_SESSION_BUS_ADDRESS", session.address().c_str());
    const std::string address = bus->address();
    const std::string begin = "unix:path=";
    const std::string end = "/bus";
    const std::string folder = address.substr(begin.size(), address.find(',') - begin.size() - end.size());
    const UserBus both([&](const char* name) {
        return std::string_view(name) == "XDG_RUNTIME_DIR" ? folder.c_str() : nullptr;
    });
    manager->comeUp();
    const auto owns = [](sdbus::IConnection& connection) {
        std::vector<std::string> names;
        sdbus::createProxy(connection, "org.freedesktop.DBus", "/org/freedesktop/DBus")
            ->callMethod("ListNames")
            .onInterface("org.freedesktop.DBus")
            .storeResultsTo(names);
        return std::ranges::find(names, "org.freedesktop.systemd1") != names.end();
    };
    EXPECT_TRUE(owns(*both.connect()));
    manager.reset();
    bus->end();
    EXPECT_FALSE(owns(*both.connect())) << "of the two, only the session's is there";
}

TEST_F(ApplicationUnitsTest, TellNothingMoreOnceTheyAreGone) {
    manager->setHanging(true);
    manager->comeUp();
    start({.answer = milliseconds(0), .retry = milliseconds(0)});
    ASSERT_TRUE(manager->questions().waitFor(1));
    units.reset();
    published.clear();
    context.restart();
    context.poll();
    EXPECT_THAT(published, IsEmpty());
}

}  // namespace
}  // namespace corvane
