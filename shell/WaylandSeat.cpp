#include "shell/WaylandSeat.h"

#include <QtGlobal>

#include <cstring>
#include <memory>
#include <wayland-client.h>

namespace velmor {

namespace {

void noticeSeat(void *hasSeat, wl_registry *, uint32_t, const char *interface, uint32_t)
{
    if (std::strcmp(interface, wl_seat_interface.name) == 0)
        *static_cast<bool *>(hasSeat) = true;
}

void ignoreRemoval(void *, wl_registry *, uint32_t) {}

} // namespace

bool isWaylandWithoutSeat()
{
    // A connection that was inherited serves once, and Qt needs it.
    if (qEnvironmentVariableIsSet("WAYLAND_SOCKET"))
        return false;
    const std::unique_ptr<wl_display, decltype(&wl_display_disconnect)> display(
        wl_display_connect(nullptr), wl_display_disconnect);
    if (!display)
        return false;
    const std::unique_ptr<wl_registry, decltype(&wl_registry_destroy)> registry(
        wl_display_get_registry(display.get()), wl_registry_destroy);
    if (!registry)
        return false;
    bool hasSeat = false;
    const wl_registry_listener listener{.global = noticeSeat, .global_remove = ignoreRemoval};
    wl_registry_add_listener(registry.get(), &listener, &hasSeat);
    return wl_display_roundtrip(display.get()) >= 0 && !hasSeat;
}

} // namespace velmor
