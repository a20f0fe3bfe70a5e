#include "cli/DevicesRun.h"

#include "cli/TerminalText.h"

namespace velmor {

DevicesRun::DevicesRun(DevicesRequest request, QObject *parent) : QObject(parent)
{
    connect(&m_model, &AppModel::devicesChanged, this, &DevicesRun::printDevices);
    connect(&m_model, &AppModel::engineLost, this, [this](const QString &reason) {
        fail(ExitCode::engineFailed, QStringLiteral("Engine: ") + reason);
    });
    connect(&m_model, &AppModel::scanEnded, this, [this](const ScanOutcome &outcome) {
        if (outcome.kind == ScanOutcome::Kind::failed)
            fail(ExitCode::engineFailed, outcome.message);
    });
    m_searchLimit.setSingleShot(true);
    m_searchLimit.setInterval(request.searchLimit.value);
    connect(&m_searchLimit, &QTimer::timeout, this, [this] {
        fail(ExitCode::engineFailed, QStringLiteral("The scanner engine didn't answer in time."));
    });
}

void DevicesRun::start()
{
    m_searchLimit.start();
    m_model.startEngine();
}

void DevicesRun::printDevices()
{
    if (m_isOver)
        return;
    if (m_model.devices().isEmpty()) {
        fail(ExitCode::noScanner, QStringLiteral("No scanner found"));
        return;
    }
    for (const EngineEvent::Device &device : m_model.devices()) {
        printLine(terminalText(device.id) + '\t' + terminalText(device.name) + '\t' +
                  terminalText(device.driver));
    }
    m_isOver = true;
    Q_EMIT finished(ExitCode::success);
}

void DevicesRun::fail(ExitCode code, const QString &message)
{
    if (m_isOver)
        return;
    m_isOver = true;
    printErrorLine("velmor: " + terminalText(message));
    Q_EMIT finished(code);
}

} // namespace velmor
