#include <gmock/gmock.h>

#include "platform/macos/desktop/MacUserDefaults.h"
#include "platform/simulated/RecordingLog.h"
#include "tests/platform/UserDefaultsContract.h"
#include "tests/platform/macos/fakes/Foundation/FakeBundles.h"
#include "tests/platform/macos/fakes/Foundation/FakeUserDefaults.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* ownDomain = "de.tavrin.corvane";

class MacUserDefaultsRig {
public:
    UserDefaults& defaults() { return defaults_; }

private:
    FakeBundles bundles_;
    FakeUserDefaults system_;
    RecordingLog log_;
    MacUserDefaults defaults_{log_};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Mac, UserDefaultsContract, MacUserDefaultsRig);

class MacUserDefaultsTest : public testing::Test {
protected:
    FakeBundles bundles;
    FakeUserDefaults system;
    RecordingLog log;
    MacUserDefaults defaults{log};
};

TEST_F(MacUserDefaultsTest, OutliveTheEndOfTheProcessAtOnce) {
    const std::vector<DefaultsValue> values = {true, std::int64_t{1}, 1.0, "1",
                                               std::vector<std::byte>{std::byte{1}}};
    for (const DefaultsValue& value : values) {
        defaults.set("key", value);
        system.endProcess();
        EXPECT_EQ(MacUserDefaults(log).value("key"), value) << testing::PrintToString(value);
    }
    defaults.remove("key");
    system.endProcess();
    EXPECT_EQ(defaults.value("key"), std::nullopt);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(MacUserDefaultsTest, AreKeptUnderTheBundlesIdentifier) {
    defaults.set("one", true);
    defaults.set("two", std::int64_t{2});
    EXPECT_THAT(system.storedKeys(ownDomain), ElementsAre("one", "two"));
}

TEST_F(MacUserDefaultsTest, TellABooleanFromTheIntegersThatItCouldBe) {
    defaults.set("boolean", true);
    defaults.set("integer", std::int64_t{1});
    EXPECT_EQ(defaults.get<bool>("boolean"), true);
    EXPECT_EQ(defaults.get<std::int64_t>("boolean"), std::nullopt);
    EXPECT_EQ(defaults.get<bool>("integer"), std::nullopt);
    EXPECT_EQ(defaults.get<std::int64_t>("integer"), 1);
}

TEST_F(MacUserDefaultsTest, HaveNoneForWhatIsNoneOfTheTypes) {
    system.storeList(ownDomain, "list");
    system.storeLargest(ownDomain, "largest");
    EXPECT_EQ(defaults.value("list"), std::nullopt);
    EXPECT_EQ(defaults.value("largest"), std::nullopt);
}

TEST_F(MacUserDefaultsTest, RefuseWhatCannotBeStored) {
    defaults.set("key", std::string("text"));
    defaults.set("key", std::string("\xff"));
    defaults.set("\xff", true);
    EXPECT_EQ(defaults.value("key"), DefaultsValue("text"));
    EXPECT_THAT(system.storedKeys(ownDomain), ElementsAre("key"));
    EXPECT_THAT(log.lines(), ElementsAre(HasSubstr("stays as it was"), HasSubstr("stays as it was")));
}

TEST_F(MacUserDefaultsTest, HoldUntilTheEndWhenTheyCannotBeStoredAndSaySoOnce) {
    system.setFailing(true);
    defaults.set("key", true);
    defaults.set("key", false);
    EXPECT_EQ(defaults.value("key"), DefaultsValue(false));
    EXPECT_EQ(log.lines().size(), 1U);
    EXPECT_THAT(system.storedKeys(ownDomain), IsEmpty());
    system.setFailing(false);
    defaults.set("other", true);
    EXPECT_THAT(system.storedKeys(ownDomain), ElementsAre("key", "other"));
    system.setFailing(true);
    defaults.remove("key");
    EXPECT_EQ(log.lines().size(), 2U);
}

TEST_F(MacUserDefaultsTest, LeaveNothingBehindOnceAllIsRemoved) {
    defaults.set("key", true);
    defaults.removeAll();
    defaults.set("key", true);
    defaults.set("late", true);
    EXPECT_EQ(defaults.value("late"), DefaultsValue(true));
    defaults.remove("key");
    EXPECT_EQ(defaults.value("key"), std::nullopt);
    EXPECT_THAT(system.storedKeys(ownDomain), IsEmpty());
}

TEST_F(MacUserDefaultsTest, DoNotShowWhatAllProgramsHaveOnceAllIsRemoved) {
    system.storeForAll("key", true);
    EXPECT_EQ(defaults.value("key"), DefaultsValue(true));
    defaults.removeAll();
    EXPECT_EQ(defaults.value("key"), std::nullopt);
}

class UnbundledMacUserDefaultsTest : public testing::Test {
protected:
    FakeBundles bundles{std::nullopt, "/usr/local/bin"};
    FakeUserDefaults system;
    RecordingLog log;
    MacUserDefaults defaults{log};
};

TEST_F(UnbundledMacUserDefaultsTest, AreKeptUnderTheProgramsName) {
    defaults.set("key", true);
    EXPECT_THAT(system.storedKeys("corvane"), ElementsAre("key"));
    defaults.removeAll();
    EXPECT_THAT(system.storedKeys("corvane"), IsEmpty());
}

}  // namespace
}  // namespace corvane
