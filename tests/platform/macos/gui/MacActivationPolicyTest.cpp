#include <gtest/gtest.h>

#include "platform/macos/gui/MacActivationPolicy.h"
#include "tests/platform/macos/fakes/AppKit/FakeApplication.h"

namespace corvane {
namespace {

using Shown = FakeApplication::Presence;

TEST(MacActivationPolicy, MakesAnAccessoryOfTheProcessAtOnce) {
    const FakeApplication application;
    ASSERT_EQ(application.presence(), Shown::regular);
    const MacActivationPolicy policy;
    EXPECT_EQ(application.presence(), Shown::accessory);
    EXPECT_EQ(application.activations(), 0) << "nobody has asked for it";
}

TEST(MacActivationPolicy, MakesARegularApplicationAndAnAccessoryAgain) {
    const FakeApplication application;
    MacActivationPolicy policy;
    policy.set(ActivationPolicy::Presence::regular);
    EXPECT_EQ(application.presence(), Shown::regular);
    policy.set(ActivationPolicy::Presence::accessory);
    EXPECT_EQ(application.presence(), Shown::accessory);
}

TEST(MacActivationPolicy, BringsTheApplicationBeforeAllOthers) {
    const FakeApplication application;
    MacActivationPolicy policy;
    policy.activate();
    EXPECT_EQ(application.activations(), 1);
    EXPECT_EQ(application.presence(), Shown::accessory) << "which it may be as an accessory";
}

}  // namespace
}  // namespace corvane
