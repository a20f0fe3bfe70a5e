#pragma once

#include <QSemaphore>
#include <QThreadPool>

namespace velmor {

/// While it lives, nothing that is begun in the background gets ahead.
class HeldPool {
public:
    HeldPool()
    {
        for (int i = 0; i < m_count; ++i) {
            QThreadPool::globalInstance()->start([this] {
                m_begun.release();
                m_end.acquire();
            });
        }
        m_begun.acquire(m_count);
    }
    ~HeldPool()
    {
        m_end.release(m_count);
        QThreadPool::globalInstance()->waitForDone();
    }

private:
    const int m_count = QThreadPool::globalInstance()->maxThreadCount();
    QSemaphore m_begun, m_end;
};

} // namespace velmor
