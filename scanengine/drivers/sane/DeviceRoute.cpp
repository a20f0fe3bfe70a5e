#include "scanengine/drivers/sane/DeviceRoute.h"

#include <QRegularExpression>
#include <QUrl>

#include <algorithm>

namespace scanengine {
namespace {

/// The first group of `pattern` in `text`; empty if it isn't there.
QString captured(const QRegularExpression &pattern, const QString &text)
{
    return pattern.match(text).captured(1);
}

QString beforeColon(const QString &text)
{
    return text.section(u':', 0, 0);
}

QString afterColon(const QString &text)
{
    return text.section(u':', 1);
}

/// Takes the host off the beginning of "host:rest" or "[ipv6]:rest".
QString takeHost(QString &text)
{
    static const QRegularExpression host(QStringLiteral("^(\\[[^\\]]*\\]|[^:]*):?"));
    const QRegularExpressionMatch match = host.match(text);
    text = text.mid(match.capturedLength());
    QString name = match.captured(1);
    name.remove(u'[').remove(u']');
    return name;
}

/// "airscan:e0:Name": a letter for the protocol, a number that changes from search to search, and
/// the name that the device has on the network. Its type says "ip=192.168.1.5".
void readAirscan(DeviceRoute &route, const SaneDevice &device)
{
    static const QRegularExpression ip(QStringLiteral("\\bip=([^\\s,]+)"));
    route.kind = route.rest.startsWith(u'w') ? RouteKind::wsd : RouteKind::escl;
    route.rest = afterColon(route.rest);
    route.address = captured(ip, device.type);
    route.isNetwork = true;
}

/// "escl:https://192.168.1.5:443"
void readEscl(DeviceRoute &route)
{
    route.kind = RouteKind::plainEscl;
    route.address = QUrl(route.rest).host();
    route.isNetwork = true;
}

/// What the names of the other backends have in common.
void readOther(DeviceRoute &route)
{
    static const QRegularExpression usb(
        QStringLiteral("(?:\\b(?:lib)?usb:|\\bbus)(\\d+)(?::|;dev)(\\d+)"));
    static const QRegularExpression ip(
        QStringLiteral("(?:^|[^0-9.])(\\d{1,3}(?:\\.\\d{1,3}){3})(?![0-9.])"));
    static const QRegularExpression host(
        QStringLiteral("^(?:tcp|net)[ :]([^ :;]+)|[?&;](?:ip|hostname|zc)=([^&;]+)"));
    static const QRegularExpression network(QStringLiteral("^/?(?:tcp|net)\\d*\\b"));
    static const QRegularExpression serial(QStringLiteral("[?&;]serial=([^&;]+)"));

    const QRegularExpressionMatch position = usb.match(route.rest);
    if (position.hasMatch()) {
        constexpr int digits = 3;
        route.usbPosition = position.captured(1).rightJustified(digits, u'0') + u':' +
                            position.captured(2).rightJustified(digits, u'0');
    }
    const QRegularExpressionMatch named = host.match(route.rest);
    route.address = captured(ip, route.rest);
    if (route.address.isEmpty())
        route.address = named.captured(1) + named.captured(2);
    route.isNetwork = !route.address.isEmpty() || network.match(route.rest).hasMatch();
    route.serial = captured(serial, route.rest);
}

/// "pixma:04A9176D_4BE5A6": the numbers of maker and product, and the serial number.
std::optional<UsbDevice> usbOfPixma(const QString &rest, const QList<UsbDevice> &usbDevices)
{
    static const QRegularExpression pattern(
        QStringLiteral("^([0-9A-Fa-f]{4})([0-9A-Fa-f]{4})(?:_(.+))?$"));
    const QRegularExpressionMatch match = pattern.match(rest);
    if (!match.hasMatch())
        return std::nullopt;
    constexpr int hexadecimal = 16;
    UsbDevice device;
    device.vendorId = match.captured(1).toInt(nullptr, hexadecimal);
    device.productId = match.captured(2).toInt(nullptr, hexadecimal);
    device.serial = match.captured(3);
    for (const UsbDevice &known : usbDevices) {
        if (known.vendorId == device.vendorId && known.productId == device.productId &&
            known.serial == device.serial)
            return known;
    }
    return device;
}

std::optional<UsbDevice> usbAt(const QString &position, const QList<UsbDevice> &usbDevices)
{
    const int bus = beforeColon(position).toInt();
    const int address = afterColon(position).toInt();
    const auto found =
        std::find_if(usbDevices.begin(), usbDevices.end(), [bus, address](const UsbDevice &device) {
            return device.bus == bus && device.address == address;
        });
    return found == usbDevices.end() ? std::nullopt : std::optional(*found);
}

} // namespace

bool DeviceRoute::isLocalUsb() const
{
    return !isNetwork && (server.isEmpty() || isLoopback(server)) &&
           (usb || !usbPosition.isEmpty());
}

DeviceRoute routeTo(const SaneDevice &device, const QList<UsbDevice> &usbDevices)
{
    DeviceRoute route;
    QString name = device.name;
    if (name.startsWith(u"net:")) {
        name = afterColon(name);
        route.server = takeHost(name);
    }
    route.backend = beforeColon(name);
    route.rest = afterColon(name);
    if (route.backend == u"airscan")
        readAirscan(route, device);
    else if (route.backend == u"escl")
        readEscl(route);
    else
        readOther(route);

    const bool isServed = !route.server.isEmpty();
    if (isServed)
        route.kind = RouteKind::scanServer;
    if (!isServed || isLoopback(route.server)) {
        if (route.backend == u"pixma" && !route.isNetwork)
            route.usb = usbOfPixma(route.rest, usbDevices);
        else if (!route.usbPosition.isEmpty())
            route.usb = usbAt(route.usbPosition, usbDevices);
    }
    if (route.usb && route.serial.isEmpty())
        route.serial = route.usb->serial;
    return route;
}

bool isLoopback(const QString &host)
{
    return host == u"localhost" || host == u"::1" || host.startsWith(u"127.");
}

} // namespace scanengine
