#include <array>
#include <cerrno>
#include <span>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/posix/FileTransfers.h"

namespace corvane {
namespace {

/// Takes and gives as little at a time as a pipe does.
struct Pipe {
    Pipe() : Pipe(make()) {}

    FileDescriptor from;
    FileDescriptor to;

private:
    explicit Pipe(const std::array<int, 2>& ends) : from(ends[0]), to(ends[1]) {}

    static std::array<int, 2> make() {
        std::array<int, 2> ends{-1, -1};
        EXPECT_EQ(pipe(ends.data()), 0);
        return ends;
    }
};

/// Far more than a pipe holds.
constexpr std::size_t large = 1'000'000;

TEST(FileTransfersTest, CarryMoreThanOneCallOfTheSystemsDoes) {
    Pipe pipe;
    const std::string sent(large, 'x');
    bool isWritten = false;
    std::thread writer([&] { isWritten = writeFully(pipe.to, sent); });
    std::string received(large, '\0');
    EXPECT_EQ(readFully(pipe.from, received), large);
    writer.join();
    EXPECT_TRUE(isWritten);
    EXPECT_EQ(received, sent);
}

TEST(FileTransfersTest, EndWithTheFile) {
    Pipe pipe;
    std::array<char, 8> block{};
    ASSERT_TRUE(writeFully(pipe.to, "abc"));
    { const FileDescriptor closed = std::move(pipe.to); }
    ASSERT_EQ(readFully(pipe.from, block), 3U);
    EXPECT_EQ(std::string_view(block.data(), 3), "abc");
    EXPECT_EQ(readFully(pipe.from, block), 0U);
}

TEST(FileTransfersTest, LeaveWhatDoesNotFit) {
    Pipe pipe;
    ASSERT_TRUE(writeFully(pipe.to, "abcd"));
    std::array<char, 3> block{};
    EXPECT_EQ(readFully(pipe.from, block), 3U);
    EXPECT_EQ(readFully(pipe.from, std::span(block).first(1)), 1U);
    EXPECT_EQ(block[0], 'd');
}

TEST(FileTransfersTest, SayThatTheyFailed) {
    const Pipe pipe;
    std::array<char, 3> block{};
    EXPECT_EQ(readFully(pipe.to, block), std::nullopt);
    EXPECT_EQ(errno, EBADF);
    EXPECT_FALSE(writeFully(pipe.from, "abc"));
    EXPECT_EQ(errno, EBADF);
}

}  // namespace
}  // namespace corvane
