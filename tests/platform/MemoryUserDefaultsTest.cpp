#include <gmock/gmock.h>

#include "platform/simulated/MemoryUserDefaults.h"
#include "tests/platform/UserDefaultsContract.h"

namespace corvane {
namespace {

class MemoryRig {
public:
    UserDefaults& defaults() { return defaults_; }

private:
    MemoryUserDefaults defaults_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, UserDefaultsContract, MemoryRig);

TEST(MemoryUserDefaults, RecordsEveryWriteEvenOfWhatIsStoredAlready) {
    using Write = MemoryUserDefaults::Write;
    MemoryUserDefaults defaults;
    defaults.set("key", true);
    defaults.set("key", true);
    defaults.remove("key");
    EXPECT_THAT(defaults.writes(),
                testing::ElementsAre(Write("key", true), Write("key", true), Write("key", std::nullopt)));
}

TEST(MemoryUserDefaults, TellsThatEverythingWasRemoved) {
    MemoryUserDefaults defaults;
    EXPECT_FALSE(defaults.isRemoved());
    defaults.removeAll();
    EXPECT_TRUE(defaults.isRemoved());
}

}  // namespace
}  // namespace corvane
