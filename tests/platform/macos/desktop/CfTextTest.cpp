#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/desktop/CfText.h"
#include "tests/platform/macos/fakes/CoreFoundation/CfObject.h"

namespace corvane {
namespace {

using testing::Optional;

TEST(CfText, GivesBackWhatItWasMadeOf) {
    for (const std::string text : {"", "k", "Lüfter \"🔥\"", "„Deckel zu“"}) {
        EXPECT_THAT(textOf(cfString(text).get()), Optional(text));
    }
}

TEST(CfText, IsNoneOfWhatIsNotUtf8) {
    EXPECT_EQ(cfString("\xFF"), nullptr);
    EXPECT_EQ(cfString("cut off \xF0\x9F\x94"), nullptr);
}

TEST(CfText, EndsWithTheFirstNul) {
    EXPECT_THAT(textOf(cfString(std::string_view("a\0b", 3)).get()), Optional(std::string("a")));
}

TEST(CfText, IsNoneOfWhatIsNoString) {
    EXPECT_EQ(textOf(nullptr), std::nullopt);
    EXPECT_EQ(textOf(makeCfObject(1.5).get()), std::nullopt);
}

}  // namespace
}  // namespace corvane
