#pragma once

#include <QList>
#include <QString>

namespace scanengine {

/// What the system knows of a device on a USB bus.
struct UsbDevice {
    int bus = 0;     ///< Number of the bus, from 1.
    int address = 0; ///< On the bus, from 1; another one each time the device is plugged in.
    int vendorId = 0;
    int productId = 0;
    QString serial; ///< Empty if the device has none.
    QString port;   ///< Where it is plugged in, "1-2.3"; the same across reboots.

    bool operator==(const UsbDevice &) const = default;
};

/// The devices on the USB buses of this computer, from the folder that the system describes them
/// in, in the order of their ports. Empty if that can't be read.
[[nodiscard]] QList<UsbDevice>
readUsbDevices(const QString &folder = QStringLiteral("/sys/bus/usb/devices"));

} // namespace scanengine
