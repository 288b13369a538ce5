#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/posix/BoundedFile.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

class BoundedFileTest : public testing::Test {
protected:
    TemporaryFolder folder;
};

TEST_F(BoundedFileTest, IsReadWhole) {
    const std::string content(10000, 'x');
    EXPECT_EQ(readAtMost(folder.write("file", content).string(), 20000), content);
}

TEST_F(BoundedFileTest, IsReadUpToItsLimit) {
    const std::string file = folder.write("file", std::string(10000, 'x')).string();
    EXPECT_EQ(readAtMost(file, 5000).size(), 5000U);
    EXPECT_EQ(readAtMost(file, 0), "");
}

TEST_F(BoundedFileTest, IsEmptyWhenItIsNoOrdinaryFile) {
    const std::string pipe = (folder / "pipe").string();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(readAtMost(pipe, 100), "");
    EXPECT_EQ(readAtMost("/dev/zero", 100), "");
    EXPECT_EQ(readAtMost(folder.path().string(), 100), "");
    EXPECT_EQ(readAtMost((folder / "none").string(), 100), "");
}

}  // namespace
}  // namespace corvane
