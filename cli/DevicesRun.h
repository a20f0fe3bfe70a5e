#pragma once

#include "cli/CommandLine.h"
#include "cli/ExitCode.h"
#include "model/AppModel.h"

#include <QObject>
#include <QTimer>

namespace velmor {

/// Finds the scanners and prints one in a line: id, name and driver, separated by tabs.
///
/// Needs an event loop.
class DevicesRun : public QObject {
    Q_OBJECT

public:
    explicit DevicesRun(DevicesRequest request, QObject *parent = nullptr);

    void start();

Q_SIGNALS:
    /// Once, at the end.
    void finished(velmor::ExitCode code);

private:
    void printDevices();
    void fail(ExitCode code, const QString &message);

    QTimer m_searchLimit;
    AppModel m_model;
    bool m_isOver = false;
};

} // namespace velmor
