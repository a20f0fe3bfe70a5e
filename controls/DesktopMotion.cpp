#include "controls/DesktopMotion.h"

#include "controls/SessionBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QSettings>

namespace velmor {

namespace {

using SettingsBySpace = QMap<QString, QVariantMap>;

constexpr auto appearance = "org.freedesktop.appearance";
constexpr auto gnome = "org.gnome.desktop.interface";
constexpr auto reducedMotion = "reduced-motion";
constexpr auto enableAnimations = "enable-animations";

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");

std::optional<bool> asked(const QString &key, const QVariant &value)
{
    if (key == QLatin1String(reducedMotion))
        return value.toUInt() == 1;
    if (key == QLatin1String(enableAnimations))
        return !value.toBool();
    return std::nullopt;
}

std::optional<bool> asked(const SettingsBySpace &settings)
{
    for (const auto &[space, key] : {
             std::pair{appearance, reducedMotion   },
             std::pair{gnome,      enableAnimations}
    }) {
        const QVariantMap keys = settings.value(QLatin1String(space));
        const auto found = keys.constFind(QLatin1String(key));
        if (found != keys.cend())
            return asked(found.key(), *found);
    }
    return std::nullopt;
}

} // namespace

std::optional<bool> reducedMotionInFiles(const QDir &config)
{
    for (const auto &file : {QStringLiteral("gtk-4.0"), QStringLiteral("gtk-3.0")}) {
        const QSettings gtk(config.filePath(file + QStringLiteral("/settings.ini")),
                            QSettings::IniFormat);
        const QVariant on = gtk.value(QStringLiteral("Settings/gtk-enable-animations"));
        if (on.isValid())
            return !on.toBool();
    }
    const QSettings plasma(config.filePath(QStringLiteral("kdeglobals")), QSettings::IniFormat);
    const QVariant factor = plasma.value(QStringLiteral("KDE/AnimationDurationFactor"));
    if (factor.isValid())
        return factor.toDouble() <= 0;
    return std::nullopt;
}

DesktopMotion::DesktopMotion(QObject *parent) : QObject(parent)
{
    if (!hasSessionBus())
        return;
    auto question = QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface,
                                                   QStringLiteral("ReadAll"));
    question << QStringList{QLatin1String(appearance), QLatin1String(gnome)};
    auto *answer =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        // Not before: a connection that is just being made can lose sight of whose signals it
        // wants.
        QDBusConnection::sessionBus().connect(portalService, portalPath, settingsInterface,
                                              QStringLiteral("SettingChanged"), this,
                                              SLOT(settingChanged(QString, QString, QDBusVariant)));
        const QDBusPendingReply<> reply = *answer;
        if (reply.isError() || reply.reply().arguments().isEmpty())
            return;
        const auto settings = qdbus_cast<SettingsBySpace>(reply.reply().arguments().constFirst());
        if (const auto reduced = asked(settings))
            Q_EMIT told(*reduced);
    });
}

void DesktopMotion::settingChanged(const QString &space, const QString &key,
                                   const QDBusVariant &value)
{
    if (space != QLatin1String(appearance) && space != QLatin1String(gnome))
        return;
    if (const auto reduced = asked(key, value.variant()))
        Q_EMIT told(*reduced);
}

} // namespace velmor
