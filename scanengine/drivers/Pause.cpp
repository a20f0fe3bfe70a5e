#include "scanengine/drivers/Pause.h"

#include <condition_variable>
#include <mutex>

namespace scanengine {

void pauseFor(std::chrono::milliseconds time, const std::stop_token &stop)
{
    std::mutex mutex;
    std::condition_variable_any never;
    std::unique_lock lock(mutex);
    never.wait_for(lock, stop, time, [] { return false; });
}

} // namespace scanengine
