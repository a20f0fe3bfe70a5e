#pragma once

#include <QtConcurrent>

#include <exception>
#include <type_traits>
#include <utility>

namespace velmor {

/// What `work` answers; if it throws, as for want of memory, an empty answer. So memory that runs
/// out on a background thread costs one page, and neither the process nor whoever waits for the
/// answer.
template <typename Work> std::invoke_result_t<Work &> withoutExceptions(Work &&work)
{
    try {
        return work();
    } catch (const std::exception &) {
        return std::invoke_result_t<Work &>();
    }
}

/// The answer of `work`, which is done so on a thread of the global pool.
template <typename Work> QFuture<std::invoke_result_t<Work &>> inBackground(Work work)
{
    return QtConcurrent::run(
        [work = std::move(work)]() mutable { return withoutExceptions(work); });
}

} // namespace velmor
