#pragma once

#include "cli/CommandLine.h"
#include "cli/ExitCode.h"
#include "cli/StatusDisplay.h"
#include "model/AppModel.h"

#include <QCoroTask>
#include <QObject>

namespace velmor {

/// Cuts regions out of one page of a saved PDF and puts them in its place, each as a page. Prints
/// the path of the file to standard output. Unless all regions can be cut out and the file can be
/// written, it stays as it was. Needs an event loop.
class CropRun : public QObject {
    Q_OBJECT

public:
    explicit CropRun(const CropRequest &request, QObject *parent = nullptr);

    void start();

Q_SIGNALS:
    /// Once, at the end.
    void finished(velmor::ExitCode code);

private:
    QCoro::Task<> run();
    [[nodiscard]] QCoro::Task<ExitCode> crop();

    CropRequest m_request;
    StatusDisplay m_display;
    AppModel m_model;
};

} // namespace velmor
