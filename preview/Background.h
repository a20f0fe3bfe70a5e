#pragma once

#include "pipeline/WithoutExceptions.h"

#include <QFutureWatcher>
#include <QPromise>
#include <QThreadPool>

#include <functional>
#include <memory>
#include <type_traits>

namespace velmor {

/// Does `work` on one of the threads of `pool`, tasks of higher priority first. Its answer; for
/// want of memory an empty one.
template <typename Work>
QFuture<std::invoke_result_t<Work>> runIn(QThreadPool &pool, int priority, Work work)
{
    using Answer = std::invoke_result_t<Work>;
    const auto promise = std::make_shared<QPromise<Answer>>();
    promise->start();
    const QFuture<Answer> future = promise->future();
    const auto task = [promise, work = std::move(work)] {
        promise->addResult(withoutExceptions(work));
        promise->finish();
    };
    pool.start(task, priority);
    return future;
}

/// Gives the answer to `receive`, on the thread of `context` and from its event loop, unless
/// `context` is gone by then or the task has been dropped from its pool.
template <typename Answer, typename Receive>
void whenAnswered(QObject *context, const QFuture<Answer> &future, Receive receive)
{
    auto *watcher = new QFutureWatcher<Answer>(context);
    QObject::connect(watcher, &QFutureWatcherBase::finished, context,
                     [watcher, receive = std::move(receive)] {
                         watcher->deleteLater();
                         if (watcher->future().resultCount() > 0)
                             receive(watcher->result());
                     });
    watcher->setFuture(future);
}

} // namespace velmor
