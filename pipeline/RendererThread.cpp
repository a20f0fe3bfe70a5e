#include "pipeline/RendererThread.h"

#include <QBuffer>
#include <QPdfDocument>
#include <QThread>
#include <QThreadPool>

#include <exception>
#include <future>

namespace velmor {

namespace {

QThreadPool &rendererThread()
{
    struct Pool : QThreadPool {
        Pool()
        {
            setMaxThreadCount(1);
            setExpiryTimeout(-1);
        }
    };
    static Pool pool;
    return pool;
}

/// While it lives, a thread of Qt's own pool that has to wait leaves its place there to others. Qt
/// shares the drawing of large pictures with that pool and waits for it: were all of the pool's
/// threads to wait for the renderer, the renderer would wait for them.
class PoolPlace {
public:
    PoolPlace() : m_isLeft(QThreadPool::globalInstance()->contains(QThread::currentThread()))
    {
        if (m_isLeft)
            QThreadPool::globalInstance()->releaseThread();
    }
    ~PoolPlace()
    {
        if (m_isLeft)
            QThreadPool::globalInstance()->reserveThread();
    }
    PoolPlace(const PoolPlace &) = delete;
    PoolPlace &operator=(const PoolPlace &) = delete;

private:
    const bool m_isLeft;
};

void openAndWork(const QByteArray &pdf, const std::function<void(QPdfDocument &)> &work)
{
    // From memory: the renderer never ends on a file that shrinks while it is read.
    QBuffer buffer;
    buffer.setData(pdf);
    buffer.open(QIODevice::ReadOnly);
    QPdfDocument document;
    document.load(&buffer);
    if (document.status() == QPdfDocument::Status::Ready && document.pageCount() > 0)
        work(document);
}

} // namespace

void onRendererThread(const QByteArray &pdf, RendererTurn turn,
                      const std::function<void(QPdfDocument &)> &work)
{
    // Not a QFuture: whoever waits for one runs its task himself, if it hasn't begun.
    std::promise<void> promise;
    const std::future<void> done = promise.get_future();
    const auto task = [&] {
        try {
            openAndWork(pdf, work);
        } catch (const std::exception &) { // want of memory
        }
        promise.set_value();
    };
    rendererThread().start(task, turn == RendererTurn::questions ? 1 : 0);
    const PoolPlace left;
    done.wait();
}

} // namespace velmor
