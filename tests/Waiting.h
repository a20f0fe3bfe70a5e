#pragma once

#include <QCoreApplication>
#include <QTimer>

#include <concepts>

namespace velmor {

/// Runs the event loop until `condition` holds or `boundMs` are over. Whether it holds.
///
/// It is tested after each round of events, and every few milliseconds for what sends none, such
/// as the state of another process.
template <std::predicate Condition> bool waitUntil(Condition condition, int boundMs = 30'000)
{
    QTimer bound;
    bound.setSingleShot(true);
    bound.start(boundMs);
    QTimer look;
    look.start(5);
    while (!condition() && bound.isActive())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return condition();
}

} // namespace velmor
