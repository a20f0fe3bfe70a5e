#pragma once

#include "scanengine/drivers/sane/SaneOptions.h"
#include "scanengine/drivers/sane/UsbDevices.h"

#include <QList>
#include <QString>

#include <optional>

namespace scanengine {

/// By what a device is reached, the best way first.
enum class RouteKind {
    escl,       ///< eSCL through sane-airscan.
    plainEscl,  ///< eSCL through SANE's own backend, which knows fewer devices well.
    wsd,        ///< WSD through sane-airscan.
    ownBackend, ///< A backend made for the device.
    scanServer, ///< A saned on another computer, or on this one.
};

/// The way from this computer to a device, as far as its record in SANE's list tells.
struct DeviceRoute {
    RouteKind kind = RouteKind::ownBackend;
    QString backend; ///< The one that drives the device, also behind a server.
    QString rest;    ///< The device's name for that backend.
    QString server;  ///< Host of the saned; empty for none.
    QString address; ///< Host or IP address of a network device; empty if it is none, or unknown.
    bool isNetwork = false; ///< The device itself is on a network, ours or the server's.
    QString serial;         ///< Empty if not known.
    QString usbPosition;    ///< "001:005", of the device's own computer; empty if not known.
    std::optional<UsbDevice> usb;

    /// Whether the device hangs on this computer's USB, as far as is known.
    [[nodiscard]] bool isLocalUsb() const;

    bool operator==(const DeviceRoute &) const = default;
};

/// The route to `device`, with what `usbDevices` adds to it.
[[nodiscard]] DeviceRoute routeTo(const SaneDevice &device, const QList<UsbDevice> &usbDevices);

/// Whether `host` is this computer.
[[nodiscard]] bool isLoopback(const QString &host);

} // namespace scanengine
