#pragma once

#include "scanengine/Protocol.h"
#include "scanengine/drivers/sane/SaneOptions.h"
#include "scanengine/drivers/sane/UsbDevices.h"

#include <QList>
#include <QString>

namespace scanengine {

/// The word of the driver for SANE's devices, "sane".
extern const QString saneDriverName;

/// A scanner to choose, and the name by which SANE opens it until the next search.
struct SaneScanner {
    Device device;
    QString saneName;

    bool operator==(const SaneScanner &) const = default;
};

/// The scanners among the devices that SANE listed, in the order of their names. Pure.
///
/// Cameras are left out, and so are further ways to the same scanner: eSCL is kept before WSD
/// before a vendor's backend before a scanner server's. An id is made of a serial number or a
/// network name where there is one, else of the kind of the device, else of its port; not of a
/// position on a bus unless nothing else tells two devices apart. No two scanners share an id or a
/// name.
[[nodiscard]] QList<SaneScanner> scannersAmong(const QList<SaneDevice> &devices,
                                               const QList<UsbDevice> &usbDevices);

/// The scanner with this id among `scanners`; else the only one of the same kind, which may have
/// had another port or a twin when the id was made; else nullptr.
[[nodiscard]] const SaneScanner *findScanner(const QList<SaneScanner> &scanners, const QString &id);

} // namespace scanengine
