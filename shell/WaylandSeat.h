#pragma once

namespace velmor {

/// Whether there is a Wayland compositor that offers no seat, which is to say neither keyboard nor
/// pointer: one that is looked at from afar, for example. False where there is no Wayland.
///
/// Asks on a connection of its own, so that it can be called before the application object is made.
/// Waits for the compositor's answer.
[[nodiscard]] bool isWaylandWithoutSeat();

} // namespace velmor
