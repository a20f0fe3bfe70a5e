#pragma once

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>

namespace velmor {

/// While it lives, no file of this process grows beyond a size, as on a disk that fills up.
class SmallDisk {
public:
    explicit SmallDisk(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        EXPECT_EQ(getrlimit(RLIMIT_FSIZE, &m_former), 0);
        const rlimit small{.rlim_cur = bytes, .rlim_max = m_former.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    }
    ~SmallDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_former);
        std::signal(SIGXFSZ, m_handler);
    }
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

private:
    rlimit m_former{};
    void (*m_handler)(int);
};

} // namespace velmor
