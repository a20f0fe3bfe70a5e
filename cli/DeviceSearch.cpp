#include "cli/DeviceSearch.h"

namespace velmor {

DeviceSearch::DeviceSearch(AppModel &model, SearchLimit limit, QObject *parent)
    : QObject(parent), m_model(model)
{
    // Queued: the model has more to say of the list before a scan may start.
    connect(&m_model, &AppModel::devicesChanged, this, &DeviceSearch::noteDevices,
            Qt::QueuedConnection);
    connect(&m_model, &AppModel::engineLost, this, [this](const QString &reason) {
        fail(ExitCode::engineFailed, QStringLiteral("Engine: ") + reason);
    });
    connect(&m_model, &AppModel::lastErrorChanged, this, [this] {
        if (m_model.lastError())
            fail(ExitCode::engineFailed, *m_model.lastError());
    });
    m_limit.setSingleShot(true);
    m_limit.setInterval(limit.value);
    connect(&m_limit, &QTimer::timeout, this, [this, limit] {
        fail(
            ExitCode::engineFailed,
            QStringLiteral("The scanner engine gave no answer for %1 s.").arg(limit.value.count()));
    });
}

void DeviceSearch::start()
{
    m_limit.start();
    m_model.startEngine();
}

void DeviceSearch::giveUp()
{
    m_isOver = true;
    m_limit.stop();
}

void DeviceSearch::noteDevices()
{
    if (m_isOver)
        return;
    if (m_model.devices().isEmpty()) {
        fail(ExitCode::noScanner, QStringLiteral("No scanner found"));
        return;
    }
    giveUp();
    Q_EMIT found();
}

void DeviceSearch::fail(ExitCode code, const QString &message)
{
    if (m_isOver)
        return;
    giveUp();
    Q_EMIT failed(code, message);
}

} // namespace velmor
