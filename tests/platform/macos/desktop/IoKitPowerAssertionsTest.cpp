#include "platform/macos/desktop/IoKitPowerAssertions.h"
#include "tests/platform/PowerAssertionsContract.h"
#include "tests/platform/macos/fakes/IOKit/FakePowerManagement.h"

namespace corvane {
namespace {

class IoKitPowerAssertionsRig {
public:
    PowerAssertions& assertions() { return assertions_; }

    [[nodiscard]] std::vector<std::pair<std::string, std::string>> held() const {
        std::vector<std::pair<std::string, std::string>> all;
        for (const auto& [id, assertion] : power_.held()) {
            all.emplace_back(assertion.type, assertion.name);
        }
        return all;
    }

    void refuse() { power_.refuse(kIOReturnNotPrivileged); }

private:
    FakePowerManagement power_;
    IoKitPowerAssertions assertions_;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(IoKit, PowerAssertionsContract, IoKitPowerAssertionsRig);

namespace {

TEST(IoKitPowerAssertions, AreNotTakenUnderANameThatIsNoText) {
    const FakePowerManagement power;
    IoKitPowerAssertions assertions;
    EXPECT_EQ(assertions.create(PowerAssertions::preventUserIdleSystemSleep, "\xFF"), std::nullopt);
    EXPECT_EQ(assertions.create("\xC3", "a type that is none"), std::nullopt);
    EXPECT_TRUE(power.held().empty());
}

TEST(IoKitPowerAssertions, AreRefusedUnderANameThatIsTooLong) {
    const FakePowerManagement power;
    IoKitPowerAssertions assertions;
    EXPECT_EQ(assertions.create(PowerAssertions::preventUserIdleSystemSleep, std::string(129, 'n')),
              std::nullopt);
    EXPECT_NE(assertions.create(PowerAssertions::preventUserIdleSystemSleep, std::string(128, 'n')),
              std::nullopt);
}

TEST(IoKitPowerAssertions, OutliveWhoTookThemUntilTheProcessEnds) {
    const FakePowerManagement power;
    EXPECT_TRUE(IoKitPowerAssertions().create(PowerAssertions::networkClientActive, "held").has_value());
    EXPECT_EQ(power.held().size(), 1U);
}

}  // namespace
}  // namespace corvane
