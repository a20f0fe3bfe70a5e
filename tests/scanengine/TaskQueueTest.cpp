#include "scanengine/TaskQueue.h"

#include <gtest/gtest.h>

#include <future>
#include <string>

namespace scanengine {
namespace {

using namespace std::chrono_literals;
using Cancelling = TaskQueue::Cancelling;

/// A queue whose first task runs until it is told to, with a record of what the others did.
class TaskQueueTest : public testing::Test {
protected:
    TaskQueueTest()
    {
        std::promise<void> started;
        const auto blocking = [&](const std::stop_token &stop) {
            started.set_value();
            m_goOn.get_future().wait();
            m_record += stop.stop_requested() ? "(first)" : "first";
        };
        EXPECT_TRUE(m_queue.add(blocking, Cancelling::allowed));
        started.get_future().wait();
    }

    void add(const std::string &name, Cancelling cancelling)
    {
        const auto task = [this, name](const std::stop_token &stop) {
            m_record += stop.stop_requested() ? " (" + name + ")" : " " + name;
        };
        EXPECT_TRUE(m_queue.add(task, cancelling));
    }

    /// The names in the order of running, in brackets those that were told to give up.
    std::string recordAtEnd()
    {
        m_goOn.set_value();
        EXPECT_TRUE(m_queue.finish(30s));
        return m_record;
    }

    std::promise<void> m_goOn;
    std::string m_record;
    TaskQueue m_queue;
};

TEST_F(TaskQueueTest, CancelReachesWhatWaitsButNotWhatComesLater)
{
    add("scan", Cancelling::allowed);
    add("adjust", Cancelling::ignored);
    m_queue.cancel();
    add("later", Cancelling::allowed);
    EXPECT_EQ(recordAtEnd(), "(first) (scan) adjust later");
}

TEST_F(TaskQueueTest, AbandonedTasksDontRun)
{
    add("scan", Cancelling::allowed);
    add("adjust", Cancelling::ignored);
    m_queue.abandon();
    EXPECT_EQ(recordAtEnd(), "(first)");
}

TEST_F(TaskQueueTest, ARunningTaskIsNotWaitedForLongerThanAllowed)
{
    EXPECT_FALSE(m_queue.finish(1ms));
    EXPECT_EQ(recordAtEnd(), "first");
}

TEST_F(TaskQueueTest, RefusesTasksWithoutEnd)
{
    for (size_t count = 1; count < TaskQueue::longestQueue; ++count) // one is running
        add("x", Cancelling::allowed);
    EXPECT_FALSE(m_queue.add([](const std::stop_token &) {}, Cancelling::allowed));
    m_queue.abandon();
    EXPECT_EQ(recordAtEnd(), "(first)");
}

} // namespace
} // namespace scanengine
