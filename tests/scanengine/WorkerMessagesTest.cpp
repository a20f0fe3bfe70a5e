#include "scanengine/drivers/sane/WorkerMessages.h"

#include "scanengine/drivers/sane/FrameSocket.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace scanengine {
namespace {

SaneOption option(const char *name, SaneType type, SaneConstraint constraint, SaneValue value)
{
    SaneOption option;
    option.index = 7;
    option.name = QString::fromUtf8(name);
    option.title = QStringLiteral("Größe");
    option.type = type;
    option.unit = SaneUnit::millimetre;
    option.isActive = false;
    option.isSettable = false;
    option.isAdvanced = true;
    option.count = 3;
    option.constraint = std::move(constraint);
    option.value = std::move(value);
    return option;
}

const std::vector<WorkerRequest> requests{
    SearchRequest{},  OpenRequest{QStringLiteral("net:höst:test:0")},
    OptionsRequest{}, SetRequest{{3, QStringLiteral("mode"), QStringLiteral("Gray")}},
    StartRequest{},   SetRequest{{3, QStringLiteral("tl-x"), 12.5}},
    CancelRequest{},  SetRequest{{3, QStringLiteral("preview"), false}},
};

const std::vector<WorkerAnswer> answers{
    DevicesAnswer{SaneStatus::noMemory,
                  {{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), QString()},
                   {QStringLiteral("d"), QString(), QString(), QString()}}},
    OptionsAnswer{SaneStatus::good,
                  {option("words", SaneType::text,
                          QStringList{QStringLiteral("Gray"), QStringLiteral("Color")},
                          QStringLiteral("Gray")),
                   option("numbers", SaneType::integer, QList<double>{75, 150}, 150),
                   option("range", SaneType::fixed, SaneRange{0, 215.9, 0.1}, 3.5),
                   option("flag", SaneType::boolean, {}, true),
                   option("", SaneType::button, {}, {})}},
    StartedAnswer{SaneStatus::jammed, {FrameFormat::blue, false, 300, 100, -1, 16}},
    DataAnswer{QByteArray("\0\xFFpixels", 8)},
    FrameEndAnswer{SaneStatus::coverOpen},
    CancelledAnswer{},
};

TEST(WorkerMessages, EveryMessageArrivesAsItWasSentOrNotAtAll)
{
    for (const WorkerRequest &request : requests) {
        const QByteArray frame = encode(request);
        EXPECT_EQ(decodeRequest(frame), request) << request.index();
        for (qsizetype size = 0; size < frame.size(); ++size)
            EXPECT_FALSE(decodeRequest(frame.first(size))) << request.index() << ' ' << size;
        EXPECT_FALSE(decodeRequest(frame + 'x'));
    }
    for (const WorkerAnswer &answer : answers) {
        const QByteArray frame = encode(answer);
        EXPECT_EQ(decodeAnswer(frame), answer) << answer.index();
        for (qsizetype size = 0; size < frame.size(); ++size)
            EXPECT_FALSE(decodeAnswer(frame.first(size))) << answer.index() << ' ' << size;
        EXPECT_FALSE(decodeAnswer(frame + 'x'));
    }
    EXPECT_FALSE(decodeRequest(QByteArray(1, char(requests.size()))));
}

TEST(WorkerMessages, ACountWithoutItsItemsIsRefused)
{
    QByteArray frame = encode(WorkerAnswer(DevicesAnswer{}));
    frame.chop(1);
    frame += '\x7F'; // 127 devices that are not there
    EXPECT_FALSE(decodeAnswer(frame));
}

class FrameSocketTest : public testing::Test {
protected:
    FrameSocketTest()
    {
        std::array<int, 2> ends{};
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()), 0);
        m_peer = ends[1];
        m_socket = std::make_unique<FrameSocket>(ends[0], 1'000'000);
    }
    ~FrameSocketTest() override { hangUp(); }

    void sendBytes(const QByteArray &bytes) const
    {
        EXPECT_EQ(::send(m_peer, bytes.constData(), size_t(bytes.size()), 0), bytes.size());
    }

    void hangUp()
    {
        if (m_peer >= 0)
            ::close(m_peer);
        m_peer = -1;
    }

    [[nodiscard]] FrameSocket::Received receive(int milliseconds)
    {
        return m_socket->receive(QDeadlineTimer(milliseconds));
    }

    int m_peer = -1;
    std::unique_ptr<FrameSocket> m_socket;
};

const QByteArray helloFrame("\5\0\0\0hello", 9);

TEST_F(FrameSocketTest, AFrameThatComesInPartsIsPutTogetherOverSeveralWaits)
{
    sendBytes(helloFrame.first(2));
    EXPECT_TRUE(std::holds_alternative<FrameSocket::TooLate>(receive(1)));
    sendBytes(helloFrame.sliced(2, 5));
    EXPECT_TRUE(std::holds_alternative<FrameSocket::TooLate>(receive(1)));
    sendBytes(helloFrame.sliced(7) + helloFrame);
    for (int frame = 0; frame < 2; ++frame) {
        const auto received = receive(10'000);
        ASSERT_TRUE(std::holds_alternative<QByteArray>(received));
        EXPECT_EQ(std::get<QByteArray>(received), "hello");
    }
}

TEST_F(FrameSocketTest, AFrameAboveTheLimitIsNotWaitedFor)
{
    sendBytes(QByteArray("\xFF\xFF\xFF\x7F", 4));
    EXPECT_TRUE(std::holds_alternative<FrameSocket::Gone>(receive(10'000)));
}

TEST_F(FrameSocketTest, WhatAPeerSentBeforeItHungUpStillArrives)
{
    sendBytes(helloFrame + helloFrame.first(6));
    hangUp();
    EXPECT_TRUE(std::holds_alternative<QByteArray>(receive(10'000)));
    EXPECT_TRUE(std::holds_alternative<FrameSocket::Gone>(receive(10'000)));
    EXPECT_FALSE(m_socket->send("hello", QDeadlineTimer(10'000)));
}

TEST_F(FrameSocketTest, SendingToAPeerThatDoesNotReadEndsInTime)
{
    EXPECT_FALSE(m_socket->send(QByteArray(50'000'000, 'x'), QDeadlineTimer(50)));
}

} // namespace
} // namespace scanengine
