#include "pipeline/recognizer/FrameChannel.h"

#include <gmock/gmock.h>

#include <array>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace velmor {
namespace {

using testing::Eq;
using testing::Optional;

class FrameChannels : public testing::Test {
protected:
    FrameChannels() { EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, m_ends.data()), 0); }
    ~FrameChannels() override
    {
        close(m_ends[0]);
        closeTheirs();
    }
    void closeTheirs()
    {
        if (m_ends[1] >= 0)
            close(std::exchange(m_ends[1], -1));
    }
    void theySend(const QByteArray &bytes)
    {
        const auto size = static_cast<size_t>(bytes.size());
        ASSERT_EQ(::write(m_ends[1], bytes.constData(), size), bytes.size());
    }
    [[nodiscard]] int ours() const { return m_ends[0]; }
    [[nodiscard]] int theirs() const { return m_ends[1]; }

    const QDeadlineTimer m_later{60'000};
    const QDeadlineTimer m_soon{20};

private:
    std::array<int, 2> m_ends{-1, -1};
};

TEST_F(FrameChannels, CarryFramesLargerThanTheSocketHolds)
{
    QByteArray page(9'000'000, 'p');
    page[page.size() - 1] = '!';
    bool written = false;
    std::thread writer([&] {
        written = FrameChannel::write(theirs(), page, m_later) &&
                  FrameChannel::write(theirs(), {}, m_later);
    });
    EXPECT_THAT(FrameChannel::read(ours(), page.size(), m_later), Optional(Eq(page)));
    EXPECT_THAT(FrameChannel::read(ours(), page.size(), m_later), Optional(Eq(QByteArray())));
    writer.join();
    EXPECT_TRUE(written);
}

TEST_F(FrameChannels, RefuseFramesAboveTheLimitBeforeReadingThem)
{
    theySend(QByteArray("\xff\xff\xff\xff", 4));
    EXPECT_FALSE(FrameChannel::read(ours(), 1000, m_later));
}

TEST_F(FrameChannels, NoticeThatThePeerIsGone)
{
    theySend(QByteArray("\x08\0\0\0half", 8));
    closeTheirs();
    EXPECT_FALSE(FrameChannel::read(ours(), 1000, m_later)) << "in the midst of a frame";
    EXPECT_FALSE(FrameChannel::write(ours(), QByteArray(10, 'x'), m_later));
}

TEST_F(FrameChannels, GiveUpOnAPeerThatHangs)
{
    EXPECT_FALSE(FrameChannel::read(ours(), 1000, m_soon)) << "silent";
    theySend(QByteArray("\x08\0\0\0half", 8));
    EXPECT_FALSE(FrameChannel::read(ours(), 1000, m_soon)) << "stopped in a frame";
    EXPECT_FALSE(FrameChannel::write(ours(), QByteArray(9'000'000, 'x'), m_soon)) << "not reading";
}

} // namespace
} // namespace velmor
