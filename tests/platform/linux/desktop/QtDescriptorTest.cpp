#include <cerrno>
#include <system_error>

#include <gtest/gtest.h>

#include "platform/linux/desktop/QtDescriptor.h"

namespace corvane {
namespace {

TEST(QtDescriptor, SaysWhyThereIsNone) {
    try {
        errno = EMFILE;
        const QtDescriptor none(-1, [] {});
        ADD_FAILURE() << "nothing would ever be heard from it";
    } catch (const std::system_error& error) {
        EXPECT_EQ(error.code(), std::errc::too_many_files_open);
    }
}

}  // namespace
}  // namespace corvane
