#include "pipeline/workers/FrameChannel.h"

#include <gtest/gtest.h>

#include <array>
#include <sys/socket.h>
#include <unistd.h>

namespace velmor {
namespace {

TEST(FrameChannel, GivesUpOnAPeerThatHangsOrIsGone)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()), 0);
    const QDeadlineTimer soon(20);
    EXPECT_FALSE(FrameChannel::read(ends[0], 1000, soon)) << "silent";
    ASSERT_EQ(::write(ends[1], "\x08\0\0\0half", 8), 8);
    EXPECT_FALSE(FrameChannel::read(ends[0], 1000, soon)) << "stopped in a frame";
    EXPECT_FALSE(FrameChannel::write(ends[0], QByteArray(9'000'000, 'x'), soon)) << "not reading";

    close(ends[1]);
    EXPECT_FALSE(FrameChannel::read(ends[0], 1000, QDeadlineTimer::Forever));
    EXPECT_FALSE(FrameChannel::write(ends[0], QByteArray(10, 'x'), QDeadlineTimer::Forever));
    close(ends[0]);
}

} // namespace
} // namespace velmor
