#include "controls/Motion.h"

#include "controls/DesktopMotion.h"

#include <QQmlEngine>
#include <QStandardPaths>

namespace velmor {

Motion::Motion(QObject *parent) : QObject(parent)
{
    const QDir config(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
    m_reduced = reducedMotionInFiles(config).value_or(false);
    connect(new DesktopMotion(this), &DesktopMotion::told, this, [this](bool reduced) {
        if (!m_set)
            take(reduced);
    });
}

Motion *Motion::of(QQmlEngine &engine)
{
    const int type = qmlTypeId("Velmor.Controls", 1, 0, "Motion");
    return type < 0 ? nullptr : engine.singletonInstance<Motion *>(type);
}

void Motion::setReduced(bool reduced)
{
    m_set = true;
    take(reduced);
}

void Motion::take(bool reduced)
{
    if (m_reduced == reduced)
        return;
    m_reduced = reduced;
    Q_EMIT reducedChanged();
}

} // namespace velmor
