#pragma once

namespace velmor {

/// Whether there is a message bus of the user's session. Ask before anything is said on it: without
/// one the bus library may start a bus of its own, and we would wait for that.
[[nodiscard]] bool hasSessionBus();

} // namespace velmor
