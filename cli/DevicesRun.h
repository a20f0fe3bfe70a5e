#pragma once

#include "cli/DeviceSearch.h"

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

    AppModel m_model;
    DeviceSearch m_search;
};

} // namespace velmor
