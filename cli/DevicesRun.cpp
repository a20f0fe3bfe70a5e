#include "cli/DevicesRun.h"

#include "cli/TerminalText.h"

#include <QDir>

namespace velmor {

DevicesRun::DevicesRun(DevicesRequest request, QObject *parent)
    : QObject(parent), m_search(m_model, request.searchLimit)
{
    connect(&m_search, &DeviceSearch::found, this, &DevicesRun::printDevices);
    connect(&m_search, &DeviceSearch::failed, this, [this](ExitCode code, const QString &message) {
        printErrorLine("velmor: " + terminalText(message));
        Q_EMIT finished(code);
    });
}

void DevicesRun::start()
{
    // Starting the engine makes the output folder, which a mere list has no use for.
    ScanSettings settings = m_model.settings();
    settings.outputFolder = QUrl::fromLocalFile(QDir::tempPath());
    m_model.setSettings(settings);
    m_search.start();
}

void DevicesRun::printDevices()
{
    for (const EngineEvent::Device &device : m_model.devices()) {
        printLine(terminalText(device.id) + '\t' + terminalText(device.name) + '\t' +
                  terminalText(device.driver));
    }
    Q_EMIT finished(ExitCode::success);
}

} // namespace velmor
