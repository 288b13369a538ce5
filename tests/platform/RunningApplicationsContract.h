#pragma once

// What every list of running applications promises, as a suite that is run over each of them. A rig is made
// of:
//   RunningApplications& applications();
//   void start(const std::string& identifier);  // an application
//   void quit(const std::string& identifier);
//   void settle();                              // runs what is due on the main loop

#include <memory>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/RunningApplications.h"

namespace corvane {

template <typename Rig>
class RunningApplicationsContract : public testing::Test {
protected:
    RunningApplications& applications() { return rig.applications(); }
    std::unique_ptr<Observation> count() {
        return applications().observe([this] { ++changes; });
    }

    Rig rig;
    int changes = 0;
};

TYPED_TEST_SUITE_P(RunningApplicationsContract);

TYPED_TEST_P(RunningApplicationsContract, AreThoseThatRunNow) {
    EXPECT_THAT(this->applications().identifiers(), testing::IsEmpty());
    this->rig.start("org.example.render");
    this->rig.start("org.example.upload");
    this->rig.settle();
    EXPECT_THAT(this->applications().identifiers(),
                testing::ElementsAre("org.example.render", "org.example.upload"));
    this->rig.quit("org.example.render");
    this->rig.settle();
    EXPECT_THAT(this->applications().identifiers(), testing::ElementsAre("org.example.upload"));
}

TYPED_TEST_P(RunningApplicationsContract, AnnounceWhatStartsAndWhatQuits) {
    const auto observation = this->count();
    this->rig.settle();
    EXPECT_EQ(this->changes, 0);
    this->rig.start("org.example.render");
    this->rig.settle();
    EXPECT_EQ(this->changes, 1);
    this->rig.quit("org.example.render");
    this->rig.settle();
    EXPECT_EQ(this->changes, 2);
}

TYPED_TEST_P(RunningApplicationsContract, AreSilentAfterTheObservation) {
    auto observation = this->count();
    this->rig.start("org.example.render");
    observation.reset();
    const int before = this->changes;
    this->rig.settle();
    this->rig.quit("org.example.render");
    this->rig.settle();
    EXPECT_EQ(this->changes, before);
}

REGISTER_TYPED_TEST_SUITE_P(RunningApplicationsContract, AreThoseThatRunNow, AnnounceWhatStartsAndWhatQuits,
                            AreSilentAfterTheObservation);

}  // namespace corvane
