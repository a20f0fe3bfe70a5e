#pragma once

#include <chrono>
#include <stop_token>

namespace scanengine {

/// Lets `time` pass, or less if `stop` is requested.
void pauseFor(std::chrono::milliseconds time, const std::stop_token &stop);

} // namespace scanengine
