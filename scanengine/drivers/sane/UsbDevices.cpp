#include "scanengine/drivers/sane/UsbDevices.h"

#include <QDir>
#include <QFile>

namespace scanengine {
namespace {

/// Far more than any attribute has.
constexpr qint64 maxAttributeBytes = 1024;

QString attribute(const QString &device, const QString &name)
{
    QFile file(device + u'/' + name);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.read(maxAttributeBytes)).trimmed();
}

} // namespace

QList<UsbDevice> readUsbDevices(const QString &folder)
{
    constexpr int decimal = 10;
    constexpr int hexadecimal = 16;
    QList<UsbDevice> devices;
    const QStringList ports = QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString &port : ports) {
        const QString path = folder + u'/' + port;
        const auto number = [&path](const QString &name, int base) {
            return attribute(path, name).toInt(nullptr, base);
        };
        UsbDevice device;
        device.bus = number(QStringLiteral("busnum"), decimal);
        device.address = number(QStringLiteral("devnum"), decimal);
        // Interfaces of devices stand beside the devices and have neither.
        if (device.bus == 0 || device.address == 0)
            continue;
        device.vendorId = number(QStringLiteral("idVendor"), hexadecimal);
        device.productId = number(QStringLiteral("idProduct"), hexadecimal);
        device.serial = attribute(path, QStringLiteral("serial"));
        device.port = port;
        devices.append(device);
    }
    return devices;
}

} // namespace scanengine
