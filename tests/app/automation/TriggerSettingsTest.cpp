#include <QMetaProperty>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "tests/app/automation/TriggerMachine.h"
#include "tests/support/SignalCount.h"

namespace corvane {
namespace {

using Kind = CoolingProfile::Kind;
using Apps = QList<TriggerApp>;

class TriggerSettings : public testing::Test {
protected:
    TriggerManager& manager() { return *machine.manager; }
    Apps appsFrom(std::string_view json) {
        machine.defaults.set("trig.apps", bytesOf(json));
        machine.open();
        return manager().apps();
    }

    TriggerMachine machine;
};

TEST_F(TriggerSettings, AreAllOffAtFirstAndNothingIsWritten) {
    machine.open();
    EXPECT_FALSE(manager().automationEnabled());
    EXPECT_FALSE(manager().keepAwakeOnAC());
    EXPECT_FALSE(manager().keepAwakeOnExternalDisplay());
    EXPECT_EQ(manager().apps(), Apps());
    EXPECT_TRUE(machine.defaults.writes().empty());
}

TEST_F(TriggerSettings, SurviveTheNextStartAndHoldAtOnce) {
    machine.open();
    manager().setAutomationEnabled(true);
    manager().setKeepAwakeOnAC(true);
    manager().setKeepAwakeOnExternalDisplay(true);
    manager().addApp(rule("B", Kind::balanced));
    manager().addApp(rule("A"));
    machine.manager.reset();
    machine.applications.start(identifierOf(rule("A")));
    machine.open();
    EXPECT_TRUE(manager().automationEnabled());
    EXPECT_TRUE(manager().keepAwakeOnAC());
    EXPECT_TRUE(manager().keepAwakeOnExternalDisplay());
    EXPECT_EQ(manager().apps(), (Apps{rule("B", Kind::balanced), rule("A")})) << "in their order";
    EXPECT_EQ(machine.reason(), "on AC power, A");
}

TEST_F(TriggerSettings, AreStoredUnderTheirKeys) {
    machine.open();
    for (const bool on : {true, false}) {
        manager().setAutomationEnabled(on);
        EXPECT_EQ(machine.defaults.get<bool>("trig.enabled"), on);
        manager().setKeepAwakeOnAC(on);
        EXPECT_EQ(machine.defaults.get<bool>("trig.onAC"), on);
        manager().setKeepAwakeOnExternalDisplay(on);
        EXPECT_EQ(machine.defaults.get<bool>("trig.extDisplay"), on);
    }
}

TEST_F(TriggerSettings, OfAnEqualValueAreStoredAndTheRulesLookedAt) {
    machine.openOn();
    manager().setKeepAwakeOnAC(true);
    SignalCount enabledChanges(manager(), &TriggerManager::automationEnabledChanged);
    SignalCount onACChanges(manager(), &TriggerManager::keepAwakeOnACChanged);
    const std::size_t writes = machine.defaults.writes().size();
    machine.runOnBattery(50);
    manager().setKeepAwakeOnAC(true);
    EXPECT_FALSE(manager().active());
    machine.runOnAC(50);
    manager().setAutomationEnabled(true);
    EXPECT_TRUE(manager().active());
    machine.runOnBattery(50);
    manager().setKeepAwakeOnExternalDisplay(false);
    EXPECT_FALSE(manager().active());
    EXPECT_EQ(machine.defaults.writes().size(), writes + 3);
    EXPECT_EQ(enabledChanges.take(), 0);
    EXPECT_EQ(onACChanges.take(), 0);
}

TEST_F(TriggerSettings, CountWronglyTypedSwitchesAsAbsent) {
    for (const char* key : {"trig.enabled", "trig.onAC", "trig.extDisplay"}) {
        for (const DefaultsValue& value :
             {DefaultsValue(std::int64_t{1}), DefaultsValue(std::string("true")), DefaultsValue(1.0)}) {
            machine.defaults.set(key, value);
            machine.open();
            EXPECT_FALSE(manager().automationEnabled());
            EXPECT_FALSE(manager().keepAwakeOnAC());
            EXPECT_FALSE(manager().keepAwakeOnExternalDisplay());
        }
    }
}

TEST_F(TriggerSettings, HoldTheRulesAsJsonWithoutACoolingThatIsNone) {
    machine.open();
    manager().addApp(rule("B", Kind::max));
    manager().addApp(rule("A"));
    EXPECT_EQ(machine.storedApps(), R"([{"bundleID":"org.example.B","cooling":"max","name":"B"},)"
                                    R"({"bundleID":"org.example.A","name":"A"}])");
    manager().removeApp(rule("B"));
    manager().removeApp(rule("A"));
    EXPECT_EQ(machine.storedApps(), "[]");
}

TEST_F(TriggerSettings, PassOverARuleOfAnApplicationThatHasOne) {
    machine.open();
    manager().addApp(rule("A", Kind::silent));
    const std::size_t writes = machine.defaults.writes().size();
    manager().addApp({.bundleID = rule("A").bundleID, .name = "Other", .cooling = Kind::max});
    EXPECT_EQ(manager().apps(), Apps{rule("A", Kind::silent)});
    EXPECT_EQ(machine.defaults.writes().size(), writes);
}

TEST_F(TriggerSettings, LoseEveryRuleOfARemovedApplication) {
    EXPECT_EQ(appsFrom(R"([{"bundleID":"x","name":"1"},{"bundleID":"y","name":"2"},)"
                       R"({"bundleID":"x","name":"3","cooling":"max"}])")
                  .size(),
              3);
    manager().removeApp({.bundleID = "x", .name = "", .cooling = std::nullopt});
    EXPECT_EQ(machine.storedApps(), R"([{"bundleID":"y","name":"2"}])");
}

TEST_F(TriggerSettings, GiveTheFirstRuleOfAnApplicationAnotherCooling) {
    static_cast<void>(appsFrom(R"([{"bundleID":"y","name":"0"},{"bundleID":"x","name":"1"},)"
                               R"({"bundleID":"x","name":"2"}])"));
    const TriggerApp x{.bundleID = "x", .name = "", .cooling = std::nullopt};
    manager().setCooling(Kind::balanced, x);
    EXPECT_EQ(machine.storedApps(),
              R"([{"bundleID":"y","name":"0"},{"bundleID":"x","cooling":"balanced","name":"1"},)"
              R"({"bundleID":"x","name":"2"}])");
    manager().setCooling(std::nullopt, x);
    EXPECT_EQ(machine.storedApps(),
              R"([{"bundleID":"y","name":"0"},{"bundleID":"x","name":"1"},{"bundleID":"x","name":"2"}])");
}

TEST_F(TriggerSettings, PassOverTheCoolingOfAnApplicationWithoutARule) {
    machine.open();
    manager().addApp(rule("A"));
    const std::size_t writes = machine.defaults.writes().size();
    manager().setCooling(Kind::max, rule("B"));
    EXPECT_EQ(manager().apps(), Apps{rule("A")});
    EXPECT_EQ(machine.defaults.writes().size(), writes);
}

TEST_F(TriggerSettings, LookAtTheRulesWithEveryChangeOfThem) {
    machine.applications.start(identifierOf(rule("A")));
    machine.openOn();
    manager().addApp(rule("A"));
    EXPECT_EQ(machine.reason(), "A");
    manager().setCooling(Kind::silent, rule("A"));
    EXPECT_EQ(manager().coolingProfileActive(), Kind::silent);
    manager().removeApp(rule("A"));
    EXPECT_EQ(machine.reason(), "");
}

TEST_F(TriggerSettings, ReadRulesWithoutACooling) {
    EXPECT_EQ(appsFrom(R"([{"bundleID":"org.example.A","name":"A"}])"), Apps{rule("A")});
    EXPECT_EQ(appsFrom(R"([{"bundleID":"org.example.A","name":"A","cooling":null}])"), Apps{rule("A")});
    EXPECT_EQ(appsFrom(R"( [ {"name":"A", "more":[1], "bundleID":"org.example.A", "cooling":"silent"} ] )"),
              Apps{rule("A", Kind::silent)});
}

TEST_F(TriggerSettings, StartEmptyWhenTheRulesAreDamagedAndLeaveThemAsTheyAre) {
    const std::string whole = R"({"bundleID":"org.example.A","name":"A"})";
    const std::vector<std::string> damaged{
        "",
        "null",
        "{}",
        whole,
        "[",
        "[7]",
        "[{}]",
        R"([{"bundleID":"a"}])",
        R"([{"name":"a"}])",
        R"([{"bundleID":7,"name":"a"}])",
        R"([{"bundleID":"a","name":null}])",
        R"([{"bundleID":"a","name":"a","cooling":"Max"}])",
        R"([{"bundleID":"a","name":"a","cooling":""}])",
        R"([{"bundleID":"a","name":"a","cooling":"turbo"}])",
        R"([{"bundleID":"a","name":"a","cooling":2}])",
        R"([{"bundleID":"a","name":"a","cooling":{}}])",
        R"([{"bundleID":"a","name":"a","cooling":false}])",
        R"([{"bundleID":"a\udfff","name":"a"}])",
        fmt::format("[{},7]", whole),
        fmt::format("[{},]", whole),
        fmt::format("[{}", whole),
        std::string("\0\xff", 2),
    };
    machine.defaults.set("trig.enabled", true);
    for (const std::string& json : damaged) {
        EXPECT_EQ(appsFrom(json), Apps()) << json;
        EXPECT_FALSE(manager().active());
        EXPECT_EQ(machine.storedApps(), json);
    }
}

TEST_F(TriggerSettings, ReplaceDamagedRulesWithTheNextSave) {
    EXPECT_EQ(appsFrom("[7]"), Apps());
    manager().addApp(rule("A"));
    EXPECT_EQ(machine.storedApps(), R"([{"bundleID":"org.example.A","name":"A"}])");
}

TEST_F(TriggerSettings, AreNotReplacedByRulesThatWouldNotBeReadAgain) {
    machine.open();
    manager().addApp(rule("A"));
    const auto stored = machine.storedApps();
    manager().addApp({.bundleID = QString(1024 * 1024, 'x'), .name = "Huge", .cooling = std::nullopt});
    EXPECT_EQ(manager().apps().size(), 2);
    EXPECT_EQ(machine.storedApps(), stored);
}

TEST_F(TriggerSettings, AnnounceChangesAndOnlyThem) {
    machine.applications.start(identifierOf(rule("A")));
    machine.open();
    SignalCount enabledChanges(manager(), &TriggerManager::automationEnabledChanged);
    SignalCount onACChanges(manager(), &TriggerManager::keepAwakeOnACChanged);
    SignalCount displayChanges(manager(), &TriggerManager::keepAwakeOnExternalDisplayChanged);
    SignalCount appsChanges(manager(), &TriggerManager::appsChanged);
    SignalCount activeChanges(manager(), &TriggerManager::activeChanged);
    SignalCount reasonChanges(manager(), &TriggerManager::activeReasonChanged);
    SignalCount profileChanges(manager(), &TriggerManager::coolingProfileActiveChanged);
    manager().setAutomationEnabled(true);
    manager().setKeepAwakeOnExternalDisplay(true);
    manager().addApp(rule("A", Kind::silent));
    EXPECT_EQ(enabledChanges.take(), 1);
    EXPECT_EQ(displayChanges.take(), 1);
    EXPECT_EQ(appsChanges.take(), 1);
    EXPECT_EQ(activeChanges.take(), 1);
    EXPECT_EQ(reasonChanges.take(), 1);
    EXPECT_EQ(profileChanges.take(), 1);
    manager().setKeepAwakeOnAC(true);
    EXPECT_EQ(onACChanges.take(), 1);
    EXPECT_EQ(activeChanges.take(), 0);
    EXPECT_EQ(reasonChanges.take(), 1);
    machine.time.advance(1h);
    EXPECT_EQ(activeChanges.take() + reasonChanges.take() + profileChanges.take(), 0);
}

TEST_F(TriggerSettings, ArePublishedAsAPageReadsThem) {
    machine.open();
    EXPECT_TRUE(manager().setProperty("automationEnabled", true));
    EXPECT_TRUE(manager().setProperty("keepAwakeOnAC", true));
    EXPECT_TRUE(manager().setProperty("keepAwakeOnExternalDisplay", true));
    EXPECT_EQ(manager().property("automationEnabled"), true);
    EXPECT_EQ(manager().property("keepAwakeOnAC"), true);
    EXPECT_EQ(manager().property("keepAwakeOnExternalDisplay"), true);
    EXPECT_EQ(manager().property("active"), true);
    EXPECT_EQ(manager().property("activeReason"), "on AC power");
    const TriggerApp app = rule("A", Kind::max);
    manager().addApp(app);
    EXPECT_EQ(manager().property("apps").value<Apps>(), Apps{app});
    const QMetaObject& gadget = TriggerApp::staticMetaObject;
    EXPECT_EQ(gadget.property(gadget.indexOfProperty("bundleID")).readOnGadget(&app), app.bundleID);
    EXPECT_EQ(gadget.property(gadget.indexOfProperty("name")).readOnGadget(&app), "A");
    EXPECT_EQ(gadget.property(gadget.indexOfProperty("cooling")).readOnGadget(&app), "max");
}

TEST_F(TriggerSettings, AreChangedAsAPageChangesThem) {
    machine.open();
    manager().addApp(QStringLiteral("org.example.A"), QStringLiteral("A"));
    manager().addApp(QStringLiteral("org.example.A"), QStringLiteral("A again"));
    ASSERT_EQ(manager().apps().size(), 1);
    const TriggerApp added = manager().apps().constFirst();
    EXPECT_EQ(added, (TriggerApp{"org.example.A", "A", std::nullopt}));

    manager().setCooling(added, QStringLiteral("max"));
    EXPECT_EQ(manager().apps().constFirst().cooling, Kind::max);
    manager().setCooling(added, QStringLiteral("turbo"));
    EXPECT_EQ(manager().apps().constFirst().cooling, Kind::max) << "there is no such profile";
    manager().setCooling(added, QString());
    EXPECT_EQ(manager().apps().constFirst().cooling, std::nullopt);

    EXPECT_TRUE(QMetaObject::invokeMethod(&manager(), "removeApp", Q_ARG(corvane::TriggerApp, added)));
    EXPECT_TRUE(manager().apps().isEmpty());
}

}  // namespace
}  // namespace corvane
