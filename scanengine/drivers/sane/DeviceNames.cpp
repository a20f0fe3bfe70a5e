#include "scanengine/drivers/sane/DeviceNames.h"

#include "scanengine/drivers/NaturalOrder.h"
#include "scanengine/drivers/sane/DeviceRoute.h"
#include "scanengine/drivers/sane/DeviceTitle.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <utility>
#include <vector>

namespace scanengine {

const QString saneDriverName = QStringLiteral("sane");

namespace {

/// Parts an id's kind from what tells twins apart.
constexpr QChar twinMark = u'@';
/// Shorter serial numbers are placeholders, "1" or "0000".
constexpr qsizetype shortestSerial = 5;

struct Candidate {
    SaneDevice device;
    DeviceRoute route;
    QString title;
};

bool isCamera(const SaneDevice &device)
{
    static const QStringList cameraBackends{QStringLiteral("v4l"),   QStringLiteral("gphoto2"),
                                            QStringLiteral("dc210"), QStringLiteral("dc240"),
                                            QStringLiteral("dc25"),  QStringLiteral("qcam"),
                                            QStringLiteral("stv680")};
    return device.type.contains(u"camera", Qt::CaseInsensitive) ||
           cameraBackends.contains(device.name.section(u':', 0, 0));
}

/// Whether both are ways of one kind through one backend, which lists a device once.
bool isSameWay(const DeviceRoute &one, const DeviceRoute &other)
{
    return one.kind == other.kind && one.backend == other.backend && one.server == other.server;
}

/// Whether both routes lead to the same device. A device of our own USB that speaks eSCL answers at
/// our own address, so that only the model tells.
bool isSameDevice(const Candidate &one, const Candidate &other)
{
    const DeviceRoute &a = one.route;
    const DeviceRoute &b = other.route;
    if (isSameWay(a, b))
        return one.device.name == other.device.name;
    if (a.isLocalUsb() && b.isLocalUsb() && !a.usbPosition.isEmpty() && !b.usbPosition.isEmpty())
        return a.usbPosition == b.usbPosition;
    const bool haveSerials = a.serial.size() >= shortestSerial && b.serial.size() >= shortestSerial;
    if (haveSerials && a.serial == b.serial)
        return true;
    const bool haveAddresses = !a.address.isEmpty() && !b.address.isEmpty();
    const bool isSameAddress = haveAddresses && a.address == b.address;
    if (isSameAddress && !isLoopback(a.address))
        return true;
    if (a.backend == b.backend && a.rest == b.rest &&
        (isLoopback(a.server) || isLoopback(b.server)))
        return true;
    if (!isSameModel(one.title, other.title))
        return false;
    const bool isOwnEscl =
        (isLoopback(a.address) && b.isLocalUsb()) || (isLoopback(b.address) && a.isLocalUsb());
    return isOwnEscl || isSameAddress || (a.isNetwork && b.isNetwork && !haveAddresses);
}

/// The scanners among `devices`, each by its best way.
std::vector<Candidate> bestWays(const QList<SaneDevice> &devices,
                                const QList<UsbDevice> &usbDevices)
{
    std::vector<Candidate> candidates;
    for (const SaneDevice &device : devices) {
        if (!isCamera(device))
            candidates.push_back({device, routeTo(device, usbDevices), deviceTitle(device)});
    }
    std::stable_sort(candidates.begin(), candidates.end(),
                     [](const Candidate &one, const Candidate &other) {
                         return one.route.kind < other.route.kind;
                     });
    std::vector<Candidate> best;
    for (Candidate &candidate : candidates) {
        const bool isKnown = std::any_of(best.begin(), best.end(), [&](const Candidate &kept) {
            return isSameDevice(kept, candidate);
        });
        if (!isKnown)
            best.push_back(std::move(candidate));
    }
    return best;
}

/// What an id is made of: the kind of the device, with its serial number if it has one, and what
/// tells it from a twin.
struct Identity {
    QString kind;
    QString twin;
};

QString hexadecimal(int number)
{
    return QStringLiteral("%1").arg(number, 4, 16, QChar(u'0'));
}

Identity identityOf(const Candidate &candidate)
{
    const DeviceRoute &route = candidate.route;
    const QString prefix =
        route.server.isEmpty() ? QString() : QStringLiteral("server:") + route.server + u':';
    if (route.kind == RouteKind::escl || route.kind == RouteKind::wsd)
        return {QStringLiteral("network:") + route.rest, route.address};
    if (route.usb && prefix.isEmpty()) {
        QString kind = QStringLiteral("usb:") + hexadecimal(route.usb->vendorId) + u':' +
                       hexadecimal(route.usb->productId);
        if (!route.serial.isEmpty())
            kind += u':' + route.serial;
        return {kind, route.usb->port};
    }
    if (!route.serial.isEmpty())
        return {prefix + route.backend + u':' + candidate.title + u':' + route.serial, {}};
    if (!route.address.isEmpty() || !route.usbPosition.isEmpty())
        return {prefix + route.backend + u':' + candidate.title,
                route.address.isEmpty() ? route.usbPosition : route.address};
    return {prefix + route.backend + u':' + route.rest, {}};
}

/// `texts` with a number after each that is there more than once.
QStringList numbered(QStringList texts, const QString &pattern)
{
    QHash<QString, int> times;
    for (const QString &text : std::as_const(texts))
        ++times[text.toLower()];
    QHash<QString, int> counted;
    for (QString &text : texts) {
        const QString key = text.toLower();
        if (times.value(key) > 1)
            text = pattern.arg(text).arg(++counted[key]);
    }
    return texts;
}

QStringList idsOf(const std::vector<Candidate> &candidates)
{
    QHash<QString, int> kinds;
    for (const Candidate &candidate : candidates)
        ++kinds[identityOf(candidate).kind];
    QStringList ids;
    for (const Candidate &candidate : candidates) {
        Identity identity = identityOf(candidate);
        // The mark is ours alone.
        identity.kind.replace(twinMark, u'_');
        const bool hasTwin = kinds.value(identityOf(candidate).kind) > 1;
        ids.append(hasTwin && !identity.twin.isEmpty() ? identity.kind + twinMark + identity.twin
                                                       : identity.kind);
    }
    return numbered(ids, QStringLiteral("%1@%2"));
}

QString placeLabel(const DeviceRoute &route)
{
    if (!route.server.isEmpty())
        return QStringLiteral("at %1").arg(route.server);
    if (!route.address.isEmpty() && !isLoopback(route.address))
        return route.address;
    if (route.isNetwork && route.address.isEmpty())
        return QStringLiteral("network");
    return route.isNetwork || route.isLocalUsb() ? QStringLiteral("USB") : QString();
}

QString serialLabel(const DeviceRoute &route)
{
    return route.serial.isEmpty() ? QString() : QStringLiteral("serial %1").arg(route.serial);
}

QString portLabel(const DeviceRoute &route)
{
    return route.usb && !route.usb->port.isEmpty() ? QStringLiteral("port %1").arg(route.usb->port)
                                                   : QString();
}

/// Adds labels to the names that are there more than once, where the labels differ.
void addLabels(QStringList &names, const std::vector<Candidate> &candidates,
               QString (*labelOf)(const DeviceRoute &))
{
    QHash<QString, QSet<QString>> labels;
    for (qsizetype i = 0; i < names.size(); ++i)
        labels[names[i].toLower()].insert(labelOf(candidates[size_t(i)].route));
    for (qsizetype i = 0; i < names.size(); ++i) {
        const QString label = labelOf(candidates[size_t(i)].route);
        if (!label.isEmpty() && labels.value(names[i].toLower()).size() > 1)
            names[i] += QStringLiteral(" (%1)").arg(label);
    }
}

QStringList namesOf(const std::vector<Candidate> &candidates)
{
    QStringList names;
    for (const Candidate &candidate : candidates)
        names.append(candidate.title);
    for (const auto labelOf : {placeLabel, serialLabel, portLabel})
        addLabels(names, candidates, labelOf);
    return numbered(names, QStringLiteral("%1 (%2)"));
}

} // namespace

QList<SaneScanner> scannersAmong(const QList<SaneDevice> &devices,
                                 const QList<UsbDevice> &usbDevices)
{
    const std::vector<Candidate> candidates = bestWays(devices, usbDevices);
    const QStringList ids = idsOf(candidates);
    const QStringList names = namesOf(candidates);
    QList<SaneScanner> scanners;
    for (qsizetype i = 0; i < ids.size(); ++i)
        scanners.append({
            {ids[i], names[i], saneDriverName},
            candidates[size_t(i)].device.name
        });
    std::sort(scanners.begin(), scanners.end(),
              [](const SaneScanner &one, const SaneScanner &other) {
                  return naturallyBefore(one.device.name, other.device.name);
              });
    return scanners;
}

const SaneScanner *findScanner(const QList<SaneScanner> &scanners, const QString &id)
{
    const SaneScanner *onlyOfKind = nullptr;
    int ofKind = 0;
    const QString kind = id.section(twinMark, 0, 0);
    for (const SaneScanner &scanner : scanners) {
        if (scanner.device.id == id)
            return &scanner;
        if (scanner.device.id.section(twinMark, 0, 0) == kind) {
            onlyOfKind = &scanner;
            ++ofKind;
        }
    }
    return ofKind == 1 ? onlyOfKind : nullptr;
}

} // namespace scanengine
