#pragma once

#include <QDBusVariant>
#include <QDir>
#include <QObject>

#include <optional>

namespace velmor {

/// Reads the wish for less motion from the settings files of GTK and of Plasma in the
/// configuration folder `config`. Nothing if none of them says anything.
[[nodiscard]] std::optional<bool> reducedMotionInFiles(const QDir &config);

/// The wish for less motion as the desktop's settings service tells it, now and when it changes.
///
/// Asks the settings portal of the session bus, without waiting; where there is no session bus or
/// no portal, it stays silent. Of the two settings the one made for the purpose counts more than
/// GNOME's switch for animations.
class DesktopMotion : public QObject {
    Q_OBJECT

public:
    explicit DesktopMotion(QObject *parent = nullptr);

Q_SIGNALS:
    void told(bool reduced);

private Q_SLOTS:
    void settingChanged(const QString &space, const QString &key, const QDBusVariant &value);
};

} // namespace velmor
