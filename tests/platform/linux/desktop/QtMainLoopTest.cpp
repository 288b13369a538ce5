#include <system_error>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "platform/linux/desktop/QtMainLoop.h"

namespace corvane {
namespace {

/// Lets this process open nothing while it lives.
class NoDescriptors {
public:
    NoDescriptors() {
        EXPECT_EQ(getrlimit(RLIMIT_NOFILE, &former_), 0);
        rlimit none = former_;
        none.rlim_cur = 0;
        EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    }
    NoDescriptors(const NoDescriptors&) = delete;
    NoDescriptors& operator=(const NoDescriptors&) = delete;
    ~NoDescriptors() { setrlimit(RLIMIT_NOFILE, &former_); }

private:
    rlimit former_{};
};

TEST(QtMainLoop, SaysSoWhenItCannotHearOfTerminationSignals) {
    QtMainLoop mainLoop;
    const NoDescriptors none;
    try {
        mainLoop.onTerminationSignal([] {});
        ADD_FAILURE() << "a signal would never be heard";
    } catch (const std::system_error& error) {
        EXPECT_EQ(error.code(), std::errc::too_many_files_open);
    }
}

}  // namespace
}  // namespace corvane
